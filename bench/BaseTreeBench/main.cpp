// Times CLS_WgtBaseTreeWidget against a bare QTreeWidget that does the same work with plain
// QTreeWidgetItems, the way an experienced Qt engineer writes it by hand (rows built detached and
// added with addChildren, one shared QIcon per picture, uniform row heights), in the same run and on
// the same records.
// Prints one line per case and size: case, rows, our time, baseline time, ratio (ours / baseline).
// Nothing here asserts a time; the program fails only if the two trees disagree on a result.
//
//   BaseTreeBench [--max <rows>] [--reps <factor>] [--show] [--no-icons]
//
// The tree: one root, groups of ten hosts, 32 channels per host. Every tree is checkable and
// carries no row tool bars. GUI thread only, like the widgets it measures.

#include "CLS_WgtBaseTreeWidget.h"

#include <QApplication>
#include <QColor>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QHash>
#include <QIcon>
#include <QImage>
#include <QSet>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QTreeWidgetItem>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

namespace {

constexpr int CONST_iHostsPerGroup = 10;
constexpr int CONST_iChannelsPerHost = 32;
constexpr int CONST_iAddCount = 1000;
// Matches one channel in 32 in every host, so every host and group stays as an ancestor.
const char* const CONST_pSearchText = "cam 07";

bool s_blShow = false;   // --show: both trees on screen, pending events handled inside the timing
bool s_blFailed = false; // set by the result checks; turns into exit code 1
// --no-icons: records without icon paths. Loading an icon file per row is most of the cost of
// building rows, on both sides alike; without it the table shows the trees' own work.
bool s_blNoIcons = false;

// ---- records --------------------------------------------------------------------------------------

struct STRCT_BenchData
{
    QString m_qstrRootId;
    QMap<QString, CLS_TreeItem> m_qmapItems;
    QVector<QString> m_qvecHostIds;
    QVector<CLS_TreeItem> m_qvecAddItems; // new channels spread over the hosts
};

CLS_TreeItem MakeItem(const QString& _qstrId, const QString& _qstrParentId, int _iSortNo,
                      const QString& _qstrText, const QString& _qstrIcon)
{
    CLS_TreeItem clsItem;
    clsItem.m_qstrId = _qstrId;
    clsItem.m_qstrParentId = _qstrParentId;
    clsItem.m_iSortNo = _iSortNo;
    clsItem.m_qstrText = _qstrText;
    clsItem.m_qstrTooltip = _qstrText;
    clsItem.m_qstrIcon = s_blNoIcons ? QString() : _qstrIcon;
    clsItem.m_varData = _qstrId;
    return clsItem;
}

// About _iRows rows: 1 root + groups + 33 rows per host.
STRCT_BenchData MakeData(int _iRows, const QString& _qstrIconDir)
{
    const QString qstrGroupIcon = _qstrIconDir + "/group.png";
    const QString qstrHostIcon = _qstrIconDir + "/host.png";
    const QString qstrChannelIcon = _qstrIconDir + "/channel.png";

    STRCT_BenchData stData;
    stData.m_qstrRootId = "resource_root_id";
    stData.m_qmapItems.insert(stData.m_qstrRootId,
                              MakeItem(stData.m_qstrRootId, QString(), 0, "All resources", qstrGroupIcon));

    const int iHosts = std::max(1, (_iRows - 1) * CONST_iHostsPerGroup /
                                       (CONST_iHostsPerGroup * (CONST_iChannelsPerHost + 1) + 1));
    for (int iHost = 0; iHost < iHosts; ++iHost) {
        const int iGroup = iHost / CONST_iHostsPerGroup;
        const QString qstrGroupId = QString("grp_%1").arg(iGroup, 5, 10, QChar('0'));
        if (iHost % CONST_iHostsPerGroup == 0) {
            stData.m_qmapItems.insert(qstrGroupId, MakeItem(qstrGroupId, stData.m_qstrRootId, iGroup,
                                                            QString("Group %1").arg(iGroup), qstrGroupIcon));
        }
        const QString qstrHostId = QString("host_%1").arg(iHost, 6, 10, QChar('0'));
        stData.m_qvecHostIds.append(qstrHostId);
        stData.m_qmapItems.insert(qstrHostId, MakeItem(qstrHostId, qstrGroupId, iHost % CONST_iHostsPerGroup,
                                                       QString("Host %1").arg(iHost), qstrHostIcon));
        for (int iCh = 0; iCh < CONST_iChannelsPerHost; ++iCh) {
            const QString qstrChId = QString("%1_ch%2").arg(qstrHostId).arg(iCh, 2, 10, QChar('0'));
            stData.m_qmapItems.insert(
                qstrChId,
                MakeItem(qstrChId, qstrHostId, iCh,
                         QString("Host %1 Cam %2").arg(iHost).arg(iCh, 2, 10, QChar('0')), qstrChannelIcon));
        }
    }

    for (int i = 0; i < CONST_iAddCount; ++i) {
        const QString& qstrHostId = stData.m_qvecHostIds.at(i % iHosts);
        const QString qstrId = QString("%1_add%2").arg(qstrHostId).arg(i, 4, 10, QChar('0'));
        // Numbers from 0 to 39: most new rows land among the channels, some behind all of them.
        stData.m_qvecAddItems.append(
            MakeItem(qstrId, qstrHostId, (i * 7) % 40, QString("Added %1").arg(i), qstrChannelIcon));
    }
    return stData;
}

void WriteIcons(const QString& _qstrDir)
{
    const QList<QPair<QString, QColor>> qlstIcons = {
        {"group.png", Qt::darkYellow}, {"host.png", Qt::darkBlue}, {"channel.png", Qt::darkGreen}};
    for (const auto& pair : qlstIcons) {
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(pair.second);
        image.save(_qstrDir + "/" + pair.first);
    }
}

// ---- the baseline ---------------------------------------------------------------------------------

// The same work as the library, written by hand on a plain QTreeWidget: rows with text, tool tip,
// icon and check state, the id and sort number in item data, and one id -> row hash that also
// holds the page's own copy of each record.
class CLS_BareTree
{
public:
    struct STRCT_Row
    {
        QTreeWidgetItem* m_pNode = nullptr; // owned by m_tree
        CLS_TreeItem m_clsItem;
    };

