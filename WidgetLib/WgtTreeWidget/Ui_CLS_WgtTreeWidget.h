#pragma once
// The form of the tree panel: search line, result list and the layout that takes the tree,
// written out by hand in the shape of a generated form class. GUI thread only.

class CLS_LineEdit;
class QListWidget;
class QSpacerItem;
class QVBoxLayout;
class QWidget;

class Ui_CLS_WgtTreeWidget
{
public:
    QVBoxLayout* verticalLayout = nullptr;
    CLS_LineEdit* qlineedtQueryInput = nullptr;
    QListWidget* qlistWgtQueryResult = nullptr;
    QSpacerItem* verticalSpacer = nullptr;
    QVBoxLayout* qvboxlayoutTreeLayout = nullptr;
    QSpacerItem* verticalSpacer_2 = nullptr;

    // Builds the widgets on _pForm and ends by connecting its on_<object>_<signal> slots by name.
    void setupUi(QWidget* _pForm);
    void retranslateUi(QWidget* _pForm);
};

namespace Ui {
class CLS_WgtTreeWidget : public Ui_CLS_WgtTreeWidget
{};
} // namespace Ui
