#pragma once
// Gateway to the task pool library "libLxTaskPool.so". Callers take a function from GetModuleFun
// at each use and cast it; a null function means the task is not started, and nobody is told.
// The results of the pool's functions are not looked at here.

#include <functional>
#include <string>

namespace TaskPool {

// "AddTmpTask": runs _task once, later, on a pool thread. _pOwner is the object that asks;
// _strContext is for the pool's records only.
typedef int (*PFun_AddTmpTask)(const std::function<void()>& _task, void* _pOwner,
                               const std::string& _strContext);

// "AddLoopTask": runs _task on a pool thread every _iInterval until "RemoveTask" with _strTaskId.
typedef int (*PFun_AddLoopTask)(const std::function<void()>& _task, int _iInterval, std::string& _strTaskId,
                                const std::string& _strContext);

// "RemoveTask": ends the loop task _strTaskId.
typedef int (*PFun_RemoveTask)(const std::string& _strTaskId, const std::string& _strContext);

// Address of a function of the task pool library, or null. Binds the whole function list
// ("AddTmpTask", "RemoveTmpTask", "AddLoopTask", "RemoveTask", "KillTask", "KillTaskAll", "UnInit")
// on first use; _strPath is the library's folder, empty for the loader's own search.
void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath = std::string());

} // namespace TaskPool
