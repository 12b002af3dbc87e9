#pragma once
// The view of the reference menu library: one QMenu, built from the "Info" entries of the task
// "setInfo" and shown without blocking by the task "exec" at "Pointexec". A chosen entry goes out
// once, through SignRequestTaskRsulted with "StrMenuItemClicked" and "boolTreeWidget"; closing the
// menu says nothing. GUI thread only.

#include "CLS_ViewBasic.h"
#include "TreeStructDefine.h"

#include <QList>
#include <QString>
#include <QVariantMap>

class QAction;
class QMenu;

class CLS_MenuView : public CLS_ViewBasic
{
    Q_OBJECT

public:
    explicit CLS_MenuView(QWidget* _pParent = nullptr);
    ~CLS_MenuView() override;

    // "WgtMenu": module of the log records and of the style files.
    const char* GetModuleCode() override;

    // The root menu, object name "menuRoot"; sub-menus are its children. Owned by the view.
    QMenu* Menu() const { return m_pMenu; }

    // Deletes every view of this library that is still alive; run when the application object goes,
    // since the panel that asks for a menu never deletes it.
    static void DeleteRemainingViews();

protected:
    // Nothing to build at the first show: the menu exists from construction, since the panel never
    // shows the view and sends "setInfo" right away.
    void InitView() override;
    void InitData() override;
    // "setInfo" and "exec"; any other key, or a call off the view's thread, gives false.
    bool TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                     QVariantMap& _qmapResult) override;

private:
    int SetInfo(const QVariantMap& _qmapParam);
    int Exec(const QVariantMap& _qmapParam);
    void ClearMenu();
    void FillMenu(QMenu* _pMenu, const QList<_MenuItem>& _qlstItems);
    bool IsChoosable(QAction* _pAction) const;
    void HideMenus();
    void SlotItemTriggered(QAction* _pAction, bool _blChecked);

    QMenu* m_pMenu = nullptr;     // owned by the view (child)
    bool m_blStyleLoaded = false; // the view's style is read at the first "exec"
};
