#pragma once
// Reference model of CLS_WgtBaseTreeWidget for the randomized test: a plain tree of rows that
// predicts, call by call, the id index, each row's place, record, shown icon, flags, check state,
// hidden and expanded state, tool bar, and the check signals the tree sends. The item-level rules
// that the tree leaves to Qt (auto-tristate passing down and deriving up, the enabled flag passed
// on to children) are written out here as QTreeWidgetItem applies them. GUI thread only.

#include "TreeStructDefine.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTreeWidgetItem>
#include <QVector>

#include <memory>
#include <vector>

// One row as the model sees it. m_pLib is the library's row paired with it at creation.
struct STRCT_ModelRow
{
    CLS_TreeItem m_clsRecord;
    QString m_qstrShownIcon;           // path behind Qt::DecorationRole
    int m_iFlags = 0;                  // item flags as the row holds them (enabled bit included)
    bool m_blExplicitDisabled = false; // last setFlags on the row itself cleared ItemIsEnabled
    int m_iStored = -1;                // own Qt::CheckStateRole value; -1 = none
    bool m_blHidden = false;
    bool m_blExpanded = false;
    bool m_blToolBar = false;
    STRCT_ModelRow* m_pParent = nullptr;
    std::vector<STRCT_ModelRow*> m_vecChildren;
    QTreeWidgetItem* m_pLib = nullptr;
};

// One check signal the tree is expected to send.
struct STRCT_CheckSignal
{
    QString m_qstrId;
    bool m_blChecked = false;
    CLS_TreeItem m_clsRecord;
};

class CLS_BaseTreeModel
{
public:
    explicit CLS_BaseTreeModel(bool _blCheckEnable) : m_blCheckEnable(_blCheckEnable)
    {
        m_iDefaultFlags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsAutoTristate;
        if (m_blCheckEnable)
            m_iDefaultFlags |= Qt::ItemIsUserCheckable;
    }

    // Deliberately broken rule for the self-check of the test: AddItem lands before equal siblings.
    bool m_blMutateAddPlace = false;

    bool m_blCheckEnable = false;
    int m_iDefaultFlags = 0;
    QString m_qstrRootId;
    std::vector<std::unique_ptr<STRCT_ModelRow>> m_vecOwned; // all rows, also those taken out
    std::vector<STRCT_ModelRow*> m_vecTop;
    QMap<QString, STRCT_ModelRow*> m_qmapIndex;
    QHash<QTreeWidgetItem*, STRCT_ModelRow*> m_qhashByLib;
    STRCT_ModelRow* m_pCurrent = nullptr;
    bool m_blSendChecked = true;
    QVector<STRCT_CheckSignal> m_qvecCheckSignals; // expected during the current step

    // ---- Qt's item rules ---------------------------------------------------------------------

    // Qt::CheckStateRole as QTreeWidgetItem::data answers it: derived from the children for an
    // auto-tristate row with children; -1 for no value.
    static int Data(const STRCT_ModelRow* _pRow)
    {
        if (!_pRow->m_vecChildren.empty() && (_pRow->m_iFlags & Qt::ItemIsAutoTristate)) {
            bool blChecked = false;
            bool blUnchecked = false;
            for (const STRCT_ModelRow* pChild : _pRow->m_vecChildren) {
                const int iValue = Data(pChild);
                if (iValue < 0)
                    return -1;
                if (iValue == Qt::Unchecked)
                    blUnchecked = true;
                else if (iValue == Qt::Checked)
                    blChecked = true;
                else
                    return Qt::PartiallyChecked;
                if (blChecked && blUnchecked)
                    return Qt::PartiallyChecked; // before a later child without a state is seen
            }
            return blUnchecked ? int(Qt::Unchecked) : blChecked ? int(Qt::Checked) : -1;
        }
        return _pRow->m_iStored;
    }

    static bool Enabled(const STRCT_ModelRow* _pRow) { return (_pRow->m_iFlags & Qt::ItemIsEnabled) != 0; }

