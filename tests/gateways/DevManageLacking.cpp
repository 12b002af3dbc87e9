// Stand-in for the device-management library that lacks the three object functions; of the
// gateway's list it exports only "GetUtil".

extern "C" void* GetUtil()
{
    return nullptr;
}
