#pragma once
// Decoders shared by the fuzz targets and by the regression test that replays their corpus: bytes
// become record maps, node maps, channel-state payloads and sheet files, and each Run... function
// drives the library with one input exactly as the fuzz target does. Header only, so that the clang
// fuzz build and the normal test build compile the very same code. GUI thread only.
//
// A reader past the end of its input answers zeros, so every byte string decodes to something.

#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeWidget.h"
#include "FunctionUtil.h"
#include "TreeStructDefine.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QPair>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTreeWidgetItem>
#include <QVariant>
#include <QVector>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <functional>

namespace WgtFuzz {

// ---- byte reader --------------------------------------------------------------------------------

class CLS_FuzzReader
{
public:
    CLS_FuzzReader(const uint8_t* _pData, size_t _iSize) : m_pData(_pData), m_iSize(_iSize) {}

    bool AtEnd() const { return m_iPos >= m_iSize; }
    size_t Remaining() const { return AtEnd() ? 0 : m_iSize - m_iPos; }

    quint8 Byte() { return AtEnd() ? 0 : m_pData[m_iPos++]; }
    bool Bool() { return (Byte() & 1) != 0; }
    int Pick(int _iCount) { return _iCount <= 0 ? 0 : Byte() % _iCount; }

    int Int32()
    {
        quint32 uiValue = 0;
        for (int i = 0; i < 4; ++i)
            uiValue |= quint32(Byte()) << (8 * i);
        return int(uiValue);
    }

    // Numbers that like to break things: small ones around zero, the limits, the record defaults.
    int OddInt()
    {
        switch (Pick(8)) {
        case 0:
            return int(Byte()) - 8;
        case 1:
            return INT_MIN;
        case 2:
            return INT_MAX;
        case 3:
            return 99;
        case 4:
            return -1;
        case 5:
            return 0;
        case 6:
            return int(Byte()) % 4;
        default:
            return Int32();
        }
    }

    // Up to _iMaxLen raw bytes, length first.
    QByteArray Bytes(int _iMaxLen)
    {
        const int iLen = Pick(_iMaxLen + 1);
        QByteArray qbaData;
        for (int i = 0; i < iLen && !AtEnd(); ++i)
            qbaData.append(char(Byte()));
        return qbaData;
    }

    // Raw bytes as UTF-8 (invalid sequences included) or as Latin-1.
    QString Text(int _iMaxLen)
    {
        const bool blUtf8 = Bool();
        const QByteArray qbaData = Bytes(_iMaxLen);
        return blUtf8 ? QString::fromUtf8(qbaData) : QString::fromLatin1(qbaData);
    }

    // One of _qlstChoices, or (last choice) a free text.
    QString Choice(const QStringList& _qlstChoices)
    {
        const int iIndex = Pick(_qlstChoices.size() + 1);
        if (iIndex < _qlstChoices.size())
            return _qlstChoices.at(iIndex);
        return Text(6);
    }

