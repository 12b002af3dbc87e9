#include "CLS_WgtBaseTreeWidget.h"

#include "CLS_RowIconCache.h"
#include "CLS_TreeRowBatch.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtToolBtnStack.h"
#include "CLS_WgtTreeWidgetItem.h"
#include "WgtQtCompat.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFont>
#include <QFontMetrics>
#include <QHeaderView>
#include <QIcon>
#include <QMimeData>
#include <QMouseEvent>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>

#include <algorithm>
#include <functional>

namespace {
// Row type of every row this tree makes.
constexpr int CONST_iItemType = QTreeWidgetItem::UserType + 1;
constexpr int CONST_iIdRole = Qt::UserRole;
constexpr int CONST_iRecordRole = Qt::UserRole + 1;

// The record bound to a row, read where it lies instead of copied out. Null when the value is not
// stored as a CLS_TreeItem itself; callers then fall back on GetBindData, which also tries Qt's
// conversions. The pointer is valid as long as _varData lives.
const CLS_TreeItem* PeekRecord(const QVariant& _varData)
{
    if (_varData.userType() != qMetaTypeId<CLS_TreeItem>())
        return nullptr;
    return static_cast<const CLS_TreeItem*>(_varData.constData());
}

// Runs a callback before the viewport paints. A filter object of its own, so that the tree itself
// overrides no more of the view than its mouse, leave and drag handlers.
class CLS_PaintWatch : public QObject
{
public:
    CLS_PaintWatch(QObject* _pParent, std::function<void()> _fnBeforePaint)
        : QObject(_pParent), m_fnBeforePaint(std::move(_fnBeforePaint))
    {}

    bool eventFilter(QObject* _pWatched, QEvent* _pEvent) override
    {
        if (_pEvent->type() == QEvent::Paint)
            m_fnBeforePaint();
        return QObject::eventFilter(_pWatched, _pEvent);
    }

private:
    std::function<void()> m_fnBeforePaint;
};

// Records below _pNode whose text holds _qstrName, in the order of GetChildNode with all levels
// (depth first, each parent ahead of its children). A match is the only record copied.
void CollectByName(CLS_WgtBaseTreeWidget& _tree, QTreeWidgetItem* _pNode, const QString& _qstrName,
                   QVector<CLS_TreeItem>& _qvecItems)
{
    for (int i = 0; i < _pNode->childCount(); ++i) {
        QTreeWidgetItem* pChild = _pNode->child(i);
        if (pChild == nullptr)
            continue;
        const QVariant varData = pChild->data(0, CONST_iRecordRole);
        if (const CLS_TreeItem* pItem = PeekRecord(varData)) {
            if (pItem->m_qstrText.indexOf(_qstrName, 0, Qt::CaseInsensitive) >= 0)
                _qvecItems.append(*pItem);
        } else {
            CLS_TreeItem clsItem;
            if (_tree.GetBindData(pChild, clsItem) == 0 &&
                clsItem.m_qstrText.indexOf(_qstrName, 0, Qt::CaseInsensitive) >= 0)
                _qvecItems.append(clsItem);
        }
        CollectByName(_tree, pChild, _qstrName, _qvecItems);
    }
}
} // namespace

CLS_WgtBaseTreeWidget::CLS_WgtBaseTreeWidget(QWidget* parent, bool _blCheckEnable, bool _blDragEnable,
                                             bool _blDropEnable, bool _blRightClickEnable,
                                             n_ItemBtnShowType _iBtnShowType)
    : QTreeWidget(parent), m_blCheckEnable(_blCheckEnable), m_blDragEnable(_blDragEnable),
      m_blDropEnable(_blDropEnable), m_iBtnShowType(_iBtnShowType), m_blRightClickEnable(_blRightClickEnable)
{
    setAttribute(Qt::WA_MouseTracking, true);
    setRootIsDecorated(true);
    setHeaderHidden(true);

    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);

    // Neither scroll bar offers its own menu.
    horizontalScrollBar()->setContextMenuPolicy(Qt::NoContextMenu);
    verticalScrollBar()->setContextMenuPolicy(Qt::NoContextMenu);

    if (QHeaderView* pHeader = header()) {
        pHeader->setSectionResizeMode(QHeaderView::ResizeToContents);
        pHeader->setHidden(true);
    }

    m_iDefaultFlags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsAutoTristate;
    if (m_blCheckEnable)
        m_iDefaultFlags |= Qt::ItemIsUserCheckable;
    if (m_blDragEnable)
        m_iDefaultFlags |= Qt::ItemIsDragEnabled;
    if (m_blDropEnable)
        m_iDefaultFlags |= Qt::ItemIsDropEnabled;

    if (m_blDragEnable) {
        setDragDropMode(QAbstractItemView::InternalMove);
        setDefaultDropAction(Qt::MoveAction);
        setDropIndicatorShown(false);
    }
    setDragEnabled(m_blDragEnable);
    setAcceptDrops(m_blDropEnable);

    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setAutoScroll(false);

    setColumnCount(2);

    connect(this, &QTreeWidget::itemClicked, this, &CLS_WgtBaseTreeWidget::SlotClicked);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &CLS_WgtBaseTreeWidget::SlotDblClicked);
    connect(this, &QTreeWidget::currentItemChanged, this, &CLS_WgtBaseTreeWidget::SlotCurrentChanged);

    // Tool bars made on demand: mounted before the rows they belong to are painted, and forgotten
    // with rows that leave the view.
    m_pPaintWatch = new CLS_PaintWatch(this, [this]() { MountVisibleToolBars(); });
    viewport()->installEventFilter(m_pPaintWatch);
    connect(model(), &QAbstractItemModel::rowsAboutToBeRemoved, this,
            &CLS_WgtBaseTreeWidget::ForgetRemovedRows);
    connect(model(), &QAbstractItemModel::modelAboutToBeReset, this, &CLS_WgtBaseTreeWidget::ForgetAllRows);
}

CLS_WgtBaseTreeWidget::~CLS_WgtBaseTreeWidget()
{
    // QTreeWidget empties its model after this body; this part of the tree is gone by then.
    viewport()->removeEventFilter(m_pPaintWatch);
    disconnect(model(), nullptr, this, nullptr);
    ForgetAllRows();
    m_pHoverNode = nullptr;
    FreeTakenNodes();
}

void CLS_WgtBaseTreeWidget::FreeTakenNodes()
{
    const QVector<QTreeWidgetItem*> qvecTaken = std::exchange(m_qvecTakenNodes, {});
    qDeleteAll(qvecTaken); // each deletes its own descendants
}

int CLS_WgtBaseTreeWidget::Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems,
                                bool _blShowRoot)
{
    if (_qstrRootId.isEmpty() || _qmapItems.isEmpty() || !_qmapItems.contains(_qstrRootId))
        return -1;

    CLS_TreeRowBatch batch(this);
    m_qstrRootId = _qstrRootId;
    QTreeWidget::clear();
    m_qmapNodes.clear();
    m_pHoverNode = nullptr;
    FreeTakenNodes();
    ForgetAllRows();

    int iButtonRows = 0;
    for (auto it = _qmapItems.cbegin(); it != _qmapItems.cend(); ++it) {
        if (!it.value().m_qvecButtons.isEmpty())
            ++iButtonRows;
    }
    m_blBuildOnDemand = OnDemandFor(iButtonRows);
    // A big tree whose rows hold no widget of their own has rows of one height: the view then
    // measures one row instead of every row it lays out, scrolls or updates.
    SetUniformRows(_qmapItems.size() > CONST_iEagerToolBarRows && (m_blBuildOnDemand || iButtonRows == 0));

    // Parent id -> children, by reference into the records. The insertion place, one ahead of the
    // first sibling with a greater number rather than directly before it, is kept as it always was;
    // the build sorts again, so it only shows in the order of equal numbers. The records are read
    // through a copy of the map's handle: a caller that changes its own map while rows are made
    // (from a slot of the model's signals) leaves these records alone.
    const QMap<QString, CLS_TreeItem> qmapItems = _qmapItems;
    ChildMap qmapChildren;
    for (auto it = qmapItems.cbegin(); it != qmapItems.cend(); ++it) {
        const CLS_TreeItem& clsItem = it.value();
        if (clsItem.m_qstrParentId.isEmpty())
            continue;
        auto itChildren = qmapChildren.find(clsItem.m_qstrParentId);
        if (itChildren == qmapChildren.end()) {
            qmapChildren.insert(clsItem.m_qstrParentId, QVector<const CLS_TreeItem*>{&clsItem});
            continue;
        }
        QVector<const CLS_TreeItem*>& qvecSiblings = itChildren.value();
        int i = 0;
        for (; i < qvecSiblings.size(); ++i) {
            if (qvecSiblings.at(i)->m_iSortNo > clsItem.m_iSortNo)
                break;
        }
        if (i == qvecSiblings.size())
            qvecSiblings.append(&clsItem);
        else
            qvecSiblings.insert(i == 0 ? 0 : i - 1, &clsItem);
    }

    const CLS_RowIconCache iconBatch; // every row and tool bar of the build
    const auto itRoot = qmapItems.constFind(_qstrRootId);
    QSet<QString> qsetPath;
    return CreateTreeOnPath(nullptr, itRoot.value(), qmapChildren, _blShowRoot, qsetPath);
}

