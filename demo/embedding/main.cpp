// Embedding the tree in your page: a custom tree of ready nodes, one signal, shown.
#include "CLS_WgtDeviceTree.h"

#include <QApplication>
#include <QTextStream>
#include <QTimer>

static CLS_CustomTreeNode MakeNode(const QString& _qstrId, const QString& _qstrParentId, int _iType,
                                   const QString& _qstrName)
{
    CLS_CustomTreeNode node;
    node.m_qstrTreeId = _qstrId; // key of the node and id of its row
    node.m_qstrDevId = _qstrId;  // id of the resource behind it
    node.m_qstrTreeParentId = _qstrParentId;
    node.m_qstrName = _qstrName;
    node.m_iType = _iType; // 2 group, 4 channel
    return node;
}

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);

    QMap<QString, CLS_CustomTreeNode> qmapNodes; // by tree id; parents are named by tree id
    qmapNodes.insert("lobby", MakeNode("lobby", "custom_root_id", 2, "Lobby"));
    qmapNodes.insert("cam-1", MakeNode("cam-1", "lobby", 4, "Entrance"));
    qmapNodes.insert("cam-2", MakeNode("cam-2", "lobby", 4, "Reception"));

    // Flags in order: drag, check boxes, context menu, search line, drop.
    CLS_WgtDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, false, true, false);
    QObject::connect(&tree, &CLS_WgtDeviceTree::SignSelected, [](const CLS_CustomTreeNode& _node) {
        QTextStream(stdout) << "selected " << _node.m_qstrName << " (" << _node.m_qstrDevId << ")\n";
    });
    if (tree.Init(qmapNodes, "My cameras") != 0) // the tree adds the root "custom_root_id"
        return 1;
    tree.resize(320, 480);
    tree.show();

    if (app.arguments().contains("--quit")) { // for the test suite: select one row and leave
        tree.SetCurrentItem("cam-1", true);
        QTimer::singleShot(0, &app, &QCoreApplication::quit);
    }
    return app.exec();
}
