// An outside program that knows the library only through its installed package.
#include <WgtTreeWidget.h>

#include <QApplication>
#include <cstdio>

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
    return 0;
}
