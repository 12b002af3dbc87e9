#pragma once
// The demo's hold on the sibling libraries. Preload() opens each sibling found in the module folder
// by its absolute path, so that the binder's later open by bare file name finds the library that is
// already loaded (the loader matches it by its SONAME). The control functions of the reference
// device layer are then looked up in the handle of libDevManage.so, so the demo runs with any
// device layer that exports them and is linked against none. Main thread; one object per process.

#include <QString>
#include <QStringList>

class CLS_DemoSiblings
{
public:
    typedef int (*PFun_LoadInstallation)(const char* _pJson);
    typedef int (*PFun_LoadInstallationFile)(const char* _pPath);
    typedef int (*PFun_LastLoadError)(char* _pBuffer, int _iSize);
    typedef int (*PFun_GenerateInstallation)(int _iChannels, int _iChannelsPerHost);
    typedef int (*PFun_StartSimulation)(int _iChangesPerSecond, unsigned int _uiSeed);
    typedef void (*PFun_StopSimulation)(void);
    typedef int (*PFun_SimulationChanges)(void);

    // Opens every sibling of the module folder that exists there; the names opened go to
    // m_qlstLoaded, the others to m_qlstMissing. Returns the number opened.
    int Preload();

    // Looks the control functions up; 0 when every one of them was found, else -1 with the missing
    // names in _qstrMissing.
    int BindDeviceControl(QString& _qstrMissing);

    // Text of the device layer's last load failure, or an empty string.
    QString LastLoadError() const;

    QStringList m_qlstLoaded;
    QStringList m_qlstMissing;
    QString m_qstrModulePath;

    PFun_LoadInstallation m_pFunLoadInstallation = nullptr;
    PFun_LoadInstallationFile m_pFunLoadInstallationFile = nullptr;
    PFun_LastLoadError m_pFunLastLoadError = nullptr;
    PFun_GenerateInstallation m_pFunGenerateInstallation = nullptr;
    PFun_StartSimulation m_pFunStartSimulation = nullptr;
    PFun_StopSimulation m_pFunStopSimulation = nullptr;
    PFun_SimulationChanges m_pFunSimulationChanges = nullptr;

private:
    void* m_pDevManageHandle = nullptr; // never closed: the binder holds the same library
};
