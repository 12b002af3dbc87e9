// The reference settings library "libLxParam.so" behind the Param gateway, in a process without a
// QCoreApplication: settings go to the INI file and come back, by the library and by any other
// reader of the file, defaults stand in for what is missing, and several threads share it.

#include "Param.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>

namespace {

using PFun_Init = int (*)(const std::string&);
using PFun_IsInit = bool (*)();
using PFun_SetParam = int (*)(const std::string&, const std::string&, const std::string&);
using PFun_DeleteParam = int (*)(const std::string&, const std::string&);
using PFun_UnInit = void (*)();
using PFun_FilePath = std::string (*)();

template <typename T>
T ParamFun(const char* _pName)
{
    return reinterpret_cast<T>(Param::GetModuleFun(_pName, ""));
}

int SetParam(const std::string& _strSection, const std::string& _strKey, const std::string& _strValue)
{
    auto pFun = ParamFun<PFun_SetParam>("SetParam");
    return nullptr == pFun ? -100 : pFun(_strSection, _strKey, _strValue);
}

int DeleteParam(const std::string& _strSection, const std::string& _strKey)
{
    auto pFun = ParamFun<PFun_DeleteParam>("DeleteParam");
    return nullptr == pFun ? -100 : pFun(_strSection, _strKey);
}

QString LibraryFilePath()
{
    void* pHandle = dlopen("libLxParam.so", RTLD_NOW | RTLD_NOLOAD);
    if (nullptr == pHandle) {
        return "<libLxParam.so not loaded>";
    }
    auto pFun = reinterpret_cast<PFun_FilePath>(dlsym(pHandle, "LxParamCtl_FilePath"));
    const QString qstrPath = nullptr == pFun ? QString("<no path>") : QString::fromStdString(pFun());
    dlclose(pHandle);
    return qstrPath;
}

} // namespace

class tst_RefLxParam : public QObject
{
    Q_OBJECT

private slots:
    // First: it sees the library before anything chose a file.
    void shouldChooseFileAtFirstCall();
    void init();
    void shouldWorkWithoutCoreApplication();
    void shouldWriteSettingToIniFile();
    void shouldReadSettingWrittenByAnotherWriter();
    void shouldGiveDefaultForMissingSetting_data();
    void shouldGiveDefaultForMissingSetting();
    void shouldRoundTripAwkwardTexts_data();
    void shouldRoundTripAwkwardTexts();
    void shouldRefuseEmptyKey();
    void shouldDeleteKeyAndSection();
    void shouldChooseFileAgainAfterUnInit();
    void shouldServeManyThreads();

private:
    QTemporaryDir m_tmpDir;
    QString m_qstrFile;
};

void tst_RefLxParam::shouldChooseFileAtFirstCall()
{
    auto pFunIsInit = ParamFun<PFun_IsInit>("IsInit");
    QVERIFY(nullptr != pFunIsInit);
    QVERIFY(!pFunIsInit());

    // The file of the first call: LXPARAM_FILE, else "LxParam.ini" beside the executable.
    const QByteArray qbaFile = qgetenv("LXPARAM_FILE");
    const QString qstrExpected =
        qbaFile.isEmpty() ? QFileInfo(QFileInfo("/proc/self/exe").canonicalFilePath()).path() + "/LxParam.ini"
                          : QString::fromUtf8(qbaFile);
    const bool blExisted = QFileInfo::exists(qstrExpected);
    QSettings settings(qstrExpected, QSettings::IniFormat);
    const std::string strStored = settings.value("SystemConfig/skin", "dark").toString().toStdString();

    // A first read gives what that file holds (the default when nothing) and settles the file.
    QCOMPARE(Param::GetParam("SystemConfig", "skin", "dark"), strStored);
    QVERIFY(pFunIsInit());
    QCOMPARE(LibraryFilePath(), qstrExpected);
    QCOMPARE(QFileInfo::exists(qstrExpected), blExisted); // a read makes no file
}

