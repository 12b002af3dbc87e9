// The background colour of CLS_WgtItemToolBar when the colour library is present: fetched once
// per bar at construction, with the arguments of the tree branch colour, and painted flat.

#include "CLS_TestBaseTree.h"
#include "CLS_WgtItemToolBar.h"

#include <QApplication>
#include <QSet>
#include <QtTest>

#include <dlfcn.h>

using namespace CLS_TreeTestUtil;

namespace {

// The recorder inside the colour library the gateway loaded; null if it is not loaded.
QString RecordedCalls()
{
    void* pHandle = dlopen("libLxColorManage.so", RTLD_NOW | RTLD_NOLOAD);
    if (pHandle == nullptr)
        return "<library not loaded>";
    auto pFun = reinterpret_cast<const char* (*)()>(dlsym(pHandle, "ColorRecorder_Calls"));
    const QString qstrCalls = pFun == nullptr ? QString("<no recorder>") : QString::fromUtf8(pFun());
    dlclose(pHandle);
    return qstrCalls;
}

QStringList Colours(QWidget& _widget)
{
    const QImage image = _widget.grab().toImage();
    QSet<QRgb> qsetColours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            qsetColours.insert(image.pixel(x, y));
    }
    QStringList qlstNames;
    for (QRgb rgb : qsetColours)
        qlstNames << QColor(rgb).name();
    qlstNames.sort();
    return qlstNames;
}

} // namespace

class tst_CLS_WgtItemToolBar_color : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void shouldFetchBranchColourOnceAtConstruction();
    void shouldFetchColourForEveryBarOfTree();
};

void tst_CLS_WgtItemToolBar_color::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test leaked a top-level widget");
}

void tst_CLS_WgtItemToolBar_color::shouldFetchBranchColourOnceAtConstruction()
{
    const QString qstrOneCall = "Common|<ArgRight_TreeBranch>|;";
    CLS_WgtItemToolBar bar;
    QCOMPARE(RecordedCalls(), qstrOneCall);

    bar.resize(50, 30);
    QCOMPARE(Colours(bar), QStringList({"#12ab34"}));
    bar.Init({MakeButton("b")}, "row");
    QCOMPARE(RecordedCalls(), qstrOneCall); // painting and Init ask for nothing
}

void tst_CLS_WgtItemToolBar_color::shouldFetchColourForEveryBarOfTree()
{
    const QString qstrBefore = RecordedCalls();
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    for (const QString& qstrId : {"x", "y"}) {
        CLS_TreeItem clsItem = MakeItem(qstrId, "root", 1);
        clsItem.m_qvecButtons << MakeButton("b" + qstrId);
        Add(qmapItems, clsItem);
    }
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    QCOMPARE(RecordedCalls(), qstrBefore + "Common|<ArgRight_TreeBranch>|;Common|<ArgRight_TreeBranch>|;");
}

QTEST_MAIN(tst_CLS_WgtItemToolBar_color)
#include "tst_CLS_WgtItemToolBar_color.moc"
