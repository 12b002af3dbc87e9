// Randomized model-based test of CLS_WgtBaseTreeWidget: seeded sequences of calls run against the
// tree and against CLS_BaseTreeModel, and after every step the two are compared row by row, with
// the signals of the step. A failing sequence is cut down to its shortest failing prefix, replayed
// on a fresh tree, and printed step by step with its seed.
// Seeds and length come from WGT_MODEL_SEEDS ("1,2,3") and WGT_MODEL_STEPS.

#include "CLS_BaseTreeModel.h"
#include "CLS_TestBaseTree.h"

#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <random>

namespace {

// The id domain is small on purpose: duplicates, deletes of missing ids and re-adds come often.
const QStringList s_qlstIds = {"r", "a", "b", "c", "d", "e", "f", "g"};
const QList<int> s_qlstSortNos = {0, 1, 3, 3, 5, 7, 99, -4};
const QStringList s_qlstTexts = {"Cam 1", "cam 2", "Lobby", "Hall", "CAMERA 7", "door", "Cam 1", ""};
const QStringList s_qlstNeedles = {"cam", "CAM 1", "o", "Hall", "zz", "", "a"};
const QList<int> s_qlstFlags = {0, 0, 0, 0, 0, 0x61, 0x71, 0x21, 0x60, 0x31};

enum n_Op
{
    OP_INIT,
    OP_CLEAR,
    OP_ADD,
    OP_ADDS,
    OP_DELETE,
    OP_UPDATE,
    OP_ICON,
    OP_SET_CHECK,
    OP_USER_CHECK,
    OP_DISABLE,
    OP_SHOW_BY_ID,
    OP_SHOW_BY_NAME,
    OP_MOVE_UP,
    OP_MOVE_DOWN,
    OP_EXPAND,
    OP_EXPAND_ALL,
    OP_CURRENT,
    OP_Q_ITEM_BY_ID,
    OP_Q_ITEM_BY_NAME,
    OP_Q_CHILDS,
    OP_Q_PARENT,
    OP_Q_CHECKED,
    OP_Q_CHECKED_NODES,
    OP_Q_ALL,
    OP_Q_CURRENT,
    OP_Q_CHECK_STATUS,
    OP_Q_NODE_BY_NAME,
    OP_Q_CHILD_NODES,
    OP_Q_PARENT_NODES,
    OP_Q_PARENT_MAP,
    OP_COUNT
};

const char* const s_arrOpNames[OP_COUNT] = {"Init",
                                            "Clear",
                                            "AddItem",
                                            "AddItems",
                                            "DeleteItem",
                                            "UpdateItem",
                                            "UpdateItemIcon",
                                            "SetItemCheckStatus",
                                            "UserCheck",
                                            "SetItemDisabled",
                                            "SetShowItemById",
                                            "SetShowItemByName",
                                            "MoveUpOneRow",
                                            "MoveDownOneRow",
                                            "SetItemExpandStatus",
                                            "SetAllExpandStatus",
                                            "SetCurrentItem",
                                            "GetItemById",
                                            "GetItemByName",
                                            "GetChilds",
                                            "GetParent",
                                            "GetCheckedItems",
                                            "GetCheckedNodes",
                                            "GetAllItems",
                                            "GetCurrentItem",
                                            "GetItemCheckStatus",
                                            "GetNodeByName",
                                            "GetChildNode",
                                            "GetParentNode(vector)",
                                            "GetParentNode(map)"};

// One call with all its arguments fixed at generation, so that a prefix replays exactly.
struct STRCT_Step
{
    int m_iOp = OP_CLEAR;
    QString m_qstrA;
    QString m_qstrB;
    int m_iValue = 0;
    bool m_blFlag = false;
    CLS_TreeItem m_clsItem;
    QVector<CLS_TreeItem> m_qvecItems;
    QMap<QString, CLS_TreeItem> m_qmapItems;
};

QString ItemText(const CLS_TreeItem& _clsItem)
{
    return QString("{id=%1 parent=%2 sort=%3 text=\"%4\" flags=0x%5 icon=\"%6\" buttons=%7 tip=%8}")
        .arg(_clsItem.m_qstrId, _clsItem.m_qstrParentId)
        .arg(_clsItem.m_iSortNo)
        .arg(_clsItem.m_qstrText)
        .arg(_clsItem.m_iItemFlags, 0, 16)
        .arg(QFileInfo(_clsItem.m_qstrIcon).fileName())
        .arg(_clsItem.m_qvecButtons.size())
        .arg(_clsItem.m_qstrTooltip);
}

QString StepText(const STRCT_Step& _step)
{
    QString qstrText = s_arrOpNames[_step.m_iOp];
    switch (_step.m_iOp) {
    case OP_INIT: {
        QStringList qlstItems;
        for (auto it = _step.m_qmapItems.cbegin(); it != _step.m_qmapItems.cend(); ++it)
            qlstItems << it.key() + ":" + ItemText(it.value());
        return qstrText + QString("(root=\"%1\", showRoot=%2, [%3])")
                              .arg(_step.m_qstrA)
                              .arg(int(_step.m_blFlag))
                              .arg(qlstItems.join(", "));
    }
    case OP_CLEAR:
    case OP_Q_CHECKED_NODES:
    case OP_Q_ALL:
    case OP_Q_CURRENT:
        return qstrText + "()";
    case OP_ADD:
    case OP_UPDATE:
        return qstrText + "(" + ItemText(_step.m_clsItem) + ")";
    case OP_ADDS: {
        QStringList qlstItems;
        for (const CLS_TreeItem& clsItem : _step.m_qvecItems)
            qlstItems << ItemText(clsItem);
        return qstrText + "([" + qlstItems.join(", ") + "])";
    }
    case OP_ICON:
        return qstrText + QString("(\"%1\", \"%2\")").arg(_step.m_qstrA, QFileInfo(_step.m_qstrB).fileName());
    case OP_SET_CHECK:
        return qstrText +
               QString("(\"%1\", %2, send=%3)").arg(_step.m_qstrA).arg(_step.m_iValue).arg(_step.m_blFlag);
    case OP_USER_CHECK:
        return qstrText + QString("(row of \"%1\" %2, %3)")
                              .arg(_step.m_qstrA)
                              .arg(_step.m_qstrB.isEmpty() ? QString() : "#" + _step.m_qstrB)
                              .arg(_step.m_iValue < 0 ? QString("toggle") : QString::number(_step.m_iValue));
    case OP_DISABLE:
    case OP_CURRENT:
    case OP_Q_CHILDS:
    case OP_Q_CHILD_NODES:
    case OP_Q_CHECKED:
        return qstrText + QString("(\"%1\", %2)").arg(_step.m_qstrA).arg(_step.m_blFlag);
    case OP_MOVE_UP:
    case OP_MOVE_DOWN:
        return qstrText + QString("(\"%1\", \"%2\")").arg(_step.m_qstrA, _step.m_qstrB);
    case OP_EXPAND:
        return qstrText + QString("(\"%1\", %2)").arg(_step.m_qstrA).arg(_step.m_iValue);
    case OP_EXPAND_ALL:
        return qstrText + QString("(%1)").arg(_step.m_blFlag);
    default:
        return qstrText + QString("(\"%1\")").arg(_step.m_qstrA);
    }
}

bool SameRecord(const CLS_TreeItem& _a, const CLS_TreeItem& _b)
{
    if (_a.m_qvecButtons.size() != _b.m_qvecButtons.size())
        return false;
    for (int i = 0; i < _a.m_qvecButtons.size(); ++i) {
        if (_a.m_qvecButtons[i].m_qstrId != _b.m_qvecButtons[i].m_qstrId)
            return false;
    }
    return _a.m_qstrId == _b.m_qstrId && _a.m_qstrText == _b.m_qstrText &&
           _a.m_qstrTooltip == _b.m_qstrTooltip && _a.m_qstrIcon == _b.m_qstrIcon &&
           _a.m_varData == _b.m_varData && _a.m_qstrParentId == _b.m_qstrParentId &&
           _a.m_iReserved == _b.m_iReserved && _a.m_iSortNo == _b.m_iSortNo &&
           _a.m_iItemFlags == _b.m_iItemFlags;
}

QString Ids(const QVector<CLS_TreeItem>& _qvecItems)
{
    return CLS_TreeTestUtil::Ids(_qvecItems).join(",");
}

// The tree's configuration of one seed.
struct STRCT_Config
{
    bool m_blCheckEnable = true;
    n_ItemBtnShowType m_iBtnShowType = ITEM_BTN_SHOW_ALWAYS;
};

// One run: a fresh tree, a fresh model, spies on every signal of the tree.
class CLS_ModelRun
{
public:
    CLS_ModelRun(const STRCT_Config& _config, const QStringList& _qlstIcons, bool _blMutate)
        : m_config(_config), m_qlstIcons(_qlstIcons), m_model(_config.m_blCheckEnable),
          m_tree(nullptr, _config.m_blCheckEnable, false, false, false, _config.m_iBtnShowType),
          m_spyChecked(&m_tree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged),
          m_spySelected(&m_tree, &CLS_WgtBaseTreeWidget::SignSelected),
          m_spyCheckedNever(&m_tree, &CLS_WgtBaseTreeWidget::SignChecked),
          m_spyClicked(&m_tree, &CLS_WgtBaseTreeWidget::SignClicked),
          m_spyDblClicked(&m_tree, &CLS_WgtBaseTreeWidget::SignDblClicked),
          m_spyRightClicked(&m_tree, &CLS_WgtBaseTreeWidget::SignRightClicked),
          m_spyDroped(&m_tree, &CLS_WgtBaseTreeWidget::SignDroped),
          m_spyClickButton(&m_tree, &CLS_WgtBaseTreeWidget::SignClickButton)
    {
        m_model.m_blMutateAddPlace = _blMutate;
    }

