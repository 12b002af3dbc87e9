#pragma once
// The tree panel: a search line, a result list shown while a search is open, and one
// CLS_WgtBaseTreeWidget below them. Repeats the base tree's signals, forwards its operations, and
// shows the optional context menu of the "WgtMenu" library. The first panel installs the library's
// translator (CLS_WgtTranslator). GUI thread only.

#include "TreeStructDefine.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QVector>
#include <QWidget>

#include <functional>

class CLS_TreeAccessibility;
class CLS_ViewBasic;
class CLS_WgtBaseTreeWidget;
class QEvent;
class QKeyEvent;
class QListWidget;
class QListWidgetItem;
class QToolButton;
class QTreeWidgetItem;
class Ui_CLS_WgtTreeWidget;

/// Tree panel: a search line with its result list above one CLS_WgtBaseTreeWidget.
///
/// The panel adds a search by name (or by an owner's own SetSearchFunction) and an optional context
/// menu to the base tree, repeats the base tree's signals under the same names and forwards the
/// tree's operations; a forwarder with a result gives -1 only when there is no base tree, which
/// cannot happen after the constructor. Typing in the line searches at each change; Down moves into
/// the results, Return, Enter or a double click on a result makes its row current in the tree (with
/// SignSelected), Escape clears an open search, and Ctrl+F in the tree of a panel made with a search
/// line opens the line. The panel follows the application's language changes and its resize
/// broadcast (a style reload). GUI thread only; not copyable (QWidget).
class CLS_WgtTreeWidget : public QWidget
{
    Q_OBJECT

public:
    /// Builds the panel: installs the library's translator (once per process), sets up the form, makes
    /// the base tree as a child of the panel, makes the context menu when asked, adds the search and
    /// clear buttons to the line, loads the style and connects the application's resize broadcast
    /// (I_AppSignals::SignResizeView) when the application's signal hub can be reached.
    /// @param parent Parent widget, which owns the panel the Qt way; may be null.
    /// @param _blCheck Check boxes on the rows (base tree).
    /// @param _blDrag Rows can be dragged, and moved inside the tree (base tree).
    /// @param _blSearch The search line is visible from the start and takes the focus; it also enables
    ///        Ctrl+F in the tree. Without it the line stays hidden until SetSearchVisible(true).
    /// @param _blMenu Right clicks on rows send SignRightClicked (base tree), and the panel makes the
    ///        context menu of the "WgtMenu" library for ShowMenu.
    /// @param _blDrop The tree and its rows accept drops (base tree); SignDroped needs @p _blDrag too.
    /// @param _iBtnShowType When the rows' tool buttons show (base tree).
    CLS_WgtTreeWidget(QWidget* parent = nullptr, bool _blCheck = false, bool _blDrag = false,
                      bool _blSearch = false, bool _blMenu = false, bool _blDrop = false,
                      n_ItemBtnShowType _iBtnShowType = ITEM_BTN_SHOW_ALWAYS);
    /// Disconnects the resize broadcast and deletes the form record. The base tree and the search
    /// widgets go with the panel's children; the context menu is left to the menu library.
    ~CLS_WgtTreeWidget() override;

