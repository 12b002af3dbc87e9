// Stand-in for every sibling library in the binder tests. It exports one function of each
// gateway's list, so that a bind finds some names and misses others ("GetAppData" is never here).
// None of them is called; the tests compare addresses only.

extern "C" void GetApp() {}
extern "C" void GetAppSignals() {}
extern "C" void GetResourceTree() {}
extern "C" void GetNamedColor() {}
extern "C" void GetParam() {}
extern "C" void AddTmpTask() {}
extern "C" void SetLoggerConfig() {}