    // The bytes not read yet.
    QByteArray Rest()
    {
        QByteArray qbaData;
        if (!AtEnd())
            qbaData = QByteArray(reinterpret_cast<const char*>(m_pData + m_iPos), int(m_iSize - m_iPos));
        m_iPos = m_iSize;
        return qbaData;
    }

private:
    const uint8_t* m_pData;
    size_t m_iSize;
    size_t m_iPos = 0;
};

// ---- base tree ----------------------------------------------------------------------------------

// A small id alphabet, so that cycles, self-parents, missing parents and duplicates happen often.
inline const QStringList& BaseTreeIds()
{
    static const QStringList s_qlstIds{"r", "a", "b", "c", "d", "e", "f", "g", "", "R", "r ", "x"};
    return s_qlstIds;
}

// Cost (rows, a row with a tool bar counting twenty) a rebuild must not exceed; inputs that would go
// beyond are skipped by the harness: an acyclic map whose records share ids makes the build grow
// with the product of the duplicates, and the fuzzer would only ever report that one timeout.
// WGT_FUZZ_ROW_BUDGET overrides it, to let such an input through on purpose.
inline int BaseTreeRowBudget()
{
    static const int s_iBudget = [] {
        bool blOk = false;
        const int iValue = qEnvironmentVariableIntValue("WGT_FUZZ_ROW_BUDGET", &blOk);
        return blOk && iValue > 0 ? iValue : 20000;
    }();
    return s_iBudget;
}
constexpr int CONST_iBaseTreeMaxRecords = 48;

struct STRCT_BaseTreeInput
{
    bool m_blCheck = false;
    bool m_blDrag = false;
    bool m_blDrop = false;
    bool m_blRightClick = false;
    n_ItemBtnShowType m_iBtnShowType = ITEM_BTN_SHOW_ALWAYS;
    bool m_blShowRoot = false;
    int m_iTextMaxWidth = -1;
    QString m_qstrRootId;
    QMap<QString, CLS_TreeItem> m_qmapItems;
    QByteArray m_qbaOps; // the walkers and queries that follow the build, decoded while they run
};

inline CLS_TreeItem DecodeTreeItem(CLS_FuzzReader& _reader)
{
    CLS_TreeItem clsItem;
    clsItem.m_qstrId = _reader.Choice(BaseTreeIds());
    clsItem.m_qstrParentId = _reader.Choice(BaseTreeIds());
    const quint8 uiMode = _reader.Byte();
    if (uiMode & 0x01)
        clsItem.m_iSortNo = _reader.OddInt();
    if (uiMode & 0x02) {
        static const int s_aiFlags[] = {0, 0x21, 0x61, 0x71, 0x7f, 0x01, 0x20};
        const int iPick = _reader.Pick(8);
        clsItem.m_iItemFlags = iPick < 7 ? s_aiFlags[iPick] : _reader.Int32();
    }
    if (uiMode & 0x04)
        clsItem.m_qstrText = _reader.Text(12);
    clsItem.m_qstrTooltip = clsItem.m_qstrText;
    if (uiMode & 0x08)
        clsItem.m_qstrIcon = _reader.Choice({":/missing.png", "/", "", "no/such/file.png"});
    if (uiMode & 0x10)
        clsItem.m_varData = _reader.Text(4);
    if (uiMode & 0x20) {
        const int iButtons = 1 + _reader.Pick(2);
        for (int i = 0; i < iButtons; ++i) {
            CLS_ItemButton clsButton;
            clsButton.m_qstrId = _reader.Choice({"play", "", "stop"});
            clsButton.m_qstrText = _reader.Text(3);
            clsButton.m_blCheckable = _reader.Bool();
            clsButton.m_blChecked = _reader.Bool();
            clsItem.m_qvecButtons.append(clsButton);
        }
    }
    clsItem.m_iReserved = (uiMode & 0x40) ? _reader.Int32() : 0;
    return clsItem;
}

// Layout: one header byte of tree flags, the root key, a record count and the records (each with a
// key mode: its own id, its id with a suffix - a duplicate id under another key - or a free key),
// then the operations.
inline STRCT_BaseTreeInput DecodeBaseTree(const uint8_t* _pData, size_t _iSize)
{
    CLS_FuzzReader reader(_pData, _iSize);
    STRCT_BaseTreeInput input;
    const quint8 uiHeader = reader.Byte();
    input.m_blCheck = uiHeader & 0x01;
    input.m_blDrag = uiHeader & 0x02;
    input.m_blDrop = uiHeader & 0x04;
    input.m_blRightClick = uiHeader & 0x08;
    // 0 to 3: a show type of 2 and more is valid (the enumeration has an int underlying type).
    input.m_iBtnShowType = n_ItemBtnShowType((uiHeader >> 4) & 0x03);
    input.m_blShowRoot = uiHeader & 0x40;
    if (uiHeader & 0x80)
        input.m_iTextMaxWidth = reader.Pick(4) == 0 ? reader.OddInt() : 1 + reader.Pick(80);
    input.m_qstrRootId = reader.Choice(BaseTreeIds());

    const int iCount = reader.Pick(CONST_iBaseTreeMaxRecords + 1);
    for (int i = 0; i < iCount && !reader.AtEnd(); ++i) {
        const int iKeyMode = reader.Pick(4);
        CLS_TreeItem clsItem = DecodeTreeItem(reader);
        QString qstrKey = clsItem.m_qstrId;
        if (iKeyMode == 2)
            qstrKey = clsItem.m_qstrId + "#" + QString::number(i);
        else if (iKeyMode == 3)
            qstrKey = reader.Choice(BaseTreeIds());
        input.m_qmapItems.insert(qstrKey, clsItem);
    }
    input.m_qbaOps = reader.Rest();
    return input;
}

// What Init builds, worked out on the records alone: the number of rows, and the ids that end up
// in the index. -1 rows when the build would pass the budget, -2 when Init refuses the input.
struct STRCT_BaseTreeModel
{
    int m_iInitResult = -1;
    int m_iRows = 0;
    QSet<QString> m_qsetIds;
};

inline STRCT_BaseTreeModel ModelBaseTree(const STRCT_BaseTreeInput& _input)
{
    STRCT_BaseTreeModel model;
    const QMap<QString, CLS_TreeItem>& qmapItems = _input.m_qmapItems;
    if (_input.m_qstrRootId.isEmpty() || qmapItems.isEmpty() || !qmapItems.contains(_input.m_qstrRootId)) {
        model.m_iRows = -2;
        return model;
    }
    // Parent id -> (child id, child has buttons); the order does not matter here.
    QMap<QString, QVector<QPair<QString, bool>>> qmapChildren;
    for (const CLS_TreeItem& clsItem : qmapItems) {
        if (!clsItem.m_qstrParentId.isEmpty())
            qmapChildren[clsItem.m_qstrParentId].append(
                qMakePair(clsItem.m_qstrId, !clsItem.m_qvecButtons.isEmpty()));
    }
    const CLS_TreeItem clsRoot = qmapItems.value(_input.m_qstrRootId);
    if (clsRoot.m_qstrId.isEmpty())
        return model; // -1, zero rows: the old tree is already gone

    // A row with a tool bar costs some twenty plain rows (a stack, a tool bar and its buttons).
    bool blOver = false;
    int iCost = 0;
    QSet<QString> qsetPath;
    std::function<void(const QString&, bool, bool)> fnWalk = [&](const QString& _qstrId, bool _blCreate,
                                                                 bool _blButtons) {
        if (blOver || _qstrId.isEmpty())
            return;
        if (_blCreate) {
            ++model.m_iRows;
            iCost += _blButtons ? 20 : 1;
            if (iCost > BaseTreeRowBudget()) {
                blOver = true;
                return;
            }
            model.m_qsetIds.insert(_qstrId);
        }
        qsetPath.insert(_qstrId);
        for (const QPair<QString, bool>& child : qmapChildren.value(_qstrId)) {
            if (!qsetPath.contains(child.first))
                fnWalk(child.first, true, child.second);
        }
        qsetPath.remove(_qstrId);
    };
    fnWalk(clsRoot.m_qstrId, _input.m_blShowRoot, !clsRoot.m_qvecButtons.isEmpty());
    model.m_iInitResult = 0;
    if (blOver)
        model.m_iRows = -1;
    return model;
}

inline int CountRows(const QTreeWidgetItem* _pNode)
{
    int iRows = 1;
    for (int i = 0; i < _pNode->childCount(); ++i)
        iRows += CountRows(_pNode->child(i));
    return iRows;
}

inline int CountRows(const QTreeWidget& _tree)
{
    int iRows = 0;
    for (int i = 0; i < _tree.topLevelItemCount(); ++i)
        iRows += CountRows(_tree.topLevelItem(i));
    return iRows;
}

// What one run saw right after the build, for the replay test to compare with the model.
struct STRCT_BaseTreeRun
{
    bool m_blSkipped = false; // over the cost budget: not built
    int m_iInitResult = -1;
    int m_iRows = 0;
    QSet<QString> m_qsetIndexedIds;
    STRCT_BaseTreeModel m_model;
};

// Builds a tree from the input, then runs the operations of the input's tail on it, then Clear.
inline STRCT_BaseTreeRun RunBaseTree(const uint8_t* _pData, size_t _iSize)
{
    STRCT_BaseTreeRun run;
    const STRCT_BaseTreeInput input = DecodeBaseTree(_pData, _iSize);
    run.m_model = ModelBaseTree(input);
    if (run.m_model.m_iRows == -1) {
        run.m_blSkipped = true;
        return run;
    }

    CLS_WgtBaseTreeWidget tree(nullptr, input.m_blCheck, input.m_blDrag, input.m_blDrop, input.m_blRightClick,
                               input.m_iBtnShowType);
    if (input.m_iTextMaxWidth != -1)
        tree.SetTextMaxWidth(input.m_iTextMaxWidth);
    run.m_iInitResult = tree.Init(input.m_qstrRootId, input.m_qmapItems, input.m_blShowRoot);
    run.m_iRows = CountRows(tree);
    QMap<QString, CLS_TreeItem> qmapAll;
    tree.GetAllItems(qmapAll);
    for (auto it = qmapAll.cbegin(); it != qmapAll.cend(); ++it)
        run.m_qsetIndexedIds.insert(it.key());

    const QByteArray& qbaOps = input.m_qbaOps;
    CLS_FuzzReader reader(reinterpret_cast<const uint8_t*>(qbaOps.constData()), size_t(qbaOps.size()));
    for (int iOp = 0; iOp < 24 && !reader.AtEnd(); ++iOp) {
        const QString qstrId = reader.Choice(BaseTreeIds());
        CLS_TreeItem clsItem;
        QVector<CLS_TreeItem> qvecItems;
        QVector<QTreeWidgetItem*> qvecNodes;
        QMap<QString, QTreeWidgetItem*> qmapNodes;
        Qt::CheckState iState = Qt::Unchecked;
        switch (reader.Pick(16)) {
        case 0:
            tree.GetItemById(qstrId, clsItem);
            break;
        case 1:
            tree.GetItemByName(reader.Text(4), qvecItems);
            break;
        case 2:
            tree.GetChilds(qstrId, qvecItems, reader.Bool());
            break;
        case 3:
            tree.GetParent(qstrId, clsItem);
            break;
        case 4: {
            QMap<QString, CLS_TreeItem> qmapItems;
            tree.GetAllItems(qmapItems);
            tree.GetCheckedItems(qvecItems, reader.Bool());
            tree.GetCheckedNodes(qvecItems);
            break;
        }
        case 5: {
            QTreeWidgetItem* pNode = tree.GetNodeById(qstrId);
            tree.GetChildNode(pNode, qvecNodes, reader.Bool());
            tree.GetParentNode(pNode, qvecNodes);
            tree.GetParentNode(pNode, qmapNodes);
            tree.GetNodeByName(reader.Text(3), qmapNodes);
            break;
        }
        case 6:
            // 3 is the one value beyond the named ones that the enumeration can hold.
            tree.SetItemExpandStatus(qstrId, n_TreeExpandType(reader.Pick(4)));
            break;
        case 7:
            if (reader.Bool())
                tree.SetShowItemByName(reader.Text(4));
            else
                tree.SetShowItemById(qstrId);
            break;
        case 8:
            tree.DeleteItem(qstrId);
            break;
        case 9: {
            const QString qstrOther = reader.Choice(BaseTreeIds());
            if (reader.Bool())
                tree.MoveUpOneRow(qstrId, qstrOther);
            else
                tree.MoveDownOneRow(qstrId, qstrOther);
            break;
        }
        case 10:
            tree.SetItemCheckStatus(qstrId, Qt::CheckState(reader.Pick(4)), reader.Bool());
            tree.GetItemCheckStatus(qstrId, iState);
            break;
        case 11:
            tree.SetCurrentItem(qstrId, reader.Bool());
            tree.GetCurrentItem(clsItem);
            break;
        case 12:
            tree.AddItem(DecodeTreeItem(reader));
            break;
        case 13: {
            clsItem = DecodeTreeItem(reader);
            tree.UpdateItem(clsItem);
            tree.UpdateItemIcon(qstrId, reader.Text(4));
            tree.SetItemDisabled(qstrId, reader.Bool());
            break;
        }
        case 14:
            tree.SetAllExpandStatus(reader.Bool());
            break;
        default:
            if (reader.Bool())
                tree.Clear();
            else
                tree.Init(input.m_qstrRootId, input.m_qmapItems, !input.m_blShowRoot);
            break;
        }
    }
    tree.Clear();
    return run;
}

// ---- device tree --------------------------------------------------------------------------------

inline const QStringList& DeviceTreeIds()
{
    static const QStringList s_qlstIds{"custom_root_id",
                                       "resource_root_id",
                                       "favorite_root_id",
                                       "passengerflow_root_id",
                                       "h1",
                                       "h2",
                                       "c1",
                                       "c2",
                                       "c3",
                                       "g1",
                                       "",
                                       "x"};
    return s_qlstIds;
}

inline const QStringList& DeviceDevIds()
{
    static const QStringList s_qlstIds{"d1", "d2", "d3", "h1", "c1", "", "custom_root_id"};
    return s_qlstIds;
}

struct STRCT_DeviceTreeInput
{
    int m_iTreeType = 0; // n_DevTreeType, 0 to 4
    QString m_qstrRootName;
    QMap<int, QVector<CLS_ItemButton>> m_qmapItemBtns;
    QSet<int> m_qsetNodeTypes;
    QSet<int> m_qsetDevBindTypes;
    QMap<QString, CLS_CustomTreeNode> m_qmapNodes;
    QByteArray m_qbaOps;
};

inline int DecodeNodeType(CLS_FuzzReader& _reader)
{
    static const int s_aiTypes[] = {0, 2, 3, 4, 5, 6, 12, 13, 17};
    const int iPick = _reader.Pick(10);
    return iPick < 9 ? s_aiTypes[iPick] : _reader.OddInt();
}

inline int DecodeBindType(CLS_FuzzReader& _reader)
{
    static const int s_aiKinds[] = {-1, 0, 1, 2, 3, 4, 9};
    const int iPick = _reader.Pick(8);
    return iPick < 7 ? s_aiKinds[iPick] : _reader.OddInt();
}

inline CLS_CustomTreeNode DecodeNode(CLS_FuzzReader& _reader)
{
    CLS_CustomTreeNode node;
    node.m_qstrTreeId = _reader.Choice(DeviceTreeIds());
    node.m_qstrTreeParentId = _reader.Choice(DeviceTreeIds());
    node.m_qstrDevId = _reader.Choice(DeviceDevIds());
    node.m_qstrDevParentId = _reader.Choice(DeviceDevIds());
    node.m_iType = DecodeNodeType(_reader);
    const quint8 uiMode = _reader.Byte();
    if (uiMode & 0x01)
        node.m_qstrName = _reader.Text(10);
    if (uiMode & 0x02)
        node.m_iStatus = _reader.Pick(4) < 3 ? _reader.Pick(3) : _reader.OddInt();
    if (uiMode & 0x04)
        node.m_iDevBindType = DecodeBindType(_reader);
    if (uiMode & 0x08)
        node.m_iSortNo = _reader.OddInt();
    if (uiMode & 0x10)
        node.m_iChannelNo = _reader.OddInt();
    if (uiMode & 0x20)
        node.m_qstrExtend = _reader.Text(4);
    if (uiMode & 0x40)
        node.m_qmapExtend.insert(_reader.Text(3), _reader.Int32());
    node.m_blValid = !(uiMode & 0x80);
    return node;
}

// Layout: tree type and option byte, root name, optional type sets and button templates, node
// count and nodes (each under its own tree id, or under another key), then the operations.
inline STRCT_DeviceTreeInput DecodeDeviceTree(const uint8_t* _pData, size_t _iSize)
{
    CLS_FuzzReader reader(_pData, _iSize);
    STRCT_DeviceTreeInput input;
    input.m_iTreeType = reader.Pick(5);
    const quint8 uiOptions = reader.Byte();
    if (uiOptions & 0x01)
        input.m_qstrRootName = reader.Text(8);
    if (uiOptions & 0x02) {
        const int iCount = reader.Pick(4);
        for (int i = 0; i < iCount; ++i)
            input.m_qsetNodeTypes.insert(DecodeNodeType(reader));
    }
    if (uiOptions & 0x04) {
        const int iCount = reader.Pick(4);
        for (int i = 0; i < iCount; ++i)
            input.m_qsetDevBindTypes.insert(DecodeBindType(reader));
    }
    if (uiOptions & 0x08) {
        CLS_ItemButton clsButton;
        clsButton.m_qstrId = reader.Choice({"play", "", "record"});
        clsButton.m_qstrText = reader.Text(3);
        clsButton.m_blCheckable = reader.Bool();
        input.m_qmapItemBtns[DecodeNodeType(reader)].append(clsButton);
    }
    const int iCount = reader.Pick(33);
    for (int i = 0; i < iCount && !reader.AtEnd(); ++i) {
        const bool blOwnKey = reader.Pick(4) != 0;
        CLS_CustomTreeNode node = DecodeNode(reader);
        const QString qstrKey = blOwnKey ? node.m_qstrTreeId : reader.Choice(DeviceTreeIds());
        input.m_qmapNodes.insert(qstrKey, node);
    }
    input.m_qbaOps = reader.Rest();
    return input;
}

// Test-only view of a device tree's model and rows.
class CLS_FuzzDeviceTree : public CLS_WgtDeviceTree
{
public:
    CLS_FuzzDeviceTree(n_DevTreeType _iTreeType)
        : CLS_WgtDeviceTree(nullptr, _iTreeType, true, true, true, true, true, ITEM_BTN_SHOW_HOVER)
    {}
    const QMap<QString, CLS_CustomTreeNode>& Nodes() const { return m_qmapNodes; }
    const QMap<QString, QString>& DevIdToTreeId() const { return m_qmapDevIdToTreeId; }
    CLS_WgtBaseTreeWidget* BaseTree() const
    {
        return m_pTreePanel != nullptr ? m_pTreePanel->GetBaseTree() : nullptr;
    }
};

// Device trees kept for the whole run. Each starts its status thread with its first successful
// build, and a thread per input would be the fuzzer's whole cost. They must go (DestroyKeptTrees)
// before the process's statics do: a running status thread still uses the binder's caches.
inline QVector<QWidget*>& KeptTrees()
{
    static QVector<QWidget*> s_qvecTrees;
    return s_qvecTrees;
}

// Deletes every kept tree; each destructor waits for its status thread. Safe to call twice.
inline void DestroyKeptTrees()
{
    QVector<QWidget*> qvecTrees;
    qvecTrees.swap(KeptTrees());
    qDeleteAll(qvecTrees);
}

// One device tree per tree type, made on first use.
inline CLS_FuzzDeviceTree*& DeviceTreeSlot(int _iTreeType)
{
    static CLS_FuzzDeviceTree* s_apTrees[5] = {nullptr, nullptr, nullptr, nullptr, nullptr};
    return s_apTrees[(_iTreeType < 0 || _iTreeType > 4) ? 0 : _iTreeType];
}

inline CLS_FuzzDeviceTree* DeviceTreeOfType(int _iTreeType)
{
    CLS_FuzzDeviceTree*& pTree = DeviceTreeSlot(_iTreeType);
    if (pTree == nullptr || !KeptTrees().contains(pTree)) {
        const int iType = (_iTreeType < 0 || _iTreeType > 4) ? 0 : _iTreeType;
        pTree = new CLS_FuzzDeviceTree(n_DevTreeType(iType)); // owned by KeptTrees
        KeptTrees().append(pTree);
    }
    return pTree;
}

struct STRCT_DeviceTreeRun
{
    int m_iTreeType = 0;
    int m_iInitResult = -1;
    QMap<QString, CLS_CustomTreeNode> m_qmapCallerNodes; // the caller's map after Init
    QString m_qstrRootName;
    QStringList m_qlstRowIdsNotInModel; // row ids that name no node
    QStringList m_qlstDevIdsToNoNode;   // device ids whose tree id names no node
    int m_iRows = 0;
};

inline void CollectRowIds(const QTreeWidgetItem* _pNode, QStringList& _qlstIds)
{
    _qlstIds << _pNode->data(0, Qt::UserRole).toString();
    for (int i = 0; i < _pNode->childCount(); ++i)
        CollectRowIds(_pNode->child(i), _qlstIds);
}

inline STRCT_DeviceTreeRun RunDeviceTree(const uint8_t* _pData, size_t _iSize)
{
    STRCT_DeviceTreeRun run;
    STRCT_DeviceTreeInput input = DecodeDeviceTree(_pData, _iSize);
    CLS_FuzzDeviceTree* pTree = DeviceTreeOfType(input.m_iTreeType);
    run.m_iTreeType = input.m_iTreeType;
    run.m_qstrRootName = input.m_qstrRootName;
    run.m_iInitResult = pTree->Init(input.m_qmapNodes, input.m_qstrRootName, input.m_qmapItemBtns,
                                    input.m_qsetNodeTypes, input.m_qsetDevBindTypes);
    run.m_qmapCallerNodes = input.m_qmapNodes;

    QStringList qlstRowIds;
    if (CLS_WgtBaseTreeWidget* pBase = pTree->BaseTree()) {
        for (int i = 0; i < pBase->topLevelItemCount(); ++i)
            CollectRowIds(pBase->topLevelItem(i), qlstRowIds);
    }
    run.m_iRows = qlstRowIds.size();
    for (const QString& qstrId : qAsConst(qlstRowIds)) {
        if (!pTree->Nodes().contains(qstrId))
            run.m_qlstRowIdsNotInModel << qstrId;
    }
    for (auto it = pTree->DevIdToTreeId().cbegin(); it != pTree->DevIdToTreeId().cend(); ++it) {
        if (!pTree->Nodes().contains(it.value()))
            run.m_qlstDevIdsToNoNode << it.key();
    }

    const QByteArray& qbaOps = input.m_qbaOps;
    CLS_FuzzReader reader(reinterpret_cast<const uint8_t*>(qbaOps.constData()), size_t(qbaOps.size()));
    for (int iOp = 0; iOp < 16 && !reader.AtEnd(); ++iOp) {
        const QString qstrId = reader.Choice(DeviceTreeIds());
        const QString qstrDevId = reader.Choice(DeviceDevIds());
        CLS_CustomTreeNode node;
        QVector<CLS_CustomTreeNode> qvecNodes;
        Qt::CheckState iState = Qt::Unchecked;
        switch (reader.Pick(12)) {
        case 0:
            pTree->GetItemById(qstrId, node);
            pTree->GetItemByDevId(qstrDevId, node);
            break;
        case 1:
            pTree->GetChilds(qstrId, qvecNodes, reader.Bool());
            pTree->GetChildsByDevId(qstrDevId, qvecNodes);
            break;
        case 2:
            pTree->GetParent(qstrId, node);
            pTree->GetParentByDevId(qstrDevId, node);
            break;
        case 3:
            pTree->GetChannelsById(qstrId, qvecNodes);
            pTree->GetItemByChannelId(qstrDevId, node);
            pTree->GetItemByChannelId(qstrId, qstrDevId, node);
            break;
        case 4: {
            QVector<QString> qvecParents;
            pTree->GetAllNodeParent({qstrId, qstrDevId}, qvecParents);
            pTree->GetCheckedChannel(qvecNodes);
            pTree->GetAllCheckedItems(qvecNodes);
            pTree->GetCheckedGroup(qvecNodes);
            break;
        }
        case 5:
            pTree->UpdateHostStatus(qstrId, reader.Pick(4) == 0 ? reader.OddInt() : 3 + reader.Pick(2) * 38);
            break;
        case 6:
            pTree->SetItemCheckStatus(qstrId, Qt::CheckState(reader.Pick(4)), reader.Bool());
            pTree->GetItemCheckStatus(qstrId, iState);
            break;
        case 7:
            pTree->DeleteItem(qstrId);
            break;
        case 8:
            pTree->ModifyItems(QList<CLS_CustomTreeNode>{DecodeNode(reader)});
            break;
        case 9:
            pTree->ModifyCaptionByChannelId(qstrDevId, reader.Text(4));
            break;
        case 10:
            pTree->SetCurrentItem(qstrId, reader.Bool());
            pTree->GetCurrentItem(node);
            break;
        default:
            if (reader.Bool())
                pTree->ExpandAll();
            else
                pTree->CollapseAll();
            break;
        }
    }
    pTree->Clear();
    return run;
}

// ---- channel-state batches ----------------------------------------------------------------------

using StatusMap = QMap<QString, QPair<bool, int>>;

// Device ids of the status tree's channels and hosts, and a few it does not hold.
inline const QStringList& StatusKeys()
{
    static const QStringList s_qlstKeys{"c1", "c2", "c3", "c4", "c5", "c6", "h1", "a1", "u1", "", "zz", "C1"};
    return s_qlstKeys;
}

// The nodes of the status trees: a root, two hosts, channels of every bind kind, an alarm input
// and a node of a type no icon table knows. Device id = tree id = key.
inline QMap<QString, CLS_CustomTreeNode> StatusTreeNodes(int _iTreeType)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    auto fnAdd = [&qmapNodes](const QString& _qstrId, const QString& _qstrParent, int _iType, int _iBind) {
        CLS_CustomTreeNode node;
        node.m_qstrTreeId = node.m_qstrDevId = _qstrId;
        node.m_qstrTreeParentId = node.m_qstrDevParentId = _qstrParent;
        node.m_qstrName = _qstrId;
        node.m_iType = _iType;
        node.m_iDevBindType = _iBind;
        node.m_iChannelNo = _iType == 4 ? _qstrId.right(1).toInt() : -1;
        qmapNodes.insert(_qstrId, node);
    };
    const QString qstrRoot = _iTreeType == DEV_TREE_RESOURCE ? "resource_root_id" : "custom_root_id";
    fnAdd(qstrRoot, "", 2, -1);
    fnAdd("h1", qstrRoot, 3, -1);
    fnAdd("h2", qstrRoot, 3, -1);
    fnAdd("c1", "h1", 4, -1);
    fnAdd("c2", "h1", 4, 0);
    fnAdd("c3", "h1", 4, 2);
    fnAdd("c4", "h2", 4, 3);
    fnAdd("c5", "h2", 4, 4);
    fnAdd("c6", "h2", 4, 9);
    fnAdd("a1", "h2", 5, -1);
    fnAdd("u1", "h2", 77, -1);
    return qmapNodes;
}

