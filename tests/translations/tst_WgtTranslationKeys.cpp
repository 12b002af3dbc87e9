// Every translation key of the library: found in the sources, known to the library's translator,
// present in each translation file, and given a text in English, German and Simplified Chinese.

#include "CLS_WgtTranslator.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

using KeySet = QSet<QString>; // "context/key"

QString KeyName(const QString& _qstrContext, const QString& _qstrKey)
{
    return _qstrContext + "/" + _qstrKey;
}

QString SourceDir()
{
    return QString::fromLocal8Bit(qgetenv("WGT_SOURCE_DIR"));
}

// The keys that the library's sources pass through tr or translate. A bare tr("...") belongs to the
// class the file is named after.
KeySet KeysOfSources()
{
    KeySet qsetKeys;
    const QRegularExpression reObjectTr(R"re(QObject::tr\(\s*"([^"]+)\")re");
    const QRegularExpression reTranslate(R"re(translate\(\s*"([^"]+)"\s*,\s*"([^"]+)\")re");
    const QRegularExpression reBareTr(R"re((?<![\w:])tr\(\s*"([^"]+)\")re");
    for (const QString& qstrFolder : {"WidgetLib", "SDKLib", "include"}) {
        QDirIterator it(SourceDir() + "/" + qstrFolder, {"*.cpp", "*.h"}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile file(it.next());
            if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
                continue;
            const QString qstrCode = QString::fromUtf8(file.readAll());
            const QString qstrClass = QFileInfo(file.fileName()).completeBaseName();
            auto itMatch = reObjectTr.globalMatch(qstrCode);
            while (itMatch.hasNext())
                qsetKeys.insert(KeyName("QObject", itMatch.next().captured(1)));
            itMatch = reTranslate.globalMatch(qstrCode);
            while (itMatch.hasNext()) {
                const QRegularExpressionMatch match = itMatch.next();
                qsetKeys.insert(KeyName(match.captured(1), match.captured(2)));
            }
            itMatch = reBareTr.globalMatch(qstrCode);
            while (itMatch.hasNext())
                qsetKeys.insert(KeyName(qstrClass, itMatch.next().captured(1)));
        }
    }
    return qsetKeys;
}

KeySet KeysOfTranslator()
{
    KeySet qsetKeys;
    for (const auto& pairKey : CLS_WgtTranslator::Keys())
        qsetKeys.insert(KeyName(QString::fromUtf8(pairKey.first), QString::fromUtf8(pairKey.second)));
    return qsetKeys;
}

KeySet KeysOfTsFile(const QString& _qstrPath)
{
    KeySet qsetKeys;
    QFile file(_qstrPath);
    if (!file.open(QIODevice::ReadOnly))
        return qsetKeys;
    QXmlStreamReader reader(&file);
    QString qstrContext;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("name"))
            qstrContext = reader.readElementText();
        else if (reader.name() == QLatin1String("source"))
            qsetKeys.insert(KeyName(qstrContext, reader.readElementText()));
    }
    return qsetKeys;
}

QString Listed(const KeySet& _qsetKeys)
{
    QStringList qlstKeys = _qsetKeys.values();
    qlstKeys.sort();
    return qlstKeys.join(", ");
}

} // namespace

class tst_WgtTranslationKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void shouldKnowEveryKeyOfTheSources();
    void shouldListEveryKeyInEachTranslationFile_data();
    void shouldListEveryKeyInEachTranslationFile();
    void shouldGiveEveryKeyAText_data();
    void shouldGiveEveryKeyAText();
    void shouldKeepKeysWithTheirOwnSpelling();
};

void tst_WgtTranslationKeys::initTestCase()
{
    QVERIFY2(QFileInfo(SourceDir() + "/WidgetLib").isDir(), "WGT_SOURCE_DIR names no source tree");
}

void tst_WgtTranslationKeys::shouldKnowEveryKeyOfTheSources()
{
    const KeySet qsetSources = KeysOfSources();
    const KeySet qsetKnown = KeysOfTranslator();
    QVERIFY2(!qsetSources.isEmpty(), "no key found in the sources");
    QVERIFY2(
        (qsetSources - qsetKnown).isEmpty(),
        qPrintable("keys of the sources the translator doesn't know: " + Listed(qsetSources - qsetKnown)));
    QVERIFY2((qsetKnown - qsetSources).isEmpty(),
             qPrintable("keys the translator knows that no source uses: " + Listed(qsetKnown - qsetSources)));
}

void tst_WgtTranslationKeys::shouldListEveryKeyInEachTranslationFile_data()
{
    QTest::addColumn<QString>("qstrLanguage");
    QTest::newRow("English") << "en";
    QTest::newRow("German") << "de";
    QTest::newRow("Simplified Chinese") << "zh_CN";
}

void tst_WgtTranslationKeys::shouldListEveryKeyInEachTranslationFile()
{
    QFETCH(QString, qstrLanguage);
    const QString qstrPath = SourceDir() + "/translations/wgttreewidget_" + qstrLanguage + ".ts";
    const KeySet qsetFile = KeysOfTsFile(qstrPath);
    const KeySet qsetKnown = KeysOfTranslator();
    QVERIFY2((qsetKnown - qsetFile).isEmpty(),
             qPrintable("missing in " + qstrPath + ": " + Listed(qsetKnown - qsetFile)));
    QVERIFY2((qsetFile - qsetKnown).isEmpty(),
             qPrintable("unknown in " + qstrPath + ": " + Listed(qsetFile - qsetKnown)));
}

void tst_WgtTranslationKeys::shouldGiveEveryKeyAText_data()
{
    shouldListEveryKeyInEachTranslationFile_data();
}

// The compiled file embedded in the library, read by a plain translator: a key without a finished
// text in the .ts has none here.
void tst_WgtTranslationKeys::shouldGiveEveryKeyAText()
{
    QFETCH(QString, qstrLanguage);
    QTranslator translator;
    QVERIFY(translator.load(CLS_WgtTranslator::TranslationPrefix() + "_" + qstrLanguage,
                            CLS_WgtTranslator::TranslationDir()));
    QStringList qlstWithout;
    for (const auto& pairKey : CLS_WgtTranslator::Keys()) {
        const QString qstrText = translator.translate(pairKey.first.constData(), pairKey.second.constData());
        if (qstrText.trimmed().isEmpty())
            qlstWithout << KeyName(QString::fromUtf8(pairKey.first), QString::fromUtf8(pairKey.second));
    }
    QVERIFY2(qlstWithout.isEmpty(), qPrintable("keys without a text: " + qlstWithout.join(", ")));
}

void tst_WgtTranslationKeys::shouldKeepKeysWithTheirOwnSpelling()
{
    const KeySet qsetKnown = KeysOfTranslator();
    QVERIFY(qsetKnown.contains("QObject/lbl_car_calor_white"));
    QVERIFY(qsetKnown.contains("CLS_WgtTreeWidget/msg_no_results"));
    QVERIFY(qsetKnown.contains("CLS_WgtTreeWidget/Form"));

    QTranslator translator;
    QVERIFY(
        translator.load(CLS_WgtTranslator::TranslationPrefix() + "_en", CLS_WgtTranslator::TranslationDir()));
    QCOMPARE(translator.translate("CLS_WgtTreeWidget", "msg_no_results"), QString("No results"));
    QCOMPARE(translator.translate("QObject", "lbl_car_calor_white"), QString("White"));
}

QTEST_GUILESS_MAIN(tst_WgtTranslationKeys)
#include "tst_WgtTranslationKeys.moc"
