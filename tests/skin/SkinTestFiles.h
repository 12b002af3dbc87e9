#pragma once
// Where the skin tests find the generated skins, and how they read a sheet the way the style
// loader does. The skins are generated beside the test programs, in <program folder>/resource/skin.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace SkinTest {

inline QStringList SkinNames()
{
    return {"dark", "light"};
}

// Every image the library and the demo ask a skin for, and the branch arrows of our sheets.
inline QStringList ImageNames()
{
    return {"host_offline.png",     "host_online.png",    "channel_offline.png",
            "channel_online.png",   "channel_no.png",     "alarm_in.png",
            "alarm_out.png",        "decoder_online.png", "decoderout_online.png",
            "decoderin_online.png", "car_item.png",       "carerr_item.png",
            "pad_item.png",         "paderr_item.png",    "way_item.png",
            "wayerr_item.png",      "fenzu.png",          "root_icon.png",
            "icon_search.png",      "edit_close.png",     "preview.png",
            "playback.png",         "branch_closed.png",  "branch_open.png"};
}

inline QString BinDir()
{
    return QCoreApplication::applicationDirPath();
}

inline QString SkinDir(const QString& _qstrSkin)
{
    return QString("%1/resource/skin/%2").arg(BinDir(), _qstrSkin);
}

inline QString ImageDir(const QString& _qstrSkin)
{
    return SkinDir(_qstrSkin) + "/WgtTreeWidget/images/";
}

inline QString CommonDir(const QString& _qstrSkin)
{
    return SkinDir(_qstrSkin) + "/Common";
}

// The tree panel's sheet: "WgtTreeWidget.qss", or "WgtTreeWidget_4K.qss" for a scale of 2.
inline QString ModuleSheetPath(const QString& _qstrSkin, bool _blScaled)
{
    return SkinDir(_qstrSkin) +
           (_blScaled ? "/WgtTreeWidget/qss/WgtTreeWidget_4K.qss" : "/WgtTreeWidget/qss/WgtTreeWidget.qss");
}

inline QString ReadRaw(const QString& _qstrPath)
{
    QFile qfile(_qstrPath);
    if (!qfile.open(QIODevice::ReadOnly)) {
        return QString();
    }
    return QString::fromLatin1(qfile.readAll());
}

// A sheet with its relative skin paths pointing at the program's folder, as the loader gives it
// (none of our sheets starts with a relative path, so every one of them is rewritten).
inline QString ReadSheet(const QString& _qstrPath)
{
    QString qstrText = ReadRaw(_qstrPath);
    qstrText.replace("./resource/skin/", BinDir() + "/resource/skin/");
    return qstrText;
}

// The common files of a skin, by name with case ignored, one after the other.
inline QStringList CommonFiles(const QString& _qstrSkin)
{
    return QDir(CommonDir(_qstrSkin)).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase);
}

inline QString CommonText(const QString& _qstrSkin)
{
    QString qstrText;
    for (const QString& qstrFile : CommonFiles(_qstrSkin)) {
        qstrText += ReadSheet(CommonDir(_qstrSkin) + "/" + qstrFile);
    }
    return qstrText;
}

// The files named by url(...) in a sheet, quotes removed.
inline QStringList Urls(const QString& _qstrSheet)
{
    QStringList qlstUrls;
    static const QRegularExpression s_regUrl("url\\(\\s*\"?([^\")]*)\"?\\s*\\)");
    auto itMatch = s_regUrl.globalMatch(_qstrSheet);
    while (itMatch.hasNext()) {
        qlstUrls << itMatch.next().captured(1);
    }
    return qlstUrls;
}

} // namespace SkinTest