inline QSet<int> StatusTreeTypes()
{
    return {2, 3, 4, 5, 77};
}

// Any payload: the right type with odd content, or the wrong types a sender could put in a variant.
inline QVariant DecodePayload(CLS_FuzzReader& _reader, int _iDepth)
{
    const int iKind = _reader.Pick(_iDepth > 2 ? 8 : 11);
    switch (iKind) {
    case 0:
    case 1: {
        StatusMap qmapStatus;
        const int iCount = _reader.Pick(10);
        for (int i = 0; i < iCount; ++i) {
            const QString qstrKey = _reader.Choice(StatusKeys());
            const bool blImage = _reader.Bool();
            const int iStatus = _reader.Pick(3) != 0 ? _reader.Pick(3) : _reader.OddInt();
            qmapStatus.insert(qstrKey, qMakePair(blImage, iStatus));
        }
        return QVariant::fromValue(qmapStatus);
    }
    case 2:
        return QVariant(_reader.OddInt());
    case 3:
        return QVariant(_reader.Text(8));
    case 4:
        return QVariant();
    case 5: {
        QMap<QString, int> qmapPlain;
        qmapPlain.insert(_reader.Choice(StatusKeys()), _reader.OddInt());
        return QVariant::fromValue(qmapPlain);
    }
    case 6:
        return QVariant::fromValue(qMakePair(_reader.Bool(), _reader.OddInt()));
    case 7: {
        const QByteArray qbaData = _reader.Bytes(8);
        return _reader.Bool() ? QVariant(qbaData) : QVariant(QString::fromLatin1(qbaData).split(','));
    }
    case 8: {
        QVariantMap qmapVariants;
        const int iCount = _reader.Pick(4);
        for (int i = 0; i < iCount; ++i)
            qmapVariants.insert(_reader.Choice(StatusKeys()), DecodePayload(_reader, _iDepth + 1));
        return qmapVariants;
    }
    case 9: {
        QVariantList qlstVariants;
        const int iCount = _reader.Pick(4);
        for (int i = 0; i < iCount; ++i)
            qlstVariants.append(DecodePayload(_reader, _iDepth + 1));
        return qlstVariants;
    }
    default: {
        // The right entries in the wrong container: pairs inside a QVariantMap.
        QVariantMap qmapPairs;
        qmapPairs.insert(_reader.Choice(StatusKeys()), QVariant::fromValue(qMakePair(_reader.Bool(), 1)));
        return qmapPairs;
    }
    }
}

