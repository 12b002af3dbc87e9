#pragma once
/* Control interface of the reference device layer "libDevManage.so", for tests and demos.
 *
 * The library starts empty: no resource, no custom-tree node, every object available, every id
 * admitted, every device answering 0 to the image channel query, no failure pending. The functions
 * below fill it, change it while readers are at work, and make its operations fail. All of them
 * are safe to call from any thread; each takes the device layer's one lock for its own length.
 *
 * Results: 0 on success, -1 on a refused argument (null or empty id where one is needed, unknown
 * id, unknown type or operation name), unless a function says otherwise.
 *
 * Resource items are keyed by their resource id (m_strId). Ids are UTF-8 texts. A null text
 * argument stands for an empty one. */

#ifdef __cplusplus
extern "C" {
#endif

/* Where a stale pointer takes the place of an item, see DevManageCtl_SetStale. */
enum n_DevManageCtlStale
{
    DEVMANAGECTL_STALE_IN_LISTS = 1,       /* ListItemsOfType and ListChildren */
    DEVMANAGECTL_STALE_IN_GETITEM = 2,     /* GetItem */
    DEVMANAGECTL_STALE_IN_CHANNEL_GET = 4, /* GetItemOfChannel */
};

/* ---- installation ------------------------------------------------------------------------- */

/* Back to the state at load: empty installation and custom tree, all objects available, default
 * answers, no pending failure, no stale marks, call counters and last calls forgotten. */
void DevManageCtl_Reset(void);

/* Removes every resource item (their weak pointers expire); the rest stays. */
void DevManageCtl_ClearItems(void);

/* Reset, then a small installation: the root "resource_root_id", two hosts with channels and
 * alarms, one decoder with outputs and inputs, and a custom tree with a group, favourites and a
 * passenger-flow tree. The layout is listed in docs/reference-device-layer.md. Returns the number
 * of resource items. */
int DevManageCtl_LoadSample(void);

/* Adds one resource item. _iType: 2 group, 3 host, 4 channel, 5 alarm input, 6 alarm output,
 * 12 decoder, 13 decoder output, 17 decoder input. _iChannelNo is kept by the channel-like kinds
 * (4, 5, 6, 13, 17) and ignored by the others. An empty _pTreeId makes the tree id equal to the
 * id. -1 for an empty id, an id already present or another type. The item with the id
 * "resource_root_id" is the root of the resource tree. */
int DevManageCtl_AddItem(int _iType, const char* _pId, const char* _pName, const char* _pParentId,
                         int _iOrderNo, int _iStatus, int _iChannelNo, const char* _pTreeId);

/* Shorthands of DevManageCtl_AddItem. */
int DevManageCtl_AddGroup(const char* _pId, const char* _pName, const char* _pParentId, int _iOrderNo,
                          const char* _pTreeId);
int DevManageCtl_AddHost(const char* _pId, const char* _pName, const char* _pParentId, int _iOrderNo,
                         int _iStatus, const char* _pTreeId);
int DevManageCtl_AddChannel(const char* _pId, const char* _pName, const char* _pParentId, int _iOrderNo,
                            int _iStatus, int _iChannelNo, const char* _pTreeId);

/* Removes the item; its weak pointers expire (once no reader holds it locked). Its children stay,
 * with their parent id unchanged. */
int DevManageCtl_RemoveItem(const char* _pId);

/* Changes of one item. Each replaces the item by a changed copy in a new shared_ptr: the old
 * object is left untouched for a reader who holds it, and its weak pointers expire. */
int DevManageCtl_SetStatus(const char* _pId, int _iStatus);
int DevManageCtl_SetName(const char* _pId, const char* _pName);
int DevManageCtl_SetDevBindType(const char* _pId, int _iDevBindType);

/* The status of the item into *_pStatus. */
int DevManageCtl_GetStatus(const char* _pId, int* _pStatus);

/* Number of resource items. */
int DevManageCtl_ItemCount(void);

/* One-shot: the next GetItemOfChannel of _pId first sets the item's status to _iStatus (as
 * DevManageCtl_SetStatus does), then answers. Stands for a device whose state changes between two
 * reads of one pass. */
int DevManageCtl_SetStatusOnLookup(const char* _pId, int _iStatus);

/* Marks where the item _pId is handed out as an expired weak pointer instead of itself, with a
 * success code: a bit set of n_DevManageCtlStale, 0 to clear. ListIdsOfType and GetAllItems are not
 * affected. Stands for an item removed while a reader walks a list. */
int DevManageCtl_SetStale(const char* _pId, int _iWhere);

/* Every result of ListItemsOfType and ListChildren starts with _iCount expired weak pointers and
 * one empty weak pointer (none when _iCount is 0). */
void DevManageCtl_SetStaleEntries(int _iCount);

/* ---- objects and answers ------------------------------------------------------------------ */

/* Whether "GetResourceTree", "GetDevFactory" or "GetCustomTree" gives its object (1) or null (0).
 * -1 for another name. */
int DevManageCtl_SetObjectAvailable(const char* _pFunction, int _iAvailable);

/* IsIdAdmitted's answer for _pId; a null or empty id sets the answer for every id without one of
 * its own (default 1). */
void DevManageCtl_SetIdAdmitted(const char* _pId, int _iAdmitted);

/* What QueryDeviceParam with PARAM_IMAGE_CHANNEL (10072) gives for the device id _pId; a null or
 * empty id sets the answer for every id without one of its own (default 0). Other parameter types
 * give -1. */
void DevManageCtl_SetDeviceParam(const char* _pId, int _iValue);

/* ---- failures and records of calls -------------------------------------------------------- */

/* The next _iCount calls of the operation give the code _iCode (-1 if _iCode is not negative)
 * and leave their outputs untouched. Operations: "GetAllItems", "GetItem", "GetItemOfChannel",
 * "ListItemsOfType", "ListIdsOfType", "ListChildren", "QueryDeviceParam", "GetAllNodes",
 * "GetNodesOfRoot". A count of 0 cancels. -1 for another name. */
int DevManageCtl_FailNext(const char* _pOperation, int _iCount, int _iCode);

/* Calls of an operation since the last reset, failed ones included. Besides the operations above:
 * "IsIdAdmitted", "GetResourceTree", "GetDevFactory", "GetCustomTree". -1 for another name. */
int DevManageCtl_CallCount(const char* _pOperation);

/* The arguments of the operation's last call as text, fields joined by '|':
 *   GetAllItems ""; GetItem "id"; GetItemOfChannel "id|channel|flag";
 *   ListItemsOfType "type|number of filter ids"; ListIdsOfType "type"; ListChildren "parent id";
 *   IsIdAdmitted "id"; QueryDeviceParam "device id|channel|parameter|map size|value text";
 *   GetAllNodes "flag"; GetNodesOfRoot "root id|flag".
 * Copies at most _iSize - 1 bytes and a terminating zero into _pBuffer (if not null) and returns
 * the full length, or -1 when the operation is unknown or was not called. */
int DevManageCtl_LastCall(const char* _pOperation, char* _pBuffer, int _iSize);

/* ---- installations from JSON, generated installations, status simulation ------------------ */

/* Reset (as DevManageCtl_Reset), then the installation described by the JSON text (UTF-8; the
 * format is docs/installation-format.md). The whole installation goes in at once: a reader sees
 * the old one or the new one. Returns the number of resource items, root included, or -1 when
 * the text is no JSON or breaks a rule of the format; the store is then reset and empty, and
 * DevManageCtl_LastLoadError tells why. A null text is invalid. */
int DevManageCtl_LoadInstallation(const char* _pJsonText);

/* The same from a file; -1 (store reset and empty, error kept) when the file cannot be read. The
 * error line of a refused file begins with its path: "<file>: <path>: <problem>", or
 * "<file>:<line>:<column>: invalid JSON: <problem>". */
int DevManageCtl_LoadInstallationFile(const char* _pPath);

/* The message of the last failed load, one line, as "<path>: <problem>", empty after a successful load or
 * generation, kept by DevManageCtl_Reset. Copies at most _iSize - 1 bytes and a terminating zero
 * into _pBuffer (if not null) and returns the full length. */
int DevManageCtl_LastLoadError(char* _pBuffer, int _iSize);

/* Reset, then a synthetic installation: _iChannels channels in hosts of _iChannelsPerHost (the
 * last host takes the rest), up to four groups, alarms on every fourth host, one decoder with four
 * outputs and two inputs, a custom tree, favourites and a passenger-flow tree over some channels.
 * The same arguments give the same installation (layout in docs/installation-format.md). Returns
 * the number of resource items; -1, with nothing changed, when _iChannels < 0 or
 * _iChannelsPerHost < 1. */
int DevManageCtl_GenerateInstallation(int _iChannels, int _iChannelsPerHost);

/* Starts one background thread that makes about _iChangesPerSecond status events a second. Each
 * event picks a random host (one in eight) or channel from the installation as it is then, with a
 * generator seeded by _uiSeed, and toggles it between 0 and 1 the way DevManageCtl_SetStatus
 * changes an item, under the layer's lock. A host takes all its channels with it, off line and
 * back on line; a channel picked below an off-line host brings the host (and so its channels)
 * back instead. The same seed on the same installation, with nothing else changing statuses,
 * picks the same events. 0, or -1 if a simulation runs already or the rate is below 1. */
int DevManageCtl_StartSimulation(int _iChangesPerSecond, unsigned int _uiSeed);

/* Stops the simulation and joins its thread; nothing when none runs. Unloading the library or
 * leaving the process stops it too. */
void DevManageCtl_StopSimulation(void);

/* Events applied since the last DevManageCtl_StartSimulation (kept after the stop); one event
 * counts once however many channels a host takes with it. */
int DevManageCtl_SimulationChanges(void);

/* Events that came due since the last DevManageCtl_StartSimulation, whether or not they found
 * something to change: how far a run has got, for a test that waits on it. */
int DevManageCtl_SimulationSteps(void);

/* ---- custom tree -------------------------------------------------------------------------- */

/* Adds or replaces the custom-tree node _pTreeId. The roots "custom_root_id", "favorite_root_id"
 * and "passengerflow_root_id" are ordinary nodes of type 2 with an empty parent. m_qstrDevParentId
 * is taken from the parent node's device id when the parent is present. -1 for an empty tree id. */
int DevManageCtl_AddCustomNode(const char* _pTreeId, const char* _pDevId, const char* _pParentTreeId,
                               const char* _pName, int _iType, int _iSortNo, int _iStatus, int _iChannelNo);

/* Removes one node (its children stay). */
int DevManageCtl_RemoveCustomNode(const char* _pTreeId);

/* Removes every node of the custom tree. */
void DevManageCtl_ClearCustomTree(void);

#ifdef __cplusplus
}
#endif