    // QTreeWidgetItem::setFlags.
    static void SetFlags(STRCT_ModelRow* _pRow, int _iFlags)
    {
        const bool blEnable = (_iFlags & Qt::ItemIsEnabled) != 0;
        const bool blChangedState = Enabled(_pRow) != blEnable;
        const bool blChangedExplicit = _pRow->m_blExplicitDisabled != !blEnable;
        _pRow->m_blExplicitDisabled = !blEnable;
        if (blEnable && _pRow->m_pParent != nullptr && !Enabled(_pRow->m_pParent))
            _pRow->m_iFlags = _iFlags & ~Qt::ItemIsEnabled;
        else
            _pRow->m_iFlags = _iFlags;
        if (blChangedState && blChangedExplicit) {
            std::vector<STRCT_ModelRow*> vecStack{_pRow};
            while (!vecStack.empty()) {
                STRCT_ModelRow* pParent = vecStack.back();
                vecStack.pop_back();
                for (STRCT_ModelRow* pChild : pParent->m_vecChildren) {
                    if (pChild->m_blExplicitDisabled)
                        continue;
                    vecStack.push_back(pChild);
                    pChild->m_iFlags = blEnable ? (pChild->m_iFlags | Qt::ItemIsEnabled)
                                                : (pChild->m_iFlags & ~Qt::ItemIsEnabled);
                }
            }
        }
    }

    // What QTreeWidgetItem does to a subtree that gets a new parent (or none): every row not
    // disabled by itself takes the enabled state of the new parent.
    static void PropagateDisabled(STRCT_ModelRow* _pRow)
    {
        const bool blEnable = _pRow->m_pParent == nullptr || Enabled(_pRow->m_pParent);
        std::vector<STRCT_ModelRow*> vecStack{_pRow};
        while (!vecStack.empty()) {
            STRCT_ModelRow* pRow = vecStack.back();
            vecStack.pop_back();
            if (!pRow->m_blExplicitDisabled)
                pRow->m_iFlags =
                    blEnable ? (pRow->m_iFlags | Qt::ItemIsEnabled) : (pRow->m_iFlags & ~Qt::ItemIsEnabled);
            for (STRCT_ModelRow* pChild : pRow->m_vecChildren)
                vecStack.push_back(pChild);
        }
    }

    // QTreeWidgetItem::setData for Qt::CheckStateRole: auto-tristate passes a non-partial value on
    // to every child that has a state, through the row class's override.
    void BaseSetCheck(STRCT_ModelRow* _pRow, int _iValue)
    {
        if ((_pRow->m_iFlags & Qt::ItemIsAutoTristate) && _iValue != Qt::PartiallyChecked) {
            for (STRCT_ModelRow* pChild : _pRow->m_vecChildren) {
                if (Data(pChild) >= 0)
                    OverrideSetCheck(pChild, _iValue);
            }
        }
        _pRow->m_iStored = _iValue;
    }

    // The row class's override: the first state is silent; later a change of the (derived) state
    // signals after the children, with the state read again.
    void OverrideSetCheck(STRCT_ModelRow* _pRow, int _iValue)
    {
        const int iOld = Data(_pRow);
        if (iOld < 0) {
            BaseSetCheck(_pRow, _iValue);
            return;
        }
        const bool blSame = iOld == _iValue;
        BaseSetCheck(_pRow, _iValue);
        if (blSame)
            return;
        const bool blChecked = Data(_pRow) > 0;
        // SlotCheckStateChanged
        if (m_blCheckEnable && m_blSendChecked)
            m_qvecCheckSignals.append({_pRow->m_clsRecord.m_qstrId, blChecked, _pRow->m_clsRecord});
    }

    // ---- rows --------------------------------------------------------------------------------

    STRCT_ModelRow* NewRow(const CLS_TreeItem& _clsItem)
    {
        m_vecOwned.push_back(std::make_unique<STRCT_ModelRow>());
        STRCT_ModelRow* pRow = m_vecOwned.back().get();
        pRow->m_clsRecord = _clsItem;
        pRow->m_qstrShownIcon = _clsItem.m_qstrIcon;
        SetFlags(pRow, _clsItem.m_iItemFlags != 0 ? _clsItem.m_iItemFlags : m_iDefaultFlags);
        if (m_blCheckEnable)
            pRow->m_iStored = Qt::Unchecked;
        pRow->m_blToolBar = !_clsItem.m_qvecButtons.isEmpty();
        return pRow;
    }

    void Pair(STRCT_ModelRow* _pRow, QTreeWidgetItem* _pLib)
    {
        _pRow->m_pLib = _pLib;
        if (_pLib != nullptr)
            m_qhashByLib.insert(_pLib, _pRow);
    }