class CLS_StatusTree : public CLS_FuzzDeviceTree
{
public:
    explicit CLS_StatusTree(n_DevTreeType _iTreeType) : CLS_FuzzDeviceTree(_iTreeType) {}
    int Rebuild()
    {
        QMap<QString, CLS_CustomTreeNode> qmapNodes = StatusTreeNodes(m_iTreeType);
        return Init(qmapNodes, "Root", QMap<int, QVector<CLS_ItemButton>>(), StatusTreeTypes());
    }
};

// A resource tree and a custom tree with the same nodes, kept like the device trees above.
inline CLS_StatusTree* StatusTree(int _iIndex)
{
    static CLS_StatusTree* s_apTrees[2] = {nullptr, nullptr};
    const int iIndex = _iIndex & 1;
    CLS_StatusTree*& pTree = s_apTrees[iIndex];
    if (pTree == nullptr || !KeptTrees().contains(pTree)) {
        pTree = new CLS_StatusTree(iIndex == 0 ? DEV_TREE_RESOURCE : DEV_TREE_CUSTOM); // owned by KeptTrees
        KeptTrees().append(pTree);
    }
    return pTree;
}

// One applied (or refused) batch and what the tree's model says afterwards.
struct STRCT_StatusBatch
{
    QVariant m_varPayload;
    int m_iResult = 0;
    bool m_blExactType = false;
    QStringList m_qlstMismatches; // "<dev id>: status <n> expected <m>" for an applied batch
};

