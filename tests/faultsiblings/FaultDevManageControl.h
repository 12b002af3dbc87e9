#pragma once
/* Control interface of the faulty device layer of the tests ("libDevManage.so" in its own folder):
 * a small installation, and per operation a plan of throws and a delay. Safe from any thread.
 *
 * Operation names: the exported functions "GetResourceTree", "GetDevFactory", "GetCustomTree"; the
 * resource tree's "GetAllItems", "GetItem", "GetItemOfChannel", "ListItemsOfType", "ListIdsOfType",
 * "ListChildren"; the factory's "IsIdAdmitted", "QueryDeviceParam"; the custom tree's "GetAllNodes",
 * "GetNodesOfRoot". */

#ifdef __cplusplus
extern "C" {
#endif

/* No items, no plans, no counts. */
void FaultCtl_Reset(void);

/* The root group "resource_root_id", hosts "h1".."h<_iHosts>" below it, each with the channels
 * "h<n>c1".."h<n>c<_iChannels>" (status 1 for odd channel numbers, else 0), and the custom tree of
 * the same: root "custom_root_id", a group "g1", and under it a node "n_<channel>" for every
 * channel. QueryDeviceParam answers 1 for every channel. */
void FaultCtl_Load(int _iHosts, int _iChannels);

/* The status of one channel; -1 for an unknown id. */
int FaultCtl_SetStatus(const char* _pId, int _iStatus);
int FaultCtl_GetStatus(const char* _pId);

/* The calls of _pOperation after the next _iSkip throw, _iCount of them (-1: all). _iKind 0 throws
 * std::runtime_error("fault <operation>"), 1 throws an int. A new plan replaces the old one. */
void FaultCtl_Throw(const char* _pOperation, int _iSkip, int _iCount, int _iKind);

/* The same, but only the calls made on the calling thread count and throw: a test on the GUI
 * thread aims at its own call while a status thread polls beside it. */
void FaultCtl_ThrowHere(const char* _pOperation, int _iSkip, int _iCount, int _iKind);

/* Every call of _pOperation sleeps _iMsecs before it answers (or throws). */
void FaultCtl_Delay(const char* _pOperation, int _iMsecs);

/* Drops every plan and delay; the installation stays. */
void FaultCtl_Heal(void);

/* Calls of _pOperation so far, and how many of them threw. */
int FaultCtl_Calls(const char* _pOperation);
int FaultCtl_Thrown(const char* _pOperation);

#ifdef __cplusplus
}
#endif
