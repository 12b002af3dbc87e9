#pragma once
// The form of the tree panel: search line, result list and the layout that takes the tree,
// written out by hand in the shape of a generated form class. GUI thread only.

class CLS_LineEdit;
class QListWidget;
class QSpacerItem;
class QVBoxLayout;
class QWidget;

/// Form record of CLS_WgtTreeWidget: plain pointers to the widgets and layouts that setupUi makes.
///
/// The record owns nothing: the widgets and layouts belong to the form widget (Qt parent-child), and
/// the spacers to the layout that holds them; all pointers are null until setupUi. Deleting the
/// record leaves the widgets alone. GUI thread only.
class Ui_CLS_WgtTreeWidget
{
public:
    /// Outer column of the form ("verticalLayout"): line, list, spacer, tree layout, spacer. Left and
    /// right margins 0, top and bottom the style's default.
    QVBoxLayout* verticalLayout = nullptr;
    /// The search line ("qlineedtQueryInput"): 30 pixels high, Arial 9 pt, no frame, focus by click.
    CLS_LineEdit* qlineedtQueryInput = nullptr;
    /// The search result list ("qlistWgtQueryResult"), below the line; the panel sets its heights.
    QListWidget* qlistWgtQueryResult = nullptr;
    QSpacerItem* verticalSpacer = nullptr; ///< Fixed 10-pixel gap between the result list and the tree.
    /// Layout that receives the base tree ("qvboxlayoutTreeLayout"); empty after setupUi.
    QVBoxLayout* qvboxlayoutTreeLayout = nullptr;
    QSpacerItem* verticalSpacer_2 = nullptr; ///< Fixed 17-pixel gap below the tree.

    /// Builds the widgets on _pForm and ends by connecting its `on_<object>_<signal>` slots by name.
    /// Names an unnamed form "CLS_WgtTreeWidget", resizes it to 384 x 610 and translates its texts.
    /// Call once per form; the widgets become children of @p _pForm.
    void setupUi(QWidget* _pForm);
    /// Sets the translated texts of the form again (the title "Form", an empty line placeholder);
    /// called by setupUi and at each language change.
    void retranslateUi(QWidget* _pForm);
};

/// Namespace of the form classes, as generated forms have it.
namespace Ui {
/// The form record under its usual name, Ui::CLS_WgtTreeWidget; adds nothing.
class CLS_WgtTreeWidget : public Ui_CLS_WgtTreeWidget
{};
} // namespace Ui