    // Runs one step on both sides and compares; empty on agreement, else what differs.
    QString Step(const STRCT_Step& _step);

    // Picks the next step from the present state.
    STRCT_Step Generate(std::mt19937& _rng);

    QString LibrarySnapshot() const { return CLS_TreeSnapshot::Snapshot(m_tree); }
    QString ModelSnapshot() const { return m_model.Snapshot(); }

private:
    int Pick(std::mt19937& _rng, int _iCount)
    {
        return std::uniform_int_distribution<int>(0, _iCount - 1)(_rng);
    }
    bool Chance(std::mt19937& _rng, int _iPercent) { return Pick(_rng, 100) < _iPercent; }
    QString AnyId(std::mt19937& _rng)
    {
        if (Chance(_rng, 4))
            return Chance(_rng, 50) ? QString() : QString("x");
        return s_qlstIds.at(Pick(_rng, s_qlstIds.size()));
    }
    // Mostly an id without a row, so that adds succeed; else any id.
    QString NewId(std::mt19937& _rng)
    {
        QStringList qlstFree;
        for (const QString& qstrId : s_qlstIds) {
            if (!m_model.m_qmapIndex.contains(qstrId))
                qlstFree << qstrId;
        }
        if (qlstFree.isEmpty() || Chance(_rng, 35))
            return AnyId(_rng);
        return qlstFree.at(Pick(_rng, qlstFree.size()));
    }
    // Mostly the id of a row, so that adds find their parent; else any id.
    QString ParentId(std::mt19937& _rng)
    {
        const QStringList qlstUsed = m_model.m_qmapIndex.keys();
        if (qlstUsed.isEmpty() || Chance(_rng, 25))
            return AnyId(_rng);
        return qlstUsed.at(Pick(_rng, qlstUsed.size()));
    }
    CLS_TreeItem MakeRecord(std::mt19937& _rng, const QString& _qstrId, const QString& _qstrParentId);
    QMap<QString, CLS_TreeItem> MakeInitMap(std::mt19937& _rng, QString& _qstrRootId);

    QString IconSignature(const QIcon& _icon);
    QString ExpectedIconSignature(const QString& _qstrPath);
    QString Compare();
    QString CompareRows(STRCT_ModelRow* _pParent, QTreeWidgetItem* _pLibParent);
    QString CompareSignals(const QVector<STRCT_CheckSignal>& _qvecExpected, bool _blSelectionByQt,
                           STRCT_ModelRow* _pExpectedCurrent);
    QString Query(const STRCT_Step& _step);
    QList<QTreeWidgetItem*> LibChildren(QTreeWidgetItem* _pLib) const;