void CLS_WgtBaseTreeWidget::Clear()
{
    CLS_TreeRowBatch batch(this);
    QTreeWidget::clear();
    m_qmapNodes.clear();
    m_pHoverNode = nullptr;
    FreeTakenNodes();
}

int CLS_WgtBaseTreeWidget::CreateTree(QTreeWidgetItem* _pParent, const CLS_TreeItem& _clsItem,
                                      const QMap<QString, QVector<CLS_TreeItem>>& _qmapChildren,
                                      bool _blCreate)
{
    ChildMap qmapChildren;
    for (auto it = _qmapChildren.cbegin(); it != _qmapChildren.cend(); ++it) {
        QVector<const CLS_TreeItem*>& qvecChildren = qmapChildren[it.key()];
        qvecChildren.reserve(it.value().size());
        for (const CLS_TreeItem& clsChild : it.value())
            qvecChildren.append(&clsChild);
    }
    QSet<QString> qsetPath;
    return CreateTreeOnPath(_pParent, _clsItem, qmapChildren, _blCreate, qsetPath);
}

int CLS_WgtBaseTreeWidget::CreateTreeOnPath(QTreeWidgetItem* _pParent, const CLS_TreeItem& _clsItem,
                                            const ChildMap& _qmapChildren, bool _blCreate,
                                            QSet<QString>& _qsetPath)
{
    if (_clsItem.m_qstrId.isEmpty())
        return -1;

    QTreeWidgetItem* pNode = nullptr;
    if (_blCreate) {
        pNode = CreateNode(_clsItem);
        if (pNode == nullptr)
            return -1;
        if (_pParent == nullptr)
            addTopLevelItem(pNode);
        else
            _pParent->addChild(pNode);
        m_qmapNodes.insert(_clsItem.m_qstrId, pNode);

        // No geometry here; AddItem differs in that, and the difference is kept.
        if (!_clsItem.m_qvecButtons.isEmpty())
            MountItemButtons(pNode, _clsItem.m_qstrId, _clsItem.m_qvecButtons, false, m_blBuildOnDemand);
    }

    const auto itChildren = _qmapChildren.constFind(_clsItem.m_qstrId);
    if (itChildren == _qmapChildren.cend() || itChildren.value().isEmpty())
        return 0; // a leaf: nothing to descend into, so nothing to keep on the path

    // The children sorted by reference: the same order as sorting the records themselves (the sort
    // sees the same comparisons), without copying every record of the level.
    QVector<const CLS_TreeItem*> qvecChildren = itChildren.value();
    std::sort(qvecChildren.begin(), qvecChildren.end(), [](const CLS_TreeItem* _pA, const CLS_TreeItem* _pB) {
        return SortByNo(const_cast<CLS_TreeItem&>(*_pA), const_cast<CLS_TreeItem&>(*_pB));
    });

    _qsetPath.insert(_clsItem.m_qstrId);
    for (const CLS_TreeItem* pChild : qAsConst(qvecChildren)) {
        // A record that stands on its own path from the root would recurse without end.
        if (_qsetPath.contains(pChild->m_qstrId))
            continue;
        CreateTreeOnPath(pNode, *pChild, _qmapChildren, true, _qsetPath); // a failing child is skipped
    }
    _qsetPath.remove(_clsItem.m_qstrId);
    return 0;
}

QTreeWidgetItem* CLS_WgtBaseTreeWidget::CreateNode(const CLS_TreeItem& _clsItem)
{
    if (_clsItem.m_qstrId.isEmpty())
        return nullptr;

    auto* pNode = new CLS_WgtTreeWidgetItem(CONST_iItemType);
    // Connected before any data is set; the first check state below stays silent anyway.
    connect(pNode, &CLS_WgtTreeWidgetItem::SignCheckStateChanged, this,
            &CLS_WgtBaseTreeWidget::SlotCheckStateChanged);

    pNode->setFlags(Qt::ItemFlags(_clsItem.m_iItemFlags != 0 ? _clsItem.m_iItemFlags : m_iDefaultFlags));
    if (m_blCheckEnable)
        pNode->setData(0, Qt::CheckStateRole, static_cast<int>(Qt::Unchecked));

    pNode->setData(0, Qt::DisplayRole, ElidedText(_clsItem.m_qstrText, pNode));
    pNode->setData(0, Qt::ToolTipRole, _clsItem.m_qstrTooltip);
    pNode->setData(0, Qt::DecorationRole, CLS_RowIconCache::Icon(_clsItem.m_qstrIcon));
    pNode->setData(0, CONST_iIdRole, _clsItem.m_qstrId);
    pNode->setData(0, CONST_iRecordRole, QVariant::fromValue(_clsItem));
    return pNode;
}

QString CLS_WgtBaseTreeWidget::ElidedText(const QString& _qstrText, QTreeWidgetItem* _pNode) const
{
    if (m_iTextMaxWidth < 1)
        return _qstrText;
    // A new row holds no font, which reads as a default QFont.
    const QFont font = _pNode->data(0, Qt::FontRole).value<QFont>();
    return QFontMetrics(font).elidedText(_qstrText, Qt::ElideRight, m_iTextMaxWidth, 0);
}

bool CLS_WgtBaseTreeWidget::SortByNo(CLS_TreeItem& _clsFirst, CLS_TreeItem& _clsSecond)
{
    return _clsFirst.m_iSortNo < _clsSecond.m_iSortNo;
}

QTreeWidgetItem* CLS_WgtBaseTreeWidget::GetNodeById(const QString& _qstrId)
{
    return m_qmapNodes.value(_qstrId, nullptr);
}

int CLS_WgtBaseTreeWidget::CountRows(const QTreeWidgetItem* _pRow)
{
    // A walk with a stack of its own: the depth of a tree is the page's.
    QVector<const QTreeWidgetItem*> qvecOpen;
    if (_pRow != nullptr)
        qvecOpen.append(_pRow);
    int iRows = 0;
    while (!qvecOpen.isEmpty()) {
        const QTreeWidgetItem* pRow = qvecOpen.takeLast();
        ++iRows;
        for (int i = 0; i < pRow->childCount(); ++i)
            qvecOpen.append(pRow->child(i));
    }
    return iRows;
}

QByteArray CLS_WgtBaseTreeWidget::RowAddressBytes(const QTreeWidgetItem* _pRow)
{
    return QVariant(QString::number(reinterpret_cast<quintptr>(_pRow))).toByteArray();
}

int CLS_WgtBaseTreeWidget::GetBindData(QTreeWidgetItem* _pNode, CLS_TreeItem& _clsItem)
{
    if (_pNode == nullptr)
        return -1;
    const QVariant varData = _pNode->data(0, CONST_iRecordRole);
    if (!varData.isValid() || !varData.canConvert<CLS_TreeItem>())
        return -1;
    _clsItem = varData.value<CLS_TreeItem>();
    return 0;
}