    /// Rebuilds the tree from the records of @p _qmapItems below the record @p _qstrRootId; with
    /// @p _blShowRoot false the root gets no row and its children become the top rows.
    /// @return 0 on success; -1 (old tree kept) for an empty root id, an empty map or a root id that
    ///         is not in the map, or without a base tree.
    int Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems, bool _blShowRoot);
    /// Copies the record of the row @p _qstrId into @p _clsItem.
    /// @return 0 when found; -1 for an unknown id or a row without a record.
    int GetItemById(const QString& _qstrId, CLS_TreeItem& _clsItem);
    /// Appends to @p _qvecItems the records below the root row whose text holds @p _qstrName, ignoring
    /// case, in tree order (the search by name of the panel).
    /// @return 0; -1 when the root row is not shown (built without it, or before Init): such a tree
    ///         cannot be searched.
    int GetItemByName(const QString& _qstrName, QVector<CLS_TreeItem>& _qvecItems);
    /// Copies the record of the current row into @p _clsItem.
    /// @return 0; -1 with no current row, a disabled current row or a row without a record.
    int GetCurrentItem(CLS_TreeItem& _clsItem);
    /// Inserts the record of every row into @p _qmapItems, by id (the map is not cleared first).
    /// @return 0; -1 only without a base tree.
    int GetAllItems(QMap<QString, CLS_TreeItem>& _qmapItems);
    /// Appends the records of the fully checked, enabled and visible rows; with @p _blLeafOnly only
    /// rows without children. A partially checked parent is never listed.
    /// @return 0; -1 in a tree made without check boxes.
    int GetCheckedItems(QVector<CLS_TreeItem>& _qvecItems, bool _blLeafOnly);
    /// GetCheckedItems with @p _blLeafOnly true: checked rows without children only.
    /// @return 0; -1 in a tree made without check boxes.
    int GetCheckedNodes(QVector<CLS_TreeItem>& _qvecItems);
    /// Appends the records of the children of the row @p _qstrId, or of all rows below it in depth-first
    /// order with @p _blAllLevels.
    /// @return 0; -1 for an empty or unknown id.
    int GetChilds(const QString& _qstrId, QVector<CLS_TreeItem>& _qvecItems, bool _blAllLevels);
    /// Copies the record of the parent row of @p _qstrId into @p _clsItem.
    /// @return 0; -1 for an empty or unknown id, or a top row.
    int GetParent(const QString& _qstrId, CLS_TreeItem& _clsItem);
    /// Reads the check state of the row @p _qstrId into @p _iState (a parent answers from its children).
    /// @return 0; -1 for an empty or unknown id.
    int GetItemCheckStatus(const QString& _qstrId, Qt::CheckState& _iState);

    /// Shows the context menu with the entries @p _qlstItems at the current cursor position (not where
    /// a click was): hands them to the menu view as task "setInfo", then asks it for "exec". The choice
    /// comes back as SignTreeMenuItemClicked. Does nothing in a panel made without @c _blMenu or when
    /// the menu library is missing; whether the call blocks until the menu closes is the menu's affair.
    void ShowMenu(const QList<_MenuItem>& _qlstItems);

    /// The name assistive technology gives the tree from now on; an empty name goes back to the
    /// default, the panel's window title ("Resource tree" in English, translated).
    void SetAccessibleTreeName(const QString& _qstrName);
    /// What assistive technology finds in the tree (CLS_TreeAccessibility); owned by the base tree.
    CLS_TreeAccessibility* GetAccessibility() const { return m_pAccessibility; }

    /// The base tree, a child of the panel (the panel owns it). Not null after the constructor.
    CLS_WgtBaseTreeWidget* GetBaseTree() const { return m_pBaseTree; }
    /// The search result list, a child of the panel (the panel owns it), e.g. to set a delegate or
    /// uniform item sizes. Null only while the panel is being destroyed.
    QListWidget* GetResultList() const;

    /// A search of the owner's own: makes the result entries of a line, in order (the panel takes
    /// them), and gives 0, or a negative value for a tree it cannot search. The panel keeps its list
    /// heights and its no-results entry. An empty function gives the search by name back.
    /// An entry activates the row whose id it holds under Qt::UserRole; an entry without one only
    /// closes the search. A negative result or no entries show the no-results entry, and entries
    /// made anyway are deleted. Called on the GUI thread, at each search.
    using SearchFunction =
        std::function<int(const QString& _qstrLine, QList<QListWidgetItem*>& _qlstEntries)>;
    /// Replaces the search of the line by @p _fnSearch; an empty function restores the search by name.
    /// The panel keeps a copy of the function: what it captures must outlive the panel or be replaced.
    void SetSearchFunction(SearchFunction _fnSearch) { m_fnSearch = std::move(_fnSearch); }