    STRCT_Config m_config;
    QStringList m_qlstIcons;
    QHash<QString, QString> m_qhashIconSignatures;
    QHash<qint64, QString> m_qhashIconByKey;
    CLS_BaseTreeModel m_model;
    CLS_TestBaseTree m_tree;
    QSignalSpy m_spyChecked;
    QSignalSpy m_spySelected;
    QSignalSpy m_spyCheckedNever;
    QSignalSpy m_spyClicked;
    QSignalSpy m_spyDblClicked;
    QSignalSpy m_spyRightClicked;
    QSignalSpy m_spyDroped;
    QSignalSpy m_spyClickButton;
    int m_iSerial = 0;

public:
    // What a run exercised, for the log line of each seed.
    QMap<QString, int> m_qmapCoverage;
};

QList<QTreeWidgetItem*> CLS_ModelRun::LibChildren(QTreeWidgetItem* _pLib) const
{
    QList<QTreeWidgetItem*> qlstRows;
    if (_pLib == nullptr) {
        for (int i = 0; i < m_tree.topLevelItemCount(); ++i)
            qlstRows << m_tree.topLevelItem(i);
    } else {
        for (int i = 0; i < _pLib->childCount(); ++i)
            qlstRows << _pLib->child(i);
    }
    return qlstRows;
}

CLS_TreeItem CLS_ModelRun::MakeRecord(std::mt19937& _rng, const QString& _qstrId,
                                      const QString& _qstrParentId)
{
    CLS_TreeItem clsItem;
    clsItem.m_qstrId = _qstrId;
    clsItem.m_qstrParentId = _qstrParentId;
    clsItem.m_iSortNo = s_qlstSortNos.at(Pick(_rng, s_qlstSortNos.size()));
    clsItem.m_qstrText = s_qlstTexts.at(Pick(_rng, s_qlstTexts.size()));
    clsItem.m_qstrTooltip = QString("t%1").arg(++m_iSerial); // unique: tells equal records apart
    clsItem.m_qstrIcon = m_qlstIcons.at(Pick(_rng, m_qlstIcons.size()));
    clsItem.m_iItemFlags = s_qlstFlags.at(Pick(_rng, s_qlstFlags.size()));
    clsItem.m_iReserved = Pick(_rng, 3);
    if (Chance(_rng, 50))
        clsItem.m_varData = QString("dev-%1").arg(Pick(_rng, 4));
    if (Chance(_rng, 20))
        clsItem.m_qvecButtons.append(CLS_TreeTestUtil::MakeButton("btn"));
    return clsItem;
}

QMap<QString, CLS_TreeItem> CLS_ModelRun::MakeInitMap(std::mt19937& _rng, QString& _qstrRootId)
{
    QMap<QString, CLS_TreeItem> qmapItems;
    _qstrRootId = Chance(_rng, 85) ? QString("r") : s_qlstIds.at(Pick(_rng, s_qlstIds.size()));
    if (Chance(_rng, 3))
        return qmapItems; // empty map
    CLS_TreeItem clsRoot = MakeRecord(_rng, _qstrRootId, QString());
    if (Chance(_rng, 8))
        clsRoot.m_qstrParentId = s_qlstIds.at(Pick(_rng, s_qlstIds.size())); // a cycle through the root
    if (Chance(_rng, 3))
        clsRoot.m_qstrId.clear(); // the root record itself has no id
    if (!Chance(_rng, 4))
        qmapItems.insert(_qstrRootId, clsRoot); // else: the root id is not in the map
    QStringList qlstKnown = {_qstrRootId};
    const int iCount = Pick(_rng, 9);
    for (int i = 0; i < iCount; ++i) {
        QString qstrId = s_qlstIds.at(Pick(_rng, s_qlstIds.size()));
        QString qstrKey = qstrId;
        if (qmapItems.contains(qstrKey) || Chance(_rng, 12))
            qstrKey = QString("k%1").arg(i); // another key: a duplicate id
        if (Chance(_rng, 3))
            qstrId.clear();
        QString qstrParent = qlstKnown.at(Pick(_rng, qlstKnown.size()));
        const int iParentKind = Pick(_rng, 100);
        if (iParentKind < 8)
            qstrParent = "x"; // never reached
        else if (iParentKind < 18)
            qstrParent = s_qlstIds.at(Pick(_rng, s_qlstIds.size())); // anywhere, cycles included
        else if (iParentKind < 21)
            qstrParent.clear();
        qmapItems.insert(qstrKey, MakeRecord(_rng, qstrId, qstrParent));
        qlstKnown << qstrId;
    }
    if (Chance(_rng, 3))
        _qstrRootId.clear();
    return qmapItems;
}

STRCT_Step CLS_ModelRun::Generate(std::mt19937& _rng)
{
    static const int s_arrWeights[OP_COUNT] = {4, 1, 16, 2, 8, 6, 4, 9, 8, 5, 3, 3, 6, 6, 4, 2, 5, // changes
                                               2, 2, 2,  2, 2, 1, 1, 1, 2, 1, 1, 1, 1};            // queries
    int iTotal = 0;
    for (int iWeight : s_arrWeights)
        iTotal += iWeight;
    int iRoll = Pick(_rng, iTotal);
    STRCT_Step step;
    for (step.m_iOp = 0; step.m_iOp < OP_COUNT; ++step.m_iOp) {
        if (iRoll < s_arrWeights[step.m_iOp])
            break;
        iRoll -= s_arrWeights[step.m_iOp];
    }
    // An empty tree first needs an Init.
    if (m_model.m_qmapIndex.isEmpty() && Chance(_rng, 60))
        step.m_iOp = OP_INIT;

    step.m_qstrA = AnyId(_rng);
    step.m_blFlag = Chance(_rng, 50);
    switch (step.m_iOp) {
    case OP_INIT:
        step.m_qmapItems = MakeInitMap(_rng, step.m_qstrA);
        step.m_blFlag = Chance(_rng, 60);
        break;
    case OP_ADD:
        step.m_clsItem = MakeRecord(_rng, NewId(_rng), ParentId(_rng));
        break;
    case OP_ADDS:
        for (int i = 0, n = 1 + Pick(_rng, 3); i < n; ++i)
            step.m_qvecItems.append(MakeRecord(_rng, NewId(_rng), ParentId(_rng)));
        break;
    case OP_UPDATE:
        step.m_clsItem = MakeRecord(_rng, step.m_qstrA, AnyId(_rng));
        break;
    case OP_ICON:
        step.m_qstrB = m_qlstIcons.at(Pick(_rng, m_qlstIcons.size()));
        break;
    case OP_SET_CHECK:
        step.m_iValue = Pick(_rng, 3);
        break;
    case OP_USER_CHECK: {
        // Sometimes a row that the index does not name (a duplicate id of an Init).
        if (Chance(_rng, 20) && !m_model.m_qhashByLib.isEmpty()) {
            std::vector<STRCT_ModelRow*> vecRows;
            for (const auto& pRow : m_model.m_vecOwned) {
                if (pRow->m_pLib != nullptr && pRow->m_pLib->treeWidget() == &m_tree)
                    vecRows.push_back(pRow.get());
            }
            if (!vecRows.empty()) {
                STRCT_ModelRow* pRow = vecRows.at(Pick(_rng, int(vecRows.size())));
                step.m_qstrA = pRow->m_clsRecord.m_qstrId;
                step.m_qstrB = pRow->m_clsRecord.m_qstrTooltip;
            }
        }
        step.m_iValue = Chance(_rng, 70) ? -1 : Pick(_rng, 3);
        break;
    }
    case OP_MOVE_UP:
    case OP_MOVE_DOWN: {
        step.m_qstrB = AnyId(_rng);
        const QStringList qlstUsed = m_model.m_qmapIndex.keys();
        if (!qlstUsed.isEmpty() && Chance(_rng, 80))
            step.m_qstrA = qlstUsed.at(Pick(_rng, qlstUsed.size()));
        // Mostly a sibling, so that the swap itself runs.
        STRCT_ModelRow* pSrc = m_model.m_qmapIndex.value(step.m_qstrA, nullptr);
        if (pSrc != nullptr && pSrc->m_pParent != nullptr && Chance(_rng, 75)) {
            const auto& vecSiblings = pSrc->m_pParent->m_vecChildren;
            step.m_qstrB = vecSiblings.at(Pick(_rng, int(vecSiblings.size())))->m_clsRecord.m_qstrId;
        }
        break;
    }
    case OP_EXPAND:
        step.m_iValue = Pick(_rng, 4);
        break;
    case OP_Q_ITEM_BY_NAME:
    case OP_SHOW_BY_NAME:
    case OP_Q_NODE_BY_NAME:
        step.m_qstrA = s_qlstNeedles.at(Pick(_rng, s_qlstNeedles.size()));
        break;
    default:
        break;
    }
    return step;
}

QString CLS_ModelRun::IconSignature(const QIcon& _icon)
{
    // A row's icon keeps its cache key until it is set again, so each icon is drawn once.
    auto it = m_qhashIconByKey.find(_icon.cacheKey());
    if (it != m_qhashIconByKey.end())
        return it.value();
    const QPixmap pixmap = _icon.pixmap(8, 8);
    const QString qstrSignature =
        pixmap.isNull() ? QString("none") : QString::number(pixmap.toImage().pixel(2, 2), 16);
    m_qhashIconByKey.insert(_icon.cacheKey(), qstrSignature);
    return qstrSignature;
}

QString CLS_ModelRun::ExpectedIconSignature(const QString& _qstrPath)
{
    auto it = m_qhashIconSignatures.find(_qstrPath);
    if (it == m_qhashIconSignatures.end())
        it = m_qhashIconSignatures.insert(_qstrPath, IconSignature(QIcon(_qstrPath)));
    return it.value();
}

QString CLS_ModelRun::CompareRows(STRCT_ModelRow* _pParent, QTreeWidgetItem* _pLibParent)
{
    const std::vector<STRCT_ModelRow*>& vecRows = m_model.Siblings(_pParent);
    const QList<QTreeWidgetItem*> qlstLib = LibChildren(_pLibParent);
    const QString qstrWhere = _pParent ? "under " + _pParent->m_clsRecord.m_qstrId : QString("at the top");
    if (int(vecRows.size()) != qlstLib.size())
        return QString("%1 rows %2, model expects %3").arg(qlstLib.size()).arg(qstrWhere).arg(vecRows.size());
    for (int i = 0; i < qlstLib.size(); ++i) {
        STRCT_ModelRow* pRow = vecRows.at(i);
        QTreeWidgetItem* pLib = qlstLib.at(i);
        const QString qstrId = pRow->m_clsRecord.m_qstrId;
        if (pRow->m_pLib != pLib)
            return QString("row %1 %2 is %3, model expects %4")
                .arg(i)
                .arg(qstrWhere, CLS_TreeSnapshot::NodeId(pLib), qstrId);
        const QVariant varRecord = pLib->data(0, Qt::UserRole + 1);
        if (!varRecord.canConvert<CLS_TreeItem>() ||
            !SameRecord(varRecord.value<CLS_TreeItem>(), pRow->m_clsRecord))
            return QString("record of %1: %2, model expects %3")
                .arg(qstrId, ItemText(varRecord.value<CLS_TreeItem>()), ItemText(pRow->m_clsRecord));
        if (pLib->data(0, Qt::UserRole).toString() != qstrId)
            return QString("Qt::UserRole of %1 is %2").arg(qstrId, pLib->data(0, Qt::UserRole).toString());
        if (pLib->text(0) != pRow->m_clsRecord.m_qstrText ||
            pLib->toolTip(0) != pRow->m_clsRecord.m_qstrTooltip)
            return QString("text/tool tip of %1: \"%2\"/\"%3\", model expects \"%4\"/\"%5\"")
                .arg(qstrId, pLib->text(0), pLib->toolTip(0), pRow->m_clsRecord.m_qstrText,
                     pRow->m_clsRecord.m_qstrTooltip);
        const QString qstrIcon = IconSignature(pLib->data(0, Qt::DecorationRole).value<QIcon>());
        if (qstrIcon != ExpectedIconSignature(pRow->m_qstrShownIcon))
            return QString("shown icon of %1 is %2, model expects the icon of \"%3\" (%4)")
                .arg(qstrId, qstrIcon, pRow->m_qstrShownIcon, ExpectedIconSignature(pRow->m_qstrShownIcon));
        if (int(pLib->flags()) != pRow->m_iFlags)
            return QString("flags of %1 are 0x%2, model expects 0x%3")
                .arg(qstrId)
                .arg(int(pLib->flags()), 0, 16)
                .arg(pRow->m_iFlags, 0, 16);
        const QVariant varCheck = pLib->data(0, Qt::CheckStateRole);
        const int iCheck = varCheck.isValid() ? varCheck.toInt() : -1;
        if (iCheck != CLS_BaseTreeModel::Data(pRow))
            return QString("check state of %1 is %2, model expects %3")
                .arg(qstrId)
                .arg(iCheck)
                .arg(CLS_BaseTreeModel::Data(pRow));
        if (pLib->isHidden() != pRow->m_blHidden)
            return QString("hidden of %1 is %2, model expects %3")
                .arg(qstrId)
                .arg(pLib->isHidden())
                .arg(pRow->m_blHidden);
        if (pLib->isExpanded() != pRow->m_blExpanded)
            return QString("expanded of %1 is %2, model expects %3")
                .arg(qstrId)
                .arg(pLib->isExpanded())
                .arg(pRow->m_blExpanded);
        if ((m_tree.itemWidget(pLib, 1) != nullptr) != pRow->m_blToolBar)
            return QString("tool bar of %1: %2, model expects %3")
                .arg(qstrId)
                .arg(m_tree.itemWidget(pLib, 1) != nullptr)
                .arg(pRow->m_blToolBar);
        const QString qstrDiff = CompareRows(pRow, pLib);
        if (!qstrDiff.isEmpty())
            return qstrDiff;
    }
    return QString();
}

QString CLS_ModelRun::Compare()
{
    const QString qstrDiff = CompareRows(nullptr, nullptr);
    if (!qstrDiff.isEmpty())
        return qstrDiff;
    if (m_tree.m_qmapNodes.keys() != m_model.m_qmapIndex.keys())
        return QString("index holds [%1], model expects [%2]")
            .arg(m_tree.m_qmapNodes.keys().join(","), m_model.m_qmapIndex.keys().join(","));
    for (auto it = m_model.m_qmapIndex.cbegin(); it != m_model.m_qmapIndex.cend(); ++it) {
        if (m_tree.m_qmapNodes.value(it.key()) != it.value()->m_pLib)
            return QString("index entry %1 names another row than the model's").arg(it.key());
    }
    if (m_tree.m_qstrRootId != m_model.m_qstrRootId)
        return QString("root id \"%1\", model expects \"%2\"").arg(m_tree.m_qstrRootId, m_model.m_qstrRootId);
    QTreeWidgetItem* pModelCurrent = m_model.m_pCurrent ? m_model.m_pCurrent->m_pLib : nullptr;
    if (m_tree.currentItem() != pModelCurrent)
        return QString("current row is %1, model expects %2")
            .arg(m_tree.currentItem() ? CLS_TreeSnapshot::NodeId(m_tree.currentItem()) : QString("none"),
                 pModelCurrent ? CLS_TreeSnapshot::NodeId(pModelCurrent) : QString("none"));
    if (!m_tree.m_blSendChecked || !m_tree.m_blSendSelected)
        return "a signal gate stayed closed after the call";
    return QString();
}

// _blSelectionByQt: the call lets Qt move the current row (removals); each SignSelected must then
// continue the chain of current rows, and the model takes the tree's current row afterwards.
QString CLS_ModelRun::CompareSignals(const QVector<STRCT_CheckSignal>& _qvecExpected, bool _blSelectionByQt,
                                     STRCT_ModelRow* _pExpectedCurrent)
{
    QStringList qlstGot;
    QStringList qlstWant;
    for (const QList<QVariant>& qlstArgs : qAsConst(m_spyChecked)) {
        const CLS_TreeItem clsItem = qlstArgs.at(2).value<CLS_TreeItem>();
        qlstGot << QString("%1,%2%3")
                       .arg(qlstArgs.at(0).toString())
                       .arg(int(qlstArgs.at(1).toBool()))
                       .arg(clsItem.m_qstrId == qlstArgs.at(0).toString() ? QString() : QString("!"));
    }
    for (const STRCT_CheckSignal& sig : _qvecExpected)
        qlstWant << QString("%1,%2").arg(sig.m_qstrId).arg(int(sig.m_blChecked));
    if (qlstGot != qlstWant)
        return QString("SignCheckedStatusChanged [%1], model expects [%2]")
            .arg(qlstGot.join(" "), qlstWant.join(" "));
    for (int i = 0; i < _qvecExpected.size(); ++i) {
        if (!SameRecord(m_spyChecked.at(i).at(2).value<CLS_TreeItem>(), _qvecExpected.at(i).m_clsRecord))
            return QString("SignCheckedStatusChanged %1 carries another record").arg(i);
    }
    m_spyChecked.clear();
    if (!m_spyCheckedNever.isEmpty() || !m_spyClicked.isEmpty() || !m_spyDblClicked.isEmpty() ||
        !m_spyRightClicked.isEmpty() || !m_spyDroped.isEmpty() || !m_spyClickButton.isEmpty())
        return "a signal that no call of this sequence may send was sent";

    QStringList qlstSelected;
    for (const QList<QVariant>& qlstArgs : qAsConst(m_spySelected))
        qlstSelected << qlstArgs.at(0).toString() + "<-" + qlstArgs.at(2).toString();
    if (_blSelectionByQt) {
        QString qstrCurrent = m_model.m_pCurrent ? m_model.m_pCurrent->m_clsRecord.m_qstrId : QString();
        for (const QList<QVariant>& qlstArgs : qAsConst(m_spySelected)) {
            const QString qstrOld = qlstArgs.at(2).toString();
            if (qstrOld != qstrCurrent && !qstrOld.isEmpty())
                return QString("SignSelected [%1] breaks the chain of current rows at %2")
                    .arg(qlstSelected.join(" "), qstrCurrent);
            if (qlstArgs.at(1).value<CLS_TreeItem>().m_qstrId != qlstArgs.at(0).toString())
                return "SignSelected carries another record";
            qstrCurrent = qlstArgs.at(0).toString();
        }
        m_model.m_pCurrent = m_model.m_qhashByLib.value(m_tree.currentItem(), nullptr);
        if (m_tree.currentItem() != nullptr && m_model.m_pCurrent == nullptr)
            return "the current row is not a row of the model";
        if (!m_spySelected.isEmpty() && m_model.m_pCurrent != nullptr &&
            m_model.m_pCurrent->m_clsRecord.m_qstrId != qstrCurrent)
            return QString("SignSelected [%1] does not end at the current row %2")
                .arg(qlstSelected.join(" "), m_model.m_pCurrent->m_clsRecord.m_qstrId);
        if (_pExpectedCurrent != nullptr && m_model.m_pCurrent != _pExpectedCurrent)
            return QString("current row after the move is %1, model expects %2 [%3]")
                .arg(m_model.m_pCurrent ? m_model.m_pCurrent->m_clsRecord.m_qstrId : QString("none"),
                     _pExpectedCurrent->m_clsRecord.m_qstrId, qlstSelected.join(" "));
    } else if (!m_spySelected.isEmpty()) {
        return QString("SignSelected [%1], model expects none").arg(qlstSelected.join(" "));
    }
    m_spySelected.clear();
    return QString();
}

QString CLS_ModelRun::Query(const STRCT_Step& _step)
{
    const QString& qstrId = _step.m_qstrA;
    STRCT_ModelRow* pRow = m_model.m_qmapIndex.value(qstrId, nullptr);
    CLS_TreeItem clsSentinel = CLS_TreeTestUtil::MakeItem("sentinel", "");
    auto outcome = [](int _iGot, int _iWant, const QString& _qstrGot, const QString& _qstrWant) {
        if (_iGot == _iWant && _qstrGot == _qstrWant)
            return QString();
        return QString("gave %1 [%2], model expects %3 [%4]")
            .arg(_iGot)
            .arg(_qstrGot)
            .arg(_iWant)
            .arg(_qstrWant);
    };
    auto records = [](const std::vector<STRCT_ModelRow*>& _vecRows) {
        QVector<CLS_TreeItem> qvecItems{CLS_TreeTestUtil::MakeItem("sentinel", "")};
        for (const STRCT_ModelRow* p : _vecRows)
            qvecItems << p->m_clsRecord;
        return qvecItems;
    };
    auto sameRecords = [](const QVector<CLS_TreeItem>& _a, const QVector<CLS_TreeItem>& _b) {
        if (_a.size() != _b.size())
            return false;
        for (int i = 0; i < _a.size(); ++i) {
            if (!SameRecord(_a[i], _b[i]))
                return false;
        }
        return true;
    };
    auto rowIds = [](const QVector<QTreeWidgetItem*>& _qvecRows) {
        QStringList qlstIds;
        for (QTreeWidgetItem* p : _qvecRows)
            qlstIds << (p ? QString::number(quintptr(p), 16) : QString("null"));
        return qlstIds.join(",");
    };
    auto libRows = [](const std::vector<STRCT_ModelRow*>& _vecRows) {
        QVector<QTreeWidgetItem*> qvecRows{nullptr};
        for (const STRCT_ModelRow* p : _vecRows)
            qvecRows << p->m_pLib;
        return qvecRows;
    };

    switch (_step.m_iOp) {
    case OP_Q_ITEM_BY_ID: {
        CLS_TreeItem clsOut = clsSentinel;
        const int iRet = m_tree.GetItemById(qstrId, clsOut);
        const CLS_TreeItem clsWant = pRow ? pRow->m_clsRecord : clsSentinel;
        if (iRet != (pRow ? 0 : -1) || !SameRecord(clsOut, clsWant))
            return outcome(iRet, pRow ? 0 : -1, ItemText(clsOut), ItemText(clsWant));
        return QString();
    }
    case OP_Q_ITEM_BY_NAME: {
        QVector<CLS_TreeItem> qvecOut{clsSentinel};
        const int iRet = m_tree.GetItemByName(qstrId, qvecOut);
        STRCT_ModelRow* pRoot = m_model.m_qmapIndex.value(m_model.m_qstrRootId, nullptr);
        std::vector<STRCT_ModelRow*> vecFound;
        if (pRoot != nullptr) {
            std::vector<STRCT_ModelRow*> vecAll;
            m_model.Descendants(pRoot, vecAll, true);
            for (STRCT_ModelRow* p : vecAll) {
                if (p->m_clsRecord.m_qstrText.contains(qstrId, Qt::CaseInsensitive))
                    vecFound.push_back(p);
            }
        }
        const QVector<CLS_TreeItem> qvecWant = records(vecFound);
        if (iRet != (pRoot ? 0 : -1) || !sameRecords(qvecOut, qvecWant))
            return outcome(iRet, pRoot ? 0 : -1, Ids(qvecOut), Ids(qvecWant));
        return QString();
    }
    case OP_Q_CHILDS: {
        QVector<CLS_TreeItem> qvecOut{clsSentinel};
        const int iRet = m_tree.GetChilds(qstrId, qvecOut, _step.m_blFlag);
        std::vector<STRCT_ModelRow*> vecRows;
        if (pRow != nullptr)
            m_model.Descendants(pRow, vecRows, _step.m_blFlag);
        const QVector<CLS_TreeItem> qvecWant = records(vecRows);
        if (iRet != (pRow ? 0 : -1) || !sameRecords(qvecOut, qvecWant))
            return outcome(iRet, pRow ? 0 : -1, Ids(qvecOut), Ids(qvecWant));
        return QString();
    }
    case OP_Q_PARENT: {
        CLS_TreeItem clsOut = clsSentinel;
        const int iRet = m_tree.GetParent(qstrId, clsOut);
        STRCT_ModelRow* pParent = pRow ? pRow->m_pParent : nullptr;
        const CLS_TreeItem clsWant = pParent ? pParent->m_clsRecord : clsSentinel;
        if (iRet != (pParent ? 0 : -1) || !SameRecord(clsOut, clsWant))
            return outcome(iRet, pParent ? 0 : -1, ItemText(clsOut), ItemText(clsWant));
        return QString();
    }
    case OP_Q_CHECKED:
    case OP_Q_CHECKED_NODES: {
        const bool blLeafOnly = _step.m_iOp == OP_Q_CHECKED_NODES || _step.m_blFlag;
        QVector<CLS_TreeItem> qvecOut{clsSentinel};
        const int iRet = _step.m_iOp == OP_Q_CHECKED_NODES ? m_tree.GetCheckedNodes(qvecOut)
                                                           : m_tree.GetCheckedItems(qvecOut, blLeafOnly);
        std::vector<STRCT_ModelRow*> vecRows;
        for (STRCT_ModelRow* p : qAsConst(m_model.m_qmapIndex)) {
            if (!CLS_BaseTreeModel::Enabled(p) || p->m_blHidden || CLS_BaseTreeModel::Data(p) != Qt::Checked)
                continue;
            if (blLeafOnly && !p->m_vecChildren.empty())
                continue;
            vecRows.push_back(p);
        }
        const QVector<CLS_TreeItem> qvecWant =
            m_model.m_blCheckEnable ? records(vecRows) : QVector<CLS_TreeItem>{clsSentinel};
        const int iWant = m_model.m_blCheckEnable ? 0 : -1;
        if (iRet != iWant || !sameRecords(qvecOut, qvecWant))
            return outcome(iRet, iWant, Ids(qvecOut), Ids(qvecWant));
        return QString();
    }
    case OP_Q_ALL: {
        QMap<QString, CLS_TreeItem> qmapOut{{"~sentinel", clsSentinel}};
        const int iRet = m_tree.GetAllItems(qmapOut);
        QMap<QString, CLS_TreeItem> qmapWant{{"~sentinel", clsSentinel}};
        for (auto it = m_model.m_qmapIndex.cbegin(); it != m_model.m_qmapIndex.cend(); ++it)
            qmapWant.insert(it.key(), it.value()->m_clsRecord);
        bool blSame = qmapOut.keys() == qmapWant.keys();
        for (auto it = qmapWant.cbegin(); blSame && it != qmapWant.cend(); ++it)
            blSame = SameRecord(it.value(), qmapOut.value(it.key()));
        if (iRet != 0 || !blSame)
            return outcome(iRet, 0, qmapOut.keys().join(","), qmapWant.keys().join(","));
        return QString();
    }
    case OP_Q_CURRENT: {
        CLS_TreeItem clsOut = clsSentinel;
        const int iRet = m_tree.GetCurrentItem(clsOut);
        STRCT_ModelRow* pCurrent = m_model.m_pCurrent;
        const bool blOk = pCurrent != nullptr && CLS_BaseTreeModel::Enabled(pCurrent);
        const CLS_TreeItem clsWant = blOk ? pCurrent->m_clsRecord : clsSentinel;
        if (iRet != (blOk ? 0 : -1) || !SameRecord(clsOut, clsWant))
            return outcome(iRet, blOk ? 0 : -1, ItemText(clsOut), ItemText(clsWant));
        return QString();
    }
    case OP_Q_CHECK_STATUS: {
        Qt::CheckState iOut = Qt::PartiallyChecked; // left alone on failure
        const int iRet = m_tree.GetItemCheckStatus(qstrId, iOut);
        const int iWant = pRow ? qMax(0, CLS_BaseTreeModel::Data(pRow)) : int(Qt::PartiallyChecked);
        if (iRet != (pRow ? 0 : -1) || int(iOut) != iWant)
            return outcome(iRet, pRow ? 0 : -1, QString::number(iOut), QString::number(iWant));
        return QString();
    }
    case OP_Q_NODE_BY_NAME: {
        QMap<QString, QTreeWidgetItem*> qmapOut{{"~sentinel", nullptr}};
        const int iRet = m_tree.GetNodeByName(qstrId, qmapOut);
        QMap<QString, QTreeWidgetItem*> qmapWant{{"~sentinel", nullptr}};
        if (!qstrId.isEmpty()) {
            const QMap<QString, STRCT_ModelRow*> qmapFound = m_model.NodesByName(qstrId);
            for (auto it = qmapFound.cbegin(); it != qmapFound.cend(); ++it)
                qmapWant.insert(it.key(), it.value()->m_pLib);
        }
        const int iWant = qstrId.isEmpty() ? -1 : 0;
        if (iRet != iWant || qmapOut != qmapWant)
            return outcome(iRet, iWant, qmapOut.keys().join(","), qmapWant.keys().join(","));
        return QString();
    }
    case OP_Q_CHILD_NODES: {
        QVector<QTreeWidgetItem*> qvecOut{nullptr};
        const int iRet = m_tree.GetChildNode(pRow ? pRow->m_pLib : nullptr, qvecOut, _step.m_blFlag);
        std::vector<STRCT_ModelRow*> vecRows;
        if (pRow != nullptr)
            m_model.Descendants(pRow, vecRows, _step.m_blFlag);
        const QVector<QTreeWidgetItem*> qvecWant = libRows(vecRows);
        if (iRet != (pRow ? 0 : -1) || qvecOut != qvecWant)
            return outcome(iRet, pRow ? 0 : -1, rowIds(qvecOut), rowIds(qvecWant));
        return QString();
    }
    case OP_Q_PARENT_NODES: {
        QVector<QTreeWidgetItem*> qvecOut{nullptr};
        const int iRet = m_tree.GetParentNode(pRow ? pRow->m_pLib : nullptr, qvecOut);
        std::vector<STRCT_ModelRow*> vecRows;
        for (STRCT_ModelRow* p = pRow ? pRow->m_pParent : nullptr; p != nullptr; p = p->m_pParent)
            vecRows.push_back(p);
        const int iWant = vecRows.empty() ? -1 : 0;
        const QVector<QTreeWidgetItem*> qvecWant = libRows(vecRows);
        if (iRet != iWant || qvecOut != qvecWant)
            return outcome(iRet, iWant, rowIds(qvecOut), rowIds(qvecWant));
        return QString();
    }
    case OP_Q_PARENT_MAP: {
        QMap<QString, QTreeWidgetItem*> qmapOut{{"~sentinel", nullptr}};
        const int iRet = m_tree.GetParentNode(pRow ? pRow->m_pLib : nullptr, qmapOut);
        QMap<QString, QTreeWidgetItem*> qmapWant{{"~sentinel", nullptr}};
        for (STRCT_ModelRow* p = pRow ? pRow->m_pParent : nullptr; p != nullptr; p = p->m_pParent)
            qmapWant.insert(p->m_clsRecord.m_qstrId, p->m_pLib);
        const int iWant = (pRow && pRow->m_pParent) ? 0 : -1;
        if (iRet != iWant || qmapOut != qmapWant)
            return outcome(iRet, iWant, qmapOut.keys().join(","), qmapWant.keys().join(","));
        return QString();
    }
    default:
        return QString();
    }
}

QString CLS_ModelRun::Step(const STRCT_Step& _step)
{
    m_model.m_qvecCheckSignals.clear();
    const int iRowsBefore = int(m_model.m_qmapIndex.size());
    bool blSelectionByQt = false;
    STRCT_ModelRow* pExpectedCurrent = nullptr;
    QString qstrResult;
    auto result = [&qstrResult](int _iGot, int _iWant) {
        if (_iGot != _iWant)
            qstrResult = QString("result %1, model expects %2").arg(_iGot).arg(_iWant);
    };

    switch (_step.m_iOp) {
    case OP_INIT: {
        const int iRet = m_tree.Init(_step.m_qstrA, _step.m_qmapItems, _step.m_blFlag);
        const int iWant = m_model.Init(_step.m_qstrA, _step.m_qmapItems, _step.m_blFlag,
                                       [this](QTreeWidgetItem* _pLib) { return LibChildren(_pLib); });
        result(iRet, iWant);
        break;
    }
    case OP_CLEAR:
        m_tree.Clear();
        m_model.Clear();
        break;
    case OP_ADD:
    case OP_ADDS: {
        const QVector<CLS_TreeItem> qvecItems =
            _step.m_iOp == OP_ADD ? QVector<CLS_TreeItem>{_step.m_clsItem} : _step.m_qvecItems;
        if (_step.m_iOp == OP_ADD)
            result(m_tree.AddItem(_step.m_clsItem), m_model.AddItem(_step.m_clsItem));
        else
            m_tree.AddItems(qvecItems);
        for (const CLS_TreeItem& clsItem : qvecItems) {
            if (_step.m_iOp == OP_ADDS)
                m_model.AddItem(clsItem);
            STRCT_ModelRow* pRow = m_model.m_qmapIndex.value(clsItem.m_qstrId, nullptr);
            if (pRow != nullptr && pRow->m_pLib == nullptr)
                m_model.Pair(pRow, m_tree.GetNodeById(clsItem.m_qstrId));
        }
        break;
    }
    case OP_DELETE:
        m_tree.DeleteItem(_step.m_qstrA);
        m_model.DeleteItem(_step.m_qstrA);
        blSelectionByQt = true;
        break;
    case OP_UPDATE:
        m_tree.UpdateItem(_step.m_clsItem);
        m_model.UpdateItem(_step.m_clsItem);
        break;
    case OP_ICON:
        m_tree.UpdateItemIcon(_step.m_qstrA, _step.m_qstrB);
        m_model.UpdateItemIcon(_step.m_qstrA, _step.m_qstrB);
        break;
    case OP_SET_CHECK:
        if (_step.m_blFlag)
            m_tree.SetItemCheckStatus(_step.m_qstrA, Qt::CheckState(_step.m_iValue), true);
        else
            m_tree.SetItemCheckStatus(_step.m_qstrA, Qt::CheckState(_step.m_iValue)); // default: silent
        m_model.SetItemCheckStatus(_step.m_qstrA, _step.m_iValue, _step.m_blFlag);
        break;
    case OP_USER_CHECK: {
        STRCT_ModelRow* pRow = m_model.m_qmapIndex.value(_step.m_qstrA, nullptr);
        if (!_step.m_qstrB.isEmpty()) {
            for (const auto& p : m_model.m_vecOwned) {
                if (p->m_clsRecord.m_qstrTooltip == _step.m_qstrB && p->m_pLib != nullptr &&
                    p->m_pLib->treeWidget() == &m_tree)
                    pRow = p.get();
            }
        }
        if (pRow == nullptr || pRow->m_pLib == nullptr)
            break;
        const int iData = CLS_BaseTreeModel::Data(pRow);
        const int iValue = _step.m_iValue >= 0 ? _step.m_iValue : (iData == Qt::Checked ? 0 : 2);
        // As the view's delegate does for a click on the box.
        m_tree.model()->setData(m_tree.indexFromItem(pRow->m_pLib, 0), iValue, Qt::CheckStateRole);
        m_model.UserCheck(pRow, iValue);
        break;
    }
    case OP_DISABLE:
        m_tree.SetItemDisabled(_step.m_qstrA, _step.m_blFlag);
        m_model.SetItemDisabled(_step.m_qstrA, _step.m_blFlag);
        break;
    case OP_SHOW_BY_ID:
        m_tree.SetShowItemById(_step.m_qstrA);
        m_model.SetShowItemById(_step.m_qstrA);
        break;
    case OP_SHOW_BY_NAME:
        m_tree.SetShowItemByName(_step.m_qstrA);
        m_model.SetShowItemByName(_step.m_qstrA);
        break;
    case OP_MOVE_UP:
    case OP_MOVE_DOWN: {
        const bool blUp = _step.m_iOp == OP_MOVE_UP;
        const int iRet = blUp ? m_tree.MoveUpOneRow(_step.m_qstrA, _step.m_qstrB)
                              : m_tree.MoveDownOneRow(_step.m_qstrA, _step.m_qstrB);
        const int iWant = m_model.MoveOneRow(_step.m_qstrA, _step.m_qstrB, blUp);
        result(iRet, iWant);
        if (iWant == 0) {
            m_qmapCoverage["moves done"] += 1;
            blSelectionByQt = true;
            STRCT_ModelRow* pSrc = m_model.m_qmapIndex.value(_step.m_qstrA);
            // The source is made current, unless Qt refuses a disabled row.
            if (CLS_BaseTreeModel::Enabled(pSrc))
                pExpectedCurrent = pSrc;
        }
        break;
    }
    case OP_EXPAND:
        m_tree.SetItemExpandStatus(_step.m_qstrA, n_TreeExpandType(_step.m_iValue));
        m_model.SetItemExpandStatus(_step.m_qstrA, _step.m_iValue);
        break;
    case OP_EXPAND_ALL:
        m_tree.SetAllExpandStatus(_step.m_blFlag);
        m_model.SetAllExpandStatus(_step.m_blFlag);
        break;
    case OP_CURRENT: {
        if (_step.m_blFlag)
            m_tree.SetCurrentItem(_step.m_qstrA, true);
        else
            m_tree.SetCurrentItem(_step.m_qstrA); // default: silent
        STRCT_ModelRow* pRow = _step.m_qstrA.isEmpty() ? nullptr : m_model.m_qmapIndex.value(_step.m_qstrA);
        if (pRow != nullptr)
            CLS_BaseTreeModel::ScrollTo(pRow);
        // Qt makes no disabled row current.
        if (pRow != nullptr && pRow != m_model.m_pCurrent && CLS_BaseTreeModel::Enabled(pRow)) {
            if (_step.m_blFlag) {
                const QString qstrOld =
                    m_model.m_pCurrent ? m_model.m_pCurrent->m_clsRecord.m_qstrId : QString();
                const QStringList qlstWant = {pRow->m_clsRecord.m_qstrId + "<-" + qstrOld};
                QStringList qlstGot;
                for (const QList<QVariant>& qlstArgs : qAsConst(m_spySelected))
                    qlstGot << qlstArgs.at(0).toString() + "<-" + qlstArgs.at(2).toString();
                if (qlstGot != qlstWant)
                    return QString("SignSelected [%1], model expects [%2]")
                        .arg(qlstGot.join(" "), qlstWant.join(" "));
                m_spySelected.clear();
            }
            m_model.m_pCurrent = pRow;
        }
        break;
    }
    default:
        qstrResult = Query(_step);
        break;
    }
    if (!qstrResult.isEmpty())
        return qstrResult;
    const int iRows = int(m_model.m_qmapIndex.size());
    m_qmapCoverage["max rows"] = qMax(m_qmapCoverage.value("max rows"), iRows);
    m_qmapCoverage["check signals"] += m_model.m_qvecCheckSignals.size();
    m_qmapCoverage["selected signals"] += m_spySelected.size();
    if (qstrResult.isEmpty() && _step.m_iOp < OP_Q_ITEM_BY_ID)
        m_qmapCoverage[QString(s_arrOpNames[_step.m_iOp]) +
                       (iRowsBefore != iRows ? " (rows changed)" : "")] += 1;
    const QString qstrSignals = CompareSignals(m_model.m_qvecCheckSignals, blSelectionByQt, pExpectedCurrent);
    if (!qstrSignals.isEmpty())
        return qstrSignals;
    return Compare();
}

struct STRCT_Failure
{
    int m_iStep = -1; // index of the failing step
    QString m_qstrWhat;
    QString m_qstrLibrary;
    QString m_qstrModel;
};

STRCT_Config ConfigOf(quint32 _uiSeed)
{
    STRCT_Config config;
    config.m_blCheckEnable = _uiSeed % 4 != 3;
    config.m_iBtnShowType = _uiSeed % 2 == 0 ? ITEM_BTN_SHOW_ALWAYS : ITEM_BTN_SHOW_HOVER;
    return config;
}

// Replays _qvecSteps on a fresh tree; the first disagreement, if any.
STRCT_Failure Replay(const STRCT_Config& _config, const QStringList& _qlstIcons,
                     const QVector<STRCT_Step>& _qvecSteps, bool _blMutate)
{
    CLS_ModelRun run(_config, _qlstIcons, _blMutate);
    STRCT_Failure failure;
    for (int i = 0; i < _qvecSteps.size(); ++i) {
        const QString qstrWhat = run.Step(_qvecSteps.at(i));
        if (!qstrWhat.isEmpty()) {
            failure = {i, qstrWhat, run.LibrarySnapshot(), run.ModelSnapshot()};
            break;
        }
    }
    return failure;
}

// Generates and runs one seed. On failure, gives the shortest failing prefix of the sequence, and a
// shorter list of steps that still fails, found by leaving out single steps.
bool RunSeed(quint32 _uiSeed, int _iSteps, const QStringList& _qlstIcons, bool _blMutate,
             QString& _qstrReport, int& _iPrefix, int& _iMinimal)
{
    const STRCT_Config config = ConfigOf(_uiSeed);
    std::mt19937 rng(_uiSeed);
    QVector<STRCT_Step> qvecSteps;
    int iFailedAt = -1;
    QMap<QString, int> qmapCoverage;
    {
        CLS_ModelRun run(config, _qlstIcons, _blMutate);
        for (int i = 0; i < _iSteps; ++i) {
            qvecSteps.append(run.Generate(rng));
            if (!run.Step(qvecSteps.last()).isEmpty()) {
                iFailedAt = i;
                break;
            }
        }
        qmapCoverage = run.m_qmapCoverage;
    }
    if (iFailedAt < 0) {
        QStringList qlstCoverage;
        for (auto it = qmapCoverage.cbegin(); it != qmapCoverage.cend(); ++it)
            qlstCoverage << QString("%1 %2").arg(it.key()).arg(it.value());
        _qstrReport = qlstCoverage.join(", ");
        return true;
    }

    // Shortest failing prefix: the tree is compared after every step, so no prefix shorter than
    // the one that ends at the first failing step can fail. Confirm it on a fresh tree.
    QVector<STRCT_Step> qvecPrefix = qvecSteps.mid(0, iFailedAt + 1);
    const STRCT_Failure failure = Replay(config, _qlstIcons, qvecPrefix, _blMutate);
    if (failure.m_iStep != iFailedAt) {
        _qstrReport = QString("seed %1 failed at step %2 but fails at %3 on replay (-1: not at all)")
                          .arg(_uiSeed)
                          .arg(iFailedAt)
                          .arg(failure.m_iStep);
        _iPrefix = iFailedAt + 1;
        return false;
    }
    _iPrefix = qvecPrefix.size();

    // Leave out chunks of earlier steps, halves first, while the rest still fails; a bounded
    // number of replays keeps a long prefix affordable.
    QVector<STRCT_Step> qvecMinimal = qvecPrefix;
    STRCT_Failure minimalFailure = failure;
    int iReplays = 0;
    for (int iChunk = qMax(1, qvecMinimal.size() / 2); iChunk >= 1 && iReplays < 400; iChunk /= 2) {
        for (int iStart = qvecMinimal.size() - 1 - iChunk; iStart >= 0 && iReplays < 400; iStart -= iChunk) {
            QVector<STRCT_Step> qvecTry = qvecMinimal;
            qvecTry.remove(iStart, iChunk);
            ++iReplays;
            const STRCT_Failure tryFailure = Replay(config, _qlstIcons, qvecTry, _blMutate);
            if (tryFailure.m_iStep >= 0) {
                qvecMinimal = qvecTry.mid(0, tryFailure.m_iStep + 1);
                minimalFailure = tryFailure;
                iStart = qMin(iStart, qvecMinimal.size() - 1);
            }
        }
    }

    _iMinimal = qvecMinimal.size();
    QStringList qlstLines;
    qlstLines
        << QString("seed %1 (check boxes %2, button show type %3): the shortest failing prefix has %4 steps")
               .arg(_uiSeed)
               .arg(config.m_blCheckEnable)
               .arg(config.m_iBtnShowType)
               .arg(qvecPrefix.size());
    qlstLines << "  at step " + QString::number(failure.m_iStep) + ": " + failure.m_qstrWhat;
    qlstLines << "  tree:  " + failure.m_qstrLibrary;
    qlstLines << "  model: " + failure.m_qstrModel;
    for (int i = 0; i < qvecPrefix.size(); ++i)
        qlstLines << QString("  %1. %2").arg(i).arg(StepText(qvecPrefix.at(i)));
    qlstLines << QString("  the same disagreement with %1 of these steps: %2")
                     .arg(qvecMinimal.size())
                     .arg(minimalFailure.m_qstrWhat);
    qlstLines << "  tree:  " + minimalFailure.m_qstrLibrary;
    qlstLines << "  model: " + minimalFailure.m_qstrModel;
    for (int i = 0; i < qvecMinimal.size(); ++i)
        qlstLines << QString("  %1. %2").arg(i).arg(StepText(qvecMinimal.at(i)));
    _qstrReport = qlstLines.join("\n");
    return false;
}

} // namespace

