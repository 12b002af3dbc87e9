#pragma once
/* Control interface of the reference application library "libLxAppManager.so", for tests and
 * demos. At load the application state is 1 (running) and every object is available. All
 * functions are safe from any thread. */

#ifdef __cplusplus
extern "C" {
#endif

/* Back to the state at load, call counters forgotten. */
void LxAppManagerCtl_Reset(void);

/* What CLS_IApp::GetAppState() gives from now on; 2 means the application is quitting. */
void LxAppManagerCtl_SetAppState(int _iState);
int LxAppManagerCtl_GetAppState(void);

/* Whether "GetApp" gives the application object (1) or null (0). */
void LxAppManagerCtl_SetAppAvailable(int _iAvailable);

/* Whether "GetAppData" gives the data object (1) or null (0). */
void LxAppManagerCtl_SetAppDataAvailable(int _iAvailable);

/* Whether the data object's GetDataManager() gives the data manager (1) or null (0). */
void LxAppManagerCtl_SetDataManagerAvailable(int _iAvailable);

/* Calls since the last reset of "GetApp", "GetAppState", "GetAppData", "GetDataManager",
 * "GetAppSignals", "AppQuit" or "GetAppHandle"; -1 for another name. */
int LxAppManagerCtl_CallCount(const char* _pFunction);

/* Emits SignResizeView(_dXScale, _dYScale) of the one I_AppSignals hub (the one "GetAppSignals"
 * gives), on the calling thread: what the application does when the interface scale changes.
 * Connected widgets of other threads get it queued. */
void LxAppManagerCtl_EmitResizeView(double _dXScale, double _dYScale);

#ifdef __cplusplus
}
#endif