public slots:
    /// Adds a row for @p _clsTreeItem under its parent row, behind all siblings of equal or lower
    /// m_iSortNo.
    /// @return 0; -1 for an id already in the tree, a parent that is not (no top row can be added)
    ///         or without a base tree.
    int AddItem(CLS_TreeItem _clsTreeItem);
    /// AddItem for each record in order, in one batch; records refused by AddItem are skipped silently.
    void AddItems(QVector<CLS_TreeItem> _qvecTreeItems);
    /// Takes the row @p _qstrId and all rows below it out of the tree; unknown ids are ignored.
    void DeleteItem(QString _qstrId);
    /// Rewrites the row of @p _clsItem's id from the record: flags, text, tooltip, icon and the stored
    /// record. Place, tool bar, check, hidden and expanded state stay; a disabled row comes back enabled
    /// unless the record's flags say otherwise. Unknown ids are ignored.
    void UpdateItem(CLS_TreeItem _clsItem);
    /// Shows the icon file @p _qstrIcon on the row @p _qstrId; the stored record keeps its icon.
    void UpdateItemIcon(QString _qstrId, QString _qstrIcon);
    /// Disables (@p blState true) or enables the row @p _qstrId. Works in trees with check boxes only.
    void SetItemDisabled(QString _qstrId, bool blState);
    /// Elision width in pixels for row texts written from now on; below 1 turns elision off.
    void SetTextMaxWidth(int _iWidth);
    /// Removes every row. The search line and result list are left as they are.
    void Clear();
    /// Sets the check state of the row @p _qstrId; its children with check boxes follow. Silent unless
    /// @p _blSend is true, which sends SignCheckedStatusChanged. Does nothing in a tree without check
    /// boxes or for an unknown id.
    void SetItemCheckStatus(QString _qstrId, Qt::CheckState _iState, bool _blSend = false);
    /// Scrolls to the row @p _qstrId and makes it current. Silent unless @p _blSend is true, which sends
    /// SignSelected. Unknown ids are ignored.
    void SetCurrentItem(QString _qstrId, bool _blSend = false);
    /// Narrows the tree to the row @p _qstrId and its ancestors, shown and expanded; all other rows
    /// are hidden, not removed. Empty or unknown ids are ignored.
    void SetShowItemById(QString _qstrId);
    /// Narrows the tree to the rows whose text holds @p _qstrName, ignoring case, and their ancestors;
    /// with no match every row is hidden. An empty name is ignored (it does not show all rows again).
    void SetShowItemByName(QString _qstrName);
    /// Swaps the row @p _qstrSrcId with its sibling @p _qstrDesId (their sort numbers too), moving the
    /// source up.
    /// @return 0; -1 for an unknown id, a top row, a source already first or two rows that are not
    ///         siblings.
    int MoveUpOneRow(QString _qstrSrcId, QString _qstrDesId);
    /// Swaps the row @p _qstrSrcId with its sibling @p _qstrDesId (their sort numbers too), moving the
    /// source down.
    /// @return 0; -1 for an unknown id, a top row, a source already last or two rows that are not
    ///         siblings.
    int MoveDownOneRow(QString _qstrSrcId, QString _qstrDesId);
    /// Collapses the row @p _qstrId, or expands it with its ancestors (TREE_EXPAND), and with every row
    /// below it (TREE_EXPAND_ALL). Unknown ids are ignored.
    void SetItemExpandStatus(QString _qstrId, n_TreeExpandType _iExpandType);
    /// Expands (@p _blShow true) or collapses every row.
    void SetAllExpandStatus(bool _blShow);
    /// Clears the tree's selection; the current row stays current.
    void ClearSelect();

    // Search
    /// Empties the search: clears the line and the result list, hides the list and the clear button.
    /// The line stays visible.
    void ClearSearch();
    /// ClearSearch, then hides the search line.
    void ClearAndCloseSearch();
    /// Shows the search line and gives it the focus (@p _blVisible true), or hides it. The text, an
    /// open result list and the clear button stay as they are.
    void SetSearchVisible(bool _blVisible);