    std::vector<STRCT_ModelRow*>& Siblings(STRCT_ModelRow* _pParent)
    {
        return _pParent != nullptr ? _pParent->m_vecChildren : m_vecTop;
    }

    void InsertRow(STRCT_ModelRow* _pParent, int _iIndex, STRCT_ModelRow* _pRow)
    {
        std::vector<STRCT_ModelRow*>& vecSiblings = Siblings(_pParent);
        vecSiblings.insert(vecSiblings.begin() + _iIndex, _pRow);
        _pRow->m_pParent = _pParent;
        if (_pParent != nullptr)
            PropagateDisabled(_pRow);
    }

    void Descendants(STRCT_ModelRow* _pRow, std::vector<STRCT_ModelRow*>& _vecOut, bool _blAllLevels) const
    {
        for (STRCT_ModelRow* pChild : _pRow->m_vecChildren) {
            _vecOut.push_back(pChild);
            if (_blAllLevels)
                Descendants(pChild, _vecOut, true);
        }
    }

    void Reset()
    {
        m_vecTop.clear();
        m_qmapIndex.clear();
        m_qhashByLib.clear();
        m_vecOwned.clear();
        m_pCurrent = nullptr;
    }

    // ---- operations --------------------------------------------------------------------------

    // Init. _fnLibChildren gives the library's rows under a library row (null: top level), used
    // only to take the library's order among siblings of equal number, which the tree leaves open.
    template <typename FnLibChildren>
    int Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems, bool _blShowRoot,
             FnLibChildren _fnLibChildren)
    {
        if (_qstrRootId.isEmpty() || _qmapItems.isEmpty() || !_qmapItems.contains(_qstrRootId))
            return -1;
        m_qstrRootId = _qstrRootId;
        Reset();
        QMap<QString, QVector<CLS_TreeItem>> qmapChildren;
        for (auto it = _qmapItems.cbegin(); it != _qmapItems.cend(); ++it) {
            if (it->m_qstrParentId.isEmpty())
                continue;
            qmapChildren[it->m_qstrParentId].append(*it); // order among equal numbers is open
        }
        QStringList qlstPath;
        return Build(nullptr, _qmapItems.value(_qstrRootId), qmapChildren, _blShowRoot, qlstPath,
                     _fnLibChildren);
    }

    template <typename FnLibChildren>
    int Build(STRCT_ModelRow* _pParent, const CLS_TreeItem& _clsItem,
              const QMap<QString, QVector<CLS_TreeItem>>& _qmapChildren, bool _blCreate,
              QStringList& _qlstPath, FnLibChildren& _fnLibChildren)
    {
        if (_clsItem.m_qstrId.isEmpty())
            return -1;
        STRCT_ModelRow* pRow = nullptr;
        if (_blCreate) {
            pRow = NewRow(_clsItem);
            InsertRow(_pParent, int(Siblings(_pParent).size()), pRow);
            m_qmapIndex.insert(_clsItem.m_qstrId, pRow);
            const std::vector<STRCT_ModelRow*>& vecSiblings = Siblings(_pParent);
            const QList<QTreeWidgetItem*> qlstLib = _fnLibChildren(_pParent ? _pParent->m_pLib : nullptr);
            const int iPos = int(vecSiblings.size()) - 1;
            Pair(pRow, iPos < qlstLib.size() ? qlstLib.at(iPos) : nullptr);
        }
        // Children that make a row: a non-empty id, and not on their own path from the root (the
        // tree does not descend into a record listed under itself).
        QVector<CLS_TreeItem> qvecChildren;
        for (const CLS_TreeItem& clsChild : _qmapChildren.value(_clsItem.m_qstrId)) {
            if (!clsChild.m_qstrId.isEmpty() && !_qlstPath.contains(clsChild.m_qstrId) &&
                clsChild.m_qstrId != _clsItem.m_qstrId)
                qvecChildren.append(clsChild);
        }
        std::stable_sort(
            qvecChildren.begin(), qvecChildren.end(),
            [](const CLS_TreeItem& _a, const CLS_TreeItem& _b) { return _a.m_iSortNo < _b.m_iSortNo; });
        // Runs of equal numbers: take the library's order, matched by the unique tool tip.
        const QList<QTreeWidgetItem*> qlstLib = _fnLibChildren(pRow ? pRow->m_pLib : nullptr);
        const int iBase = pRow != nullptr ? 0 : int(Siblings(nullptr).size());
        for (int i = 0; i < qvecChildren.size();) {
            int j = i + 1;
            while (j < qvecChildren.size() && qvecChildren.at(j).m_iSortNo == qvecChildren.at(i).m_iSortNo)
                ++j;
            for (int k = i; k < j; ++k) {
                if (iBase + k >= qlstLib.size())
                    break;
                const CLS_TreeItem clsLib =
                    qlstLib.at(iBase + k)->data(0, Qt::UserRole + 1).value<CLS_TreeItem>();
                for (int m = k; m < j; ++m) {
                    if (qvecChildren.at(m).m_qstrTooltip == clsLib.m_qstrTooltip &&
                        qvecChildren.at(m).m_qstrId == clsLib.m_qstrId) {
                        std::swap(qvecChildren[k], qvecChildren[m]);
                        break;
                    }
                }
            }
            i = j;
        }
        _qlstPath.append(_clsItem.m_qstrId);
        for (const CLS_TreeItem& clsChild : qAsConst(qvecChildren))
            Build(pRow, clsChild, _qmapChildren, true, _qlstPath, _fnLibChildren);
        _qlstPath.removeLast();
        return 0;
    }

    void Clear()
    {
        Reset(); // m_qstrRootId stays
    }

    // Returns the place of the new row, or -1.
    int AddItem(const CLS_TreeItem& _clsItem, int* _pIndex = nullptr)
    {
        if (m_qmapIndex.contains(_clsItem.m_qstrId))
            return -1;
        STRCT_ModelRow* pParent = m_qmapIndex.value(_clsItem.m_qstrParentId, nullptr);
        if (pParent == nullptr || _clsItem.m_qstrId.isEmpty())
            return -1;
        STRCT_ModelRow* pRow = NewRow(_clsItem);
        m_qmapIndex.insert(_clsItem.m_qstrId, pRow);
        int iIndex = 0;
        const int iCount = int(pParent->m_vecChildren.size());
        for (; iIndex < iCount; ++iIndex) {
            const int iSortNo = pParent->m_vecChildren[iIndex]->m_clsRecord.m_iSortNo;
            if (m_blMutateAddPlace ? iSortNo >= _clsItem.m_iSortNo : iSortNo > _clsItem.m_iSortNo)
                break;
        }
        InsertRow(pParent, iIndex, pRow);
        if (_pIndex != nullptr)
            *_pIndex = iIndex;
        return 0;
    }

    void DeleteItem(const QString& _qstrId)
    {
        STRCT_ModelRow* pRow = _qstrId.isEmpty() ? nullptr : m_qmapIndex.value(_qstrId, nullptr);
        if (pRow == nullptr)
            return;
        m_qmapIndex.remove(_qstrId);
        std::vector<STRCT_ModelRow*> vecDescendants;
        Descendants(pRow, vecDescendants, true);
        for (STRCT_ModelRow* pChild : vecDescendants)
            m_qmapIndex.remove(pChild->m_clsRecord.m_qstrId); // by record id, also another row's entry
        std::vector<STRCT_ModelRow*>& vecSiblings = Siblings(pRow->m_pParent);
        vecSiblings.erase(std::find(vecSiblings.begin(), vecSiblings.end(), pRow));
        pRow->m_pParent = nullptr;
        PropagateDisabled(pRow);
    }

    void UpdateItem(const CLS_TreeItem& _clsItem)
    {
        STRCT_ModelRow* pRow = m_qmapIndex.value(_clsItem.m_qstrId, nullptr);
        if (pRow == nullptr)
            return;
        SetFlags(pRow, _clsItem.m_iItemFlags != 0 ? _clsItem.m_iItemFlags : m_iDefaultFlags);
        pRow->m_clsRecord = _clsItem;
        pRow->m_qstrShownIcon = _clsItem.m_qstrIcon;
    }

    void UpdateItemIcon(const QString& _qstrId, const QString& _qstrIcon)
    {
        if (STRCT_ModelRow* pRow = m_qmapIndex.value(_qstrId, nullptr))
            pRow->m_qstrShownIcon = _qstrIcon; // the record keeps its icon
    }

    void SetItemDisabled(const QString& _qstrId, bool _blState)
    {
        if (_qstrId.isEmpty() || !m_blCheckEnable)
            return;
        STRCT_ModelRow* pRow = m_qmapIndex.value(_qstrId, nullptr);
        if (pRow == nullptr)
            return;
        SetFlags(pRow,
                 _blState ? (pRow->m_iFlags & ~Qt::ItemIsEnabled) : (pRow->m_iFlags | Qt::ItemIsEnabled));
    }

    void SetItemCheckStatus(const QString& _qstrId, int _iState, bool _blSend)
    {
        if (_qstrId.isEmpty() || !m_blCheckEnable)
            return;
        STRCT_ModelRow* pRow = m_qmapIndex.value(_qstrId, nullptr);
        if (pRow == nullptr)
            return;
        if (!_blSend)
            m_blSendChecked = false;
        OverrideSetCheck(pRow, _iState);
        m_blSendChecked = true;
    }

    // A user's click on the box: the view's model writes the row's check state.
    void UserCheck(STRCT_ModelRow* _pRow, int _iState) { OverrideSetCheck(_pRow, _iState); }

    // Ancestors by record id, nearest first (GetParentNode with a map).
    static void AncestorIds(const STRCT_ModelRow* _pRow, QStringList& _qlstOut)
    {
        for (const STRCT_ModelRow* p = _pRow->m_pParent; p != nullptr; p = p->m_pParent)
            _qlstOut << p->m_clsRecord.m_qstrId;
    }

    void ApplyKeepList(const QStringList& _qlstKeep)
    {
        for (auto it = m_qmapIndex.cbegin(); it != m_qmapIndex.cend(); ++it) {
            if (_qlstKeep.contains(it.key())) {
                it.value()->m_blHidden = false;
                it.value()->m_blExpanded = true;
            } else {
                it.value()->m_blHidden = true;
            }
        }
    }

    void SetShowItemById(const QString& _qstrId)
    {
        STRCT_ModelRow* pRow = _qstrId.isEmpty() ? nullptr : m_qmapIndex.value(_qstrId, nullptr);
        if (pRow == nullptr)
            return;
        QStringList qlstKeep;
        AncestorIds(pRow, qlstKeep);
        qlstKeep << _qstrId;
        ApplyKeepList(qlstKeep);
    }

    QMap<QString, STRCT_ModelRow*> NodesByName(const QString& _qstrName) const
    {
        QMap<QString, STRCT_ModelRow*> qmapFound;
        for (auto it = m_qmapIndex.cbegin(); it != m_qmapIndex.cend(); ++it) {
            if (it.value()->m_clsRecord.m_qstrText.contains(_qstrName, Qt::CaseInsensitive))
                qmapFound.insert(it.value()->m_clsRecord.m_qstrId, it.value());
        }
        return qmapFound;
    }

    void SetShowItemByName(const QString& _qstrName)
    {
        if (_qstrName.isEmpty())
            return;
        const QMap<QString, STRCT_ModelRow*> qmapFound = NodesByName(_qstrName);
        QStringList qlstKeep = qmapFound.keys();
        for (STRCT_ModelRow* pRow : qmapFound)
            AncestorIds(pRow, qlstKeep);
        ApplyKeepList(qlstKeep);
    }

    // The swap of two siblings. On success the caller checks the current row.
    int MoveOneRow(const QString& _qstrSrcId, const QString& _qstrDesId, bool _blUp)
    {
        STRCT_ModelRow* pSrc = m_qmapIndex.value(_qstrSrcId, nullptr);
        if (pSrc == nullptr)
            return -1;
        STRCT_ModelRow* pDes = m_qmapIndex.value(_qstrDesId, nullptr);
        if (pDes == nullptr)
            return -1;
        STRCT_ModelRow* pParent = pSrc->m_pParent;
        if (pParent == nullptr)
            return -1;
        std::vector<STRCT_ModelRow*>& vecChildren = pParent->m_vecChildren;
        const int iCount = int(vecChildren.size());
        const int iSrc = int(std::find(vecChildren.begin(), vecChildren.end(), pSrc) - vecChildren.begin());
        if (iCount == 0 || iSrc >= iCount)
            return -1;
        if (_blUp ? !(iSrc > 0 && iSrc < iCount) : !(iSrc >= 0 && iSrc < iCount - 1))
            return -1;
        const int iDes = int(std::find(vecChildren.begin(), vecChildren.end(), pDes) - vecChildren.begin());
        if (iDes >= iCount)
            return -1;
        CLS_TreeItem clsSrc = pSrc->m_clsRecord;
        CLS_TreeItem clsDes = pDes->m_clsRecord;
        std::swap(clsSrc.m_iSortNo, clsDes.m_iSortNo);
        pSrc->m_clsRecord = clsSrc;
        pDes->m_clsRecord = clsDes;
        // All children go out and come back: they take the parent's enabled state again, lose their
        // tool bars, and their subtrees lose the expanded state (the view forgets removed rows).
        std::vector<STRCT_ModelRow*> vecList = vecChildren;
        vecList[iSrc] = pDes;
        vecList[iDes] = pSrc;
        vecChildren.clear();
        for (STRCT_ModelRow* pChild : vecList) {
            pChild->m_pParent = nullptr;
            PropagateDisabled(pChild);
        }
        for (STRCT_ModelRow* pChild : vecList) {
            vecChildren.push_back(pChild);
            pChild->m_pParent = pParent;
            PropagateDisabled(pChild);
        }
        std::vector<STRCT_ModelRow*> vecLost;
        Descendants(pParent, vecLost, true);
        for (STRCT_ModelRow* pRow : vecLost) {
            pRow->m_blToolBar = false;
            pRow->m_blExpanded = false;
        }
        ScrollTo(pSrc);
        return 0;
    }

    // scrollToItem: Qt's tree view opens every ancestor of the row it scrolls to.
    static void ScrollTo(STRCT_ModelRow* _pRow)
    {
        for (STRCT_ModelRow* p = _pRow->m_pParent; p != nullptr; p = p->m_pParent)
            p->m_blExpanded = true;
    }

    void SetItemExpandStatus(const QString& _qstrId, int _iType)
    {
        STRCT_ModelRow* pRow = m_qmapIndex.value(_qstrId, nullptr);
        if (pRow == nullptr)
            return;
        if (_iType == TREE_COLLAPSE) {
            pRow->m_blExpanded = false;
        } else if (_iType == TREE_EXPAND || _iType == TREE_EXPAND_ALL) {
            for (STRCT_ModelRow* p = pRow; p != nullptr; p = p->m_pParent)
                p->m_blExpanded = true;
            if (_iType == TREE_EXPAND_ALL) {
                std::vector<STRCT_ModelRow*> vecAll;
                Descendants(pRow, vecAll, true);
                for (STRCT_ModelRow* p : vecAll)
                    p->m_blExpanded = true;
            }
        }
    }

    // expandAll (Qt) opens every row that the view lays out, leaves included, but not a hidden row
    // nor anything under one; collapseAll forgets every expanded row.
    void SetAllExpandStatus(bool _blShow)
    {
        if (!_blShow) {
            for (const auto& pRow : m_vecOwned)
                pRow->m_blExpanded = false;
            return;
        }
        std::vector<STRCT_ModelRow*> vecStack(m_vecTop.begin(), m_vecTop.end());
        while (!vecStack.empty()) {
            STRCT_ModelRow* pRow = vecStack.back();
            vecStack.pop_back();
            if (pRow->m_blHidden)
                continue;
            pRow->m_blExpanded = true;
            for (STRCT_ModelRow* pChild : pRow->m_vecChildren)
                vecStack.push_back(pChild);
        }
    }

    // ---- snapshot ----------------------------------------------------------------------------

    static QString Snapshot(const STRCT_ModelRow* _pRow)
    {
        QString qstrText = _pRow->m_clsRecord.m_qstrId;
        if (_pRow->m_vecChildren.empty())
            return qstrText;
        QStringList qlstChildren;
        for (const STRCT_ModelRow* pChild : _pRow->m_vecChildren)
            qlstChildren << Snapshot(pChild);
        return qstrText + "(" + qlstChildren.join(",") + ")";
    }

    QString Snapshot() const
    {
        QStringList qlstTop;
        for (const STRCT_ModelRow* pRow : m_vecTop)
            qlstTop << Snapshot(pRow);
        return qlstTop.join(",");
    }
};
