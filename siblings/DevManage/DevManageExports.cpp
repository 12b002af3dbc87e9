// The exported C functions of the reference device layer: the four functions the binder resolves
// by name, and the control interface of DevManageControl.h.

#include "CLS_RefCustomTree.h"
#include "CLS_RefDevFactory.h"
#include "CLS_RefDevSimulator.h"
#include "CLS_RefDevStore.h"
#include "CLS_RefInstallation.h"
#include "CLS_RefResourceTree.h"
#include "DevManageControl.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

std::string Text(const char* _pText)
{
    return nullptr == _pText ? std::string() : std::string(_pText);
}

QString QText(const char* _pText)
{
    return QString::fromUtf8(nullptr == _pText ? "" : _pText);
}

CLS_RefResourceTree* ResourceTree()
{
    static CLS_RefResourceTree* s_pResourceTree = new CLS_RefResourceTree(); // lives for the process
    return s_pResourceTree;
}

CLS_RefDevFactory* DevFactory()
{
    static CLS_RefDevFactory* s_pDevFactory = new CLS_RefDevFactory(); // lives for the process
    return s_pDevFactory;
}

CLS_RefCustomTree* CustomTree()
{
    // A QObject: made on the thread of the first caller, and never deleted, so that it does not
    // outlive the application object in a static destructor.
    static CLS_RefCustomTree* s_pCustomTree = new CLS_RefCustomTree();
    return s_pCustomTree;
}

// Copies _strText the way every text-returning control function does.
int CopyText(const std::string& _strText, char* _pBuffer, int _iSize)
{
    if (nullptr != _pBuffer && _iSize > 0) {
        const size_t uiCopy = std::min(_strText.size(), static_cast<size_t>(_iSize - 1));
        std::memcpy(_pBuffer, _strText.data(), uiCopy);
        _pBuffer[uiCopy] = '\0';
    }
    return static_cast<int>(_strText.size());
}

// _qstrSource: the file the text comes from, named in the error line; empty for a text.
int LoadJson(const QByteArray& _qbaJson, const QString& _qstrSource = QString())
{
    STRCT_RefInstallation strctInstallation;
    QString qstrError;
    if (0 != RefInstallation::Parse(_qbaJson, strctInstallation, qstrError, _qstrSource)) {
        CLS_RefDevStore::Instance().FailLoad(qstrError.toUtf8().toStdString());
        return -1;
    }
    return CLS_RefDevStore::Instance().LoadInstallation(strctInstallation);
}

} // namespace

// ---- functions bound by the DevManage gateway -----------------------------------------------

extern "C" CLS_IResourceTree* GetResourceTree()
{
    return CLS_RefDevStore::Instance().TakeObjectCall("GetResourceTree") ? ResourceTree() : nullptr;
}

extern "C" CLS_IDevFactory* GetDevFactory()
{
    return CLS_RefDevStore::Instance().TakeObjectCall("GetDevFactory") ? DevFactory() : nullptr;
}

extern "C" I_CustomTreeManage* GetCustomTree()
{
    return CLS_RefDevStore::Instance().TakeObjectCall("GetCustomTree") ? CustomTree() : nullptr;
}

// Bound with the others, called by nobody here: the reference has no utility object.
extern "C" void* GetUtil()
{
    return nullptr;
}

// ---- control interface --------------------------------------------------------------------------

extern "C" void DevManageCtl_Reset(void)
{
    CLS_RefDevStore::Instance().Reset();
}

extern "C" void DevManageCtl_ClearItems(void)
{
    CLS_RefDevStore::Instance().ClearItems();
}

extern "C" int DevManageCtl_AddItem(int _iType, const char* _pId, const char* _pName, const char* _pParentId,
                                    int _iOrderNo, int _iStatus, int _iChannelNo, const char* _pTreeId)
{
    return CLS_RefDevStore::Instance().AddItem(_iType, Text(_pId), Text(_pName), Text(_pParentId), _iOrderNo,
                                               _iStatus, _iChannelNo, Text(_pTreeId));
}

extern "C" int DevManageCtl_AddGroup(const char* _pId, const char* _pName, const char* _pParentId,
                                     int _iOrderNo, const char* _pTreeId)
{
    return DevManageCtl_AddItem(2, _pId, _pName, _pParentId, _iOrderNo, 0, 0, _pTreeId);
}

extern "C" int DevManageCtl_AddHost(const char* _pId, const char* _pName, const char* _pParentId,
                                    int _iOrderNo, int _iStatus, const char* _pTreeId)
{
    return DevManageCtl_AddItem(3, _pId, _pName, _pParentId, _iOrderNo, _iStatus, 0, _pTreeId);
}

extern "C" int DevManageCtl_AddChannel(const char* _pId, const char* _pName, const char* _pParentId,
                                       int _iOrderNo, int _iStatus, int _iChannelNo, const char* _pTreeId)
{
    return DevManageCtl_AddItem(4, _pId, _pName, _pParentId, _iOrderNo, _iStatus, _iChannelNo, _pTreeId);
}

