#include "CLS_TestMenuView.h"

#include "WgtMenuTestApi.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QMutex>
#include <QPoint>
#include <QPointer>

#include <stdexcept>

namespace {

QMutex s_mtxRequests;
QList<STRCT_MenuRequest> s_qlstRequests;
QPointer<CLS_TestMenuView> s_pLastView;

void RecordRequest(const QString& _qstrKey, const QVariantMap& _qmapParam)
{
    QMutexLocker locker(&s_mtxRequests);
    s_qlstRequests.append(qMakePair(_qstrKey, _qmapParam));
}

QAction* FindAction(QMenu* _pMenu, const QString& _qstrItemId)
{
    for (QAction* pAction : _pMenu->actions()) {
        if (pAction->data().toString() == _qstrItemId && nullptr == pAction->menu()) {
            return pAction;
        }
        if (nullptr != pAction->menu()) {
            if (QAction* pFound = FindAction(pAction->menu(), _qstrItemId)) {
                return pFound;
            }
        }
    }
    return nullptr;
}

QString MenuText(QMenu* _pMenu)
{
    QStringList qlstEntries;
    for (QAction* pAction : _pMenu->actions()) {
        QString qstrEntry = pAction->data().toString() + ":" + pAction->text();
        if (!pAction->isEnabled()) {
            qstrEntry += "!";
        }
        if (pAction->isCheckable()) {
            qstrEntry += pAction->isChecked() ? "[x]" : "[ ]";
        }
        if (nullptr != pAction->menu()) {
            qstrEntry += "(" + MenuText(pAction->menu()) + ")";
        }
        qlstEntries << qstrEntry;
    }
    return qlstEntries.join(",");
}

} // namespace

CLS_TestMenuView::CLS_TestMenuView(const QMap<QString, QVariant>& _qmapParam)
    : m_pMenu(new QMenu(this)), m_qmapCreateParam(_qmapParam)
{}

CLS_TestMenuView::~CLS_TestMenuView() = default;

void CLS_TestMenuView::InitView() {}

void CLS_TestMenuView::InitData() {}

bool CLS_TestMenuView::TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                                   QVariantMap& _qmapResult)
{
    Q_UNUSED(_qmapResult)
    RecordRequest(_qstrBusinessKey, _qmapParam);
    if ("setInfo" == _qstrBusinessKey) {
        // "setInfo" replaces the entries each time.
        m_pMenu->clear();
        FillMenu(m_pMenu, _qmapParam.value("Info").value<QList<_MenuItem>>());
        return true;
    }
    if ("exec" == _qstrBusinessKey) {
        m_pMenu->popup(_qmapParam.value("Pointexec").toPoint());
        return true;
    }
    return false;
}

void CLS_TestMenuView::FillMenu(QMenu* _pMenu, const QList<_MenuItem>& _qlstItems)
{
    for (const _MenuItem& stItem : _qlstItems) {
        QAction* pAction = nullptr;
        if (stItem.m_qlstChildren.isEmpty()) {
            pAction = _pMenu->addAction(stItem.m_qstrItemText);
            const QString qstrItemId = stItem.m_qstrItemId;
            connect(pAction, &QAction::triggered, this,
                    [this, qstrItemId](bool _blChecked) { SlotItemTriggered(qstrItemId, _blChecked); });
        } else {
            QMenu* pSubMenu = _pMenu->addMenu(stItem.m_qstrItemText);
            FillMenu(pSubMenu, stItem.m_qlstChildren);
            pAction = pSubMenu->menuAction();
        }
        pAction->setData(stItem.m_qstrItemId);
        pAction->setEnabled(stItem.m_blEnable);
        pAction->setCheckable(stItem.m_blCheckable);
        pAction->setChecked(stItem.m_blChecked);
        if (!stItem.m_qstrItemIcon.isEmpty()) {
            pAction->setIcon(QIcon(stItem.m_qstrItemIcon));
        }
    }
}

void CLS_TestMenuView::SlotItemTriggered(const QString& _qstrItemId, bool _blChecked)
{
    // The menu closes on a choice, then the choice goes out: only a choice emits.
    m_pMenu->hide();
    QVariantMap qmapData;
    qmapData.insert("StrMenuItemClicked", _qstrItemId);
    qmapData.insert("boolTreeWidget", _blChecked);
    emit SignRequestTaskRsulted("exec", qmapData, QString());
}

extern "C" CLS_ViewBasic* CreateWgt(const QMap<QString, QVariant>& _qmapParam)
{
    RecordRequest("CreateWgt", _qmapParam);
    // Lets a test see GetWgtView survive a factory that throws.
    const QString qstrThrow = _qmapParam.value("Throw").toString();
    if ("std" == qstrThrow) {
        throw std::runtime_error("menu refused");
    }
    if ("other" == qstrThrow) {
        throw 7;
    }
    auto* pView = new CLS_TestMenuView(_qmapParam);
    s_pLastView = pView;
    return pView;
}

extern "C" void WgtMenuTest_TakeRequests(QList<STRCT_MenuRequest>* _pOut)
{
    QMutexLocker locker(&s_mtxRequests);
    _pOut->append(s_qlstRequests);
    s_qlstRequests.clear();
}

extern "C" CLS_ViewBasic* WgtMenuTest_LastView()
{
    return s_pLastView.data();
}

extern "C" bool WgtMenuTest_TriggerItem(const QString& _qstrItemId)
{
    if (s_pLastView.isNull()) {
        return false;
    }
    QAction* pAction = FindAction(s_pLastView->Menu(), _qstrItemId);
    if (nullptr == pAction || !pAction->isEnabled()) {
        return false;
    }
    pAction->trigger();
    return true;
}

extern "C" QString WgtMenuTest_MenuText()
{
    return s_pLastView.isNull() ? QString() : MenuText(s_pLastView->Menu());
}
