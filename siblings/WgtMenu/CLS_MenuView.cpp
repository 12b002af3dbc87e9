#include "CLS_MenuView.h"

#include "Logger.h"

#include <QAction>
#include <QCoreApplication>
#include <QIcon>
#include <QMenu>
#include <QPoint>
#include <QPointer>
#include <QSet>
#include <QThread>

#include <exception>

namespace {

const char* const CONST_MODULE_CODE = "WgtMenu";
const char* const CONST_KEY_SET_INFO = "setInfo";
const char* const CONST_KEY_EXEC = "exec";
const char* const CONST_PARAM_INFO = "Info";
const char* const CONST_PARAM_POINT = "Pointexec";
const char* const CONST_DATA_ITEM_ID = "StrMenuItemClicked";
const char* const CONST_DATA_CHECKED = "boolTreeWidget";

// Every live view of this library. GUI thread only, like the views themselves.
QSet<CLS_MenuView*>& LiveViews()
{
    static QSet<CLS_MenuView*> s_qsetViews;
    return s_qsetViews;
}

// The application object for which the clean-up routine is registered: Qt forgets its routines
// once it has run them, so a second application object needs them again.
QPointer<QCoreApplication>& CleanupApplication()
{
    static QPointer<QCoreApplication> s_pApplication;
    return s_pApplication;
}

void DeleteRemainingViewsRoutine()
{
    CLS_MenuView::DeleteRemainingViews();
}

void RegisterCleanup()
{
    QCoreApplication* pApplication = QCoreApplication::instance();
    if (nullptr == pApplication || CleanupApplication() == pApplication) {
        return;
    }
    CleanupApplication() = pApplication;
    qAddPostRoutine(&DeleteRemainingViewsRoutine);
}

} // namespace

CLS_MenuView::CLS_MenuView(QWidget* _pParent) : CLS_ViewBasic(_pParent), m_pMenu(new QMenu(this))
{
    m_pMenu->setObjectName(QStringLiteral("menuRoot"));
    LiveViews().insert(this);
    RegisterCleanup();
}

CLS_MenuView::~CLS_MenuView()
{
    LiveViews().remove(this);
}

void CLS_MenuView::DeleteRemainingViews()
{
    // Each destructor takes its view out of the set, so work on a copy.
    const QSet<CLS_MenuView*> qsetViews = LiveViews();
    for (CLS_MenuView* pView : qsetViews) {
        delete pView;
    }
}

const char* CLS_MenuView::GetModuleCode()
{
    return CONST_MODULE_CODE;
}

void CLS_MenuView::InitView() {}

void CLS_MenuView::InitData() {}

bool CLS_MenuView::TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                               QVariantMap& _qmapResult)
{
    // Both tasks answer by their outcome alone; the result map is the caller's and stays as it is.
    Q_UNUSED(_qmapResult)
    if (QThread::currentThread() != thread()) {
        WGT_LOG(CONST_MODULE_CODE, 3)
            << "task off the view's thread key:[" << _qstrBusinessKey.toStdString() << "]";
        return false;
    }
    if (QLatin1String(CONST_KEY_SET_INFO) == _qstrBusinessKey) {
        return 0 == SetInfo(_qmapParam);
    }
    if (QLatin1String(CONST_KEY_EXEC) == _qstrBusinessKey) {
        return 0 == Exec(_qmapParam);
    }
    return false;
}

int CLS_MenuView::SetInfo(const QVariantMap& _qmapParam)
{
    const auto itInfo = _qmapParam.constFind(QString::fromLatin1(CONST_PARAM_INFO));
    if (itInfo == _qmapParam.constEnd() || itInfo.value().userType() != qMetaTypeId<QList<_MenuItem>>()) {
        // The entries stay as they were: a page that sent the wrong thing keeps its last menu.
        WGT_LOG(CONST_MODULE_CODE, 3) << "setInfo without a QList<STRUCT_MenuItem> under \"Info\"";
        return -1;
    }
    ClearMenu();
    FillMenu(m_pMenu, itInfo.value().value<QList<_MenuItem>>());
    return 0;
}

