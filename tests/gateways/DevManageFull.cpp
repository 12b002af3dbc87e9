// Stand-in for the device-management library with its three object functions. The objects are
// opaque tokens: the gateway only hands the pointers on. "DevManageTest_Objects" tells the test
// which pointers to expect, "DevManageTest_SetNull" makes the functions answer null.

namespace {
char s_cResourceTree = 0;
char s_cDevFactory = 0;
char s_cCustomTree = 0;
bool s_blNull = false;
} // namespace

extern "C" void* GetResourceTree()
{
    return s_blNull ? nullptr : &s_cResourceTree;
}

extern "C" void* GetDevFactory()
{
    return s_blNull ? nullptr : &s_cDevFactory;
}

extern "C" void* GetCustomTree()
{
    return s_blNull ? nullptr : &s_cCustomTree;
}

extern "C" void* GetUtil()
{
    return nullptr;
}

// _pObjects receives the resource tree, the device factory and the custom tree, in that order.
extern "C" void DevManageTest_Objects(void** _pObjects)
{
    _pObjects[0] = &s_cResourceTree;
    _pObjects[1] = &s_cDevFactory;
    _pObjects[2] = &s_cCustomTree;
}

extern "C" void DevManageTest_SetNull(bool _blNull)
{
    s_blNull = _blNull;
}