struct STRCT_StatusRun
{
    int m_iRebuildResult = -1;
    QVector<STRCT_StatusBatch> m_qvecBatches;
};

// Rebuilds the chosen status tree (so that every input starts from the same state), then applies up
// to four payloads, each optionally followed by a host command.
inline STRCT_StatusRun RunStatusBatch(const uint8_t* _pData, size_t _iSize)
{
    STRCT_StatusRun run;
    CLS_FuzzReader reader(_pData, _iSize);
    CLS_StatusTree* pTree = StatusTree(reader.Byte());
    run.m_iRebuildResult = pTree->Rebuild();
    for (int iBatch = 0; iBatch < 4 && !reader.AtEnd(); ++iBatch) {
        STRCT_StatusBatch batch;
        batch.m_varPayload = DecodePayload(reader, 0);
        batch.m_blExactType = batch.m_varPayload.userType() == qMetaTypeId<StatusMap>();
        batch.m_iResult = pTree->UpdateAllChannelsStatus(batch.m_varPayload);
        if (batch.m_blExactType && batch.m_iResult == 0) {
            const StatusMap qmapStatus = batch.m_varPayload.value<StatusMap>();
            for (auto it = qmapStatus.cbegin(); it != qmapStatus.cend(); ++it) {
                const QString qstrTreeId = pTree->DevIdToTreeId().value(it.key());
                if (it.key().isEmpty() || qstrTreeId.isEmpty())
                    continue;
                const int iStatus = pTree->Nodes().value(qstrTreeId).m_iStatus;
                if (iStatus != it.value().second)
                    batch.m_qlstMismatches << QString("%1: status %2 expected %3")
                                                  .arg(it.key())
                                                  .arg(iStatus)
                                                  .arg(it.value().second);
            }
        }
        const int iHostOp = reader.Pick(4);
        if (iHostOp == 1)
            pTree->UpdateHostStatus(reader.Choice(StatusKeys()), reader.Pick(2) == 0 ? 3 : 41);
        else if (iHostOp == 2)
            pTree->UpdateHostStatus(reader.Choice(StatusKeys()), reader.OddInt());
        run.m_qvecBatches.append(batch);
    }
    return run;
}

