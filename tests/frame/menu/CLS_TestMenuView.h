#pragma once
// The menu view of the test menu library: a real QMenu built from the "Info" entries of "setInfo",
// shown by "exec" at "Pointexec". A chosen entry goes out once, through SignRequestTaskRsulted with
// "StrMenuItemClicked" and "boolTreeWidget". GUI thread.

#include "CLS_ViewBasic.h"
#include "TreeStructDefine.h"

class QMenu;

class CLS_TestMenuView : public CLS_ViewBasic
{
    Q_OBJECT

public:
    explicit CLS_TestMenuView(const QMap<QString, QVariant>& _qmapParam);
    ~CLS_TestMenuView() override;

    QMenu* Menu() const { return m_pMenu; }
    QMap<QString, QVariant> CreateParam() const { return m_qmapCreateParam; }

protected:
    void InitView() override;
    void InitData() override;
    bool TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                     QVariantMap& _qmapResult) override;

private:
    void FillMenu(QMenu* _pMenu, const QList<_MenuItem>& _qlstItems);
    void SlotItemTriggered(const QString& _qstrItemId, bool _blChecked);

    QMenu* m_pMenu = nullptr; // owned by the view; made at construction, since InitView waits for a show
    QMap<QString, QVariant> m_qmapCreateParam;
};