extern "C" int DevManageCtl_RemoveItem(const char* _pId)
{
    return CLS_RefDevStore::Instance().RemoveItem(Text(_pId));
}

extern "C" int DevManageCtl_SetStatus(const char* _pId, int _iStatus)
{
    return CLS_RefDevStore::Instance().SetStatus(Text(_pId), _iStatus);
}

extern "C" int DevManageCtl_SetName(const char* _pId, const char* _pName)
{
    return CLS_RefDevStore::Instance().SetName(Text(_pId), Text(_pName));
}

extern "C" int DevManageCtl_SetDevBindType(const char* _pId, int _iDevBindType)
{
    return CLS_RefDevStore::Instance().SetDevBindType(Text(_pId), _iDevBindType);
}

extern "C" int DevManageCtl_GetStatus(const char* _pId, int* _pStatus)
{
    if (nullptr == _pStatus) {
        return -1;
    }
    return CLS_RefDevStore::Instance().GetStatus(Text(_pId), *_pStatus);
}

extern "C" int DevManageCtl_ItemCount(void)
{
    return CLS_RefDevStore::Instance().ItemCount();
}

extern "C" int DevManageCtl_SetStatusOnLookup(const char* _pId, int _iStatus)
{
    return CLS_RefDevStore::Instance().SetStatusOnLookup(Text(_pId), _iStatus);
}

extern "C" int DevManageCtl_SetStale(const char* _pId, int _iWhere)
{
    return CLS_RefDevStore::Instance().SetStale(Text(_pId), _iWhere);
}

extern "C" void DevManageCtl_SetStaleEntries(int _iCount)
{
    CLS_RefDevStore::Instance().SetStaleEntries(_iCount);
}

extern "C" int DevManageCtl_SetObjectAvailable(const char* _pFunction, int _iAvailable)
{
    return CLS_RefDevStore::Instance().SetObjectAvailable(Text(_pFunction), 0 != _iAvailable);
}

extern "C" void DevManageCtl_SetIdAdmitted(const char* _pId, int _iAdmitted)
{
    CLS_RefDevStore::Instance().SetIdAdmitted(Text(_pId), 0 != _iAdmitted);
}

extern "C" void DevManageCtl_SetDeviceParam(const char* _pId, int _iValue)
{
    CLS_RefDevStore::Instance().SetDeviceParam(Text(_pId), _iValue);
}

extern "C" int DevManageCtl_FailNext(const char* _pOperation, int _iCount, int _iCode)
{
    return CLS_RefDevStore::Instance().FailNext(Text(_pOperation), _iCount, _iCode);
}

extern "C" int DevManageCtl_CallCount(const char* _pOperation)
{
    return CLS_RefDevStore::Instance().CallCount(Text(_pOperation));
}

extern "C" int DevManageCtl_LastCall(const char* _pOperation, char* _pBuffer, int _iSize)
{
    std::string strArgs;
    if (0 != CLS_RefDevStore::Instance().LastCall(Text(_pOperation), strArgs)) {
        return -1;
    }
    return CopyText(strArgs, _pBuffer, _iSize);
}

extern "C" int DevManageCtl_AddCustomNode(const char* _pTreeId, const char* _pDevId,
                                          const char* _pParentTreeId, const char* _pName, int _iType,
                                          int _iSortNo, int _iStatus, int _iChannelNo)
{
    CLS_CustomTreeNode clsNode;
    clsNode.m_qstrTreeId = QText(_pTreeId);
    clsNode.m_qstrDevId = QText(_pDevId);
    clsNode.m_qstrTreeParentId = QText(_pParentTreeId);
    clsNode.m_qstrName = QText(_pName);
    clsNode.m_iType = _iType;
    clsNode.m_iSortNo = _iSortNo;
    clsNode.m_iStatus = _iStatus;
    clsNode.m_iChannelNo = _iChannelNo;
    return CLS_RefDevStore::Instance().AddCustomNode(clsNode);
}

extern "C" int DevManageCtl_RemoveCustomNode(const char* _pTreeId)
{
    return CLS_RefDevStore::Instance().RemoveCustomNode(QText(_pTreeId));
}

extern "C" void DevManageCtl_ClearCustomTree(void)
{
    CLS_RefDevStore::Instance().ClearCustomTree();
}