int CLS_WgtBaseTreeWidget::GetItemById(const QString& _qstrId, CLS_TreeItem& _clsItem)
{
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr)
        return -1;
    return GetBindData(pNode, _clsItem);
}

int CLS_WgtBaseTreeWidget::GetItemByName(const QString& _qstrName, QVector<CLS_TreeItem>& _qvecItems)
{
    // Only a tree built with its root row can be searched; kept, pages rely on it.
    QTreeWidgetItem* pRoot = GetNodeById(m_qstrRootId);
    if (pRoot == nullptr)
        return -1;

    // The rows and order of GetChilds on the root with all levels, but each record is tested where
    // it lies and only a match is copied: copying every record first made a search of a large tree
    // cost about twice a plain walk over its rows.
    CollectByName(*this, pRoot, _qstrName, _qvecItems);
    return 0;
}

int CLS_WgtBaseTreeWidget::GetChilds(const QString& _qstrId, QVector<CLS_TreeItem>& _qvecItems,
                                     bool _blAllLevels)
{
    if (_qstrId.isEmpty())
        return -1;
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr)
        return -1;
    QVector<QTreeWidgetItem*> qvecNodes;
    if (GetChildNode(pNode, qvecNodes, _blAllLevels) != 0)
        return -1;
    for (QTreeWidgetItem* pChild : qAsConst(qvecNodes)) {
        CLS_TreeItem clsItem;
        if (GetBindData(pChild, clsItem) == 0)
            _qvecItems.append(clsItem);
    }
    return 0;
}

int CLS_WgtBaseTreeWidget::GetCurrentItem(CLS_TreeItem& _clsItem)
{
    QTreeWidgetItem* pNode = currentItem();
    if (pNode == nullptr || !(pNode->flags() & Qt::ItemIsEnabled))
        return -1;
    return GetBindData(pNode, _clsItem);
}

int CLS_WgtBaseTreeWidget::GetAllItems(QMap<QString, CLS_TreeItem>& _qmapItems)
{
    for (auto it = m_qmapNodes.cbegin(); it != m_qmapNodes.cend(); ++it) {
        if (it.value() == nullptr)
            continue;
        CLS_TreeItem clsItem;
        if (GetBindData(it.value(), clsItem) == 0)
            _qmapItems.insert(it.key(), clsItem);
    }
    return 0;
}

int CLS_WgtBaseTreeWidget::GetParent(const QString& _qstrId, CLS_TreeItem& _clsItem)
{
    if (_qstrId.isEmpty())
        return -1;
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr || pNode->parent() == nullptr)
        return -1;
    return GetBindData(pNode->parent(), _clsItem);
}

void CLS_WgtBaseTreeWidget::SetTextMaxWidth(int _iWidth)
{
    m_iTextMaxWidth = _iWidth;
}

void CLS_WgtBaseTreeWidget::SetLang(const QString& _qstrLang)
{
    Q_UNUSED(_qstrLang) // the tree holds no translatable text of its own
}

void CLS_WgtBaseTreeWidget::LoadStyleSheet(const QString& _qstrStyleSheet)
{
    setStyleSheet(_qstrStyleSheet);
}

int CLS_WgtBaseTreeWidget::GetChildNode(QTreeWidgetItem* _pNode, QVector<QTreeWidgetItem*>& _qvecNodes,
                                        bool _blAllLevels)
{
    if (_pNode == nullptr)
        return -1;
    for (int i = 0; i < _pNode->childCount(); ++i) {
        QTreeWidgetItem* pChild = _pNode->child(i);
        if (pChild == nullptr)
            continue;
        _qvecNodes.append(pChild);
        if (_blAllLevels)
            GetChildNode(pChild, _qvecNodes, true);
    }
    return 0;
}

int CLS_WgtBaseTreeWidget::GetParentNode(QTreeWidgetItem* _pNode, QVector<QTreeWidgetItem*>& _qvecNodes)
{
    if (_pNode == nullptr || _pNode->parent() == nullptr)
        return -1;
    for (QTreeWidgetItem* pParent = _pNode->parent(); pParent != nullptr; pParent = pParent->parent())
        _qvecNodes.append(pParent);
    return 0;
}

int CLS_WgtBaseTreeWidget::GetParentNode(QTreeWidgetItem* _pNode, QMap<QString, QTreeWidgetItem*>& _qmapNodes)
{
    if (_pNode == nullptr || _pNode->parent() == nullptr)
        return -1;
    QTreeWidgetItem* pParent = _pNode->parent();
    CLS_TreeItem clsItem;
    if (GetBindData(pParent, clsItem) != 0)
        return -1;
    _qmapNodes.insert(clsItem.m_qstrId, pParent);
    GetParentNode(pParent, _qmapNodes); // dropped: reaching the top row still ends in 0
    return 0;
}

void CLS_WgtBaseTreeWidget::SetItemExpandStatus(QString _qstrId, n_TreeExpandType _iExpandType)
{
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr)
        return;

    CLS_TreeRowBatch batch(this);
    switch (_iExpandType) {
    case TREE_COLLAPSE:
        collapseItem(pNode);
        break;
    case TREE_EXPAND:
    case TREE_EXPAND_ALL: {
        QVector<QTreeWidgetItem*> qvecParents;
        for (QTreeWidgetItem* pParent = pNode->parent(); pParent != nullptr; pParent = pParent->parent())
            qvecParents.append(pParent);
        for (QTreeWidgetItem* pParent : qAsConst(qvecParents))
            expandItem(pParent);
        expandItem(pNode);
        if (_iExpandType == TREE_EXPAND_ALL) {
            QVector<QTreeWidgetItem*> qvecChildren;
            GetChildNode(pNode, qvecChildren, true);
            for (QTreeWidgetItem* pChild : qAsConst(qvecChildren))
                expandItem(pChild);
        }
        break;
    }
    default:
        break;
    }
}

void CLS_WgtBaseTreeWidget::SetAllExpandStatus(bool _blShow)
{
    CLS_TreeRowBatch batch(this);
    if (_blShow)
        expandAll();
    else
        collapseAll();
    // Both lay the rows out at once. Inside a batch of the caller, its later changes stay cheap;
    // alone, the rows stay as laid out.
    if (m_iRowBatchDepth > 1)
        DeferRowLayout();
}

void CLS_WgtBaseTreeWidget::SlotCheckStateChanged(QTreeWidgetItem* _pItem, bool _blChecked)
{
    if (_pItem == nullptr || !m_blCheckEnable || !m_blSendChecked)
        return;
    // The record as the row holds it, without a copy of its own when it is stored as itself.
    const QVariant varData = _pItem->data(0, CONST_iRecordRole);
    if (varData.userType() == qMetaTypeId<CLS_TreeItem>()) {
        const CLS_TreeItem& clsItem = *static_cast<const CLS_TreeItem*>(varData.constData());
        emit SignCheckedStatusChanged(clsItem.m_qstrId, _blChecked, clsItem);
        return;
    }
    CLS_TreeItem clsItem;
    if (GetBindData(_pItem, clsItem) != 0)
        return;
    emit SignCheckedStatusChanged(clsItem.m_qstrId, _blChecked, clsItem);
}

// ---- tool bars -----------------------------------------------------------------------------------

CLS_WgtItemToolBar* CLS_WgtBaseTreeWidget::CreateItemButtons(const QString& _qstrId,
                                                             const QVector<CLS_ItemButton>& _qvecButtons,
                                                             QWidget* _pParent)
{
    if (_qvecButtons.isEmpty())
        return nullptr;
    auto* pToolBar = new CLS_WgtItemToolBar(_pParent);
    pToolBar->Init(_qvecButtons, _qstrId);
    connect(pToolBar, &CLS_WgtItemToolBar::SignTriggered, this, &CLS_WgtBaseTreeWidget::SignClickButton);
    return pToolBar;
}

// ---- editing -------------------------------------------------------------------------------------

