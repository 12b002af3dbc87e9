#include "CLS_DeviceTreeWordSearch.h"

#include "CLS_SearchResultDelegate.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtTreeWidget.h"

#include <QHash>
#include <QListWidget>
#include <QRegularExpression>
#include <QStringMatcher>
#include <QTreeWidgetItem>

#include <algorithm>

namespace {

const QString CONST_qstrNameSeparator = QStringLiteral(" \u2014 "); // an em dash between spaces
const QString CONST_qstrParentSeparator = QStringLiteral(" / ");

} // namespace

CLS_DeviceTreeWordSearch::CLS_DeviceTreeWordSearch(CLS_WgtTreeWidget* _pPanel,
                                                   const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                                                   QObject* _pParent)
    : QObject(_pParent), m_pPanel(_pPanel), m_pNodes(_pNodes), m_pDelegate(new CLS_SearchResultDelegate(this))
{}

CLS_DeviceTreeWordSearch::~CLS_DeviceTreeWordSearch()
{
    m_iMode = CONST_iModeName;
    m_blShowPath = false;
    Install(); // the panel must not call back into a destroyed object
}

void CLS_DeviceTreeWordSearch::SetSearchMode(int _iMode)
{
    if (_iMode != CONST_iModeName && _iMode != CONST_iModeWords)
        return;
    m_iMode = _iMode;
    Install();
}

void CLS_DeviceTreeWordSearch::SetSearchShowsPath(bool _blShow)
{
    m_blShowPath = _blShow;
    Install();
}

void CLS_DeviceTreeWordSearch::Install()
{
    if (m_pPanel == nullptr)
        return;
    if (m_iMode == CONST_iModeWords || m_blShowPath) {
        m_pPanel->SetSearchFunction([this](const QString& _qstrLine, QList<QListWidgetItem*>& _qlstEntries) {
            return Search(_qstrLine, _qlstEntries);
        });
    } else {
        m_pPanel->SetSearchFunction(CLS_WgtTreeWidget::SearchFunction());
    }

    QListWidget* pList = m_pPanel->GetResultList();
    if (pList == nullptr)
        return;
    // Every entry is one line of one font: the list need not measure each of thousands of entries.
    const bool blOn = m_iMode == CONST_iModeWords || m_blShowPath;
    if (blOn && !m_blUniformSet) {
        m_blPlainUniform = pList->uniformItemSizes();
        pList->setUniformItemSizes(true);
        m_blUniformSet = true;
    } else if (!blOn && m_blUniformSet) {
        pList->setUniformItemSizes(m_blPlainUniform);
        m_blUniformSet = false;
    }
    const bool blOurs = pList->itemDelegate() == m_pDelegate;
    if (m_blShowPath && !blOurs) {
        m_pPlainDelegate = pList->itemDelegate();
        pList->setItemDelegate(m_pDelegate);
    } else if (!m_blShowPath && blOurs) {
        pList->setItemDelegate(m_pPlainDelegate); // null gives the view's own default back
    }
}

QStringList CLS_DeviceTreeWordSearch::SplitWords(const QString& _qstrLine)
{
    static const QRegularExpression s_regexSpace(QStringLiteral("\\s+"));
#if QT_VERSION >= QT_VERSION_CHECK(5, 14, 0)
    return _qstrLine.split(s_regexSpace, Qt::SkipEmptyParts);
#else
    return _qstrLine.split(s_regexSpace, QString::SkipEmptyParts);
#endif
}

QString CLS_DeviceTreeWordSearch::PathText(const QString& _qstrName, const QStringList& _qlstParents)
{
    return EntryText(_qstrName, _qlstParents.mid(0, CONST_iMaxParents).join(CONST_qstrParentSeparator));
}

QString CLS_DeviceTreeWordSearch::EntryText(const QString& _qstrName, const QString& _qstrParents)
{
    return _qstrParents.isEmpty() ? _qstrName : _qstrName + CONST_qstrNameSeparator + _qstrParents;
}

QString CLS_DeviceTreeWordSearch::RowName(QTreeWidgetItem* _pRow) const
{
    const QString qstrId = _pRow->data(0, Qt::UserRole).toString();
    if (!qstrId.isEmpty() && m_pNodes != nullptr) {
        const auto it = m_pNodes->constFind(qstrId);
        if (it != m_pNodes->constEnd())
            return it.value().m_qstrName;
    }
    CLS_TreeItem clsItem;
    if (m_pPanel != nullptr && m_pPanel->GetBaseTree()->GetBindData(_pRow, clsItem) == 0)
        return clsItem.m_qstrText;
    return QString();
}