    static constexpr int CONST_iSortRole = Qt::UserRole + 2;

    // Rows of one height, as a tree of one-line rows is best set up.
    CLS_BareTree() { m_tree.setUniformRowHeights(true); }

    QTreeWidget m_tree;
    QHash<QString, STRCT_Row> m_qhashRows;
    QString m_qstrRootId;

    int Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems)
    {
        auto itRoot = _qmapItems.constFind(_qstrRootId);
        if (itRoot == _qmapItems.cend())
            return -1;
        m_qstrRootId = _qstrRootId;
        m_tree.clear();
        m_qhashRows.clear();

        QHash<QString, QVector<const CLS_TreeItem*>> qhashChildren;
        for (auto it = _qmapItems.cbegin(); it != _qmapItems.cend(); ++it) {
            if (!it->m_qstrParentId.isEmpty())
                qhashChildren[it->m_qstrParentId].append(&it.value());
        }
        for (auto& qvecChildren : qhashChildren) {
            std::stable_sort(qvecChildren.begin(), qvecChildren.end(),
                             [](const CLS_TreeItem* _pA, const CLS_TreeItem* _pB) {
                                 return _pA->m_iSortNo < _pB->m_iSortNo;
                             });
        }
        // Built detached and handed to the view in one piece, each level with addChildren: the view
        // sees one insertion instead of one per row.
        m_tree.addTopLevelItem(Build(itRoot.value(), qhashChildren));
        return 0;
    }

