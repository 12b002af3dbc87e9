#pragma once
// Shared pieces of the device tree tests against the reference device layer: the gateways bound
// once on the GUI thread, a tap on the recording logging library, one icon file per image name
// (each of its own colour, so that the icon a row shows can be named), and a small installation.
// GUI thread only.

#include "CLS_DevManage.h"
#include "CLS_LogRecords.h"
#include "CLS_TestDeviceTree.h"
#include "DevManageControl.h"
#include "Logger.h"
#include "LxAppManager.h"
#include "LxAppManagerControl.h"

#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QStringList>

// Every image name a device tree may show.
inline const QStringList& IconNames()
{
    static const QStringList s_qlstNames = {
        "root_icon.png",      "fenzu.png",           "host_online.png",       "host_offline.png",
        "channel_online.png", "channel_offline.png", "channel_no.png",        "alarm_in.png",
        "alarm_out.png",      "decoder_online.png",  "decoderout_online.png", "decoderin_online.png",
        "car_item.png",       "carerr_item.png",     "pad_item.png",          "paderr_item.png",
        "way_item.png",       "wayerr_item.png"};
    return s_qlstNames;
}

inline QColor IconColor(int _iIndex)
{
    return QColor(10 + 12 * _iIndex, 255 - 12 * _iIndex, 40 + 7 * _iIndex);
}

// The image folder of the default skin below the program's folder, filled with one-colour icons.
inline bool MakeIconFiles()
{
    const QString qstrDir =
        QCoreApplication::applicationDirPath() + "/resource/skin/dark/WgtTreeWidget/images/";
    if (!QDir().mkpath(qstrDir))
        return false;
    for (int i = 0; i < IconNames().size(); ++i) {
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(IconColor(i));
        if (!image.save(qstrDir + IconNames().at(i)))
            return false;
    }
    return true;
}

// The image name of the icon a row shows: "<none>" for no icon, "<other>" for an unknown one.
inline QString ShownIcon(CLS_WgtDeviceTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pNode = CLS_DevTreeTestUtil::NodeOf(_tree, _qstrId);
    if (pNode == nullptr)
        return "<no row>";
    const QIcon icon = pNode->icon(0);
    if (icon.isNull())
        return "<none>";
    const QColor color = icon.pixmap(8, 8).toImage().pixelColor(4, 4);
    for (int i = 0; i < IconNames().size(); ++i) {
        if (IconColor(i) == color)
            return IconNames().at(i);
    }
    return "<other>";
}

// The first binds are not thread-safe by design: made here, before any worker runs.
inline void BindGateways()
{
    Logger::GetModuleFun("PrintLog", "");
    DevManage::GetModuleFun("GetResourceTree", "");
    LxAppManager::GetModuleFun("GetApp", "");
    CLS_LogRecords::Take();
}

// Log lines "level|module|function|text" since the last call.
inline QStringList TakeLogLines()
{
    return CLS_LogRecords::Lines(CLS_LogRecords::Take());
}

// Resource ids equal tree ids here, so every row finds its parent:
//   resource_root_id "All"
//     host1 (3, on line): ch1 (4, 1, ch 1), ch2 (4, 0, ch 2), ai1 (5, ch 1)
//     host2 (3, off line): ch3 (4, 0, ch 1)
//     dec1 (12): dout1 (13, ch 1), din1 (17, ch 1)
inline void LoadInstallation()
{
    DevManageCtl_AddGroup("resource_root_id", "All", "", 0, "");
    DevManageCtl_AddHost("host1", "Host 1", "resource_root_id", 0, 1, "");
    DevManageCtl_AddChannel("ch1", "Ch 1", "host1", 0, 1, 1, "");
    DevManageCtl_AddChannel("ch2", "Ch 2", "host1", 0, 0, 2, "");
    DevManageCtl_AddItem(5, "ai1", "Alarm 1", "host1", 0, 1, 1, "");
    DevManageCtl_AddHost("host2", "Host 2", "resource_root_id", 0, 0, "");
    DevManageCtl_AddChannel("ch3", "Ch 3", "host2", 0, 0, 1, "");
    DevManageCtl_AddItem(12, "dec1", "Decoder 1", "resource_root_id", 0, 1, 0, "");
    DevManageCtl_AddItem(13, "dout1", "Out 1", "dec1", 0, 1, 1, "");
    DevManageCtl_AddItem(17, "din1", "In 1", "dec1", 0, 1, 1, "");
}

// A custom tree over LoadInstallation:
//   custom_root_id: g1 (2): c_ch1 -> ch1, c_ch2 -> ch2; c_ch3 -> ch3; c_gone -> gone (no resource)
inline void LoadCustomTree()
{
    DevManageCtl_AddCustomNode("custom_root_id", "custom_root_id", "", "Custom", 2, 0, 0, 0);
    DevManageCtl_AddCustomNode("g1", "g1", "custom_root_id", "Group 1", 2, 1, 0, 0);
    DevManageCtl_AddCustomNode("c_ch1", "ch1", "g1", "Ch 1", 4, 1, 1, 1);
    DevManageCtl_AddCustomNode("c_ch2", "ch2", "g1", "Ch 2", 4, 2, 0, 2);
    DevManageCtl_AddCustomNode("c_ch3", "ch3", "custom_root_id", "Ch 3", 4, 3, 0, 1);
    DevManageCtl_AddCustomNode("c_gone", "gone", "custom_root_id", "Gone", 4, 4, 0, 1);
}

// The model as "treeId>devId" in key order, and the id map as "devId>treeId".
inline QString NodeKeys(CLS_TestDeviceTree& _tree)
{
    QStringList qlst;
    for (auto it = _tree.m_qmapNodes.cbegin(); it != _tree.m_qmapNodes.cend(); ++it)
        qlst << it.key() + ">" + it.value().m_qstrDevId;
    return qlst.join(" ");
}

inline QString IdMap(CLS_TestDeviceTree& _tree)
{
    QStringList qlst;
    for (auto it = _tree.m_qmapDevIdToTreeId.cbegin(); it != _tree.m_qmapDevIdToTreeId.cend(); ++it)
        qlst << it.key() + ">" + it.value();
    return qlst.join(" ");
}