// ---- style sheets -------------------------------------------------------------------------------

constexpr const char* CONST_szSheetModule = "WgtTreeWidget";

// Folder of the skin the loader uses when the settings library answers an empty skin.
inline QString SkinRoot()
{
    return FunctionUtil::GetBinPath() + "/resource/skin/dark";
}

// What the loader must make of a sheet file: text up to the first NUL, one character per byte, and
// the relative skin path made absolute again and again from the start of the text while it stands
// after the first character. A replacement can make a new relative path with the text before it
// ("./resource/skin" + "/<bin>/resource/skin/"), which the next round replaces too; an occurrence at
// the very start ends the rounds.
inline QString ExpectedSheetText(const QByteArray& _qbaFile)
{
    QByteArray qbaData = _qbaFile;
    const int iNul = qbaData.indexOf('\0');
    if (iNul >= 0)
        qbaData.truncate(iNul);
    QString qstrText = QString::fromLatin1(qbaData);
    const QString qstrRelative = "./resource/skin/";
    const QString qstrAbsolute = FunctionUtil::GetBinPath() + "/resource/skin/";
    if (qstrAbsolute.contains(qstrRelative)) {
        // A program folder ending in "." would bring the path back with each round: one pass then.
        if (qstrText.indexOf(qstrRelative) > 0)
            qstrText.replace(qstrRelative, qstrAbsolute);
        return qstrText;
    }
    for (int iPos = qstrText.indexOf(qstrRelative); iPos > 0; iPos = qstrText.indexOf(qstrRelative))
        qstrText.replace(iPos, qstrRelative.size(), qstrAbsolute);
    return qstrText;
}