int CLS_WgtBaseTreeWidget::AddItem(CLS_TreeItem _clsTreeItem)
{
    if (GetNodeById(_clsTreeItem.m_qstrId) != nullptr)
        return -1; // a duplicate never replaces anything
    QTreeWidgetItem* pParent = GetNodeById(_clsTreeItem.m_qstrParentId);
    if (pParent == nullptr)
        return -1; // so no top-level row can be added
    QTreeWidgetItem* pNode = CreateNode(_clsTreeItem);
    if (pNode == nullptr)
        return -1;
    m_qmapNodes.insert(_clsTreeItem.m_qstrId, pNode);

    // Behind every sibling of equal or lower number.
    int iIndex = 0;
    const int iCount = pParent->childCount();
    for (; iIndex < iCount; ++iIndex) {
        QTreeWidgetItem* pSibling = pParent->child(iIndex);
        const QVariant varData = pSibling != nullptr ? pSibling->data(0, CONST_iRecordRole) : QVariant();
        int iSortNo = 0;
        if (const CLS_TreeItem* pSiblingItem = PeekRecord(varData)) {
            iSortNo = pSiblingItem->m_iSortNo; // only the number is needed; no record is copied
        } else {
            CLS_TreeItem clsSibling;
            if (GetBindData(pSibling, clsSibling) != 0)
                continue;
            iSortNo = clsSibling.m_iSortNo;
        }
        if (iSortNo > _clsTreeItem.m_iSortNo)
            break;
    }
    pParent->insertChild(iIndex, pNode);

    // The stack gets 50 x 30 only on this path; rows built by Init get no geometry.
    if (!_clsTreeItem.m_qvecButtons.isEmpty())
        MountItemButtons(pNode, _clsTreeItem.m_qstrId, _clsTreeItem.m_qvecButtons, true,
                         OnDemandFor(m_qsetButtonRows.size() + 1));
    return 0;
}

void CLS_WgtBaseTreeWidget::AddItems(QVector<CLS_TreeItem> _qvecTreeItems)
{
    CLS_TreeRowBatch batch(this);
    const CLS_RowIconCache iconBatch;
    for (const CLS_TreeItem& clsItem : qAsConst(_qvecTreeItems))
        AddItem(clsItem);
}

void CLS_WgtBaseTreeWidget::DeleteItem(QString _qstrId)
{
    if (_qstrId.isEmpty())
        return;
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr)
        return;

    CLS_TreeRowBatch batch(this);
    m_qmapNodes.remove(_qstrId);
    QVector<QTreeWidgetItem*> qvecDescendants;
    GetChildNode(pNode, qvecDescendants, true);
    for (QTreeWidgetItem* pChild : qAsConst(qvecDescendants)) {
        CLS_TreeItem clsItem;
        if (GetBindData(pChild, clsItem) == 0)
            m_qmapNodes.remove(clsItem.m_qstrId);
    }

    if (QTreeWidgetItem* pParent = pNode->parent()) {
        pParent->removeChild(pNode);
    } else {
        for (int i = 0; i < topLevelItemCount(); ++i) {
            if (topLevelItem(i) == pNode) {
                takeTopLevelItem(i);
                break;
            }
        }
    }
    // Taken out, not destroyed: see m_qvecTakenNodes.
    if (pNode->treeWidget() == nullptr && pNode->parent() == nullptr)
        m_qvecTakenNodes.append(pNode);
}

void CLS_WgtBaseTreeWidget::UpdateItem(CLS_TreeItem _clsItem)
{
    QTreeWidgetItem* pNode = GetNodeById(_clsItem.m_qstrId);
    if (pNode == nullptr)
        return;
    CLS_TreeRowBatch batch(this); // five writes, one sizing of the column
    // Overwrites the enabled flag too: a disabled row comes back enabled unless the record says no.
    pNode->setFlags(Qt::ItemFlags(_clsItem.m_iItemFlags != 0 ? _clsItem.m_iItemFlags : m_iDefaultFlags));
    pNode->setData(0, Qt::DisplayRole, ElidedText(_clsItem.m_qstrText, pNode));
    pNode->setData(0, Qt::ToolTipRole, _clsItem.m_qstrTooltip);
    pNode->setData(0, Qt::DecorationRole, QIcon(_clsItem.m_qstrIcon));
    pNode->setData(0, CONST_iIdRole, _clsItem.m_qstrId);
    pNode->setData(0, CONST_iRecordRole, QVariant::fromValue(_clsItem));
    // Place, tool bar, check, hidden and expanded state stay as they are.
}

void CLS_WgtBaseTreeWidget::UpdateItemIcon(QString _qstrId, QString _qstrIcon)
{
    // The shown icon only: the bound record keeps its m_qstrIcon.
    if (QTreeWidgetItem* pNode = GetNodeById(_qstrId))
        pNode->setData(0, Qt::DecorationRole, CLS_RowIconCache::Icon(_qstrIcon));
}

void CLS_WgtBaseTreeWidget::SetItemDisabled(QString _qstrId, bool blState)
{
    if (_qstrId.isEmpty())
        return;
    if (!m_blCheckEnable)
        return; // works in checkable trees only; kept
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr)
        return;
    Qt::ItemFlags flags = pNode->flags();
    if (blState)
        flags &= ~Qt::ItemIsEnabled;
    else
        flags |= Qt::ItemIsEnabled;
    pNode->setFlags(flags);
}

// ---- check state ---------------------------------------------------------------------------------

void CLS_WgtBaseTreeWidget::SetItemCheckStatus(QString _qstrId, Qt::CheckState _iState, bool _blSend)
{
    if (_qstrId.isEmpty() || !m_blCheckEnable)
        return;
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr)
        return;
    CLS_TreeRowBatch batch(this, false); // check states only: the rows stay where they are
    if (!_blSend)
        m_blSendChecked = false;
    // Qt passes the state down inside this call, so the gate covers the children's signals too.
    pNode->setData(0, Qt::CheckStateRole, static_cast<int>(_iState));
    m_blSendChecked = true; // a plain flag, not a counter: calls do not nest
}

int CLS_WgtBaseTreeWidget::GetItemCheckStatus(const QString& _qstrId, Qt::CheckState& _iState)
{
    if (_qstrId.isEmpty())
        return -1;
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr)
        return -1;
    _iState = static_cast<Qt::CheckState>(pNode->data(0, Qt::CheckStateRole).toInt());
    return 0;
}

int CLS_WgtBaseTreeWidget::GetCheckedItems(QVector<CLS_TreeItem>& _qvecItems, bool _blLeafOnly)
{
    if (!m_blCheckEnable)
        return -1;
    for (auto it = m_qmapNodes.cbegin(); it != m_qmapNodes.cend(); ++it) {
        QTreeWidgetItem* pNode = it.value();
        if (pNode == nullptr || !(pNode->flags() & Qt::ItemIsEnabled) || pNode->isHidden())
            continue;
        if (pNode->data(0, Qt::CheckStateRole).toInt() != Qt::Checked)
            continue; // a partially checked parent is not listed
        if (_blLeafOnly && pNode->childCount() > 0)
            continue;
        const QVariant varData = pNode->data(0, CONST_iRecordRole);
        if (const CLS_TreeItem* pItem = PeekRecord(varData)) {
            _qvecItems.append(*pItem); // one copy, straight into the output
            continue;
        }
        CLS_TreeItem clsItem;
        if (GetBindData(pNode, clsItem) != 0)
            continue;
        _qvecItems.append(clsItem);
    }
    return 0;
}

int CLS_WgtBaseTreeWidget::GetCheckedNodes(QVector<CLS_TreeItem>& _qvecItems)
{
    return GetCheckedItems(_qvecItems, true);
}

// ---- interaction ---------------------------------------------------------------------------------

void CLS_WgtBaseTreeWidget::SlotClicked(QTreeWidgetItem* _pItem, int _iColumn)
{
    Q_UNUSED(_iColumn)
    if (_pItem == nullptr)
        return;
    CLS_TreeItem clsItem;
    if (GetBindData(_pItem, clsItem) == 0)
        emit SignClicked(clsItem.m_qstrId, clsItem); // also for a disabled row that Qt reports
}

