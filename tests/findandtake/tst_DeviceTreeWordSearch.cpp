// The device tree's search by words (mode 1) and the path shown with each hit: words in any order,
// in the name or the address, the root never listed, mode 0 as the panel's own search, the entry
// texts, the painted bold words and dim parents, and Return on an entry.

#include "CLS_DeviceTreeWordSearch.h"
#include "CLS_FindAndTakeTestUtil.h"
#include "CLS_SearchResultDelegate.h"

#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QtTest>

using namespace CLS_FindAndTakeTestUtil;

namespace {

const QString CONST_qstrDash = QString::fromUtf8(" \xE2\x80\x94 "); // an em dash between spaces

// The entry's text drawn by the list's delegate on a mid-grey image, so that text of any colour of
// the skin shows.
QImage PaintEntry(QListWidget* _pList, int _iRow)
{
    QListWidgetItem* pItem = _pList->item(_iRow);
    QStyleOptionViewItem option;
    option.initFrom(_pList->viewport());
    option.rect = QRect(0, 0, 400, 38);
    option.state &= ~QStyle::State_Selected;
    QImage image(400, 38, QImage::Format_ARGB32);
    image.fill(QColor(128, 128, 128));
    QPainter painter(&image);
    _pList->itemDelegate()->paint(&painter, option, _pList->model()->index(_pList->row(pItem), 0));
    return image;
}

// How far the pixels inside the column range stray from the grey ground at most: how strong the
// text is drawn there.
int StrongestIn(const QImage& _image, int _iFrom, int _iTo)
{
    int iStrongest = 0;
    for (int x = _iFrom; x < _iTo && x < _image.width(); ++x) {
        for (int y = 0; y < _image.height(); ++y)
            iStrongest = std::max(iStrongest, std::abs(qGray(_image.pixel(x, y)) - 128));
    }
    return iStrongest;
}

QString SegmentsText(const QVector<CLS_SearchResultDelegate::STRCT_Segment>& _qvecSegments)
{
    QStringList qlstRuns;
    for (const auto& segment : _qvecSegments)
        qlstRuns << QString("%1%2%3").arg(segment.m_blBold ? "*" : "", segment.m_qstrText,
                                          segment.m_blDim ? "~" : "");
    return qlstRuns.join("|");
}

} // namespace