struct STRCT_SheetInput
{
    bool m_blCommon = false;    // the same bytes also as the skin's common sheet
    bool m_blNamedFile = false; // a file name of its own instead of the module's
    bool m_blFullStyle = false; // LoadStyle (common + module) instead of LoadStyleMini
    QByteArray m_qbaSheet;
};

inline STRCT_SheetInput DecodeSheet(const uint8_t* _pData, size_t _iSize)
{
    CLS_FuzzReader reader(_pData, _iSize);
    STRCT_SheetInput input;
    const quint8 uiMode = reader.Byte();
    input.m_blCommon = uiMode & 0x01;
    input.m_blNamedFile = uiMode & 0x02;
    input.m_blFullStyle = uiMode & 0x04;
    input.m_qbaSheet = reader.Rest();
    return input;
}

struct STRCT_SheetRun
{
    QString m_qstrResult;
    QString m_qstrExpected;
    QString m_qstrWidgetSheet;
};

inline bool WriteFile(const QString& _qstrPath, const QByteArray& _qbaData)
{
    QDir().mkpath(_qstrPath.left(_qstrPath.lastIndexOf('/')));
    QFile qfile(_qstrPath);
    if (!qfile.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return qfile.write(_qbaData) == _qbaData.size();
}

// Writes the sheet into the skin beside the executable, loads it through the style loader into a
// tree widget, and polishes the widget so that Qt parses the text. The settings library must answer
// an empty skin, or the loader would serve the first sheet from its cache from then on.
inline STRCT_SheetRun RunSheet(const uint8_t* _pData, size_t _iSize)
{
    STRCT_SheetRun run;
    const STRCT_SheetInput input = DecodeSheet(_pData, _iSize);
    const QString qstrFile = input.m_blNamedFile ? "FuzzSheet" : "";
    const QString qstrSheetPath =
        QString("%1/%2/qss/%3.qss")
            .arg(SkinRoot(), CONST_szSheetModule, input.m_blNamedFile ? qstrFile : CONST_szSheetModule);
    const QString qstrCommonPath = SkinRoot() + "/Common/fuzz.qss";

    WriteFile(qstrSheetPath, input.m_qbaSheet);
    if (input.m_blCommon)
        WriteFile(qstrCommonPath, input.m_qbaSheet);
    else
        QFile::remove(qstrCommonPath);

    CLS_WgtBaseTreeWidget tree;
    const QString qstrModuleText = ExpectedSheetText(input.m_qbaSheet);
    if (input.m_blFullStyle) {
        run.m_qstrResult = FunctionUtil::LoadStyle(CONST_szSheetModule, &tree, qstrFile);
        run.m_qstrExpected = (input.m_blCommon ? qstrModuleText : QString()) + qstrModuleText;
    } else {
        run.m_qstrResult = FunctionUtil::LoadStyleMini(CONST_szSheetModule, &tree, qstrFile);
        run.m_qstrExpected = qstrModuleText;
    }
    tree.ensurePolished();
    run.m_qstrWidgetSheet = tree.styleSheet();
    return run;
}

} // namespace WgtFuzz
