#include "CLS_WgtBaseTreeWidget.h"

#include "CLS_WgtTreeWidgetItem.h"

#include <QFont>
#include <QFontMetrics>
#include <QHeaderView>
#include <QIcon>
#include <QScrollBar>

#include <algorithm>

namespace {
// Row type of every row this tree makes.
constexpr int CONST_iItemType = QTreeWidgetItem::UserType + 1;
constexpr int CONST_iIdRole = Qt::UserRole;
constexpr int CONST_iRecordRole = Qt::UserRole + 1;
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
}

CLS_WgtBaseTreeWidget::~CLS_WgtBaseTreeWidget() = default;

int CLS_WgtBaseTreeWidget::Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems,
                                bool _blShowRoot)
{
    if (_qstrRootId.isEmpty() || _qmapItems.isEmpty() || !_qmapItems.contains(_qstrRootId))
        return -1;

    m_qstrRootId = _qstrRootId;
    QTreeWidget::clear();
    m_qmapNodes.clear();
    m_pHoverNode = nullptr;

    // Parent id -> children. The insertion place, one ahead of the first sibling with a greater
    // number rather than directly before it, is kept as it always was; CreateTree sorts again, so
    // it only shows in the order of equal numbers.
    QMap<QString, QVector<CLS_TreeItem>> qmapChildren;
    for (auto it = _qmapItems.cbegin(); it != _qmapItems.cend(); ++it) {
        const CLS_TreeItem& clsItem = it.value();
        if (clsItem.m_qstrParentId.isEmpty())
            continue;
        auto itChildren = qmapChildren.find(clsItem.m_qstrParentId);
        if (itChildren == qmapChildren.end()) {
            qmapChildren.insert(clsItem.m_qstrParentId, QVector<CLS_TreeItem>{clsItem});
            continue;
        }
        QVector<CLS_TreeItem>& qvecSiblings = itChildren.value();
        int i = 0;
        for (; i < qvecSiblings.size(); ++i) {
            if (qvecSiblings.at(i).m_iSortNo > clsItem.m_iSortNo)
                break;
        }
        if (i == qvecSiblings.size())
            qvecSiblings.append(clsItem);
        else
            qvecSiblings.insert(i == 0 ? 0 : i - 1, clsItem);
    }

    return CreateTree(nullptr, _qmapItems.value(_qstrRootId), qmapChildren, _blShowRoot);
}

void CLS_WgtBaseTreeWidget::Clear()
{
    QTreeWidget::clear();
    m_qmapNodes.clear();
    m_pHoverNode = nullptr;
}

int CLS_WgtBaseTreeWidget::CreateTree(QTreeWidgetItem* _pParent, const CLS_TreeItem& _clsItem,
                                      const QMap<QString, QVector<CLS_TreeItem>>& _qmapChildren,
                                      bool _blCreate)
{
    QSet<QString> qsetPath;
    return CreateTreeOnPath(_pParent, _clsItem, _qmapChildren, _blCreate, qsetPath);
}

int CLS_WgtBaseTreeWidget::CreateTreeOnPath(QTreeWidgetItem* _pParent, const CLS_TreeItem& _clsItem,
                                            const QMap<QString, QVector<CLS_TreeItem>>& _qmapChildren,
                                            bool _blCreate, QSet<QString>& _qsetPath)
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
    }

    QVector<CLS_TreeItem> qvecChildren = _qmapChildren.value(_clsItem.m_qstrId);
    std::sort(qvecChildren.begin(), qvecChildren.end(),
              [](const CLS_TreeItem& _clsA, const CLS_TreeItem& _clsB) {
                  return SortByNo(const_cast<CLS_TreeItem&>(_clsA), const_cast<CLS_TreeItem&>(_clsB));
              });

    _qsetPath.insert(_clsItem.m_qstrId);
    for (const CLS_TreeItem& clsChild : qvecChildren) {
        // A record that stands on its own path from the root would recurse without end.
        if (_qsetPath.contains(clsChild.m_qstrId))
            continue;
        CreateTreeOnPath(pNode, clsChild, _qmapChildren, true, _qsetPath); // a failing child is skipped
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
    pNode->setData(0, Qt::DecorationRole, QIcon(_clsItem.m_qstrIcon));
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
    if (GetNodeById(m_qstrRootId) == nullptr)
        return -1;

    QVector<CLS_TreeItem> qvecAll;
    const int iRet = GetChilds(m_qstrRootId, qvecAll, true);
    if (iRet < 0)
        return iRet;
    for (const CLS_TreeItem& clsItem : qAsConst(qvecAll)) {
        if (clsItem.m_qstrText.indexOf(_qstrName, 0, Qt::CaseInsensitive) >= 0)
            _qvecItems.append(clsItem);
    }
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
    if (_blShow)
        expandAll();
    else
        collapseAll();
}

void CLS_WgtBaseTreeWidget::SlotCheckStateChanged(QTreeWidgetItem* _pItem, bool _blChecked)
{
    if (_pItem == nullptr || !m_blCheckEnable || !m_blSendChecked)
        return;
    CLS_TreeItem clsItem;
    if (GetBindData(_pItem, clsItem) != 0)
        return;
    emit SignCheckedStatusChanged(clsItem.m_qstrId, _blChecked, clsItem);
}
