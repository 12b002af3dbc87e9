#pragma once
// What the installation reader of the reference device layer promises for any file, checked by
// fuzz_installation and by the corpus replay: a file is read whole or refused whole. Refused, the
// installation is empty and the error is one line that starts with the file's name; read, the
// root comes first, ids and tree ids are unique, every parent comes before its children, and every
// node hangs below a root of its own section.

#include "CLS_RefInstallation.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <set>
#include <string>

namespace FuzzInstallation {

const char* const CONST_SOURCE = "fuzz/site.json";

// Empty when the reader kept its promises for _qbaText, else what it broke.
inline QString Check(const QByteArray& _qbaText)
{
    const QString qstrSource = QString::fromLatin1(CONST_SOURCE);
    // Left-overs of an earlier read must go whatever the outcome.
    STRCT_RefInstallation strctInstallation;
    strctInstallation.m_vecItems.resize(2);
    strctInstallation.m_qvecNodes.resize(1);
    strctInstallation.m_mapImageParams["stale"] = 1;
    QString qstrError = QStringLiteral("stale");

    const int iResult = RefInstallation::Parse(_qbaText, strctInstallation, qstrError, qstrSource);
    if (-1 == iResult) {
        if (!strctInstallation.m_vecItems.empty() || !strctInstallation.m_qvecNodes.isEmpty() ||
            !strctInstallation.m_mapImageParams.empty()) {
            return "refused, but not empty: " + qstrError;
        }
        if (!qstrError.startsWith(qstrSource + ":") || qstrError.size() < qstrSource.size() + 4)
            return "the error does not name the file and the fault: " + qstrError;
        for (const QChar qch : qstrError) {
            if (qch.unicode() < 0x20 || qch.unicode() == 0x2028 || qch.unicode() == 0x2029)
                return "the error is not one line: " + qstrError;
        }
        // Without a file name the same fault, without the name.
        STRCT_RefInstallation strctAgain;
        QString qstrPlain;
        if (-1 != RefInstallation::Parse(_qbaText, strctAgain, qstrPlain) || qstrPlain.isEmpty())
            return "refused with a file name only: " + qstrError;
        return QString();
    }
    if (0 != iResult)
        return QStringLiteral("result %1").arg(iResult);
    if (!qstrError.isEmpty())
        return "read, with an error: " + qstrError;

    const std::vector<STRCT_RefItemValues>& vecItems = strctInstallation.m_vecItems;
    if (vecItems.empty() || "resource_root_id" != vecItems.front().m_strId)
        return QStringLiteral("read, without the root first");
    std::set<std::string> setIds;
    std::set<std::string> setTreeIds;
    for (size_t i = 0; i < vecItems.size(); ++i) {
        const STRCT_RefItemValues& strctItem = vecItems[i];
        if (strctItem.m_strId.empty())
            return QStringLiteral("item %1 without an id").arg(i);
        if (i > 0 && 0 == setIds.count(strctItem.m_strParentId))
            return QString::fromStdString("item " + strctItem.m_strId + " before its parent");
        if (!setIds.insert(strctItem.m_strId).second)
            return QString::fromStdString("duplicate id " + strctItem.m_strId);
        if (!setTreeIds.insert(strctItem.m_strTreeId).second)
            return QString::fromStdString("duplicate tree id " + strctItem.m_strTreeId);
    }
    for (const auto& pairImage : strctInstallation.m_mapImageParams) {
        if (0 == setIds.count(pairImage.first))
            return QString::fromStdString("image answer for no item " + pairImage.first);
    }

    // Nodes: a section is its root and then its nodes; each node's parent is that root or a node
    // of the same section, and every chain reaches the root.
    QMap<QString, QString> qmapParent; // tree id -> parent id
    QMap<QString, QString> qmapRootOf; // tree id -> root of its section
    QString qstrRoot;
    for (const CLS_CustomTreeNode& clsNode : strctInstallation.m_qvecNodes) {
        if (clsNode.m_qstrTreeParentId.isEmpty()) {
            qstrRoot = clsNode.m_qstrTreeId;
        } else if (qstrRoot.isEmpty()) {
            return "node before any root: " + clsNode.m_qstrTreeId;
        }
        if (qmapParent.contains(clsNode.m_qstrTreeId))
            return "duplicate node id " + clsNode.m_qstrTreeId;
        qmapParent.insert(clsNode.m_qstrTreeId, clsNode.m_qstrTreeParentId);
        qmapRootOf.insert(clsNode.m_qstrTreeId, qstrRoot);
    }
    for (auto it = qmapParent.constBegin(); it != qmapParent.constEnd(); ++it) {
        QString qstrStep = it.value();
        for (int iSteps = 0; !qstrStep.isEmpty(); ++iSteps) {
            if (iSteps > qmapParent.size() || !qmapParent.contains(qstrStep) ||
                qmapRootOf.value(qstrStep) != qmapRootOf.value(it.key())) {
                return "node " + it.key() + " does not reach its root";
            }
            qstrStep = qmapParent.value(qstrStep);
        }
    }
    return QString();
}

} // namespace FuzzInstallation
