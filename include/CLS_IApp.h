#pragma once
// The application's objects as the widget library sees them, reached through the functions
// "GetApp" and "GetAppData" of the application manager library. The application owns them for the
// life of the process; callers never delete them.

/// The application object, from the function "GetApp" of the application manager library; owned by
/// the application for the life of the process, never deleted here. GetAppState() is polled by the
/// channel status thread, so it must be safe to call from any thread.
class CLS_IApp
{
public:
    /// Destroyed by the application only.
    virtual ~CLS_IApp() = default;

    /// The application's state; 2 means it is quitting.
    /// The channel status thread ends when it reads 2; other values are the application's and are
    /// not interpreted here. Any thread; a throw counts as "not quitting".
    virtual int GetAppState() = 0;
};

/// The application's data manager. Opaque here: only whether there is one matters.
class CLS_IDataManager
{
public:
    /// Destroyed by the application only.
    virtual ~CLS_IDataManager() = default;
};

/// The application's data, from the function "GetAppData" of the application manager library; owned by
/// the application. GetDataManager() must give a non-null manager once the application is set up; a
/// tree refuses to initialise without one.
class CLS_IAppData
{
public:
    /// Destroyed by the application only.
    virtual ~CLS_IAppData() = default;

    /// The application's data manager, owned by the application; null until it is set up. The device
    /// tree's Init asks for it and fails with -1 while it is null.
    virtual CLS_IDataManager* GetDataManager() = 0;
};
