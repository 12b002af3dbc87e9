#include "CLS_TreeSignalLog.h"

#include "CLS_TreeSnapshot.h"

#include <QTreeWidgetItem>

CLS_TreeSignalLog::CLS_TreeSignalLog(CLS_WgtBaseTreeWidget* _pTree) : QObject(_pTree)
{
    auto mark = [](const QString& _qstrId, const CLS_TreeItem& _clsItem) {
        return _qstrId == _clsItem.m_qstrId ? QString() : QString("!");
    };
    connect(_pTree, &CLS_WgtBaseTreeWidget::SignClicked, this,
            [this, mark](QString _qstrId, CLS_TreeItem _clsItem) {
                Add("Clicked(" + _qstrId + ")" + mark(_qstrId, _clsItem));
            });
    connect(_pTree, &CLS_WgtBaseTreeWidget::SignDblClicked, this,
            [this, mark](QString _qstrId, CLS_TreeItem _clsItem) {
                Add("DblClicked(" + _qstrId + ")" + mark(_qstrId, _clsItem));
            });
    connect(_pTree, &CLS_WgtBaseTreeWidget::SignRightClicked, this,
            [this, mark](QString _qstrId, CLS_TreeItem _clsItem) {
                Add("RightClicked(" + _qstrId + ")" + mark(_qstrId, _clsItem));
            });
    connect(_pTree, &CLS_WgtBaseTreeWidget::SignSelected, this,
            [this, mark](QString _qstrId, CLS_TreeItem _clsItem, QString _qstrOldId) {
                Add("Selected(" + _qstrId + "<-" + _qstrOldId + ")" + mark(_qstrId, _clsItem));
            });
    connect(_pTree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged, this,
            [this, mark](QString _qstrId, bool _blChecked, CLS_TreeItem _clsItem) {
                Add("CheckedStatus(" + _qstrId + (_blChecked ? ",1)" : ",0)") + mark(_qstrId, _clsItem));
            });
    connect(_pTree, &CLS_WgtBaseTreeWidget::SignChecked, this,
            [this, mark](QString _qstrId, bool _blChecked, CLS_TreeItem _clsItem) {
                Add("Checked(" + _qstrId + (_blChecked ? ",1)" : ",0)") + mark(_qstrId, _clsItem));
            });
    connect(_pTree, &CLS_WgtBaseTreeWidget::SignClickButton, this,
            [this](QString _qstrId, CLS_ItemButton _clsButton) {
                Add(QString("ClickButton(%1,%2,%3,%4)")
                        .arg(_qstrId, _clsButton.m_qstrId)
                        .arg(int(_clsButton.m_blCheckable))
                        .arg(int(_clsButton.m_blChecked)));
            });
    connect(_pTree, &CLS_WgtBaseTreeWidget::SignDroped, this,
            [this](CLS_TreeItem _clsItem) { Add("Droped(" + _clsItem.m_qstrId + ")"); });
    connect(_pTree, &QTreeWidget::itemPressed, this, [this](QTreeWidgetItem* _pNode, int) {
        Add("Pressed(" + CLS_TreeSnapshot::NodeId(_pNode) + ")");
    });
}

int CLS_TreeSignalLog::Count(const QString& _qstrPrefix) const
{
    int iCount = 0;
    for (const QString& qstrLine : m_qlstLines)
        iCount += qstrLine.startsWith(_qstrPrefix + "(") ? 1 : 0;
    return iCount;
}
