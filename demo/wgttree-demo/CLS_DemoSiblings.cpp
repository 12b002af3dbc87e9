#include "CLS_DemoSiblings.h"

#include "Util.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <dlfcn.h>

namespace {

#ifdef __APPLE__
const char* const CONST_DEV_MANAGE = "libDevManage.dylib";
const char* const CONST_SIBLINGS[] = {"libLxLog.dylib",        "libLxParam.dylib",
                                      "libLxTaskPool.dylib",   "libLxColorManage.dylib",
                                      "libLxAppManager.dylib", "libDevManage.dylib"};
#else
const char* const CONST_DEV_MANAGE = "libDevManage.so";
const char* const CONST_SIBLINGS[] = {"libLxLog.so",         "libLxParam.so",      "libLxTaskPool.so",
                                      "libLxColorManage.so", "libLxAppManager.so", "libDevManage.so"};
#endif

template <typename T>
T Resolve(void* _pHandle, const char* _pName, QStringList& _qlstMissing)
{
    void* pAddress = nullptr == _pHandle ? nullptr : dlsym(_pHandle, _pName);
    if (nullptr == pAddress)
        _qlstMissing << QString::fromLatin1(_pName);
    return reinterpret_cast<T>(pAddress);
}

} // namespace

int CLS_DemoSiblings::Preload()
{
    m_qstrModulePath = QDir::cleanPath(QString::fromStdString(Util::GetModulePath()));
    for (const char* pName : CONST_SIBLINGS) {
        const QString qstrPath = m_qstrModulePath + "/" + QString::fromLatin1(pName);
        void* pHandle = nullptr;
        if (Util::FileExists(qstrPath.toStdString()))
            pHandle = dlopen(QFile::encodeName(qstrPath).constData(), RTLD_NOW | RTLD_GLOBAL);
        if (nullptr == pHandle) {
            m_qlstMissing << QString::fromLatin1(pName);
            continue;
        }
        m_qlstLoaded << QString::fromLatin1(pName);
        if (0 == qstrcmp(pName, CONST_DEV_MANAGE))
            m_pDevManageHandle = pHandle;
    }
    // Not in the module folder: the loader's own search, as the binder would do it.
    if (nullptr == m_pDevManageHandle)
        m_pDevManageHandle = dlopen(CONST_DEV_MANAGE, RTLD_NOW | RTLD_GLOBAL);
    return m_qlstLoaded.size();
}

int CLS_DemoSiblings::BindDeviceControl(QString& _qstrMissing)
{
    QStringList qlstMissing;
    m_pFunLoadInstallation =
        Resolve<PFun_LoadInstallation>(m_pDevManageHandle, "DevManageCtl_LoadInstallation", qlstMissing);
    m_pFunLoadInstallationFile = Resolve<PFun_LoadInstallationFile>(
        m_pDevManageHandle, "DevManageCtl_LoadInstallationFile", qlstMissing);
    m_pFunLastLoadError =
        Resolve<PFun_LastLoadError>(m_pDevManageHandle, "DevManageCtl_LastLoadError", qlstMissing);
    m_pFunGenerateInstallation = Resolve<PFun_GenerateInstallation>(
        m_pDevManageHandle, "DevManageCtl_GenerateInstallation", qlstMissing);
    m_pFunStartSimulation =
        Resolve<PFun_StartSimulation>(m_pDevManageHandle, "DevManageCtl_StartSimulation", qlstMissing);
    m_pFunStopSimulation =
        Resolve<PFun_StopSimulation>(m_pDevManageHandle, "DevManageCtl_StopSimulation", qlstMissing);
    m_pFunSimulationChanges =
        Resolve<PFun_SimulationChanges>(m_pDevManageHandle, "DevManageCtl_SimulationChanges", qlstMissing);
    if (nullptr == m_pDevManageHandle)
        qlstMissing.prepend(QString::fromLatin1(CONST_DEV_MANAGE));
    _qstrMissing = qlstMissing.join(", ");
    return qlstMissing.isEmpty() ? 0 : -1;
}

QString CLS_DemoSiblings::LastLoadError() const
{
    if (nullptr == m_pFunLastLoadError)
        return QString();
    // Zeroed, so the text ends within the buffer whatever the function reports as its length.
    QByteArray qbaText(1024, '\0');
    m_pFunLastLoadError(qbaText.data(), qbaText.size() - 1);
    return QString::fromUtf8(qbaText.constData()).trimmed();
}
