#pragma once
// The application's objects as the widget library sees them, reached through the functions
// "GetApp" and "GetAppData" of the application manager library. The application owns them for the
// life of the process; callers never delete them.

// The application object. GetAppState() is polled by the channel status thread, so it must be
// safe to call from any thread.
class CLS_IApp
{
public:
    virtual ~CLS_IApp() = default;

    // The application's state; 2 means it is quitting.
    virtual int GetAppState() = 0;
};

// The application's data manager. Opaque here: only whether there is one matters.
class CLS_IDataManager
{
public:
    virtual ~CLS_IDataManager() = default;
};

// The application's data. GetDataManager() must give a non-null manager once the application is set
// up; a tree refuses to initialise without one.
class CLS_IAppData
{
public:
    virtual ~CLS_IAppData() = default;

    virtual CLS_IDataManager* GetDataManager() = 0;
};