    int AddItem(const CLS_TreeItem& _clsItem)
    {
        if (m_qhashRows.contains(_clsItem.m_qstrId))
            return -1;
        auto itParent = m_qhashRows.constFind(_clsItem.m_qstrParentId);
        if (itParent == m_qhashRows.cend())
            return -1;
        QTreeWidgetItem* pParent = itParent->m_pNode;
        QTreeWidgetItem* pNode = MakeRow(_clsItem);
        int iIndex = 0;
        for (const int iCount = pParent->childCount(); iIndex < iCount; ++iIndex) {
            if (pParent->child(iIndex)->data(0, CONST_iSortRole).toInt() > _clsItem.m_iSortNo)
                break;
        }
        pParent->insertChild(iIndex, pNode);
        m_qhashRows.insert(_clsItem.m_qstrId, STRCT_Row{pNode, _clsItem});
        return 0;
    }

    int GetItemByName(const QString& _qstrName, QVector<CLS_TreeItem>& _qvecItems) const
    {
        const STRCT_Row stRoot = m_qhashRows.value(m_qstrRootId);
        if (stRoot.m_pNode == nullptr)
            return -1;
        CollectByName(stRoot.m_pNode, _qstrName, _qvecItems);
        return 0;
    }

    void SetShowItemByName(const QString& _qstrName)
    {
        if (_qstrName.isEmpty())
            return;
        QSet<QTreeWidgetItem*> qsetKeep;
        for (const STRCT_Row& stRow : m_qhashRows) {
            if (stRow.m_clsItem.m_qstrText.indexOf(_qstrName, 0, Qt::CaseInsensitive) < 0)
                continue;
            for (QTreeWidgetItem* pNode = stRow.m_pNode; pNode != nullptr && !qsetKeep.contains(pNode);
                 pNode = pNode->parent())
                qsetKeep.insert(pNode);
        }
        for (const STRCT_Row& stRow : m_qhashRows) {
            if (qsetKeep.contains(stRow.m_pNode)) {
                stRow.m_pNode->setHidden(false);
                stRow.m_pNode->setExpanded(true);
            } else {
                stRow.m_pNode->setHidden(true);
            }
        }
    }

    void SetCheckState(const QString& _qstrId, Qt::CheckState _iState)
    {
        if (QTreeWidgetItem* pNode = m_qhashRows.value(_qstrId).m_pNode)
            pNode->setCheckState(0, _iState);
    }

    int GetCheckedItems(QVector<CLS_TreeItem>& _qvecItems) const
    {
        for (const STRCT_Row& stRow : m_qhashRows) {
            const QTreeWidgetItem* pNode = stRow.m_pNode;
            if (!(pNode->flags() & Qt::ItemIsEnabled) || pNode->isHidden())
                continue;
            if (pNode->checkState(0) != Qt::Checked)
                continue;
            _qvecItems.append(stRow.m_clsItem);
        }
        return 0;
    }

    void DeleteItem(const QString& _qstrId)
    {
        auto it = m_qhashRows.find(_qstrId);
        if (it == m_qhashRows.end())
            return;
        QTreeWidgetItem* pNode = it->m_pNode;
        m_qhashRows.erase(it);
        ForgetDescendants(pNode);
        delete pNode; // takes itself out of its parent and the view
    }

private:
    // One shared QIcon per picture file, as a page that knows its few pictures keeps them.
    QIcon Icon(const QString& _qstrPath) const
    {
        auto it = m_qhashIcons.constFind(_qstrPath);
        if (it == m_qhashIcons.cend())
            it = m_qhashIcons.insert(_qstrPath, QIcon(_qstrPath));
        return it.value();
    }
    mutable QHash<QString, QIcon> m_qhashIcons;

