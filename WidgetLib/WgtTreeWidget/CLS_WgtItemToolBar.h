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

/// The tool bar of one row of CLS_WgtBaseTreeWidget: one QAction per CLS_ItemButton, reported with
/// the row's id through SignTriggered when triggered. The tree makes it, wires SignTriggered to its
/// own SignClickButton and puts it into the row's CLS_WgtToolBtnStack. GUI thread only.
class CLS_WgtItemToolBar : public QToolBar
{
    Q_OBJECT

public:
    /// An empty bar; connects actionTriggered to SlotTriggered and reads the background colour
    /// from the colour library once (none when the library or the name is missing).
    explicit CLS_WgtItemToolBar(QWidget* parent = nullptr);
    /// Deletes the bar's actions, which belong to it alone (they are made without a parent).
    ~CLS_WgtItemToolBar() override;

    /// Stores the row id and makes the actions, in vector order: icon, text, tool tip, checkable
    /// and checked from each button, and a copy of the button as the action's data. Each button is
    /// named for assistive technology. Called once per bar; a second call would add more actions.
    void Init(const QVector<CLS_ItemButton>& _qvecButtons, const QString& _qstrParentId);
    /// Hands a bar that a tree gave back to another row whose buttons look the same (ids, texts, tool
    /// tips, icons, checkable): the row id, each action's copy of its button (the new row's, with the
    /// state of its build), and the check state of each button. Actions beyond either vector keep
    /// what they had; texts and icons are not touched.
    void Reuse(const QString& _qstrParentId, const QVector<CLS_ItemButton>& _qvecButtons,
               const QVector<bool>& _qvecChecked);
    /// Does nothing: the bar has no text of its own (button texts come from the records).
    void SetLang(const QString& _qstrLang);
    /// Sets _qstrStyleSheet as the bar's own style sheet, replacing the previous one.
    void LoadStyleSheet(const QString& _qstrStyleSheet);

public slots:
    /// Emits SignTriggered with the row id and the action's button, whose m_blCheckable and
    /// m_blChecked are the action's live state. Ignores a null action or one without a button.
    void SlotTriggered(QAction* _pAction);

signals:
    /// A button of the row _qstrParentId was triggered; _clsBtn is its record with the live
    /// checkable and checked state of its action.
    void SignTriggered(QString _qstrParentId, CLS_ItemButton _clsBtn);

protected:
    /// Paints a flat background in the skin's colour (no handle, no frame); an empty or unknown
    /// colour name paints with an invalid colour, without a fallback.
    void paintEvent(QPaintEvent* _pEvent) override;
    /// A language change translates the buttons' accessible descriptions again.
    void changeEvent(QEvent* _pEvent) override;

private:
    void TranslateAccessibleTexts();

    QString m_qstrParentId; // id of the row the bar belongs to
    QString m_qstrBgColor;  // background colour name, fetched once at construction
};
