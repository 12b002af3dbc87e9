#pragma once
// The tool bar of one row: one QAction per CLS_ItemButton, reported with the row's id when
// triggered, over a flat background in the skin's "<ArgRight_TreeBranch>" colour. Each button is
// named for assistive technology after its text or tool tip. GUI thread only.

#include "TreeStructDefine.h"

#include <QString>
#include <QToolBar>
#include <QVector>

class QAction;
class QEvent;
class QPaintEvent;

class CLS_WgtItemToolBar : public QToolBar
{
    Q_OBJECT

public:
    explicit CLS_WgtItemToolBar(QWidget* parent = nullptr);
    ~CLS_WgtItemToolBar() override;

    // Stores the row id and makes the actions, in vector order. Called once per bar.
    void Init(const QVector<CLS_ItemButton>& _qvecButtons, const QString& _qstrParentId);
    // Hands a bar that a tree gave back to another row whose buttons look the same (ids, texts, tool
    // tips, icons, checkable): the row id, each action's copy of its button (the new row's, with the
    // state of its build), and the check state of each button.
    void Reuse(const QString& _qstrParentId, const QVector<CLS_ItemButton>& _qvecButtons,
               const QVector<bool>& _qvecChecked);
    void SetLang(const QString& _qstrLang);
    void LoadStyleSheet(const QString& _qstrStyleSheet);

public slots:
    void SlotTriggered(QAction* _pAction);

signals:
    void SignTriggered(QString _qstrParentId, CLS_ItemButton _clsBtn);

protected:
    void paintEvent(QPaintEvent* _pEvent) override;
    // A language change translates the buttons' accessible descriptions again.
    void changeEvent(QEvent* _pEvent) override;

private:
    void TranslateAccessibleTexts();

    QString m_qstrParentId; // id of the row the bar belongs to
    QString m_qstrBgColor;  // background colour name, fetched once at construction
};
