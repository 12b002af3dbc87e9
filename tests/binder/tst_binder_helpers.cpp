// The binder's helpers: the folder of the widget libraries beside the executable, and the
// readable-file check.

#include "Util.h"

#include <QtTest>

class tst_BinderHelpers : public QObject
{
    Q_OBJECT

private slots:
    void shouldPlaceModulePathBesideExecutable();
    void shouldTellWhetherFileIsReadable_data();
    void shouldTellWhetherFileIsReadable();
};

void tst_BinderHelpers::shouldPlaceModulePathBesideExecutable()
{
    const std::string strExeDir = QCoreApplication::applicationDirPath().toStdString();
    const QString qstrPath = QString::fromStdString(Util::GetModulePath());

    QVERIFY2(qstrPath.startsWith(QString::fromStdString(strExeDir)), qPrintable(qstrPath));
    QVERIFY2(qstrPath.endsWith("/../lib"), qPrintable(qstrPath));
    QCOMPARE(qstrPath, QString::fromStdString(strExeDir + "/../lib"));
}

void tst_BinderHelpers::shouldTellWhetherFileIsReadable_data()
{
    QTest::addColumn<QString>("_qstrPath");
    QTest::addColumn<bool>("_blExists");

    QTest::newRow("this executable") << QCoreApplication::applicationFilePath() << true;
    QTest::newRow("missing file") << QCoreApplication::applicationDirPath() + "/no_such_file.txt" << false;
    QTest::newRow("missing folder") << QStringLiteral("/no/such/folder/file.txt") << false;
    QTest::newRow("empty path") << QString() << false;
}

void tst_BinderHelpers::shouldTellWhetherFileIsReadable()
{
    QFETCH(QString, _qstrPath);
    QFETCH(bool, _blExists);

    QCOMPARE(Util::FileExists(_qstrPath.toStdString()), _blExists);
}

QTEST_GUILESS_MAIN(tst_BinderHelpers)
#include "tst_binder_helpers.moc"
