// Icons shared by path for one batch of rows (CLS_RowIconCache), and what that means for the trees
// that open such batches: one picture per path within a build or a list of additions, and a file
// that changes on disk seen by the next call that sets an icon.

#include "CLS_RowIconCache.h"
#include "CLS_TestBaseTree.h"
#include "CLS_WgtItemToolBar.h"

#include <QAction>
#include <QImage>
#include <QPixmap>
#include <QTemporaryDir>
#include <QtTest>

using namespace CLS_TreeTestUtil;

namespace {

// Writes an 8 x 8 picture of one colour; the file keeps its name and size whatever the colour.
bool WritePicture(const QString& _qstrPath, const QColor& _color)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(_color);
    return image.save(_qstrPath, "PNG");
}

// Colour name of the middle of an icon, "<none>" for an icon without a picture.
QString ColourOf(const QIcon& _icon)
{
    const QPixmap pixmap = _icon.pixmap(8, 8);
    if (pixmap.isNull())
        return "<none>";
    return pixmap.toImage().pixelColor(4, 4).name();
}

QIcon RowIcon(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pNode = _tree.m_qmapNodes.value(_qstrId);
    return pNode != nullptr ? pNode->icon(0) : QIcon();
}

// root: a, b and c, all with the same icon file; c with one tool button of that file as well.
QMap<QString, CLS_TreeItem> SameIconTree(const QString& _qstrIcon)
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    for (const QString& qstrId : {QString("a"), QString("b"), QString("c")}) {
        CLS_TreeItem clsItem = MakeItem(qstrId, "root");
        clsItem.m_qstrIcon = _qstrIcon;
        Add(qmapItems, clsItem);
    }
    CLS_ItemButton clsButton = MakeButton("play");
    clsButton.m_qstrIcon = _qstrIcon;
    qmapItems["c"].m_qvecButtons << clsButton;
    return qmapItems;
}

} // namespace

class tst_CLS_RowIconCache : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(m_tmpDir.isValid());
        m_qstrRed = m_tmpDir.filePath("red.png");
        QVERIFY(WritePicture(m_qstrRed, Qt::red));
    }

    void shouldMakeOneIconPerPathWithinABatch()
    {
        const CLS_RowIconCache batch;
        const QIcon first = CLS_RowIconCache::Icon(m_qstrRed);
        const QIcon second = CLS_RowIconCache::Icon(m_qstrRed);
        QCOMPARE(ColourOf(first), QColor(Qt::red).name());
        QCOMPARE(second.cacheKey(), first.cacheKey());
    }

    void shouldMakeAFreshIconOutsideABatch()
    {
        const QIcon first = CLS_RowIconCache::Icon(m_qstrRed);
        const QIcon second = CLS_RowIconCache::Icon(m_qstrRed);
        QCOMPARE(ColourOf(second), QColor(Qt::red).name());
        QVERIFY(second.cacheKey() != first.cacheKey());
    }

    void shouldReadAChangedFileAgainInTheNextBatch()
    {
        {
            const CLS_RowIconCache batch;
            QCOMPARE(ColourOf(CLS_RowIconCache::Icon(m_qstrRed)), QColor(Qt::red).name());
        }
        QVERIFY(WritePicture(m_qstrRed, Qt::blue)); // same name, same size
        const CLS_RowIconCache batch;
        QCOMPARE(ColourOf(CLS_RowIconCache::Icon(m_qstrRed)), QColor(Qt::blue).name());
    }

    void shouldShareTheOuterBatchInANestedOne()
    {
        const CLS_RowIconCache outer;
        const qint64 iOuterKey = CLS_RowIconCache::Icon(m_qstrRed).cacheKey();
        {
            const CLS_RowIconCache inner;
            QCOMPARE(CLS_RowIconCache::Icon(m_qstrRed).cacheKey(), iOuterKey);
        }
        // The inner batch's end leaves the outer one open.
        QCOMPARE(CLS_RowIconCache::Icon(m_qstrRed).cacheKey(), iOuterKey);
    }

    void shouldGiveANullIconForAnEmptyPathWithinABatch()
    {
        const CLS_RowIconCache batch;
        QVERIFY(CLS_RowIconCache::Icon(QString()).isNull());
        QVERIFY(!CLS_RowIconCache::Icon(m_qstrRed).isNull());
    }

    void shouldGiveTheRowsAndButtonsOfOneBuildOnePicture()
    {
        CLS_TestBaseTree tree;
        QCOMPARE(tree.Init("root", SameIconTree(m_qstrRed), true), 0);
        const QIcon iconA = RowIcon(tree, "a");
        QCOMPARE(ColourOf(iconA), QColor(Qt::red).name());
        QCOMPARE(RowIcon(tree, "b").cacheKey(), iconA.cacheKey());
        QCOMPARE(RowIcon(tree, "c").cacheKey(), iconA.cacheKey());

        auto* pStack = StackOf(tree, "c");
        QVERIFY(pStack != nullptr);
        auto* pBar = qobject_cast<CLS_WgtItemToolBar*>(pStack->widget(pStack->count() - 1));
        QVERIFY(pBar != nullptr);
        QCOMPARE(pBar->actions().size(), 1);
        QCOMPARE(pBar->actions().at(0)->icon().cacheKey(), iconA.cacheKey());
    }

    void shouldShowAChangedFileAtTheNextBuild()
    {
        CLS_TestBaseTree tree;
        QCOMPARE(tree.Init("root", SameIconTree(m_qstrRed), true), 0);
        QVERIFY(WritePicture(m_qstrRed, Qt::green));
        QCOMPARE(tree.Init("root", SameIconTree(m_qstrRed), true), 0);
        QCOMPARE(ColourOf(RowIcon(tree, "a")), QColor(Qt::green).name());
        QCOMPARE(ColourOf(RowIcon(tree, "c")), QColor(Qt::green).name());
    }

    void shouldShowAChangedFileAtTheNextIconUpdate()
    {
        CLS_TestBaseTree tree;
        QCOMPARE(tree.Init("root", SameIconTree(m_qstrRed), true), 0);
        QVERIFY(WritePicture(m_qstrRed, Qt::green));
        tree.UpdateItemIcon("b", m_qstrRed);
        QCOMPARE(ColourOf(RowIcon(tree, "b")), QColor(Qt::green).name());
        QCOMPARE(ColourOf(RowIcon(tree, "a")), QColor(Qt::red).name()); // set before the change
    }

    void shouldGiveTheRowsOfOneListOfAdditionsOnePicture()
    {
        CLS_TestBaseTree tree;
        QCOMPARE(tree.Init("root", SameIconTree(m_qstrRed), true), 0);
        QVERIFY(WritePicture(m_qstrRed, Qt::blue));
        QVector<CLS_TreeItem> qvecItems;
        for (const QString& qstrId : {QString("d"), QString("e")}) {
            CLS_TreeItem clsItem = MakeItem(qstrId, "root");
            clsItem.m_qstrIcon = m_qstrRed;
            qvecItems << clsItem;
        }
        tree.AddItems(qvecItems);
        const QIcon iconD = RowIcon(tree, "d");
        QCOMPARE(ColourOf(iconD), QColor(Qt::blue).name());
        QCOMPARE(RowIcon(tree, "e").cacheKey(), iconD.cacheKey());
        QCOMPARE(ColourOf(RowIcon(tree, "a")), QColor(Qt::red).name());
    }

private:
    QTemporaryDir m_tmpDir;
    QString m_qstrRed;
};

QTEST_MAIN(tst_CLS_RowIconCache)
#include "tst_CLS_RowIconCache.moc"
