// The executable lives in a folder whose name ends in ".", so the absolute skin path itself holds
// "./resource/skin/": the relative paths of a sheet are anchored once, and loading ends.

#include "CLS_SkinFiles.h"
#include "FunctionUtil.h"

#include <QtTest>

class tst_StyleLoaderDotDir : public QObject
{
    Q_OBJECT

private slots:
    void shouldAnchorRelativePathsOnce();
};

void tst_StyleLoaderDotDir::shouldAnchorRelativePathsOnce()
{
    qunsetenv("QT_SCALE_FACTOR");
    qputenv("WGT_TEST_SKIN", "styleloader_dotdir");
    const QString qstrBin = QCoreApplication::applicationDirPath();
    QVERIFY2(qstrBin.endsWith('.'), qPrintable(qstrBin));
    QDir(CLS_SkinFiles::SkinRoot("styleloader_dotdir")).removeRecursively();
    CLS_SkinFiles clsSkin("styleloader_dotdir");
    QVERIFY(clsSkin.Write("WgtDotDir/qss/Sheet.qss",
                          "a { image: url(./resource/skin/x.png); } ./resource/skin/y"));

    const QString qstrStyle = FunctionUtil::LoadStyleMini("WgtDotDir", nullptr, "Sheet");

    QCOMPARE(qstrStyle, QString("a { image: url(%1/resource/skin/x.png); } %1/resource/skin/y").arg(qstrBin));
}

QTEST_GUILESS_MAIN(tst_StyleLoaderDotDir)
#include "tst_styleloader_dotdir.moc"