class tst_DeviceTreeWordSearch : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", "))); }

    void searchIsByNameWithoutPathsByDefault()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        QCOMPARE(tree.GetSearchMode(), 0);
        QVERIFY(!tree.GetSearchShowsPath());
        // Two words are one piece of text to the search by name: no row holds "cam north".
        QCOMPARE(SearchIds(tree, "cam north"), QStringList({""}));
        QCOMPARE(SearchIds(tree, "north gate"), QStringList({"c3"}));
        QCOMPARE(Search(tree, "lift"), QStringList({"c2=Lift A", "c7=Lift A"}));
    }

    void wordsMatchInAnyOrder()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        QCOMPARE(tree.GetSearchMode(), 1);
        // The recorder has "gate" but no "north" of its own.
        QCOMPARE(Search(tree, "north gate"), QStringList({"c3=North gate cam", "c5=Gate north side"}));
        QCOMPARE(SearchIds(tree, "GATE   North"), QStringList({"c3", "c5"}));
        QCOMPARE(SearchIds(tree, " cam  deep "), QStringList({"c8"}));
    }

    void aWordMatchesTheAddressAlone()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        QCOMPARE(SearchIds(tree, "10.0.3.7"), QStringList({"c1", "c2"}));
        QCOMPARE(SearchIds(tree, "10.0.3.7:6"), QStringList({"c2"}));
        // One word in the name, one in the address.
        QCOMPARE(SearchIds(tree, "entrance 10.0.4"), QStringList({"c4"}));
        // Mode 0 does not look at the address.
        tree.SetSearchMode(0);
        QCOMPARE(SearchIds(tree, "10.0.3.7"), QStringList({""}));
    }

    void aWordThatMatchesNothingGivesNoResults()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        QCOMPARE(SearchIds(tree, "entrance"), QStringList({"c1", "c4"}));
        QCOMPARE(SearchIds(tree, "entrance zebra"), QStringList({""}));
        QCOMPARE(ResultList(tree)->height(), 41);
    }

    void rootIsNeverListed()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        QVERIFY(NodeOf(tree, "custom_root_id") != nullptr);
        QCOMPARE(NodeOf(tree, "custom_root_id")->text(0), QString("Campus"));
        QCOMPARE(SearchIds(tree, "campus"), QStringList({"c6"}));
        tree.SetSearchShowsPath(true);
        QCOMPARE(SearchIds(tree, "campus"), QStringList({"c6"}));
    }

    void modeZeroGivesTheSameResultsAsBefore()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        const QStringList qlstLines = {"a", "e", "gate", "Lift", "10.", "zz", "North gate", " "};
        QStringList qlstBefore;
        for (const QString& qstrLine : qlstLines)
            qlstBefore << Search(tree, qstrLine).join(";");
        // The panel's own search by name gives the records in the same order.
        QVector<CLS_TreeItem> qvecRows;
        QCOMPARE(PanelOf(tree)->GetItemByName("e", qvecRows), 0);
        QStringList qlstByName;
        for (const CLS_TreeItem& clsRow : qvecRows)
            qlstByName << clsRow.m_qstrId + "=" + clsRow.m_qstrText;
        QCOMPARE(qlstBefore.at(1), qlstByName.join(";"));

        tree.SetSearchMode(1);
        tree.SetSearchMode(0);
        QStringList qlstAfter;
        for (const QString& qstrLine : qlstLines)
            qlstAfter << Search(tree, qstrLine).join(";");
        QCOMPARE(qlstAfter, qlstBefore);
    }

    void anotherModeValueChangesNothing()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        tree.SetSearchMode(2);
        tree.SetSearchMode(-1);
        QCOMPARE(tree.GetSearchMode(), 1);
        QCOMPARE(SearchIds(tree, "north gate"), QStringList({"c3", "c5"}));
    }

    void pathOfAHitThreeLevelsDeep()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        tree.SetSearchShowsPath(true);
        QVERIFY(tree.GetSearchShowsPath());
        QCOMPARE(Search(tree, "north gate cam"), QStringList({"c3=North gate cam" + CONST_qstrDash +
                                                              "Level 3 / Gate recorder / North site"}));
        // Four levels deep: the nearest three parents only.
        QCOMPARE(Search(tree, "deep"),
                 QStringList({"c8=Deep cam" + CONST_qstrDash + "Room 12 / Level 3 / Gate recorder"}));
        // The entry's id stays the row id, its role as before.
        QCOMPARE(ResultList(tree)->item(0)->data(Qt::UserRole).toString(), QString("c8"));
    }

    void pathTellsApartRowsOfOneName()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchShowsPath(true); // mode 0, with paths
        QCOMPARE(Search(tree, "Lift A"),
                 QStringList({"c2=Lift A" + CONST_qstrDash + "Gate recorder / North site",
                              "c7=Lift A" + CONST_qstrDash + "South site"}));
    }

    void hitUnderTheRootHasJustItsName()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        tree.SetSearchShowsPath(true);
        QCOMPARE(Search(tree, "lobby"), QStringList({"c6=Campus lobby"}));
        QCOMPARE(Search(tree, "south"), QStringList({"south=South site"}));
    }

    void pathsOffGiveTheNameAlone()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        tree.SetSearchShowsPath(true);
        tree.SetSearchShowsPath(false);
        QCOMPARE(Search(tree, "deep"), QStringList({"c8=Deep cam"}));
        QVERIFY(qobject_cast<CLS_SearchResultDelegate*>(ResultList(tree)->itemDelegate()) == nullptr);
    }

    void matchedWordsAreBoldAndParentsDim()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        tree.SetSearchShowsPath(true);
        QCOMPARE(SearchIds(tree, "north GATE"), QStringList({"c3", "c5"}));
        QListWidget* pList = ResultList(tree);
        auto* pDelegate = qobject_cast<CLS_SearchResultDelegate*>(pList->itemDelegate());
        QVERIFY(pDelegate != nullptr);
        QCOMPARE(SegmentsText(pDelegate->Segments(pList->model()->index(1, 0))),
                 QString("*Gate| |*north| side|" + CONST_qstrDash + "South site~"));
        // Overlapping and repeated occurrences are merged into one bold run.
        QCOMPARE(SegmentsText(CLS_SearchResultDelegate::NameSegments("aaa bab", {"aa", "a"})),
                 QString("*aaa| b|*a|b"));
        QCOMPARE(SegmentsText(CLS_SearchResultDelegate::NameSegments("Lift", {})), QString("Lift"));
    }

    void boldAndDimShowWhenPainted()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        tree.SetSearchShowsPath(true);
        QCOMPARE(SearchIds(tree, "deep"), QStringList({"c8"}));
        QListWidget* pList = ResultList(tree);
        auto* pDelegate = qobject_cast<CLS_SearchResultDelegate*>(pList->itemDelegate());
        QVERIFY(pDelegate != nullptr);
        const QImage imageBold = PaintEntry(pList, 0);
        pDelegate->SetWords({});
        const QImage imagePlain = PaintEntry(pList, 0);
        // "Deep" in bold is drawn differently from plain "Deep".
        QVERIFY(imageBold != imagePlain);
        // The parents' part is dimmer than the name: its strongest pixel is weaker than the name's.
        const QFontMetrics metrics(pList->font());
        const int iNameEnd = metrics.horizontalAdvance("Deep cam") + 4;
        const int iName = StrongestIn(imagePlain, 0, iNameEnd);
        const int iParents =
            StrongestIn(imagePlain, iNameEnd + metrics.horizontalAdvance(CONST_qstrDash), 400);
        QVERIFY2(iParents > 0 && iName > iParents + 20,
                 qPrintable(QString("name %1, parents %2").arg(iName).arg(iParents)));
    }

    void returnOnAnEntryGoesToItsRow()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        tree.SetSearchShowsPath(true);
        QVERIFY(ShowOpen(tree));
        QSignalSpy spySelected(&tree, &CLS_WgtDeviceTree::SignSelected);
        QLineEdit* pLine = SearchLine(tree);
        pLine->setFocus();
        QTest::keyClicks(pLine, "lift 10.0.4");
        QListWidget* pList = ResultList(tree);
        QCOMPARE(pList->count(), 1);
        QVERIFY(pList->isVisible());
        QTest::keyClick(pLine, Qt::Key_Down);
        QTest::keyClick(pList, Qt::Key_Return);
        CLS_CustomTreeNode node;
        QCOMPARE(tree.GetCurrentItem(node), 0);
        QCOMPARE(node.m_qstrTreeId, QString("c7"));
        QCOMPARE(spySelected.count(), 1);
        QCOMPARE(spySelected.at(0).at(0).value<CLS_CustomTreeNode>().m_qstrTreeId, QString("c7"));
        QVERIFY(pLine->text().isEmpty());
        QVERIFY(pList->isHidden());
    }

    void lineOfBlanksFindsNothingInWordMode()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        QCOMPARE(SearchIds(tree, "   "), QStringList({""}));
    }

    void listHeightFollowsTheResults()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        tree.SetSearchShowsPath(true);
        QCOMPARE(SearchIds(tree, "cam"), QStringList({"c3", "c8", "c6"}));
        QCOMPARE(ResultList(tree)->height(), 3 * 38 + 3);
        QCOMPARE(SearchIds(tree, "e").size(), 9);
        QCOMPARE(ResultList(tree)->height(), 280);
    }

    void newRowsAreFoundAfterARebuild()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
        QVERIFY(BuildSites(tree));
        tree.SetSearchMode(1);
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes();
        qmapNodes["c6"].m_qstrExtend = "10.9.9.9:1";
        QCOMPARE(tree.Init(qmapNodes, "Campus"), 0);
        QCOMPARE(SearchIds(tree, "10.9.9"), QStringList({"c6"}));
        QCOMPARE(SearchIds(tree, "10.1.1.1"), QStringList({""}));
    }

    void staticHelpersSplitAndJoin()
    {
        QCOMPARE(CLS_DeviceTreeWordSearch::SplitWords("  north\tgate \n cam "),
                 QStringList({"north", "gate", "cam"}));
        QCOMPARE(CLS_DeviceTreeWordSearch::SplitWords("   "), QStringList());
        QCOMPARE(CLS_DeviceTreeWordSearch::PathText("A", {}), QString("A"));
        QCOMPARE(CLS_DeviceTreeWordSearch::PathText("A", {"B", "C", "D", "E"}),
                 "A" + CONST_qstrDash + "B / C / D");
    }
};

QTEST_MAIN(tst_DeviceTreeWordSearch)
#include "tst_DeviceTreeWordSearch.moc"