void CLS_WgtBaseTreeWidget::SlotDblClicked(QTreeWidgetItem* _pItem, int _iColumn)
{
    Q_UNUSED(_iColumn)
    if (_pItem == nullptr)
        return;
    CLS_TreeItem clsItem;
    GetBindData(_pItem, clsItem);
    QTreeWidgetItem* pIndexed = m_qmapNodes.value(clsItem.m_qstrId, nullptr);
    if (pIndexed != nullptr && (pIndexed->flags() & Qt::ItemIsEnabled))
        emit SignDblClicked(clsItem.m_qstrId, clsItem);
}

void CLS_WgtBaseTreeWidget::SlotCurrentChanged(QTreeWidgetItem* _pCurrent, QTreeWidgetItem* _pPrevious)
{
    if (_pCurrent == nullptr || !m_blSendSelected)
        return;
    CLS_TreeItem clsItem;
    if (GetBindData(_pCurrent, clsItem) != 0)
        return;
    QString qstrOldId;
    CLS_TreeItem clsPrevious;
    if (_pPrevious != nullptr && GetBindData(_pPrevious, clsPrevious) == 0)
        qstrOldId = clsPrevious.m_qstrId;
    emit SignSelected(clsItem.m_qstrId, clsItem, qstrOldId);
}

void CLS_WgtBaseTreeWidget::SlotClickButton(QString _qstrId, CLS_ItemButton _clsBtn)
{
    emit SignClickButton(_qstrId, _clsBtn);
}

void CLS_WgtBaseTreeWidget::SetCurrentItem(QString _qstrId, bool _blSend)
{
    if (_qstrId.isEmpty())
        return;
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr)
        return;
    if (!_blSend)
        m_blSendSelected = false;
    scrollToItem(pNode, QAbstractItemView::EnsureVisible); // auto scroll is off
    setCurrentItem(pNode);
    m_blSendSelected = true;
}

void CLS_WgtBaseTreeWidget::mousePressEvent(QMouseEvent* _pEvent)
{
    if (_pEvent == nullptr)
        return;
    QTreeWidgetItem* pNode = itemAt(QtCompat::EventPos(_pEvent).toPoint());
    if (pNode != nullptr) {
        if (_pEvent->button() == Qt::LeftButton) {
            if (m_blDragEnable) {
                // Still the row that was current before this press; only a leaf is recorded.
                QTreeWidgetItem* pCurrent = currentItem();
                if (pCurrent != nullptr && pCurrent->childCount() == 0)
                    GetBindData(pCurrent, m_clsDragItem);
            }
        } else if (_pEvent->button() == Qt::RightButton && m_blRightClickEnable) {
            CLS_TreeItem clsItem;
            if (GetBindData(pNode, clsItem) == 0) {
                // Selection first, so that right-click listeners find the row current.
                SetCurrentItem(clsItem.m_qstrId, true);
                emit SignRightClicked(clsItem.m_qstrId, clsItem);
            }
        }
    }
    QTreeView::mousePressEvent(_pEvent);
}

void CLS_WgtBaseTreeWidget::mouseReleaseEvent(QMouseEvent* _pEvent)
{
    m_blDragging = false;
    QTreeView::mouseReleaseEvent(_pEvent);
}

namespace {
// The column-1 stack of a row, if it has two pages (blank and tool bar).
QStackedWidget* TwoPageStack(CLS_WgtBaseTreeWidget* _pTree, QTreeWidgetItem* _pNode)
{
    auto* pStack = qobject_cast<QStackedWidget*>(_pTree->GetItemButtons(_pNode));
    return (pStack != nullptr && pStack->count() > 1) ? pStack : nullptr;
}
} // namespace

void CLS_WgtBaseTreeWidget::mouseMoveEvent(QMouseEvent* _pEvent)
{
    if (_pEvent == nullptr)
        return;
    if (m_iBtnShowType == ITEM_BTN_SHOW_HOVER && !(m_blDragEnable && m_blDragging)) {
        QTreeWidgetItem* pNode = itemAt(QtCompat::EventPos(_pEvent).toPoint());
        if (pNode != m_pHoverNode) {
            if (m_pHoverNode != nullptr) {
                if (QStackedWidget* pStack = TwoPageStack(this, m_pHoverNode))
                    pStack->setCurrentIndex(0);
            }
            m_pHoverNode = pNode;
            if (pNode != nullptr) {
                EnsureItemButtons(pNode); // a bar still to come is made for the row under the mouse
                if (QStackedWidget* pStack = TwoPageStack(this, pNode))
                    pStack->setCurrentIndex(1);
            }
        }
    }
    QTreeView::mouseMoveEvent(_pEvent);
}

void CLS_WgtBaseTreeWidget::leaveEvent(QEvent* _pEvent)
{
    if (m_pHoverNode != nullptr && m_iBtnShowType != ITEM_BTN_SHOW_ALWAYS) {
        if (QStackedWidget* pStack = TwoPageStack(this, m_pHoverNode))
            pStack->setCurrentIndex(0);
    }
    // m_pHoverNode stays: coming back onto the same row does not bring its tool bar back.
    QWidget::leaveEvent(_pEvent);
}

// ---- drag and drop -------------------------------------------------------------------------------

void CLS_WgtBaseTreeWidget::startDrag(Qt::DropActions _supportedActions)
{
    Q_UNUSED(_supportedActions) // always a move
    QTreeWidgetItem* pNode = currentItem();
    if (pNode == nullptr || !(pNode->flags() & Qt::ItemIsEnabled))
        return;

    // Only meaningful inside this tree: the row's address, which nothing reads back.
    auto* pMimeData = new QMimeData();
    pMimeData->setData("application/x-qabstractitemmodeldatalist", RowAddressBytes(pNode));
    const int iRows = m_fnDragPayload ? m_fnDragPayload(pMimeData) : 1;

    // The picture comes from a button the style sheet can address as "dragBgBtn".
    m_pDragBgBtn = std::make_unique<QPushButton>(nullptr);
    m_pDragBgBtn->setObjectName("dragBgBtn");
    m_pDragBgBtn->setIcon(pNode->data(0, Qt::DecorationRole).value<QIcon>());
    const QString qstrText = pNode->data(0, Qt::DisplayRole).toString();
    m_pDragBgBtn->setText(iRows > 1 ? QString("%1 (+%2)").arg(qstrText).arg(iRows - 1) : qstrText);
    QPixmap pixmap;
    pixmap = m_pDragBgBtn->grab(QRect(0, 0, -1, -1)); // the whole button at its own size

    auto* pDrag = new QDrag(this);
    pDrag->setMimeData(pMimeData);
    pDrag->setPixmap(pixmap);
    pDrag->setHotSpot(QPoint(0, 0));
    pDrag->exec(Qt::MoveAction); // blocks in a nested loop until drop or cancel
}

void CLS_WgtBaseTreeWidget::dragEnterEvent(QDragEnterEvent* _pEvent)
{
    if (_pEvent == nullptr)
        return;
    if (m_blDragEnable) {
        _pEvent->setDropAction(Qt::MoveAction);
        _pEvent->accept();
        m_blDragging = true;
    }
    QAbstractItemView::dragEnterEvent(_pEvent);
}

void CLS_WgtBaseTreeWidget::dropEvent(QDropEvent* _pEvent)
{
    if (_pEvent == nullptr)
        return;
    if (!m_blDragEnable) {
        QTreeWidget::dropEvent(_pEvent);
        return;
    }

    auto veto = [this, _pEvent]() {
        // m_blDragging stays set: the hover switch sleeps until the next release.
        _pEvent->setDropAction(Qt::IgnoreAction);
        _pEvent->ignore();
        QTreeWidget::dropEvent(_pEvent);
    };

    QTreeWidgetItem* pTarget = itemAt(QtCompat::EventPos(_pEvent).toPoint());
    if (pTarget == nullptr || !(pTarget->flags() & Qt::ItemIsEnabled)) {
        veto();
        return;
    }
    CLS_TreeItem clsTarget;
    GetBindData(pTarget, clsTarget); // a row without a record gives the default one
    if (clsTarget.m_qstrId == m_clsDragItem.m_qstrId) {
        veto();
        return;
    }
    emit SignDroped(clsTarget); // the row has not moved yet
    m_blDragging = false;
    if (selectionMode() != QAbstractItemView::SingleSelection && _pEvent->source() == this) {
        // The internal move takes the selected rows: with several selected, only the current one
        // moves, as in a tree of single selection.
        QTreeWidgetItem* pCurrent = currentItem();
        clearSelection();
        if (pCurrent != nullptr)
            pCurrent->setSelected(true);
    }
    QTreeWidget::dropEvent(_pEvent);
}