signals:
    /// A tool button of the row @p _qstrId was triggered; @p _clsData is the button with its live
    /// checkable and checked state.
    void SignClickButton(QString _qstrId, CLS_ItemButton _clsData);
    /// The row @p _qstrId was clicked (also a disabled row, when Qt reports it); @p _clsData is its record.
    void SignClicked(QString _qstrId, CLS_TreeItem _clsData);
    /// An enabled row was double-clicked.
    void SignDblClicked(QString _qstrId, CLS_TreeItem _clsData);
    /// A row was right-clicked in a panel made with @c _blMenu; the row was made current first (with
    /// SignSelected). A page answers with ShowMenu.
    void SignRightClicked(QString _qstrId, CLS_TreeItem _clsData);
    /// The current row changed, by the user, a search result or SetCurrentItem with @c _blSend true.
    /// @p _qstrOldId is the previous current row's id, empty when there was none.
    void SignSelected(QString _qstrId, CLS_TreeItem _clsData, QString _qstrOldId);
    /// Declared for pages; never emitted (nor is the base tree's). The check signal is
    /// SignCheckedStatusChanged.
    void SignChecked(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    /// The check state of a row changed, by the user or by SetItemCheckStatus with @c _blSend true; sent
    /// for each row whose state changed in fact, children included. @p _blChecked is false only for
    /// Qt::Unchecked.
    void SignCheckedStatusChanged(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    /// A drop on an enabled row other than the dragged one was accepted, in a panel made with
    /// @c _blDrag and @c _blDrop; @p _clsDropItem is the target row's record, sent before the row moves.
    void SignDroped(CLS_TreeItem _clsDropItem);
    /// An entry of the context menu was chosen: its item id and checked state, as the menu view
    /// answered them (empty and false when the answer lacks them). The menu is hidden first.
    void SignTreeMenuItemClicked(QString _qstrItemId, bool _blChecked);

protected slots:
    /// Searches with the text of the line and fills the result list: one entry per found row (text,
    /// and the row id under Qt::UserRole) and a height of 38 pixels per entry plus 3, at most 280,
    /// beyond which the list scrolls; or the translated "msg_no_results" entry. An empty line does
    /// nothing and leaves an open list as it is. Run at each change of the line, Return and the
    /// search button.
    void ExecuteSearch();
    /// Receives the application's resize broadcast: reloads the panel's style; the scales are unused.
    void SlotResizeView(double _dXScale, double _dYScale);

private slots:
    // Connected by name in setupUi.
    void on_qlineedtQueryInput_textChanged(const QString& _qstrText);
    void on_qlineedtQueryInput_returnPressed();
    void on_qlistWgtQueryResult_itemDoubleClicked(QListWidgetItem* _pItem);

protected:
    /// Keyboard of the search: Down, Up, Return, Enter and Escape in the line and the result list.
    /// Down moves from the line to the first result, Up from the first result back to the line,
    /// Return or Enter on a result activates it, Escape clears an open search (an Escape with nothing
    /// to clear in the line goes on to the page). Also takes Ctrl+F in the tree when the panel was
    /// made with a search line. Of the search widgets only keys without modifiers (keypad aside) are
    /// taken.
    /// @return true when the event was handled here.
    bool eventFilter(QObject* _pWatched, QEvent* _pEvent) override;
    /// A language change translates the form, the accessible texts and a no-results entry again.
    void changeEvent(QEvent* _pEvent) override;

    /// Sets m_qstrPicPath to the images of the skin named by the setting "SystemConfig"/"skin",
    /// falling back to the "dark" skin when that folder does not exist.
    void LoadPicPath();
    /// Puts the base tree into the form and sets up the search line, its two buttons and the hidden
    /// result list; shows and focuses the line only when the panel was made with a search line.
    void InitView();
    /// Repeats the base tree's signals, wires the search line, the buttons and the key filters.
    void ConnectSignals();
    /// Applies the "WgtTreeWidget" style sheet of the current skin to the panel.
    /// @return 0 always.
    int LoadStyle();

    Ui_CLS_WgtTreeWidget* m_pUi = nullptr;        ///< The form record, owned; null once destroyed.
    CLS_WgtBaseTreeWidget* m_pBaseTree = nullptr; ///< The base tree, a child of the panel.
    QString m_qstrPicPath;                        ///< Image folder of the skin, with a trailing slash.
    QToolButton* m_pBtnSearch = nullptr;          ///< Search button at the right end of the line (child).
    QToolButton* m_pBtnClear = nullptr;           ///< Clear button, shown while the line has text (child).
    bool m_blShowSearch = false;                  ///< The search line was asked for at construction.
    /// The context menu view, or null. Not owned, not parented: it belongs to the menu library.
    CLS_ViewBasic* m_pMenu = nullptr;
    SearchFunction m_fnSearch; ///< The owner's search (SetSearchFunction); empty for the search by name.
    CLS_TreeAccessibility* m_pAccessibility = nullptr; ///< Names and keys for readers; a child of the tree.

private:
    void CreateMenu();
    // Names and descriptions of the search widgets for assistive technology, in the current language.
    void TranslateAccessibleTexts();
    bool LineKeyPressed(int _iKey);
    bool ListKeyPressed(int _iKey);
    // Ctrl+F in the tree of a panel with a search line.
    static bool IsFindKey(const QKeyEvent* _pEvent);
    // Return or Enter on a result: what a double click does; the focus follows to the tree.
    void ActivateResult(QListWidgetItem* _pItem);
};
