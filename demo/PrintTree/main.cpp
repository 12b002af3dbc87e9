// A short example: build a CLS_WgtBaseTreeWidget from records, look a few things up, and print the
// tree as indented text. Runs without a display (QT_QPA_PLATFORM=offscreen).

#include "CLS_WgtBaseTreeWidget.h"

#include <QApplication>
#include <QTextStream>
#include <QTreeWidgetItem>

namespace {

CLS_TreeItem MakeItem(const QString& _qstrId, const QString& _qstrParentId, int _iSortNo,
                      const QString& _qstrText)
{
    CLS_TreeItem clsItem;
    clsItem.m_qstrId = _qstrId;
    clsItem.m_qstrParentId = _qstrParentId;
    clsItem.m_iSortNo = _iSortNo;
    clsItem.m_qstrText = _qstrText;
    clsItem.m_qstrTooltip = _qstrText;
    return clsItem;
}

void PrintNode(QTextStream& _out, QTreeWidgetItem* _pNode, int _iDepth)
{
    const QString qstrState = _pNode->data(0, Qt::CheckStateRole).isValid()
                                  ? QStringLiteral(" [%1]").arg(_pNode->checkState(0))
                                  : QString();
    _out << QString(_iDepth * 2, ' ') << _pNode->text(0) << "  <" << _pNode->data(0, Qt::UserRole).toString()
         << ">" << qstrState << "\n";
    for (int i = 0; i < _pNode->childCount(); ++i)
        PrintNode(_out, _pNode->child(i), _iDepth + 1);
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTextStream out(stdout);

    // The map's keys need not be the ids; the build follows the parent ids and the sort numbers.
    QMap<QString, CLS_TreeItem> qmapItems;
    for (const CLS_TreeItem& clsItem : {
             MakeItem("resource_root_id", "", 0, "All resources"),
             MakeItem("grp-north", "resource_root_id", 2, "North building"),
             MakeItem("grp-south", "resource_root_id", 1, "South building"),
             MakeItem("host-1", "grp-north", 1, "Recorder N1"),
             MakeItem("ch-1-2", "host-1", 2, "Lobby camera"),
             MakeItem("ch-1-1", "host-1", 1, "Entrance camera"),
             MakeItem("host-2", "grp-south", 1, "Recorder S1"),
             MakeItem("ch-2-1", "host-2", 1, "Car park camera"),
             MakeItem("lost", "nowhere", 1, "Never shown: its parent is missing"),
         })
        qmapItems.insert(clsItem.m_qstrId, clsItem);

    CLS_WgtBaseTreeWidget tree(nullptr, true, false, false, true, ITEM_BTN_SHOW_HOVER);
    if (tree.Init("resource_root_id", qmapItems, true) != 0) {
        out << "Init failed\n";
        return 1;
    }
    tree.SetItemExpandStatus("ch-1-1", TREE_EXPAND);

    out << "Tree built from " << qmapItems.size() << " records:\n";
    for (int i = 0; i < tree.topLevelItemCount(); ++i)
        PrintNode(out, tree.topLevelItem(i), 1);

    QVector<CLS_TreeItem> qvecFound;
    tree.GetItemByName("camera", qvecFound);
    out << "Rows whose text holds \"camera\":";
    for (const CLS_TreeItem& clsItem : qAsConst(qvecFound))
        out << " " << clsItem.m_qstrId;
    out << "\n";

    CLS_TreeItem clsParent;
    if (tree.GetParent("ch-2-1", clsParent) == 0)
        out << "Parent of ch-2-1: " << clsParent.m_qstrText << "\n";
    out << "Row of \"lost\": " << (tree.GetNodeById("lost") ? "present" : "absent") << "\n";
    return 0;
}