// ---- locate and reorder --------------------------------------------------------------------------

int CLS_WgtBaseTreeWidget::GetNodeByName(const QString& _qstrName,
                                         QMap<QString, QTreeWidgetItem*>& _qmapNodes)
{
    if (_qstrName.isEmpty())
        return -1;
    for (auto it = m_qmapNodes.cbegin(); it != m_qmapNodes.cend(); ++it) {
        if (it.value() == nullptr)
            continue;
        const QVariant varData = it.value()->data(0, CONST_iRecordRole);
        if (const CLS_TreeItem* pItem = PeekRecord(varData)) {
            // Read in place: a search over every row copies no record.
            if (pItem->m_qstrText.indexOf(_qstrName, 0, Qt::CaseInsensitive) >= 0)
                _qmapNodes.insert(pItem->m_qstrId, it.value());
            continue;
        }
        CLS_TreeItem clsItem;
        if (GetBindData(it.value(), clsItem) != 0)
            continue;
        if (clsItem.m_qstrText.indexOf(_qstrName, 0, Qt::CaseInsensitive) >= 0)
            _qmapNodes.insert(clsItem.m_qstrId, it.value());
    }
    return 0;
}

void CLS_WgtBaseTreeWidget::ApplyKeepList(const QSet<QString>& _qsetKeep)
{
    // Kept rows are shown and expanded, all others hidden; nothing is removed.
    CLS_TreeRowBatch batch(this);
    for (auto it = m_qmapNodes.cbegin(); it != m_qmapNodes.cend(); ++it) {
        QTreeWidgetItem* pNode = it.value();
        if (pNode == nullptr)
            continue;
        if (_qsetKeep.contains(it.key())) {
            pNode->setHidden(false);
            pNode->setExpanded(true);
        } else {
            pNode->setHidden(true);
        }
    }
    emit SignKeepListApplied();
}

void CLS_WgtBaseTreeWidget::SetShowItemById(QString _qstrId)
{
    if (_qstrId.isEmpty())
        return;
    QTreeWidgetItem* pNode = GetNodeById(_qstrId);
    if (pNode == nullptr)
        return;
    QMap<QString, QTreeWidgetItem*> qmapParents;
    GetParentNode(pNode, qmapParents); // a top-level row simply has no ancestors
    QSet<QString> qsetKeep(qmapParents.keyBegin(), qmapParents.keyEnd());
    qsetKeep.insert(_qstrId);
    ApplyKeepList(qsetKeep);
}

void CLS_WgtBaseTreeWidget::SetShowItemByName(QString _qstrName)
{
    if (_qstrName.isEmpty())
        return; // does not show everything again
    QMap<QString, QTreeWidgetItem*> qmapFound;
    GetNodeByName(_qstrName, qmapFound);
    // A set instead of a list searched per row, and every ancestor chain walked once: the same
    // rows are kept as with one parent walk per match, without the quadratic cost.
    QSet<QString> qsetKeep(qmapFound.keyBegin(), qmapFound.keyEnd());
    QSet<QTreeWidgetItem*> qsetWalked;
    for (auto it = qmapFound.cbegin(); it != qmapFound.cend(); ++it) {
        for (QTreeWidgetItem* pParent = it.value()->parent(); pParent != nullptr;
             pParent = pParent->parent()) {
            if (qsetWalked.contains(pParent))
                break; // the rest of this chain is in the set already
            CLS_TreeItem clsParent;
            if (GetBindData(pParent, clsParent) != 0)
                break; // an unreadable parent ends the chain, as in GetParentNode
            qsetWalked.insert(pParent);
            qsetKeep.insert(clsParent.m_qstrId);
        }
    }
    ApplyKeepList(qsetKeep); // no match: every row is hidden
}

int CLS_WgtBaseTreeWidget::MoveUpOneRow(QString _qstrSrcId, QString _qstrDesId)
{
    return MoveOneRow(_qstrSrcId, _qstrDesId, true);
}

int CLS_WgtBaseTreeWidget::MoveDownOneRow(QString _qstrSrcId, QString _qstrDesId)
{
    return MoveOneRow(_qstrSrcId, _qstrDesId, false);
}

int CLS_WgtBaseTreeWidget::MoveOneRow(const QString& _qstrSrcId, const QString& _qstrDesId, bool _blUp)
{
    QTreeWidgetItem* pSrc = GetNodeById(_qstrSrcId);
    if (pSrc == nullptr)
        return -1;
    CLS_TreeItem clsSrc;
    GetBindData(pSrc, clsSrc);
    QTreeWidgetItem* pDes = GetNodeById(_qstrDesId);
    if (pDes == nullptr)
        return -1;
    CLS_TreeItem clsDes;
    GetBindData(pDes, clsDes);

    QTreeWidgetItem* pParent = pSrc->parent();
    if (pParent == nullptr)
        return -1; // top-level rows cannot be moved
    const int iCount = pParent->childCount();
    const int iSrc = pParent->indexOfChild(pSrc);
    if (iCount == 0 || iSrc < 0)
        return -1;
    const bool blInLimit = _blUp ? (iSrc > 0 && iSrc < iCount) : (iSrc >= 0 && iSrc < iCount - 1);
    if (!blInLimit)
        return -1;
    const int iDes = pParent->indexOfChild(pDes);
    if (iDes < 0)
        return -1; // the two must be siblings, nothing more

    CLS_TreeRowBatch batch(this);
    std::swap(clsSrc.m_iSortNo, clsDes.m_iSortNo);
    pSrc->setData(0, CONST_iRecordRole, QVariant::fromValue(clsSrc));
    pDes->setData(0, CONST_iRecordRole, QVariant::fromValue(clsDes));

    // All children go out and come back, not only the two.
    QList<QTreeWidgetItem*> qlstChildren;
    for (int i = 0; i < iCount; ++i)
        qlstChildren.append(pParent->child(i));
    pParent->takeChildren();
    qlstChildren[iSrc] = pDes;
    qlstChildren[iDes] = pSrc;
    pParent->addChildren(qlstChildren);

    scrollToItem(pSrc, QAbstractItemView::EnsureVisible);
    setCurrentItem(pSrc);
    return 0;
}

// ---- many-row changes ----------------------------------------------------------------------------

void CLS_WgtBaseTreeWidget::BeginRowBatch(bool _blLayoutOnce)
{
    if (m_iRowBatchDepth++ > 0)
        return;
    // A column in ResizeToContents mode is sized from up to a thousand laid-out rows after every
    // single row change; for the length of the batch every column keeps its width instead.
    m_qvecBatchModes.clear();
    if (QHeaderView* pHeader = header()) {
        for (int i = 0; i < pHeader->count(); ++i) {
            const QHeaderView::ResizeMode iMode = pHeader->sectionResizeMode(i);
            m_qvecBatchModes.append(iMode);
            if (iMode == QHeaderView::ResizeToContents)
                pHeader->setSectionResizeMode(i, QHeaderView::Interactive);
        }
    }
    m_blBatchUpdates = false;
    if (m_blMounting)
        return; // inside a paint: the view lays out and repaints anyway
    // With a layout pending, the view skips its per-row work (row heights, the row's rectangle)
    // on every change and expands or folds by bookkeeping alone; the rows are laid out once, when
    // the batch ends or when something inside it asks where a row is. A batch that moves no row
    // keeps the layout the view has: laying out every expanded row again would cost more than the
    // view's own work for each changed row.
    if (_blLayoutOnce)
        scheduleDelayedItemsLayout();
    // One repaint at the end is enough.
    m_blBatchUpdates = updatesEnabled();
    if (m_blBatchUpdates)
        setUpdatesEnabled(false);
}