    QTreeWidgetItem* MakeRow(const CLS_TreeItem& _clsItem) const
    {
        auto* pNode = new QTreeWidgetItem();
        pNode->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsAutoTristate |
                        Qt::ItemIsUserCheckable);
        pNode->setCheckState(0, Qt::Unchecked);
        pNode->setText(0, _clsItem.m_qstrText);
        pNode->setToolTip(0, _clsItem.m_qstrTooltip);
        pNode->setIcon(0, Icon(_clsItem.m_qstrIcon));
        pNode->setData(0, Qt::UserRole, _clsItem.m_qstrId);
        pNode->setData(0, CONST_iSortRole, _clsItem.m_iSortNo);
        return pNode;
    }

    QTreeWidgetItem* Build(const CLS_TreeItem& _clsItem,
                           const QHash<QString, QVector<const CLS_TreeItem*>>& _qhashChildren)
    {
        QTreeWidgetItem* pNode = MakeRow(_clsItem);
        m_qhashRows.insert(_clsItem.m_qstrId, STRCT_Row{pNode, _clsItem});
        const QVector<const CLS_TreeItem*> qvecChildren = _qhashChildren.value(_clsItem.m_qstrId);
        QList<QTreeWidgetItem*> qlstChildren;
        qlstChildren.reserve(qvecChildren.size());
        for (const CLS_TreeItem* pChild : qvecChildren)
            qlstChildren.append(Build(*pChild, _qhashChildren));
        pNode->addChildren(qlstChildren);
        return pNode;
    }

    void CollectByName(const QTreeWidgetItem* _pNode, const QString& _qstrName,
                       QVector<CLS_TreeItem>& _qvecItems) const
    {
        for (int i = 0, iCount = _pNode->childCount(); i < iCount; ++i) {
            const QTreeWidgetItem* pChild = _pNode->child(i);
            if (pChild->text(0).indexOf(_qstrName, 0, Qt::CaseInsensitive) >= 0)
                _qvecItems.append(m_qhashRows.value(pChild->data(0, Qt::UserRole).toString()).m_clsItem);
            CollectByName(pChild, _qstrName, _qvecItems);
        }
    }

    void ForgetDescendants(const QTreeWidgetItem* _pNode)
    {
        for (int i = 0, iCount = _pNode->childCount(); i < iCount; ++i) {
            const QTreeWidgetItem* pChild = _pNode->child(i);
            m_qhashRows.remove(pChild->data(0, Qt::UserRole).toString());
            ForgetDescendants(pChild);
        }
    }
};

// ---- timing ---------------------------------------------------------------------------------------

struct STRCT_Pair
{
    std::unique_ptr<CLS_WgtBaseTreeWidget> m_pOurs;
    std::unique_ptr<CLS_BareTree> m_pBase;
};

void Settle()
{
    QCoreApplication::processEvents();
}

STRCT_Pair MakePair(const STRCT_BenchData& _stData, bool _blInit)
{
    STRCT_Pair stPair;
    stPair.m_pOurs = std::make_unique<CLS_WgtBaseTreeWidget>(nullptr, true);
    stPair.m_pBase = std::make_unique<CLS_BareTree>();
    if (s_blShow) {
        stPair.m_pOurs->resize(400, 600);
        stPair.m_pBase->m_tree.resize(400, 600);
        stPair.m_pOurs->show();
        stPair.m_pBase->m_tree.show();
    }
    if (_blInit) {
        stPair.m_pOurs->Init(_stData.m_qstrRootId, _stData.m_qmapItems, true);
        stPair.m_pBase->Init(_stData.m_qstrRootId, _stData.m_qmapItems);
    }
    Settle();
    return stPair;
}