class tst_ModelBaseTree : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldMatchTheModelOverRandomSequences_data();
    void shouldMatchTheModelOverRandomSequences();
    void shouldCatchABrokenModelRuleWithAShortPrefix();

private:
    QTemporaryDir m_tmpDir;
    QStringList m_qlstIcons;
};

void tst_ModelBaseTree::initTestCase()
{
    QVERIFY(m_tmpDir.isValid());
    // Three icons of distinct colours, no icon, and a path to no file.
    m_qlstIcons << QString();
    const QList<QColor> qlstColors = {Qt::red, Qt::green, Qt::blue};
    for (int i = 0; i < qlstColors.size(); ++i) {
        QImage image(8, 8, QImage::Format_ARGB32);
        image.fill(qlstColors.at(i));
        const QString qstrPath = m_tmpDir.filePath(QString("icon%1.png").arg(i));
        QVERIFY(image.save(qstrPath));
        m_qlstIcons << qstrPath;
    }
    m_qlstIcons << m_tmpDir.filePath("missing.png");
}

void tst_ModelBaseTree::shouldMatchTheModelOverRandomSequences_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("steps");
    QStringList qlstSeeds = qEnvironmentVariable("WGT_MODEL_SEEDS").split(',', Qt::SkipEmptyParts);
    if (qlstSeeds.isEmpty())
        for (int i = 1; i <= 16; ++i)
            qlstSeeds << QString::number(i);
    bool blOk = false;
    int iSteps = qEnvironmentVariableIntValue("WGT_MODEL_STEPS", &blOk);
    if (!blOk || iSteps <= 0)
        iSteps = 1000;
    for (const QString& qstrSeed : qAsConst(qlstSeeds)) {
        const quint32 uiSeed = qstrSeed.trimmed().toUInt();
        QTest::newRow(qPrintable("seed " + qstrSeed.trimmed())) << uiSeed << iSteps;
    }
}