int CLS_MenuView::Exec(const QVariantMap& _qmapParam)
{
    const auto itPoint = _qmapParam.constFind(QString::fromLatin1(CONST_PARAM_POINT));
    if (itPoint == _qmapParam.constEnd() || !itPoint.value().canConvert<QPoint>()) {
        WGT_LOG(CONST_MODULE_CODE, 3) << "exec without a QPoint under \"Pointexec\"";
        return -1;
    }
    if (!m_blStyleLoaded) {
        // The panel never shows the view, so its style comes with the first menu; the sheet of the
        // view reaches the menu, which is its child.
        m_blStyleLoaded = true;
        LoadStyle();
    }
    if (m_pMenu->actions().isEmpty()) {
        // An empty popup would only catch the next click; nothing to choose, nothing shown.
        return 0;
    }
    // popup, not exec: the caller's event loop keeps running and the choice comes back as a signal.
    m_pMenu->popup(itPoint.value().toPoint());
    return 0;
}

void CLS_MenuView::ClearMenu()
{
    // The old entries may be the sender of the signal being handled right now (a page that answers a
    // choice with a new menu), so they go later; until then they are cut off from this view.
    HideMenus();
    const QList<QAction*> qlstActions = m_pMenu->actions();
    for (QAction* pAction : qlstActions) {
        m_pMenu->removeAction(pAction);
        if (QMenu* pSubMenu = pAction->menu()) {
            for (QAction* pSubAction : pSubMenu->findChildren<QAction*>()) {
                pSubAction->disconnect(this);
            }
            pSubMenu->deleteLater(); // owns its title action and its entries
        } else {
            pAction->disconnect(this);
            pAction->deleteLater();
        }
    }
}

void CLS_MenuView::FillMenu(QMenu* _pMenu, const QList<_MenuItem>& _qlstItems)
{
    for (const _MenuItem& stItem : _qlstItems) {
        QAction* pAction = nullptr;
        if (stItem.m_qlstChildren.isEmpty()) {
            pAction = new QAction(stItem.m_qstrItemText, _pMenu);
            pAction->setCheckable(stItem.m_blCheckable);
            pAction->setChecked(stItem.m_blChecked);
            _pMenu->addAction(pAction);
            connect(pAction, &QAction::triggered, this,
                    [this, pAction](bool _blChecked) { SlotItemTriggered(pAction, _blChecked); });
        } else {
            // A title opens its entries and is never chosen itself: its check flags mean nothing.
            auto* pSubMenu = new QMenu(stItem.m_qstrItemText, _pMenu);
            FillMenu(pSubMenu, stItem.m_qlstChildren);
            pAction = pSubMenu->menuAction();
            _pMenu->addMenu(pSubMenu);
        }
        pAction->setData(stItem.m_qstrItemId);
        pAction->setEnabled(stItem.m_blEnable);
        if (!stItem.m_qstrItemIcon.isEmpty()) {
            pAction->setIcon(QIcon(stItem.m_qstrItemIcon));
        }
    }
}

bool CLS_MenuView::IsChoosable(QAction* _pAction) const
{
    if (nullptr == _pAction || nullptr != _pAction->menu() || !_pAction->isEnabled()) {
        return false;
    }
    // An entry under a disabled title is out of reach as well.
    for (auto* pMenu = qobject_cast<QMenu*>(_pAction->parent()); nullptr != pMenu && pMenu != m_pMenu;
         pMenu = qobject_cast<QMenu*>(pMenu->parent())) {
        if (!pMenu->menuAction()->isEnabled()) {
            return false;
        }
    }
    return true;
}

void CLS_MenuView::HideMenus()
{
    for (QMenu* pSubMenu : m_pMenu->findChildren<QMenu*>()) {
        pSubMenu->hide();
    }
    m_pMenu->hide();
}

void CLS_MenuView::SlotItemTriggered(QAction* _pAction, bool _blChecked)
{
    try {
        if (!IsChoosable(_pAction)) {
            // Only code reaches a disabled entry (a click can't); it is not a choice, and a check
            // mark that QAction flipped on the way goes back.
            if (_pAction->isCheckable()) {
                _pAction->setChecked(!_blChecked);
            }
            return;
        }
        // The menu closes first, then the choice goes out, once.
        HideMenus();
        QVariantMap qmapData;
        qmapData.insert(QString::fromLatin1(CONST_DATA_ITEM_ID), _pAction->data().toString());
        qmapData.insert(QString::fromLatin1(CONST_DATA_CHECKED), _blChecked);
        emit SignRequestTaskRsulted(QString::fromLatin1(CONST_KEY_EXEC), qmapData, QString());
    } catch (const std::exception& e) {
        WGT_LOG(CONST_MODULE_CODE, 3) << "SlotItemTriggered Fail" << e.what();
    } catch (...) {
        WGT_LOG(CONST_MODULE_CODE, 3) << "SlotItemTriggered Fail";
    }
}
