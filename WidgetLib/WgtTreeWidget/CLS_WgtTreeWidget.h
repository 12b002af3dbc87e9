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

class CLS_ViewBasic;
class CLS_WgtBaseTreeWidget;
class QEvent;
class QKeyEvent;
class QListWidget;
class QListWidgetItem;
class QToolButton;
class QTreeWidgetItem;
class Ui_CLS_WgtTreeWidget;

class CLS_WgtTreeWidget : public QWidget
{
    Q_OBJECT

public:
    // _blCheck, _blDrag, _blDrop, _blMenu (as right-click switch) and _iBtnShowType go to the base
    // tree; _blSearch shows the search line at the start; _blMenu also makes the context menu.
    CLS_WgtTreeWidget(QWidget* parent = nullptr, bool _blCheck = false, bool _blDrag = false,
                      bool _blSearch = false, bool _blMenu = false, bool _blDrop = false,
                      n_ItemBtnShowType _iBtnShowType = ITEM_BTN_SHOW_ALWAYS);
    ~CLS_WgtTreeWidget() override;

    // Forwarders with a result: -1 without a base tree.
    int Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems, bool _blShowRoot);
    int GetItemById(const QString& _qstrId, CLS_TreeItem& _clsItem);
    int GetItemByName(const QString& _qstrName, QVector<CLS_TreeItem>& _qvecItems);
    int GetCurrentItem(CLS_TreeItem& _clsItem);
    int GetAllItems(QMap<QString, CLS_TreeItem>& _qmapItems);
    int GetCheckedItems(QVector<CLS_TreeItem>& _qvecItems, bool _blLeafOnly);
    int GetCheckedNodes(QVector<CLS_TreeItem>& _qvecItems);
    int GetChilds(const QString& _qstrId, QVector<CLS_TreeItem>& _qvecItems, bool _blAllLevels);
    int GetParent(const QString& _qstrId, CLS_TreeItem& _clsItem);
    int GetItemCheckStatus(const QString& _qstrId, Qt::CheckState& _iState);

    // Hands the entries to the menu widget ("setInfo") and opens it at the cursor ("exec").
    void ShowMenu(const QList<_MenuItem>& _qlstItems);

    CLS_WgtBaseTreeWidget* GetBaseTree() const { return m_pBaseTree; }
    QListWidget* GetResultList() const;

    // A search of the owner's own: makes the result entries of a line, in order (the panel takes
    // them), and gives 0, or a negative value for a tree it cannot search. The panel keeps its list
    // heights and its no-results entry. An empty function gives the search by name back.
    using SearchFunction =
        std::function<int(const QString& _qstrLine, QList<QListWidgetItem*>& _qlstEntries)>;
    void SetSearchFunction(SearchFunction _fnSearch) { m_fnSearch = std::move(_fnSearch); }

public slots:
    int AddItem(CLS_TreeItem _clsTreeItem);
    void AddItems(QVector<CLS_TreeItem> _qvecTreeItems);
    void DeleteItem(QString _qstrId);
    void UpdateItem(CLS_TreeItem _clsItem);
    void UpdateItemIcon(QString _qstrId, QString _qstrIcon);
    void SetItemDisabled(QString _qstrId, bool blState);
    void SetTextMaxWidth(int _iWidth);
    void Clear();
    void SetItemCheckStatus(QString _qstrId, Qt::CheckState _iState, bool _blSend = false);
    void SetCurrentItem(QString _qstrId, bool _blSend = false);
    void SetShowItemById(QString _qstrId);
    void SetShowItemByName(QString _qstrName);
    int MoveUpOneRow(QString _qstrSrcId, QString _qstrDesId);
    int MoveDownOneRow(QString _qstrSrcId, QString _qstrDesId);
    void SetItemExpandStatus(QString _qstrId, n_TreeExpandType _iExpandType);
    void SetAllExpandStatus(bool _blShow);
    void ClearSelect();

    // Search
    void ClearSearch();
    void ClearAndCloseSearch();
    void SetSearchVisible(bool _blVisible);

signals:
    void SignClickButton(QString _qstrId, CLS_ItemButton _clsData);
    void SignClicked(QString _qstrId, CLS_TreeItem _clsData);
    void SignDblClicked(QString _qstrId, CLS_TreeItem _clsData);
    void SignRightClicked(QString _qstrId, CLS_TreeItem _clsData);
    void SignSelected(QString _qstrId, CLS_TreeItem _clsData, QString _qstrOldId);
    // Declared for pages; never emitted (nor is the base tree's).
    void SignChecked(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    void SignCheckedStatusChanged(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    void SignDroped(CLS_TreeItem _clsDropItem);
    // An entry of the context menu was chosen.
    void SignTreeMenuItemClicked(QString _qstrItemId, bool _blChecked);

protected slots:
    void ExecuteSearch();
    void SlotResizeView(double _dXScale, double _dYScale);

private slots:
    // Connected by name in setupUi.
    void on_qlineedtQueryInput_textChanged(const QString& _qstrText);
    void on_qlineedtQueryInput_returnPressed();
    void on_qlistWgtQueryResult_itemDoubleClicked(QListWidgetItem* _pItem);

protected:
    // Keyboard of the search: Down, Up, Return, Enter and Escape in the line and the result list.
    bool eventFilter(QObject* _pWatched, QEvent* _pEvent) override;
    // A language change translates the form, the accessible texts and a no-results entry again.
    void changeEvent(QEvent* _pEvent) override;

    void LoadPicPath();
    void InitView();
    void ConnectSignals();
    int LoadStyle();

    Ui_CLS_WgtTreeWidget* m_pUi = nullptr;
    CLS_WgtBaseTreeWidget* m_pBaseTree = nullptr; // child of the panel
    QString m_qstrPicPath;                        // image folder, with a trailing slash
    QToolButton* m_pBtnSearch = nullptr;
    QToolButton* m_pBtnClear = nullptr;
    bool m_blShowSearch = false;
    CLS_ViewBasic* m_pMenu = nullptr; // not owned, not parented: it belongs to the menu library
    SearchFunction m_fnSearch;        // SetSearchFunction

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
