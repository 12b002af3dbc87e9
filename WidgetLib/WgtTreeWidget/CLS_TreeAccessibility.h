#pragma once
// What assistive technology finds in a tree panel: the tree's name and description, the hidden
// header's sections named, each row's cells named and described in words, and a keyboard way into
// the current row's tool buttons (Ctrl+Right there, Escape back). Made by the panel for its base
// tree; the rows ask it through CLS_WgtTreeWidgetItem::data only when a reader asks them. GUI thread
// only.

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>

#include <functional>

class CLS_WgtBaseTreeWidget;
class QAbstractItemView;
class QEvent;
class QKeyEvent;
class QStackedWidget;
class QToolButton;
class QTreeWidgetItem;
class QWidget;

/// What assistive technology finds in a tree panel, and the keyboard way into a row's buttons.
///
/// - The base tree's accessible name is the panel's window title ("Resource tree" in English,
///   translated) until SetTreeName gives the page's own; its description says how to reach the
///   row buttons.
/// - The hidden header's two sections are named ("Name", "Buttons").
/// - Column 0 of a row is named with the row's full text (the shown text may be elided) and
///   described by the row describer: by default "Group, 3 rows" for a row with children, else the
///   row's tool tip when it says more than the text. The device tree installs its own (kind and
///   state in words, CLS_DeviceTreeAccessible).
/// - A part-checked row adds "partly checked" to its description (Qt's cells do not report the
///   mixed state to a reader).
/// - Column 1 is named after the row's buttons ("Buttons: Play, Record"), or "No buttons".
/// - Ctrl+Right in the tree moves the focus to the first button of the current row's bar (an
///   on-demand bar is made for it); Left and Right move between the buttons, Return, Enter and
///   Space press one (SignClickButton goes out as for a click), Escape or Ctrl+Left go back to the
///   row. The button with the focus is framed in the highlight colour. On a row without buttons the
///   key is left to the tree.
///
/// Nothing here changes a row's texts, flags or the tree's signals. Made and owned by the panel
/// (a child of the base tree). GUI thread only.
class CLS_TreeAccessibility : public QObject
{
    Q_OBJECT

public:
    /// Row describer: the accessible description of column 0 of @p _pRow (never null).
    using RowDescriber = std::function<QString(const QTreeWidgetItem* _pRow)>;

    /// Names @p _pTree after @p _pPanel's window title and watches both for title, language and key
    /// events. @p _pTree becomes the parent; neither widget is owned.
    CLS_TreeAccessibility(QWidget* _pPanel, CLS_WgtBaseTreeWidget* _pTree);
    ~CLS_TreeAccessibility() override;

    /// The tree's accessible name from now on; an empty name goes back to the panel's window title.
    void SetTreeName(const QString& _qstrName);
    /// The accessible name the tree has now.
    QString TreeName() const;
    /// Replaces the row describer; an empty function goes back to the default one.
    void SetRowDescriber(RowDescriber _fnDescribe);

    /// What @p _pRow offers for @p _iRole (Qt::AccessibleTextRole or Qt::AccessibleDescriptionRole)
    /// in @p _iColumn: an invalid value where the row keeps Qt's own answer (another role, a row
    /// outside a tree with this object, or a value the page stored itself).
    static QVariant RowData(const QTreeWidgetItem* _pRow, int _iColumn, int _iRole);
    /// The description of column 0 of @p _pRow in the current language.
    QString RowDescription(const QTreeWidgetItem* _pRow) const;
    /// The name of column 1 of @p _pRow: "Buttons: " and the buttons' names, or "No buttons".
    QString ButtonsName(const QTreeWidgetItem* _pRow) const;
    /// The default describer's text for @p _pRow.
    static QString DefaultRowDescription(const QTreeWidgetItem* _pRow);

    /// Moves the focus to the first button of the current row's bar, making the bar if it is still
    /// to come. @return false (nothing moves) without a current row with buttons.
    bool EnterRowButtons();
    /// Gives the focus back to the tree and announces its current row. @return false without a tree.
    bool LeaveRowButtons();
    /// Tells assistive technology that the current row has the focus, after the tree took it. Does
    /// nothing while no reader listens or the tree has no focus or current row.
    void AnnounceCurrentRow();
    /// The accessible child of @p _pView that stands for its current item (column 0), as a reader's
    /// focus event names it; -1 without a current item in view.
    static int CurrentChild(QAbstractItemView* _pView);
    /// Tells assistive technology that the current item of @p _pView has the focus: what a reader
    /// should hear last after the program moved the focus there itself. Does nothing while no reader
    /// listens or @p _pView has no focus or no current item in view.
    static void AnnounceCurrent(QAbstractItemView* _pView);

protected:
    /// The panel's title changes, the tree's language changes and keys, and the keys of bar buttons
    /// in use.
    bool eventFilter(QObject* _pWatched, QEvent* _pEvent) override;

private:
    void ApplyTreeName();
    void TranslateTexts();
    bool ButtonKeyPressed(QToolButton* _pButton, const QKeyEvent* _pEvent);
    // The buttons of the bar in the tree that holds @p _pButton, in order; empty if it is not one.
    QList<QToolButton*> BarButtons(const QToolButton* _pButton) const;
    void RestoreStack();
    // A bar button with the keyboard focus gets a frame in the highlight colour (the skins draw no
    // focus on row buttons); the frame goes with the focus.
    void MarkFocus(QToolButton* _pButton, bool _blFocused);

    QPointer<QWidget> m_pPanel;
    QPointer<CLS_WgtBaseTreeWidget> m_pTree;
    // The same tree as a plain widget, for what may run while it is destroyed (its bars' buttons are
    // hidden then, through this object's filter): no cast to the tree's own class there.
    QPointer<QWidget> m_pTreeWidget;
    QString m_qstrOwnName; // the page's name; empty: the panel's window title
    RowDescriber m_fnDescribe;
    // The bar stack whose page was switched to the buttons for the keyboard, and its page before.
    QPointer<QStackedWidget> m_pShownStack;
    int m_iStackPageBefore = -1;
    QPointer<QToolButton> m_pMarked; // the button with the focus frame, and its own sheet before
    QString m_qstrSheetBefore;
};
