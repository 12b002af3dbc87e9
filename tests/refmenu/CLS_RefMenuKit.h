#pragma once
// Helpers of the reference menu tests: entries, the menu of a view as text, requests by key, and
// closing whatever popup a test left open. GUI thread.

#include "CLS_ViewBasic.h"
#include "TreeStructDefine.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPoint>
#include <QStringList>
#include <QVariantMap>

namespace RefMenuKit {

inline _MenuItem MakeEntry(const QString& _qstrId, const QString& _qstrText, bool _blEnable = true,
                           bool _blCheckable = false, bool _blChecked = false,
                           const QList<_MenuItem>& _qlstChildren = QList<_MenuItem>())
{
    _MenuItem stEntry;
    stEntry.m_qstrItemId = _qstrId;
    stEntry.m_qstrItemText = _qstrText;
    stEntry.m_blEnable = _blEnable;
    stEntry.m_blCheckable = _blCheckable;
    stEntry.m_blChecked = _blChecked;
    stEntry.m_qlstChildren = _qlstChildren;
    return stEntry;
}

// The root menu of a reference menu view.
inline QMenu* RootMenu(CLS_ViewBasic* _pView)
{
    return nullptr == _pView
               ? nullptr
               : _pView->findChild<QMenu*>(QStringLiteral("menuRoot"), Qt::FindDirectChildrenOnly);
}

// "id:text" per entry, "!" when disabled, "[x]" / "[ ]" when checkable, "(...)" for the entries of a
// title; entries by ",".
inline QString MenuText(QMenu* _pMenu)
{
    if (nullptr == _pMenu)
        return QStringLiteral("<no menu>");
    QStringList qlstEntries;
    for (QAction* pAction : _pMenu->actions()) {
        QString qstrEntry = pAction->data().toString() + ":" + pAction->text();
        if (!pAction->isEnabled())
            qstrEntry += "!";
        if (pAction->isCheckable())
            qstrEntry += pAction->isChecked() ? "[x]" : "[ ]";
        if (nullptr != pAction->menu())
            qstrEntry += "(" + MenuText(pAction->menu()) + ")";
        qlstEntries << qstrEntry;
    }
    return qlstEntries.join(",");
}

// The action of entry _qstrId, titles included, searched depth first.
inline QAction* FindAction(QMenu* _pMenu, const QString& _qstrId)
{
    if (nullptr == _pMenu)
        return nullptr;
    for (QAction* pAction : _pMenu->actions()) {
        if (pAction->data().toString() == _qstrId)
            return pAction;
        if (QAction* pFound = FindAction(pAction->menu(), _qstrId))
            return pFound;
    }
    return nullptr;
}

inline bool SendInfo(CLS_ViewBasic* _pView, const QList<_MenuItem>& _qlstEntries)
{
    QVariantMap qmapParam;
    qmapParam.insert(QStringLiteral("Info"), QVariant::fromValue(_qlstEntries));
    QVariantMap qmapResult;
    return _pView->TaskRequest(QStringLiteral("setInfo"), qmapParam, qmapResult);
}

inline bool SendExec(CLS_ViewBasic* _pView, const QPoint& _point)
{
    QVariantMap qmapParam;
    qmapParam.insert(QStringLiteral("Pointexec"), _point);
    QVariantMap qmapResult;
    return _pView->TaskRequest(QStringLiteral("exec"), qmapParam, qmapResult);
}

inline void CloseAllPopups()
{
    while (QWidget* pPopup = QApplication::activePopupWidget())
        pPopup->close();
}

} // namespace RefMenuKit