QListWidgetItem* CLS_DeviceTreeWordSearch::MakeEntry(const QString& _qstrId, const QString& _qstrName,
                                                     QTreeWidgetItem* _pRow, QTreeWidgetItem* _pRoot,
                                                     QHash<QTreeWidgetItem*, QString>& _qhashParents) const
{
    auto* pEntry = new QListWidgetItem();
    pEntry->setData(Qt::UserRole, _qstrId);
    if (!m_blShowPath || _pRow == nullptr) {
        pEntry->setData(Qt::DisplayRole, _qstrName);
        return pEntry;
    }
    // Hits share their parents: the names above a parent row are joined once per search.
    QTreeWidgetItem* pParent = _pRow->parent();
    QString qstrParents;
    if (pParent != nullptr && pParent != _pRoot) {
        auto it = _qhashParents.find(pParent);
        if (it == _qhashParents.end()) {
            QStringList qlstNames;
            for (QTreeWidgetItem* pUp = pParent;
                 pUp != nullptr && pUp != _pRoot && qlstNames.size() < CONST_iMaxParents;
                 pUp = pUp->parent()) {
                qlstNames.append(RowName(pUp));
            }
            it = _qhashParents.insert(pParent, qlstNames.join(CONST_qstrParentSeparator));
        }
        qstrParents = it.value();
    }
    pEntry->setData(Qt::DisplayRole, EntryText(_qstrName, qstrParents));
    pEntry->setData(CLS_SearchResultDelegate::CONST_iNameLengthRole, int(_qstrName.size()));
    return pEntry;
}

int CLS_DeviceTreeWordSearch::Search(const QString& _qstrLine, QList<QListWidgetItem*>& _qlstEntries)
{
    CLS_WgtBaseTreeWidget* pTree = m_pPanel != nullptr ? m_pPanel->GetBaseTree() : nullptr;
    if (pTree == nullptr)
        return -1;
    QTreeWidgetItem* pRoot = pTree->GetNodeById(pTree->GetRootId());
    QHash<QTreeWidgetItem*, QString> qhashParents;

    if (m_iMode == CONST_iModeName) {
        // The panel's own matching and order; only the entries' text differs.
        m_pDelegate->SetWords(QStringList{_qstrLine});
        QVector<CLS_TreeItem> qvecRows;
        const int iResult = pTree->GetItemByName(_qstrLine, qvecRows);
        if (iResult < 0)
            return iResult;
        for (const CLS_TreeItem& clsRow : qAsConst(qvecRows))
            _qlstEntries.append(MakeEntry(clsRow.m_qstrId, clsRow.m_qstrText,
                                          pTree->GetNodeById(clsRow.m_qstrId), pRoot, qhashParents));
        return 0;
    }

    // As the panel's own search, a tree without its root row has nothing to search.
    if (pRoot == nullptr)
        return -1;
    const QStringList qlstWords = SplitWords(_qstrLine);
    m_pDelegate->SetWords(qlstWords);
    if (qlstWords.isEmpty() || m_pNodes == nullptr)
        return 0; // a line of blanks names nothing

    // The nodes first, in the model's own order: a word costs a look at two strings of a node, and
    // only a node that holds every word is looked up among the rows.
    QVector<QStringMatcher> qvecMatchers;
    for (const QString& qstrWord : qlstWords)
        qvecMatchers.append(QStringMatcher(qstrWord, Qt::CaseInsensitive));
    QHash<QTreeWidgetItem*, const CLS_CustomTreeNode*> qhashHits;
    for (auto it = m_pNodes->cbegin(); it != m_pNodes->cend(); ++it) {
        const CLS_CustomTreeNode& node = it.value();
        const bool blAll =
            std::all_of(qvecMatchers.cbegin(), qvecMatchers.cend(), [&](const QStringMatcher& _matcher) {
                return _matcher.indexIn(node.m_qstrName) >= 0 || _matcher.indexIn(node.m_qstrExtend) >= 0;
            });
        if (!blAll)
            continue;
        QTreeWidgetItem* pRow = pTree->GetNodeById(it.key());
        if (pRow != nullptr && pRow != pRoot)
            qhashHits.insert(pRow, &node);
    }
    // Then the rows below the root in the tree's order (depth first, parents ahead of their
    // children), until every hit has had its turn.
    int iLeft = qhashHits.size();
    QVector<QTreeWidgetItem*> qvecStack;
    for (int i = pRoot->childCount() - 1; i >= 0; --i)
        qvecStack.append(pRoot->child(i));
    while (iLeft > 0 && !qvecStack.isEmpty()) {
        QTreeWidgetItem* pRow = qvecStack.takeLast();
        const auto itHit = qhashHits.constFind(pRow);
        if (itHit != qhashHits.cend()) {
            --iLeft;
            _qlstEntries.append(
                MakeEntry(itHit.value()->m_qstrTreeId, itHit.value()->m_qstrName, pRow, pRoot, qhashParents));
        }
        for (int i = pRow->childCount() - 1; i >= 0; --i)
            qvecStack.append(pRow->child(i));
    }
    return 0;
}
