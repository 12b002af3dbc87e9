// An outside program that knows the library only through its installed package: a generic tree,
// then a small page around a device tree of ready nodes, shown, with one row selected by the page,
// then a form made in Qt Designer (TwoTrees.ui, compiled by uic) holding both trees.
#include <WgtTreeWidget.h>

#include "ui_TwoTrees.h"

#include <QApplication>
#include <QVBoxLayout>
#include <QWidget>
#include <cstdio>

static CLS_CustomTreeNode MakeNode(const QString& _qstrId, const QString& _qstrParentId, int _iType)
{
    CLS_CustomTreeNode node;
    node.m_qstrTreeId = _qstrId;
    node.m_qstrDevId = _qstrId;
    node.m_qstrTreeParentId = _qstrParentId;
    node.m_qstrName = _qstrId;
    node.m_iType = _iType; // 2 group, 4 channel
    return node;
}

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QMap<QString, CLS_TreeItem> qmapItems;
    CLS_TreeItem clsRoot;
    clsRoot.m_qstrId = "root";
    CLS_TreeItem clsChild;
    clsChild.m_qstrId = "child";
    clsChild.m_qstrParentId = "root";
    qmapItems.insert(clsRoot.m_qstrId, clsRoot);
    qmapItems.insert(clsChild.m_qstrId, clsChild);

    CLS_WgtBaseTreeWidget tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    if (tree.Init("root", qmapItems, true) != 0 || tree.GetNodeById("child") == nullptr) {
        std::fprintf(stderr, "tree was not built\n");
        return 1;
    }
    std::printf("consumer built a tree with %d top-level row(s)\n", tree.topLevelItemCount());

    // The page: a widget that owns a device tree in its layout.
    QWidget page;
    auto* pLayout = new QVBoxLayout(&page);
    // Flags in order: drag, check boxes, context menu, search line, drop.
    auto* pDeviceTree = new CLS_WgtDeviceTree(&page, DEV_TREE_CUSTOM, false, true, false, true, false);
    pLayout->addWidget(pDeviceTree); // owned by the page
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    qmapNodes.insert("lobby", MakeNode("lobby", "custom_root_id", 2));
    qmapNodes.insert("cam-1", MakeNode("cam-1", "lobby", 4));
    qmapNodes.insert("cam-2", MakeNode("cam-2", "lobby", 4));
    int iSelected = 0;
    QObject::connect(pDeviceTree, &CLS_WgtDeviceTree::SignSelected, &page,
                     [&iSelected](const CLS_CustomTreeNode&) { ++iSelected; });
    if (pDeviceTree->Init(qmapNodes, "My cameras") != 0) {
        std::fprintf(stderr, "device tree Init failed\n");
        return 1;
    }
    page.resize(320, 480);
    page.show();
    pDeviceTree->SetCurrentItem("cam-2", true);
    QVector<CLS_CustomTreeNode> qvecChannels;
    CLS_CustomTreeNode clsCurrent;
    if (pDeviceTree->GetChannelsById("lobby", qvecChannels) < 0 || qvecChannels.size() != 2 ||
        pDeviceTree->GetCurrentItem(clsCurrent) != 0 || clsCurrent.m_qstrTreeId != "cam-2" ||
        iSelected != 1) {
        std::fprintf(stderr, "device tree page: %d channel(s), current \"%s\", %d selection(s)\n",
                     int(qvecChannels.size()), qPrintable(clsCurrent.m_qstrTreeId), iSelected);
        return 1;
    }

    QWidget form;
    Ui::TwoTrees ui;
    ui.setupUi(&form);
    if (ui.wgtDeviceTree == nullptr || ui.wgtTreeWidget == nullptr ||
        form.findChild<CLS_WgtDeviceTree*>("wgtDeviceTree") != ui.wgtDeviceTree ||
        form.findChild<CLS_WgtTreeWidget*>("wgtTreeWidget") != ui.wgtTreeWidget) {
        std::fprintf(stderr, "the form compiled by uic lacks its trees\n");
        return 1;
    }
    std::printf("consumer form from uic holds a %s and a %s\n", ui.wgtDeviceTree->metaObject()->className(),
                ui.wgtTreeWidget->metaObject()->className());
    std::printf("consumer page shows a device tree with %d channel(s) on Qt %s (built with %s)\n",
                int(qvecChannels.size()), qVersion(), QT_VERSION_STR);
    return 0;
}
