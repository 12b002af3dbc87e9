#include "CLS_TreeTestUtil.h"

#include "CLS_TestBaseTree.h"
#include "CLS_TreeSnapshot.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTest>

namespace CLS_TreeTestUtil {

CLS_TreeItem MakeItem(const QString& _qstrId, const QString& _qstrParentId, int _iSortNo,
                      const QString& _qstrText)
{
    CLS_TreeItem clsItem;
    clsItem.m_qstrId = _qstrId;
    clsItem.m_qstrParentId = _qstrParentId;
    clsItem.m_iSortNo = _iSortNo;
    clsItem.m_qstrText = _qstrText.isEmpty() ? _qstrId : _qstrText;
    clsItem.m_qstrTooltip = "tip " + _qstrId;
    return clsItem;
}

namespace {

// One list of siblings of ItemsOf from _iAt, up to its closing parenthesis or the end.
void AddRows(const QString& _qstrRows, int& _iAt, const QString& _qstrParentId,
             QMap<QString, CLS_TreeItem>& _qmapItems)
{
    for (int iPlace = 1; _iAt < _qstrRows.size(); ++iPlace) {
        const int iStart = _iAt;
        while (_iAt < _qstrRows.size() && !QStringLiteral(",():").contains(_qstrRows.at(_iAt)))
            ++_iAt;
        const QString qstrId = _qstrRows.mid(iStart, _iAt - iStart).trimmed();
        int iSortNo = iPlace;
        if (_iAt < _qstrRows.size() && _qstrRows.at(_iAt) == ':') {
            const int iNumber = ++_iAt;
            while (_iAt < _qstrRows.size() && _qstrRows.at(_iAt).isDigit())
                ++_iAt;
            iSortNo = _qstrRows.mid(iNumber, _iAt - iNumber).toInt();
        }
        Add(_qmapItems, MakeItem(qstrId, _qstrParentId, iSortNo));
        if (_iAt < _qstrRows.size() && _qstrRows.at(_iAt) == '(') {
            ++_iAt;
            AddRows(_qstrRows, _iAt, qstrId, _qmapItems);
            ++_iAt; // ')'
        }
        if (_iAt >= _qstrRows.size() || _qstrRows.at(_iAt) != ',')
            return;
        ++_iAt;
    }
}

} // namespace

QMap<QString, CLS_TreeItem> ItemsOf(const QString& _qstrRootId, const QString& _qstrRows)
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem(_qstrRootId, QString(), 0));
    int iAt = 0;
    AddRows(_qstrRows, iAt, _qstrRootId, qmapItems);
    return qmapItems;
}

bool ShowTree(CLS_TestBaseTree& _tree)
{
    _tree.expandAll();
    _tree.resize(300, 300);
    _tree.show();
    return QTest::qWaitForWindowExposed(&_tree);
}

QStringList LeakedTopLevels()
{
    QStringList qlstLeaked;
    for (QWidget* pWidget : QApplication::topLevelWidgets())
        qlstLeaked << QString("%1 \"%2\"").arg(pWidget->metaObject()->className(), pWidget->objectName());
    return qlstLeaked;
}

CLS_ItemButton MakeButton(const QString& _qstrId, bool _blCheckable, bool _blChecked)
{
    CLS_ItemButton clsButton;
    clsButton.m_qstrId = _qstrId;
    clsButton.m_qstrText = "text " + _qstrId;
    clsButton.m_qstrTooltip = "tip " + _qstrId;
    clsButton.m_blCheckable = _blCheckable;
    clsButton.m_blChecked = _blChecked;
    return clsButton;
}

CLS_ItemButton MakeNamedButton(const QString& _qstrId, const QString& _qstrText, const QString& _qstrTip)
{
    CLS_ItemButton clsButton;
    clsButton.m_qstrId = _qstrId;
    clsButton.m_qstrText = _qstrText;
    clsButton.m_qstrTooltip = _qstrTip;
    return clsButton;
}

void Add(QMap<QString, CLS_TreeItem>& _qmapItems, const CLS_TreeItem& _clsItem)
{
    _qmapItems.insert(_clsItem.m_qstrId, _clsItem);
}

QStringList Ids(const QVector<CLS_TreeItem>& _qvecItems)
{
    QStringList qlstIds;
    for (const CLS_TreeItem& clsItem : _qvecItems)
        qlstIds << clsItem.m_qstrId;
    return qlstIds;
}

QStringList ChildIds(const QTreeWidgetItem* _pNode)
{
    QStringList qlstIds;
    for (int i = 0; _pNode != nullptr && i < _pNode->childCount(); ++i)
        qlstIds << CLS_TreeSnapshot::NodeId(_pNode->child(i));
    return qlstIds;
}

QPoint RowCenter(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pNode = _tree.GetNodeById(_qstrId);
    Q_ASSERT(pNode != nullptr);
    return _tree.visualRect(_tree.indexFromItem(pNode, 0)).center();
}

QPoint EmptyAreaPoint(CLS_TestBaseTree& _tree)
{
    return QPoint(10, _tree.viewport()->height() - 5);
}

QPoint CheckBoxCenter(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pNode = _tree.GetNodeById(_qstrId);
    Q_ASSERT(pNode != nullptr);
    QStyleOptionViewItem option;
    option.initFrom(_tree.viewport());
    option.rect = _tree.visualRect(_tree.indexFromItem(pNode, 0));
    option.features |= QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    return _tree.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &_tree).center();
}

void MoveMouse(CLS_TestBaseTree& _tree, const QPoint& _pos, Qt::MouseButtons _buttons)
{
    QMouseEvent event(QEvent::MouseMove, _pos, _tree.viewport()->mapToGlobal(_pos), Qt::NoButton, _buttons,
                      Qt::NoModifier);
    QApplication::sendEvent(_tree.viewport(), &event);
}

QStackedWidget* StackOf(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pNode = _tree.GetNodeById(_qstrId);
    return pNode == nullptr ? nullptr : qobject_cast<QStackedWidget*>(_tree.itemWidget(pNode, 1));
}

} // namespace CLS_TreeTestUtil
