#pragma once
// Gateway to the device-management library "libDevManage.so": the resource tree, the device
// factory and the custom-tree manager. Called from the GUI thread, the channel status thread and the
// task pool's threads alike; the objects it hands out belong to the library and are never deleted.

#include <string>

class CLS_IResourceTree;
class CLS_IDevFactory;
class I_CustomTreeManage;

namespace DevManage {

typedef CLS_IResourceTree* (*PFun_GetResourceTree)();
typedef CLS_IDevFactory* (*PFun_GetDevFactory)();
typedef I_CustomTreeManage* (*PFun_GetCustomTree)();

// Address of a function of the device-management library, or null. Binds the whole function list
// ("GetCustomTree", "GetResourceTree", "GetDevFactory", "GetUtil") on first use; _strPath is the
// library's folder, empty for the loader's own search.
void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath = std::string());

// The process's resource tree, or null before it exists. Logs at level 3 when the library or its
// function is missing.
CLS_IResourceTree* GetResourceTree();

// The device factory, or null. Logs at level 3 when the library or its function is missing.
CLS_IDevFactory* GetDevFactory();

// The custom-tree manager, or null. Logs at level 3 when the library or its function is missing.
I_CustomTreeManage* GetCustomTree();

} // namespace DevManage