void tst_ModelBaseTree::shouldMatchTheModelOverRandomSequences()
{
    QFETCH(quint32, seed);
    QFETCH(int, steps);
    QString qstrReport;
    int iPrefix = 0;
    int iMinimal = 0;
    const bool blOk = RunSeed(seed, steps, m_qlstIcons, false, qstrReport, iPrefix, iMinimal);
    if (!blOk)
        qWarning().noquote() << qstrReport;
    else
        qInfo().noquote() << QString("seed %1, %2 steps: %3").arg(seed).arg(steps).arg(qstrReport);
    QVERIFY2(
        blOk,
        qPrintable(
            QString("seed %1 disagrees after %2 steps, see the step list above").arg(seed).arg(iPrefix)));
}

// The model with one rule broken on purpose (AddItem placed before equal siblings) must be caught,
// and cut down to a short sequence: the test can fail, and its shrinking works.
void tst_ModelBaseTree::shouldCatchABrokenModelRuleWithAShortPrefix()
{
    QString qstrReport;
    int iPrefix = 0;
    int iMinimal = 0;
    bool blCaught = false;
    for (quint32 uiSeed = 1; uiSeed <= 8 && !blCaught; ++uiSeed)
        blCaught = !RunSeed(uiSeed, 500, m_qlstIcons, true, qstrReport, iPrefix, iMinimal);
    QVERIFY2(blCaught, "a model with a broken AddItem rule went unnoticed");
    QVERIFY2(qstrReport.contains("AddItem"), qPrintable(qstrReport));
    QVERIFY2(iPrefix <= 200, qPrintable(qstrReport));
    QVERIFY2(iMinimal <= 6, qPrintable(qstrReport)); // an Init and a few adds show it
}

QTEST_MAIN(tst_ModelBaseTree)
#include "tst_ModelBaseTree.moc"
