#pragma once
// A whole installation of the reference device layer as plain values, ready to go into
// CLS_RefDevStore in one step: resource items in insertion order, custom-tree nodes and the image
// channel answers. Made from JSON text (docs/installation-format.md) or by the generator. Plain
// values, no locks: build one on any thread and hand it to the store.

#include "TreeStructDefine.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <map>
#include <string>
#include <vector>

// One resource item as the store makes it.
struct STRCT_RefItemValues
{
    int m_iType = 0;
    std::string m_strId;
    std::string m_strName;
    std::string m_strParentId;
    std::string m_strTreeId;
    std::string m_strExtend;
    std::string m_strAddress; // hosts and decoders
    int m_iOrderNo = 0;
    int m_iStatus = 0;
    int m_iChannelNo = 0; // channel-like kinds
    int m_iDevBindType = -1;
    int m_iPort = 0;       // hosts and decoders
    int m_iStreamType = 0; // channels
};

struct STRCT_RefInstallation
{
    std::vector<STRCT_RefItemValues> m_vecItems; // parents before their children
    QVector<CLS_CustomTreeNode> m_qvecNodes;     // the three roots and every node below them
    std::map<std::string, int> m_mapImageParams; // id -> QueryDeviceParam answer
};

namespace RefInstallation {

// Reads the JSON text into _strctInstallation. -1 when the text is no JSON or breaks a rule of the
// format: _strctInstallation is then empty, and _qstrError one line, "<path>: <problem>" (the key
// at fault, the id for a duplicate or an unknown reference) or "invalid JSON at line L, column C:
// <problem>". With a _qstrSource (the file name) the line begins with it: "<source>: <path>:
// <problem>", "<source>:L:C: invalid JSON: <problem>".
int Parse(const QByteArray& _qbaJson, STRCT_RefInstallation& _strctInstallation, QString& _qstrError,
          const QString& _qstrSource = QString());

// A synthetic installation of _iChannels channels in hosts of _iChannelsPerHost, always the same
// for the same arguments. -1 for a negative channel count or fewer than one channel per host.
int Generate(int _iChannels, int _iChannelsPerHost, STRCT_RefInstallation& _strctInstallation);

} // namespace RefInstallation