extern "C" int DevManageCtl_LoadSample(void)
{
    DevManageCtl_Reset();

    struct STRCT_SampleItem
    {
        int m_iType;
        const char* m_pId;
        const char* m_pName;
        const char* m_pParentId;
        int m_iOrderNo;
        int m_iStatus;
        int m_iChannelNo;
        const char* m_pTreeId;
    };
    // Channels come before the alarms of a host: the first channel below a host answers for it.
    const STRCT_SampleItem arrItems[] = {
        {2, "resource_root_id", "All resources", "", 0, 0, 0, "resource_root_id"},
        {3, "host1", "Recorder 1", "resource_root_id", 1, 1, 0, "t_host1"},
        {4, "host1_ch1", "Entrance", "host1", 1, 1, 1, "t_host1_ch1"},
        {4, "host1_ch2", "Lobby", "host1", 2, 1, 2, "t_host1_ch2"},
        {4, "host1_ch3", "Car park", "host1", 3, 0, 3, "t_host1_ch3"},
        {5, "host1_ai1", "Door contact", "host1", 4, 1, 1, "t_host1_ai1"},
        {6, "host1_ao1", "Siren", "host1", 5, 1, 1, "t_host1_ao1"},
        {3, "host2", "Recorder 2", "resource_root_id", 2, 0, 0, "t_host2"},
        {4, "host2_ch1", "Stairs", "host2", 1, 0, 1, "t_host2_ch1"},
        {4, "host2_ch2", "Roof", "host2", 2, 0, 2, "t_host2_ch2"},
        {12, "dec1", "Decoder 1", "resource_root_id", 3, 1, 0, "t_dec1"},
        {13, "dec1_out1", "Output 1", "dec1", 1, 1, 1, "t_dec1_out1"},
        {13, "dec1_out2", "Output 2", "dec1", 2, 1, 2, "t_dec1_out2"},
        {17, "dec1_in1", "Input 1", "dec1", 3, 1, 1, "t_dec1_in1"},
    };
    int iCount = 0;
    for (const STRCT_SampleItem& strctItem : arrItems) {
        if (0 == DevManageCtl_AddItem(strctItem.m_iType, strctItem.m_pId, strctItem.m_pName,
                                      strctItem.m_pParentId, strctItem.m_iOrderNo, strctItem.m_iStatus,
                                      strctItem.m_iChannelNo, strctItem.m_pTreeId)) {
            ++iCount;
        }
    }
    // Recorder 1 has an image channel: its first channel answers 1.
    DevManageCtl_SetDeviceParam("host1_ch1", 1);

    DevManageCtl_AddCustomNode("custom_root_id", "custom_root_id", "", "Custom", 2, 0, 0, -1);
    DevManageCtl_AddCustomNode("grp_entrances", "grp_entrances", "custom_root_id", "Entrances", 2, 1, 0, -1);
    DevManageCtl_AddCustomNode("c_host1_ch1", "host1_ch1", "grp_entrances", "Entrance", 4, 1, 1, 1);
    DevManageCtl_AddCustomNode("c_host2_ch1", "host2_ch1", "grp_entrances", "Stairs", 4, 2, 0, 1);
    DevManageCtl_AddCustomNode("favorite_root_id", "favorite_root_id", "", "Favourites", 2, 0, 0, -1);
    DevManageCtl_AddCustomNode("fav_main", "fav_main", "favorite_root_id", "Main", 2, 1, 0, -1);
    DevManageCtl_AddCustomNode("f_host1_ch2", "host1_ch2", "fav_main", "Lobby", 4, 1, 1, 2);
    DevManageCtl_AddCustomNode("passengerflow_root_id", "passengerflow_root_id", "", "Passenger flow", 2, 0,
                               0, -1);
    DevManageCtl_AddCustomNode("p_host1_ch3", "host1_ch3", "passengerflow_root_id", "Car park", 4, 1, 0, 3);
    return iCount;
}

// ---- installations and simulation ---------------------------------------------------------------

extern "C" int DevManageCtl_LoadInstallation(const char* _pJsonText)
{
    if (nullptr == _pJsonText) {
        CLS_RefDevStore::Instance().FailLoad("no JSON text");
        return -1;
    }
    return LoadJson(QByteArray(_pJsonText));
}

extern "C" int DevManageCtl_LoadInstallationFile(const char* _pPath)
{
    const QString qstrPath = QText(_pPath);
    QFile qfile(qstrPath);
    if (qstrPath.isEmpty() || !qfile.open(QIODevice::ReadOnly)) {
        CLS_RefDevStore::Instance().FailLoad("cannot read \"" + Text(_pPath) + "\"");
        return -1;
    }
    return LoadJson(qfile.readAll(), qstrPath);
}

extern "C" int DevManageCtl_LastLoadError(char* _pBuffer, int _iSize)
{
    return CopyText(CLS_RefDevStore::Instance().LoadError(), _pBuffer, _iSize);
}

extern "C" int DevManageCtl_GenerateInstallation(int _iChannels, int _iChannelsPerHost)
{
    STRCT_RefInstallation strctInstallation;
    if (RefInstallation::Generate(_iChannels, _iChannelsPerHost, strctInstallation) < 0) {
        return -1;
    }
    return CLS_RefDevStore::Instance().LoadInstallation(strctInstallation);
}

extern "C" int DevManageCtl_StartSimulation(int _iChangesPerSecond, unsigned int _uiSeed)
{
    return CLS_RefDevSimulator::Instance().Start(_iChangesPerSecond, _uiSeed);
}

extern "C" void DevManageCtl_StopSimulation(void)
{
    CLS_RefDevSimulator::Instance().Stop();
}

extern "C" int DevManageCtl_SimulationChanges(void)
{
    return CLS_RefDevSimulator::Instance().Changes();
}

extern "C" int DevManageCtl_SimulationSteps(void)
{
    return CLS_RefDevSimulator::Instance().Steps();
}