void CLS_WgtBaseTreeWidget::DeferRowLayout()
{
    if (m_iRowBatchDepth > 0 && !m_blMounting)
        scheduleDelayedItemsLayout();
}

void CLS_WgtBaseTreeWidget::EndRowBatch()
{
    if (m_iRowBatchDepth == 0 || --m_iRowBatchDepth > 0)
        return;
    // A shown tree is laid out now, as it was when each row change sized its column; a tree not
    // shown yet keeps its layout pending until it is shown or asked where a row is, as Qt leaves it.
    if (!m_blMounting && isVisible())
        executeDelayedItemsLayout();
    // Giving a column its ResizeToContents mode back sizes it at once, by the header's own rule:
    // the column has its width when the operation returns, as it had when every row sized it.
    if (QHeaderView* pHeader = header()) {
        for (int i = 0; i < m_qvecBatchModes.size() && i < pHeader->count(); ++i) {
            const QHeaderView::ResizeMode iMode = m_qvecBatchModes.at(i);
            if (iMode == QHeaderView::ResizeToContents &&
                pHeader->sectionResizeMode(i) == QHeaderView::Interactive)
                pHeader->setSectionResizeMode(i, iMode);
        }
    }
    m_qvecBatchModes.clear();
    if (m_blBatchUpdates)
        setUpdatesEnabled(true);
}

// ---- tool bars on demand -------------------------------------------------------------------------

namespace {

// Whether a bar built for one row serves another: buttons that look and act the same (the device
// tree gives each row its own copies, which differ only in the owner data and the start state).
bool SameButtons(const QVector<CLS_ItemButton>& _qvecFirst, const QVector<CLS_ItemButton>& _qvecSecond)
{
    if (_qvecFirst.constData() == _qvecSecond.constData())
        return true;
    if (_qvecFirst.size() != _qvecSecond.size())
        return false;
    for (int i = 0; i < _qvecFirst.size(); ++i) {
        const CLS_ItemButton& clsFirst = _qvecFirst.at(i);
        const CLS_ItemButton& clsSecond = _qvecSecond.at(i);
        if (clsFirst.m_qstrId != clsSecond.m_qstrId || clsFirst.m_qstrText != clsSecond.m_qstrText ||
            clsFirst.m_qstrTooltip != clsSecond.m_qstrTooltip ||
            clsFirst.m_qstrIcon != clsSecond.m_qstrIcon || clsFirst.m_blCheckable != clsSecond.m_blCheckable)
            return false;
    }
    return true;
}

} // namespace

void CLS_WgtBaseTreeWidget::SetToolBarMountType(n_ToolBarMountType _iType)
{
    m_iToolBarMountType = _iType;
}

bool CLS_WgtBaseTreeWidget::OnDemandFor(int _iButtonRows) const
{
    switch (m_iToolBarMountType) {
    case TOOLBAR_MOUNT_AT_BUILD:
        return false;
    case TOOLBAR_MOUNT_ON_DEMAND:
        return true;
    default:
        return _iButtonRows > CONST_iEagerToolBarRows;
    }
}

void CLS_WgtBaseTreeWidget::MountItemButtons(QTreeWidgetItem* _pNode, const QString& _qstrId,
                                             const QVector<CLS_ItemButton>& _qvecButtons,
                                             bool _blFixedGeometry, bool _blOnDemand)
{
    m_qsetButtonRows.insert(_pNode);
    if (!_blOnDemand) {
        SetItemButtons(_pNode, _qstrId, _qvecButtons, _blFixedGeometry, nullptr);
        return;
    }
    STRCT_PendingBar& stBar = m_qhashPendingBars[_pNode];
    stBar.m_qstrId = _qstrId;
    stBar.m_qvecButtons = _qvecButtons; // shared with the record, not copied
    stBar.m_blFixedGeometry = _blFixedGeometry;
    viewport()->update(); // a row that is already in view gets its bar with the next paint
}

QStackedWidget* CLS_WgtBaseTreeWidget::MakeItemButtons(const QString& _qstrId,
                                                       const QVector<CLS_ItemButton>& _qvecButtons,
                                                       bool _blFixedGeometry, const QVector<bool>* _pChecked,
                                                       QWidget* _pParent)
{
    if (_qvecButtons.isEmpty())
        return nullptr;
    auto* pStack = new CLS_WgtToolBtnStack(_pParent);
    if (_pParent != nullptr)
        pStack->hide(); // until placed over its row
    if (m_iBtnShowType != ITEM_BTN_SHOW_ALWAYS)
        pStack->addWidget(new QWidget(pStack));
    // A stack born in the viewport has its bar born in it too: each widget takes the style of the
    // tree once, when it is made. A stack for an index widget gets a bar without parent.
    CLS_WgtItemToolBar* pToolBar =
        CreateItemButtons(_qstrId, _qvecButtons, _pParent != nullptr ? pStack : nullptr);
    if (_pChecked != nullptr) {
        // A bar made again: the buttons keep the state the user left them in.
        const QList<QAction*> qlstActions = pToolBar->actions();
        for (int i = 0; i < qlstActions.size() && i < _pChecked->size(); ++i)
            qlstActions.at(i)->setChecked(_pChecked->at(i));
    }
    pStack->addWidget(pToolBar);
    if (_blFixedGeometry)
        pStack->setGeometry(0, 0, 50, 30);
    return pStack;
}

void CLS_WgtBaseTreeWidget::SetUniformRows(bool _blUniform)
{
    if (_blUniform) {
        if (!uniformRowHeights()) {
            setUniformRowHeights(true);
            m_blUniformRows = true;
        }
    } else if (m_blUniformRows) {
        setUniformRowHeights(false); // only where the tree itself had turned it on
        m_blUniformRows = false;
    }
}

void CLS_WgtBaseTreeWidget::SetItemButtons(QTreeWidgetItem* _pNode, const QString& _qstrId,
                                           const QVector<CLS_ItemButton>& _qvecButtons, bool _blFixedGeometry,
                                           const QVector<bool>* _pChecked)
{
    if (QStackedWidget* pStack = MakeItemButtons(_qstrId, _qvecButtons, _blFixedGeometry, _pChecked)) {
        SetUniformRows(false);            // a row with its bar as index widget is as high as the bar
        setItemWidget(_pNode, 1, pStack); // the view owns the stack from here
        pStack->setCurrentIndex(0);
    }
}

QWidget* CLS_WgtBaseTreeWidget::GetItemButtons(QTreeWidgetItem* _pNode) const
{
    if (_pNode == nullptr)
        return nullptr;
    auto it = m_qhashDemandBars.constFind(_pNode);
    if (it != m_qhashDemandBars.cend())
        return it.value().m_pStack;
    return itemWidget(_pNode, 1);
}

bool CLS_WgtBaseTreeWidget::PlaceDemandBar(QTreeWidgetItem* _pNode, QWidget* _pStack)
{
    // Where the view would put an index widget of column 1. The bar is a child of the viewport
    // placed by the tree itself: an index widget would make the view lay out every row again.
    const QRect rect = visualRect(indexFromItem(_pNode, 1));
    if (!rect.isValid() || _pNode->isHidden())
        return false;
    if (_pStack->geometry() != rect)
        _pStack->setGeometry(rect);
    if (_pStack->isHidden())
        _pStack->show();
    return true;
}