void tst_RefLxParam::init()
{
    if (QLatin1String("shouldChooseFileAtFirstCall") == QLatin1String(QTest::currentTestFunction())) {
        return;
    }
    QVERIFY(m_tmpDir.isValid());
    m_qstrFile = m_tmpDir.filePath(QString("%1.ini").arg(QTest::currentTestFunction()));
    auto pFunInit = ParamFun<PFun_Init>("Init");
    QVERIFY(nullptr != pFunInit);
    QCOMPARE(pFunInit(m_qstrFile.toStdString()), 0);
    QCOMPARE(LibraryFilePath(), m_qstrFile);
}

void tst_RefLxParam::shouldWorkWithoutCoreApplication()
{
    QVERIFY(nullptr == QCoreApplication::instance());
    QCOMPARE(SetParam("SystemConfig", "skin", "light"), 0);
    QCOMPARE(Param::GetParam("SystemConfig", "skin", "dark"), std::string("light"));
}

void tst_RefLxParam::shouldWriteSettingToIniFile()
{
    QCOMPARE(SetParam("SystemConfig", "skin", "light"), 0);
    QCOMPARE(SetParam("Net", "port", "8080"), 0);

    // A new reader of the file finds both, in their sections.
    QSettings settings(m_qstrFile, QSettings::IniFormat);
    QCOMPARE(settings.value("SystemConfig/skin").toString(), QString("light"));
    QCOMPARE(settings.value("Net/port").toString(), QString("8080"));
    QFile file(m_qstrFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString qstrText = QString::fromUtf8(file.readAll());
    QVERIFY2(qstrText.contains("[SystemConfig]") && qstrText.contains("skin=light") &&
                 qstrText.contains("[Net]"),
             qPrintable(qstrText));
}

void tst_RefLxParam::shouldReadSettingWrittenByAnotherWriter()
{
    QCOMPARE(Param::GetParam("SystemConfig", "skin", "dark"), std::string("dark"));
    {
        QSettings settings(m_qstrFile, QSettings::IniFormat);
        settings.setValue("SystemConfig/skin", "light");
        settings.sync();
        QCOMPARE(settings.status(), QSettings::NoError);
    }
    QCOMPARE(Param::GetParam("SystemConfig", "skin", "dark"), std::string("light"));

    // A hand-written file: unquoted lists read back as the text that was written.
    QFile file(m_qstrFile);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("[SystemConfig]\nskin=blue\nlanguages=en,de\n");
    file.close();
    QCOMPARE(Param::GetParam("SystemConfig", "skin", "dark"), std::string("blue"));
    QCOMPARE(Param::GetParam("SystemConfig", "languages", ""), std::string("en,de"));
}

void tst_RefLxParam::shouldGiveDefaultForMissingSetting_data()
{
    QTest::addColumn<QString>("qstrSection");
    QTest::addColumn<QString>("qstrKey");

    QTest::newRow("missing section") << "Nowhere"
                                     << "skin";
    QTest::newRow("missing key") << "SystemConfig"
                                 << "language";
    QTest::newRow("empty key") << "SystemConfig"
                               << "";
    QTest::newRow("key of another section") << "Net"
                                            << "skin";
}

void tst_RefLxParam::shouldGiveDefaultForMissingSetting()
{
    QFETCH(QString, qstrSection);
    QFETCH(QString, qstrKey);
    QCOMPARE(SetParam("SystemConfig", "skin", "light"), 0);

    QCOMPARE(Param::GetParam(qstrSection.toStdString(), qstrKey.toStdString(), "fallback"),
             std::string("fallback"));
}

void tst_RefLxParam::shouldRoundTripAwkwardTexts_data()
{
    QTest::addColumn<QString>("qstrValue");

    QTest::newRow("empty") << "";
    QTest::newRow("comma") << "a,b, c";
    QTest::newRow("equals and semicolon") << "k=v; x";
    QTest::newRow("spaces around") << "  padded  ";
    QTest::newRow("utf8") << QString::fromUtf8("\xc3\x9c"
                                               "berwachung \xe7\x9b\x91\xe6\x8e\xa7");
    QTest::newRow("quotes and backslash") << "say \"hi\" \\ there";
}

void tst_RefLxParam::shouldRoundTripAwkwardTexts()
{
    QFETCH(QString, qstrValue);
    const std::string strValue = qstrValue.toStdString();
    QCOMPARE(SetParam("Text", "value", strValue), 0);

    QCOMPARE(Param::GetParam("Text", "value", "<default>"), strValue);
    QSettings settings(m_qstrFile, QSettings::IniFormat);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    settings.setIniCodec("UTF-8"); // Qt 6 reads INI files as UTF-8 always
#endif
    QCOMPARE(settings.value("Text/value").toString(), qstrValue);
}

void tst_RefLxParam::shouldRefuseEmptyKey()
{
    QCOMPARE(SetParam("SystemConfig", "", "x"), -1);
    QVERIFY(!QFileInfo::exists(m_qstrFile));
}

void tst_RefLxParam::shouldDeleteKeyAndSection()
{
    QCOMPARE(SetParam("A", "one", "1"), 0);
    QCOMPARE(SetParam("A", "two", "2"), 0);
    QCOMPARE(SetParam("B", "one", "b1"), 0);

    QCOMPARE(DeleteParam("A", "one"), 0);
    QCOMPARE(Param::GetParam("A", "one", "gone"), std::string("gone"));
    QCOMPARE(Param::GetParam("A", "two", "gone"), std::string("2"));
    QCOMPARE(DeleteParam("A", "one"), -1); // nothing left to remove

    QCOMPARE(DeleteParam("A", ""), 0); // the whole section
    QCOMPARE(Param::GetParam("A", "two", "gone"), std::string("gone"));
    QCOMPARE(DeleteParam("A", ""), -1);
    QCOMPARE(Param::GetParam("B", "one", "gone"), std::string("b1"));

    QSettings settings(m_qstrFile, QSettings::IniFormat);
    QCOMPARE(settings.childGroups(), QStringList({"B"}));
}

void tst_RefLxParam::shouldChooseFileAgainAfterUnInit()
{
    QCOMPARE(SetParam("S", "k", "v"), 0);
    auto pFunUnInit = ParamFun<PFun_UnInit>("UnInit");
    auto pFunIsInit = ParamFun<PFun_IsInit>("IsInit");
    QVERIFY(nullptr != pFunUnInit && nullptr != pFunIsInit);
    pFunUnInit();
    QVERIFY(!pFunIsInit());

    // The next call chooses the file of the environment again, which lacks the setting.
    const QString qstrEnvFile = QString::fromUtf8(qgetenv("LXPARAM_FILE"));
    if (!qstrEnvFile.isEmpty()) {
        QCOMPARE(LibraryFilePath(), qstrEnvFile);
    }
    QCOMPARE(Param::GetParam("S", "k", "other file"), std::string("other file"));
    QVERIFY(pFunIsInit());
}

void tst_RefLxParam::shouldServeManyThreads()
{
    const int iThreads = 6;
    const int iRounds = 40;
    // Given threads that each write and read back their own keys while the others do the same
    std::vector<std::thread> vecThreads;
    std::vector<int> vecMismatches(iThreads, 0);
    for (int i = 0; i < iThreads; ++i) {
        vecThreads.emplace_back([i, &vecMismatches]() {
            const std::string strSection = "Thread" + std::to_string(i);
            for (int iRound = 0; iRound < iRounds; ++iRound) {
                const std::string strValue = std::to_string(i * 1000 + iRound);
                if (0 != SetParam(strSection, "value", strValue) ||
                    Param::GetParam(strSection, "value", "") != strValue ||
                    Param::GetParam("SystemConfig", "skin", "dark") != "dark") {
                    ++vecMismatches[i];
                }
            }
        });
    }
    for (std::thread& thread : vecThreads) {
        thread.join();
    }

    QCOMPARE(vecMismatches, std::vector<int>(iThreads, 0));
    // then the file holds the last value of every thread.
    QSettings settings(m_qstrFile, QSettings::IniFormat);
    for (int i = 0; i < iThreads; ++i) {
        QCOMPARE(settings.value(QString("Thread%1/value").arg(i)).toInt(), i * 1000 + iRounds - 1);
    }
}

QTEST_APPLESS_MAIN(tst_RefLxParam)
#include "tst_RefLxParam.moc"