double TimeMs(const std::function<void()>& _fnWork)
{
    Settle();
    QElapsedTimer timer;
    timer.start();
    _fnWork();
    if (s_blShow)
        Settle();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double Median(QVector<double> _qvecValues)
{
    std::sort(_qvecValues.begin(), _qvecValues.end());
    const int iSize = _qvecValues.size();
    if (iSize == 0)
        return 0.0;
    return iSize % 2 == 1 ? _qvecValues.at(iSize / 2)
                          : (_qvecValues.at(iSize / 2 - 1) + _qvecValues.at(iSize / 2)) / 2.0;
}

// Times both sides of one repetition; the side that goes first alternates.
void TimeBoth(int _iRep, const std::function<void()>& _fnOurs, const std::function<void()>& _fnBase,
              QVector<double>& _qvecOurs, QVector<double>& _qvecBase)
{
    if (_iRep % 2 == 0) {
        _qvecOurs.append(TimeMs(_fnOurs));
        _qvecBase.append(TimeMs(_fnBase));
    } else {
        _qvecBase.append(TimeMs(_fnBase));
        _qvecOurs.append(TimeMs(_fnOurs));
    }
}

void Check(bool _blOk, const QString& _qstrWhat)
{
    if (_blOk)
        return;
    s_blFailed = true;
    std::fprintf(stderr, "MISMATCH: %s\n", qPrintable(_qstrWhat));
}

void PrintHeader()
{
    std::printf("%-20s %8s %12s %14s %7s %5s\n", "case", "rows", "ours (ms)", "baseline (ms)", "ratio",
                "reps");
    std::fflush(stdout);
}

void PrintLine(const char* _pCase, int _iRows, const QVector<double>& _qvecOurs,
               const QVector<double>& _qvecBase)
{
    const double dOurs = Median(_qvecOurs);
    const double dBase = Median(_qvecBase);
    const double dRatio = dBase > 0.0 ? dOurs / dBase : 0.0;
    std::printf("%-20s %8d %12.3f %14.3f %7.2f %5d\n", _pCase, _iRows, dOurs, dBase, dRatio,
                static_cast<int>(_qvecOurs.size()));
    std::fflush(stdout);
}

// Repetitions: more for small trees, at least one; _dFactor comes from --reps.
int Reps(int _iRows, int _iSmall, int _iMedium, int _iLarge, double _dFactor)
{
    const int iBase = _iRows <= 2000 ? _iSmall : (_iRows <= 20000 ? _iMedium : _iLarge);
    return std::max(1, static_cast<int>(iBase * _dFactor + 0.5));
}

QStringList Ids(const QVector<CLS_TreeItem>& _qvecItems)
{
    QStringList qlstIds;
    for (const CLS_TreeItem& clsItem : _qvecItems)
        qlstIds.append(clsItem.m_qstrId);
    return qlstIds;
}

int CountHidden(CLS_WgtBaseTreeWidget& _ours)
{
    QMap<QString, CLS_TreeItem> qmapAll;
    _ours.GetAllItems(qmapAll);
    int iHidden = 0;
    for (auto it = qmapAll.cbegin(); it != qmapAll.cend(); ++it)
        iHidden += _ours.GetNodeById(it.key())->isHidden() ? 1 : 0;
    return iHidden;
}

int CountHidden(const CLS_BareTree& _base)
{
    int iHidden = 0;
    for (const CLS_BareTree::STRCT_Row& stRow : _base.m_qhashRows)
        iHidden += stRow.m_pNode->isHidden() ? 1 : 0;
    return iHidden;
}

int CountRows(CLS_WgtBaseTreeWidget& _ours)
{
    QMap<QString, CLS_TreeItem> qmapAll;
    _ours.GetAllItems(qmapAll);
    return qmapAll.size();
}

void RunSize(int _iTargetRows, const QString& _qstrIconDir, double _dFactor)
{
    const STRCT_BenchData stData = MakeData(_iTargetRows, _qstrIconDir);
    const int iRows = stData.m_qmapItems.size();
    const QString qstrSearch = QString::fromLatin1(CONST_pSearchText);

    // Init, each repetition on new, empty trees.
    STRCT_Pair stBuilt;
    {
        QVector<double> qvecOurs, qvecBase;
        const int iReps = Reps(iRows, 11, 5, 3, _dFactor);
        for (int iRep = 0; iRep < iReps; ++iRep) {
            stBuilt = STRCT_Pair(); // the old pair goes outside the timing
            stBuilt = MakePair(stData, false);
            CLS_WgtBaseTreeWidget& ours = *stBuilt.m_pOurs;
            CLS_BareTree& base = *stBuilt.m_pBase;
            int iOurRet = -1, iBaseRet = -1;
            TimeBoth(
                iRep, [&] { iOurRet = ours.Init(stData.m_qstrRootId, stData.m_qmapItems, true); },
                [&] { iBaseRet = base.Init(stData.m_qstrRootId, stData.m_qmapItems); }, qvecOurs, qvecBase);
            Check(iOurRet == 0 && iBaseRet == 0, "Init result");
            Check(CountRows(ours) == iRows && base.m_qhashRows.size() == iRows, "Init row count");
        }
        PrintLine("Init", iRows, qvecOurs, qvecBase);
    }

    // AddItem of 1,000 rows, each repetition into newly built trees.
    {
        QVector<double> qvecOurs, qvecBase;
        const int iReps = Reps(iRows, 11, 5, 3, _dFactor);
        for (int iRep = 0; iRep < iReps; ++iRep) {
            STRCT_Pair stPair = MakePair(stData, true);
            CLS_WgtBaseTreeWidget& ours = *stPair.m_pOurs;
            CLS_BareTree& base = *stPair.m_pBase;
            int iOurFails = 0, iBaseFails = 0;
            TimeBoth(
                iRep,
                [&] {
                    for (const CLS_TreeItem& clsItem : stData.m_qvecAddItems)
                        iOurFails += ours.AddItem(clsItem) != 0 ? 1 : 0;
                },
                [&] {
                    for (const CLS_TreeItem& clsItem : stData.m_qvecAddItems)
                        iBaseFails += base.AddItem(clsItem) != 0 ? 1 : 0;
                },
                qvecOurs, qvecBase);
            Check(iOurFails == 0 && iBaseFails == 0, "AddItem results");
            for (const CLS_TreeItem& clsItem : stData.m_qvecAddItems) {
                QTreeWidgetItem* pOurs = ours.GetNodeById(clsItem.m_qstrId);
                QTreeWidgetItem* pBase = base.m_qhashRows.value(clsItem.m_qstrId).m_pNode;
                if (pOurs == nullptr || pBase == nullptr || pOurs->parent() == nullptr ||
                    pBase->parent() == nullptr ||
                    pOurs->parent()->indexOfChild(pOurs) != pBase->parent()->indexOfChild(pBase)) {
                    Check(false, "AddItem place of " + clsItem.m_qstrId);
                    break;
                }
            }
        }
        PrintLine("AddItem x1000", iRows, qvecOurs, qvecBase);
    }

    // GetItemByName over all rows, read only, on the trees of the last Init.
    {
        CLS_WgtBaseTreeWidget& ours = *stBuilt.m_pOurs;
        CLS_BareTree& base = *stBuilt.m_pBase;
        QVector<double> qvecOurs, qvecBase;
        const int iReps = Reps(iRows, 21, 11, 5, _dFactor);
        QVector<CLS_TreeItem> qvecOurItems, qvecBaseItems;
        for (int iRep = 0; iRep < iReps; ++iRep) {
            qvecOurItems.clear();
            qvecBaseItems.clear();
            int iOurRet = -1, iBaseRet = -1;
            TimeBoth(
                iRep, [&] { iOurRet = ours.GetItemByName(qstrSearch, qvecOurItems); },
                [&] { iBaseRet = base.GetItemByName(qstrSearch, qvecBaseItems); }, qvecOurs, qvecBase);
            Check(iOurRet == 0 && iBaseRet == 0, "GetItemByName result");
        }
        Check(!qvecOurItems.isEmpty() && Ids(qvecOurItems) == Ids(qvecBaseItems), "GetItemByName records");
        PrintLine("GetItemByName", iRows, qvecOurs, qvecBase);
    }

    // GetCheckedItems with every row checked from the root, read only.
    {
        CLS_WgtBaseTreeWidget& ours = *stBuilt.m_pOurs;
        CLS_BareTree& base = *stBuilt.m_pBase;
        ours.SetItemCheckStatus(stData.m_qstrRootId, Qt::Checked);
        base.SetCheckState(stData.m_qstrRootId, Qt::Checked);
        QVector<double> qvecOurs, qvecBase;
        const int iReps = Reps(iRows, 21, 11, 5, _dFactor);
        QVector<CLS_TreeItem> qvecOurItems, qvecBaseItems;
        for (int iRep = 0; iRep < iReps; ++iRep) {
            qvecOurItems.clear();
            qvecBaseItems.clear();
            TimeBoth(
                iRep, [&] { ours.GetCheckedItems(qvecOurItems, false); },
                [&] { base.GetCheckedItems(qvecBaseItems); }, qvecOurs, qvecBase);
        }
        Check(qvecOurItems.size() == iRows && qvecBaseItems.size() == iRows, "GetCheckedItems count");
        PrintLine("GetCheckedItems", iRows, qvecOurs, qvecBase);
    }
    stBuilt = STRCT_Pair();

    // SetShowItemByName, each repetition on newly built, fully shown trees.
    {
        QVector<double> qvecOurs, qvecBase;
        const int iReps = Reps(iRows, 11, 5, 3, _dFactor);
        for (int iRep = 0; iRep < iReps; ++iRep) {
            STRCT_Pair stPair = MakePair(stData, true);
            CLS_WgtBaseTreeWidget& ours = *stPair.m_pOurs;
            CLS_BareTree& base = *stPair.m_pBase;
            TimeBoth(
                iRep, [&] { ours.SetShowItemByName(qstrSearch); },
                [&] { base.SetShowItemByName(qstrSearch); }, qvecOurs, qvecBase);
            const int iOurHidden = CountHidden(ours);
            Check(iOurHidden > 0 && iOurHidden < iRows && iOurHidden == CountHidden(base),
                  "SetShowItemByName hidden rows");
        }
        PrintLine("SetShowItemByName", iRows, qvecOurs, qvecBase);
    }

    // DeleteItem of one host with its channels; each repetition takes another host.
    {
        STRCT_Pair stPair = MakePair(stData, true);
        CLS_WgtBaseTreeWidget& ours = *stPair.m_pOurs;
        CLS_BareTree& base = *stPair.m_pBase;
        QVector<double> qvecOurs, qvecBase;
        const int iHosts = stData.m_qvecHostIds.size();
        const int iReps = std::min(std::max(1, iHosts / 2), Reps(iRows, 21, 21, 21, _dFactor));
        for (int iRep = 0; iRep < iReps; ++iRep) {
            // Spread over the tree: first, middle and last groups alike.
            const QString& qstrHostId = stData.m_qvecHostIds.at((iRep * 7919) % iHosts);
            TimeBoth(
                iRep, [&] { ours.DeleteItem(qstrHostId); }, [&] { base.DeleteItem(qstrHostId); }, qvecOurs,
                qvecBase);
            Check(ours.GetNodeById(qstrHostId) == nullptr && !base.m_qhashRows.contains(qstrHostId),
                  "DeleteItem of " + qstrHostId);
        }
        Check(CountRows(ours) == base.m_qhashRows.size(), "DeleteItem row count");
        PrintLine("DeleteItem (host)", iRows, qvecOurs, qvecBase);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription("Times CLS_WgtBaseTreeWidget against a bare QTreeWidget.");
    parser.addHelpOption();
    const QCommandLineOption optMax("max", "Largest tree size to run (default 100000).", "rows", "100000");
    const QCommandLineOption optReps("reps", "Factor on the number of repetitions (default 1).", "factor",
                                     "1");
    const QCommandLineOption optShow("show",
                                     "Show both trees and include their pending events in the timing.");
    const QCommandLineOption optNoIcons("no-icons", "Records without icon paths: no icon file is read.");
    parser.addOptions({optMax, optReps, optShow, optNoIcons});
    parser.process(app);

    bool blOk = false;
    const int iMax = parser.value(optMax).toInt(&blOk);
    if (!blOk || iMax < 1) {
        std::fprintf(stderr, "--max needs a positive number of rows\n");
        return 2;
    }
    const double dFactor = parser.value(optReps).toDouble(&blOk);
    if (!blOk || dFactor <= 0.0) {
        std::fprintf(stderr, "--reps needs a positive factor\n");
        return 2;
    }
    s_blShow = parser.isSet(optShow);
    s_blNoIcons = parser.isSet(optNoIcons);

    QTemporaryDir tmpDir;
    if (!tmpDir.isValid()) {
        std::fprintf(stderr, "no temporary folder for the icons\n");
        return 2;
    }
    WriteIcons(tmpDir.path());

    PrintHeader();
    for (const int iSize : {1000, 10000, 100000}) {
        if (iSize <= iMax)
            RunSize(iSize, tmpDir.path(), dFactor);
    }
    return s_blFailed ? 1 : 0;
}
