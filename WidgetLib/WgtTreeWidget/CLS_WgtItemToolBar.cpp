#include "CLS_WgtItemToolBar.h"

#include "CLS_RowIconCache.h"
#include "ColorManage.h"
#include "SiblingFence.h"

#include <QAction>
#include <QColor>
#include <QEvent>
#include <QIcon>
#include <QPainter>
#include <QPen>

#include <string>

namespace {
using PFunGetNamedColor = std::string (*)(const std::string&, const std::string&, const std::string&);
} // namespace

CLS_WgtItemToolBar::CLS_WgtItemToolBar(QWidget* parent) : QToolBar(parent)
{
    connect(this, &QToolBar::actionTriggered, this, &CLS_WgtItemToolBar::SlotTriggered);

    auto pFun = reinterpret_cast<PFunGetNamedColor>(ColorManage::GetModuleFun("GetNamedColor", ""));
    if (pFun != nullptr)
        m_qstrBgColor = QString::fromUtf8(
            WGT_SIBLING_CALL("GetNamedColor", std::string(), pFun("Common", "<ArgRight_TreeBranch>", ""))
                .c_str());
}

CLS_WgtItemToolBar::~CLS_WgtItemToolBar()
{
    // The actions are made without a parent (addActions does not adopt them); they belong to
    // this bar alone, so they go with it.
    const QList<QAction*> qlstActions = actions();
    for (QAction* pAction : qlstActions) {
        removeAction(pAction);
        delete pAction;
    }
}

void CLS_WgtItemToolBar::Init(const QVector<CLS_ItemButton>& _qvecButtons, const QString& _qstrParentId)
{
    m_qstrParentId = _qstrParentId;
    QList<QAction*> qlstActions;
    for (const CLS_ItemButton& clsButton : _qvecButtons) {
        auto* pAction =
            new QAction(CLS_RowIconCache::Icon(clsButton.m_qstrIcon), clsButton.m_qstrText, nullptr);
        pAction->setCheckable(clsButton.m_blCheckable);
        pAction->setChecked(clsButton.m_blChecked);
        pAction->setToolTip(clsButton.m_qstrTooltip);
        pAction->setData(QVariant::fromValue(clsButton));
        qlstActions.append(pAction);
    }
    addActions(qlstActions);
    TranslateAccessibleTexts();
}

void CLS_WgtItemToolBar::TranslateAccessibleTexts()
{
    const QList<QAction*> qlstActions = actions();
    for (QAction* pAction : qlstActions) {
        QWidget* pButton = widgetForAction(pAction);
        if (pButton == nullptr)
            continue;
        // Named after the text, or the tool tip of a button that shows only an icon; a tool tip
        // beside a text describes the button, else a general description does.
        const QString qstrText = pAction->text();
        const QString qstrTip = pAction->toolTip();
        const bool blOwnTip = !pAction->data().value<CLS_ItemButton>().m_qstrTooltip.isEmpty();
        pButton->setAccessibleName(!qstrText.isEmpty() ? qstrText : (blOwnTip ? qstrTip : QString()));
        pButton->setAccessibleDescription(
            !qstrText.isEmpty() && blOwnTip && qstrTip != qstrText ? qstrTip : tr("acc_item_btn_desc"));
    }
}

void CLS_WgtItemToolBar::changeEvent(QEvent* _pEvent)
{
    if (_pEvent->type() == QEvent::LanguageChange)
        TranslateAccessibleTexts();
    QToolBar::changeEvent(_pEvent);
}

void CLS_WgtItemToolBar::Reuse(const QString& _qstrParentId, const QVector<CLS_ItemButton>& _qvecButtons,
                               const QVector<bool>& _qvecChecked)
{
    m_qstrParentId = _qstrParentId;
    const QList<QAction*> qlstActions = actions();
    for (int i = 0; i < qlstActions.size(); ++i) {
        QAction* pAction = qlstActions.at(i);
        if (i < _qvecButtons.size())
            pAction->setData(QVariant::fromValue(_qvecButtons.at(i)));
        if (i < _qvecChecked.size())
            pAction->setChecked(_qvecChecked.at(i));
    }
}

void CLS_WgtItemToolBar::SetLang(const QString& _qstrLang)
{
    Q_UNUSED(_qstrLang) // the bar has no text of its own
}

void CLS_WgtItemToolBar::LoadStyleSheet(const QString& _qstrStyleSheet)
{
    setStyleSheet(_qstrStyleSheet);
}

void CLS_WgtItemToolBar::SlotTriggered(QAction* _pAction)
{
    if (_pAction == nullptr)
        return;
    const QVariant varData = _pAction->data();
    if (!varData.isValid() || !varData.canConvert<CLS_ItemButton>())
        return;
    // Report the live state; the copy inside the action keeps the state of the build.
    CLS_ItemButton clsButton = varData.value<CLS_ItemButton>();
    clsButton.m_blChecked = _pAction->isChecked();
    clsButton.m_blCheckable = _pAction->isCheckable();
    emit SignTriggered(m_qstrParentId, clsButton);
}

void CLS_WgtItemToolBar::paintEvent(QPaintEvent* _pEvent)
{
    Q_UNUSED(_pEvent)
    // A flat background only: no handle, no frame. An empty or unknown name paints with an
    // invalid colour, without a fallback.
    QColor color;
    color.setNamedColor(m_qstrBgColor);
    QPainter painter(this);
    painter.setPen(QPen(color, 1));
    painter.setBrush(QBrush(color, Qt::SolidPattern));
    const QRect rectAll = rect();
    painter.drawRects(&rectAll, 1);
}