void CLS_WgtBaseTreeWidget::MountPendingBar(QTreeWidgetItem* _pNode)
{
    auto it = m_qhashPendingBars.find(_pNode);
    if (it == m_qhashPendingBars.end())
        return;
    STRCT_DemandBar stDemand;
    stDemand.m_stBar = it.value();
    stDemand.m_uSeen = m_uPaintStamp;
    m_qhashPendingBars.erase(it);
    const STRCT_PendingBar& stBar = stDemand.m_stBar;
    QStackedWidget* pStack = TakeSpareBar(stBar);
    if (pStack == nullptr) {
        pStack = MakeItemButtons(stBar.m_qstrId, stBar.m_qvecButtons, stBar.m_blFixedGeometry,
                                 stBar.m_qvecChecked.isEmpty() ? nullptr : &stBar.m_qvecChecked, viewport());
        if (pStack == nullptr)
            return;
    }
    pStack->setCurrentIndex(0);
    stDemand.m_pStack = pStack;
    m_qhashDemandBars.insert(_pNode, stDemand);
    PlaceDemandBar(_pNode, pStack);
}

void CLS_WgtBaseTreeWidget::DropDemandWidget(STRCT_DemandBar& _stDemand, bool _blKeep)
{
    if (_stDemand.m_pStack == nullptr)
        return;
    if (auto* pToolBar = _stDemand.m_pStack->findChild<CLS_WgtItemToolBar*>()) {
        _stDemand.m_stBar.m_qvecChecked.clear();
        const QList<QAction*> qlstActions = pToolBar->actions();
        for (QAction* pAction : qlstActions)
            _stDemand.m_stBar.m_qvecChecked.append(pAction->isChecked());
    }
    _stDemand.m_pStack->hide();
    if (_blKeep && m_qvecSpareBars.size() < CONST_iSpareBars)
        m_qvecSpareBars.append({_stDemand.m_stBar.m_qvecButtons, _stDemand.m_pStack});
    else
        _stDemand.m_pStack->deleteLater();
    _stDemand.m_pStack = nullptr;
}

QStackedWidget* CLS_WgtBaseTreeWidget::TakeSpareBar(const STRCT_PendingBar& _stBar)
{
    // Making a bar (a tool bar with its layout, buttons and style) is most of what scrolling
    // costs; a bar given back by a row out of view serves the next row with the same buttons.
    for (int i = m_qvecSpareBars.size() - 1; i >= 0; --i) {
        const STRCT_SpareBar& stSpare = m_qvecSpareBars.at(i);
        if (stSpare.m_pStack == nullptr || !SameButtons(stSpare.m_qvecButtons, _stBar.m_qvecButtons))
            continue;
        QPointer<QStackedWidget> pStack = stSpare.m_pStack;
        m_qvecSpareBars.remove(i);
        auto* pToolBar = pStack->findChild<CLS_WgtItemToolBar*>();
        if (pToolBar == nullptr) {
            pStack->deleteLater();
            return nullptr;
        }
        QVector<bool> qvecChecked = _stBar.m_qvecChecked;
        if (qvecChecked.isEmpty()) {
            for (const CLS_ItemButton& clsButton : _stBar.m_qvecButtons)
                qvecChecked.append(clsButton.m_blChecked);
        }
        pToolBar->Reuse(_stBar.m_qstrId, _stBar.m_qvecButtons, qvecChecked);
        if (_stBar.m_blFixedGeometry)
            pStack->setGeometry(0, 0, 50, 30);
        return pStack;
    }
    return nullptr;
}

void CLS_WgtBaseTreeWidget::ReleaseDemandBar(QTreeWidgetItem* _pNode)
{
    auto it = m_qhashDemandBars.find(_pNode);
    if (it == m_qhashDemandBars.end())
        return;
    STRCT_DemandBar stDemand = it.value();
    m_qhashDemandBars.erase(it);
    DropDemandWidget(stDemand, true);
    m_qhashPendingBars.insert(_pNode, stDemand.m_stBar);
}

QWidget* CLS_WgtBaseTreeWidget::EnsureItemButtons(QTreeWidgetItem* _pNode)
{
    if (_pNode == nullptr)
        return nullptr;
    if (m_qhashPendingBars.contains(_pNode)) {
        const CLS_RowIconCache iconBatch;
        MountPendingBar(_pNode);
    }
    return GetItemButtons(_pNode);
}

void CLS_WgtBaseTreeWidget::MountVisibleToolBars()
{
    if (m_blMounting || (m_qhashPendingBars.isEmpty() && m_qhashDemandBars.isEmpty()))
        return;
    m_blMounting = true;
    ++m_uPaintStamp;
    const CLS_RowIconCache iconBatch; // the button pictures, read once for all new bars

    // The rows laid out inside the viewport, top to bottom: those with a bar have it placed, those
    // whose bar is still to come get it below.
    const int iBottom = viewport()->height();
    QModelIndex index = indexAt(QPoint(1, 1));
    if (!index.isValid() && header() != nullptr)
        index = indexAt(QPoint(header()->sectionViewportPosition(0) + 1, 1));
    int iVisible = 0;
    QVector<QTreeWidgetItem*> qvecMount;
    for (; index.isValid(); index = indexBelow(index)) {
        if (visualRect(index).top() >= iBottom)
            break;
        ++iVisible;
        QTreeWidgetItem* pNode = itemFromIndex(index.sibling(index.row(), 0));
        if (m_qhashPendingBars.contains(pNode)) {
            qvecMount.append(pNode);
            continue;
        }
        auto it = m_qhashDemandBars.find(pNode);
        if (it != m_qhashDemandBars.end() && it.value().m_pStack != nullptr) {
            it.value().m_uSeen = m_uPaintStamp;
            PlaceDemandBar(pNode, it.value().m_pStack);
        }
    }

    // Bars of rows out of view are hidden. Once they and the bars still to come pass two screens,
    // they are given back before the new rows are served: a bar handed over from a row out of view
    // costs little, a new one (a tool bar with its layout, buttons and style) is most of what
    // scrolling costs.
    const int iKeep = qMax(CONST_iKeptBars, 2 * iVisible);
    const bool blRelease = m_qhashDemandBars.size() + qvecMount.size() > iKeep;
    QVector<QTreeWidgetItem*> qvecRelease;
    for (auto it = m_qhashDemandBars.begin(); it != m_qhashDemandBars.end(); ++it) {
        if (it.value().m_uSeen == m_uPaintStamp)
            continue;
        if (it.value().m_pStack != nullptr && !it.value().m_pStack->isHidden())
            it.value().m_pStack->hide();
        if (blRelease && it.key() != m_pHoverNode)
            qvecRelease.append(it.key());
    }
    for (QTreeWidgetItem* pNode : qAsConst(qvecRelease))
        ReleaseDemandBar(pNode);
    for (QTreeWidgetItem* pNode : qAsConst(qvecMount))
        MountPendingBar(pNode);
    m_blMounting = false;
}

void CLS_WgtBaseTreeWidget::ForgetRemovedRows(const QModelIndex& _parent, int _iFirst, int _iLast)
{
    // A row that leaves the view loses its bar, as Qt drops the index widgets of such rows; a bar
    // still to come is not made for it either.
    if (m_qsetButtonRows.isEmpty())
        return;
    QVector<QTreeWidgetItem*> qvecRows;
    for (int i = _iFirst; i <= _iLast; ++i) {
        QTreeWidgetItem* pNode = itemFromIndex(model()->index(i, 0, _parent));
        if (pNode == nullptr)
            continue;
        qvecRows.append(pNode);
        GetChildNode(pNode, qvecRows, true);
    }
    for (QTreeWidgetItem* pNode : qAsConst(qvecRows)) {
        if (!m_qsetButtonRows.remove(pNode))
            continue;
        m_qhashPendingBars.remove(pNode);
        auto it = m_qhashDemandBars.find(pNode);
        if (it != m_qhashDemandBars.end()) {
            DropDemandWidget(it.value(), false);
            m_qhashDemandBars.erase(it);
        }
    }
}

void CLS_WgtBaseTreeWidget::ForgetAllRows()
{
    m_qsetButtonRows.clear();
    m_qhashPendingBars.clear();
    for (STRCT_DemandBar& stDemand : m_qhashDemandBars)
        DropDemandWidget(stDemand, false);
    m_qhashDemandBars.clear();
    for (const STRCT_SpareBar& stSpare : qAsConst(m_qvecSpareBars)) {
        if (stSpare.m_pStack != nullptr)
            stSpare.m_pStack->deleteLater();
    }
    m_qvecSpareBars.clear();
}
