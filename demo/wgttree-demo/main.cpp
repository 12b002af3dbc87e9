// wgttree-demo: the library's trees on a simulated installation. Loads an installation into the
// reference device layer (the sample, a JSON file, or a synthetic one), shows the resource tree, a
// custom tree and the favourites while a simulator turns channels on and off line, and logs what
// the trees report. With --screenshot, or without a display, it runs for a few seconds, saves a
// picture of the window and prints a summary of "key: value" lines.

#include "CLS_DemoSiblings.h"
#include "CLS_DemoWindow.h"
#include "CLS_WgtTranslator.h"
#include "Param.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QTextStream>
#include <QTimer>
#include <QTranslator>

#include <cstdio>
#include <string>

#ifndef WGT_DEMO_SAMPLE
#define WGT_DEMO_SAMPLE ""
#endif

namespace {

const int CONST_EXIT_SCREENSHOT = 1;   // the picture could not be written
const int CONST_EXIT_INSTALLATION = 2; // no installation, or no tree could be built from it
const int CONST_EXIT_DEVICE_LAYER = 3; // the device layer or its control functions are missing
const int CONST_EXIT_USAGE = 4;        // a bad option value
// Longest wait past --seconds for the first status batch, on a slow or busy machine.
const int CONST_FIRST_BATCH_GRACE_MSECS = 30000;

// No display to show a window on: the offscreen platform, and a picture instead of a session.
bool IsHeadless()
{
    const QByteArray qbaPlatform = qgetenv("QT_QPA_PLATFORM");
    if (qbaPlatform.isEmpty())
        return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    return qbaPlatform.startsWith("offscreen") || qbaPlatform.startsWith("minimal");
}

void PrintLine(const QString& _qstrLine)
{
    std::fputs(_qstrLine.toLocal8Bit().constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

void PrintError(const QString& _qstrLine)
{
    std::fputs(("wgttree-demo: " + _qstrLine).toLocal8Bit().constData(), stderr);
    std::fputc('\n', stderr);
    std::fflush(stderr);
}

// The sample installation: installed beside the program, else in the source tree it was built from
// (its path relative to the program in the build folder).
QString FindSample()
{
    const QString qstrInstalled = QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                                  "/../share/wgttree/installations/sample.json");
    if (QFileInfo::exists(qstrInstalled))
        return qstrInstalled;
    const QString qstrRelative = QString::fromUtf8(WGT_DEMO_SAMPLE);
    if (qstrRelative.isEmpty())
        return QString();
    const QString qstrSource = QDir::cleanPath(QCoreApplication::applicationDirPath() + "/" + qstrRelative);
    if (QFileInfo::exists(qstrSource))
        return qstrSource;
    return QString();
}

// The skin is the setting "skin" of "SystemConfig"; the trees read it when they are made. The
// settings library stores it in its file (LXPARAM_FILE, else LxParam.ini beside the program).
void ChooseSkin(const QString& _qstrSkin)
{
    typedef int (*PFun_SetParam)(const std::string&, const std::string&, const std::string&);
    auto pFunSetParam = reinterpret_cast<PFun_SetParam>(Param::GetModuleFun("SetParam"));
    if (nullptr != pFunSetParam)
        pFunSetParam("SystemConfig", "skin", _qstrSkin.toStdString());
    else
        PrintError(QString("no settings library to choose the skin \"%1\" with").arg(_qstrSkin));
}

// The demo's own texts, embedded in the program: a translator in _locale's language, or in English
// when the demo has none for it. Gives the language loaded, as in the file name ("de", "zh_CN"), or
// "none" when the program holds no translation at all (its texts are then the English sources).
QString InstallDemoTranslator(const QLocale& _locale)
{
    const QString qstrDir = QStringLiteral(":/wgttree-demo/i18n");
    const QString qstrPrefix = QStringLiteral("wgttree-demo");
    auto* pTranslator = new QTranslator(QCoreApplication::instance()); // owned by the application object
    if (!pTranslator->load(_locale, qstrPrefix, "_", qstrDir) &&
        !pTranslator->load(qstrPrefix + "_en", qstrDir))
        return QStringLiteral("none");
    QCoreApplication::installTranslator(pTranslator);
    return QFileInfo(pTranslator->filePath()).completeBaseName().mid(qstrPrefix.size() + 1);
}

} // namespace

int main(int argc, char* argv[])
{
    const bool blHeadless = IsHeadless();
    if (blHeadless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    // The siblings go in before anything binds: the binder's open by file name then finds them.
    CLS_DemoSiblings clsSiblings;
    clsSiblings.Preload();

    QApplication app(argc, argv);
    QCoreApplication::setApplicationName("wgttree-demo");

    QCommandLineParser parser;
    parser.setApplicationDescription("The WgtTreeWidget trees on a simulated installation.");
    parser.addHelpOption();
    const QCommandLineOption optInstallation("installation", "Load the installation from FILE (JSON).",
                                             "FILE");
    const QCommandLineOption optChannels("channels", "Make a synthetic installation of N channels.", "N");
    const QCommandLineOption optPerHost("channels-per-host", "Channels per host of --channels (16).", "N",
                                        "16");
    const QCommandLineOption optScreenshot("screenshot", "Run a few seconds, save the window to FILE, exit.",
                                           "FILE");
    const QCommandLineOption optSeconds("seconds", "Length of a screenshot run in seconds (3).", "S", "3");
    const QCommandLineOption optSkin("skin", "Store the skin setting: dark or light.", "NAME");
    const QCommandLineOption optRate("changes-per-second", "Simulated status changes per second (50).", "N",
                                     "50");
    const QCommandLineOption optSeed("seed", "Seed of the simulator (1).", "N", "1");
    const QCommandLineOption optRefresh(
        "refresh-ms", "Ask for a full status report every N ms (1000; 0: never).", "N", "1000");
    const QCommandLineOption optSearch(
        "search", "Type TEXT into the resource tree's search line before the picture.", "TEXT");
    const QCommandLineOption optLanguage(
        "language",
        "Language of the window's and the trees' texts, e.g. de or zh_CN (default: the locale's).", "NAME");
    const QCommandLineOption optFilter(
        "status-filter", "Show only channels on line or off line: all, online, offline.", "NAME");
    parser.addOptions({optInstallation, optChannels, optPerHost, optScreenshot, optSeconds, optSkin, optRate,
                       optSeed, optRefresh, optSearch, optLanguage, optFilter});
    parser.process(app);

    bool blOk = true;
    auto ReadInt = [&parser, &blOk](const QCommandLineOption& _opt, int _iMin) {
        bool blNumber = false;
        const int iValue = parser.value(_opt).toInt(&blNumber);
        if (!blNumber || iValue < _iMin) {
            PrintError(
                QString("bad value of --%1: \"%2\"").arg(_opt.names().constFirst(), parser.value(_opt)));
            blOk = false;
        }
        return iValue;
    };
    const int iSeconds = ReadInt(optSeconds, 0);
    const int iRate = ReadInt(optRate, 0);
    const int iRefresh = ReadInt(optRefresh, 0);
    const int iPerHost = ReadInt(optPerHost, 1);
    const unsigned int uiSeed = static_cast<unsigned int>(ReadInt(optSeed, 0));
    const int iChannels = parser.isSet(optChannels) ? ReadInt(optChannels, 1) : 0;
    if (!blOk)
        return CONST_EXIT_USAGE;

    if (parser.isSet(optSkin)) {
        const QString qstrChosen = parser.value(optSkin);
        if ("dark" != qstrChosen && "light" != qstrChosen) {
            PrintError(QString("unknown skin \"%1\": dark or light").arg(qstrChosen));
            return CONST_EXIT_USAGE;
        }
        ChooseSkin(qstrChosen);
    }
    // What the trees will read: a stored choice outlives the run that made it.
    const QString qstrSkin = QString::fromStdString(Param::GetParam("SystemConfig", "skin", "dark"));

    const bool blScreenshot = parser.isSet(optScreenshot) || blHeadless;
    const QString qstrScreenshot = parser.isSet(optScreenshot) ? parser.value(optScreenshot)
                                                               : QDir::current().filePath("wgttree-demo.png");

    PrintLine("module path: " + clsSiblings.m_qstrModulePath);
    PrintLine("siblings loaded: " + clsSiblings.m_qlstLoaded.join(" "));
    if (!clsSiblings.m_qlstMissing.isEmpty())
        PrintLine("siblings missing: " + clsSiblings.m_qlstMissing.join(" "));

    QString qstrMissing;
    if (clsSiblings.BindDeviceControl(qstrMissing) != 0) {
        PrintError("the device layer lacks: " + qstrMissing);
        return CONST_EXIT_DEVICE_LAYER;
    }

    // The installation: synthetic, a given file, or the sample.
    int iItems = -1;
    if (iChannels > 0) {
        iItems = clsSiblings.m_pFunGenerateInstallation(iChannels, iPerHost);
        PrintLine(QString("installation: synthetic, %1 channels, %2 per host").arg(iChannels).arg(iPerHost));
        if (iItems < 0) {
            PrintError(QString("cannot make a synthetic installation of %1 channels: %2")
                           .arg(iChannels)
                           .arg(clsSiblings.LastLoadError()));
            return CONST_EXIT_INSTALLATION;
        }
    } else {
        const QString qstrFile = parser.isSet(optInstallation) ? parser.value(optInstallation) : FindSample();
        if (qstrFile.isEmpty()) {
            PrintError("no installation: the sample was not found, give --installation FILE or --channels N");
            return CONST_EXIT_INSTALLATION;
        }
        PrintLine("installation: " + qstrFile);
        iItems = clsSiblings.m_pFunLoadInstallationFile(QFile::encodeName(qstrFile).constData());
        if (iItems < 0) {
            const QString qstrWhy = clsSiblings.LastLoadError();
            // The device layer's line names the file itself.
            PrintError(qstrWhy.isEmpty() ? QString("cannot load the installation \"%1\"").arg(qstrFile)
                                         : "cannot load the installation: " + qstrWhy);
            return CONST_EXIT_INSTALLATION;
        }
    }
    PrintLine(QString("items: %1").arg(iItems));
    PrintLine("skin: " + qstrSkin);

    // The page's own choice of language for the library's texts, made before the first tree; the
    // demo's own texts follow the same choice, or the locale as the library's do without one.
    if (parser.isSet(optLanguage)) {
        const QString qstrLanguage = parser.value(optLanguage);
        if (CLS_WgtTranslator::SetLanguage(QLocale(qstrLanguage)) != 0)
            PrintLine(QString("language: no translation for \"%1\", English").arg(qstrLanguage));
        else
            PrintLine("language: " + CLS_WgtTranslator::Instance()->Language());
    }
    PrintLine("demo language: " + InstallDemoTranslator(parser.isSet(optLanguage)
                                                            ? QLocale(parser.value(optLanguage))
                                                            : QLocale()));

    CLS_DemoWindow wgtWindow(&clsSiblings);
    if (wgtWindow.InitTrees() != 0) {
        PrintError("the installation gives no resource tree");
        return CONST_EXIT_INSTALLATION;
    }
    if (parser.isSet(optFilter) && wgtWindow.SetStatusFilter(parser.value(optFilter)) != 0) {
        PrintError(
            QString("unknown status filter \"%1\": all, online or offline").arg(parser.value(optFilter)));
        return CONST_EXIT_USAGE;
    }
    if (parser.isSet(optFilter))
        PrintLine("status filter: " + parser.value(optFilter));
    if (clsSiblings.m_pFunStartSimulation(iRate, uiSeed) < 0)
        PrintError("the simulator did not start; states stay as loaded");
    else
        PrintLine(QString("simulation: %1 changes/s, seed %2").arg(iRate).arg(uiSeed));

    wgtWindow.show();
    wgtWindow.WatchScreenScale();
    wgtWindow.SetStatusRefresh(iRefresh);

    if (!blScreenshot) {
        // A person's run comes back as it was left; a screenshot run starts as built.
        wgtWindow.RestoreViewState();
        if (parser.isSet(optSearch))
            QTimer::singleShot(0, &wgtWindow, [&]() {
                QStringList qlstEntries;
                wgtWindow.TypeSearch(parser.value(optSearch), qlstEntries);
            });
        const int iRet = app.exec();
        wgtWindow.SaveViewState();
        clsSiblings.m_pFunStopSimulation();
        return iRet;
    }

    // Screenshot run: the simulation for --seconds, then, once at least one batch of states has
    // reached the rows (a busy machine may take longer for the first), the picture and the summary.
    int iExit = 0;
    auto Finish = [&]() {
        clsSiblings.m_pFunStopSimulation();
        wgtWindow.SetStatusRefresh(0);
        wgtWindow.PrepareForPicture();
        if (parser.isSet(optSearch)) {
            QStringList qlstEntries;
            const int iResults = wgtWindow.TypeSearch(parser.value(optSearch), qlstEntries);
            PrintLine("search: " + parser.value(optSearch));
            PrintLine(QString("search results: %1").arg(iResults));
            PrintLine("search list: " + qlstEntries.join(", "));
        }
        // Time for the layout, the hover row and the custom tree's check batch (200 ms), then the picture.
        QTimer::singleShot(600, &wgtWindow, [&]() {
            const QPixmap qpixShot = wgtWindow.grab();
            const STRCT_DemoTreeCounts clsResource = wgtWindow.CountResourceTree();
            PrintLine(QString("rows: %1").arg(clsResource.m_iRows));
            PrintLine(QString("hosts: %1").arg(clsResource.m_iHosts));
            PrintLine(QString("channels: %1").arg(clsResource.m_iChannels));
            PrintLine(QString("channels online: %1").arg(clsResource.m_iChannelsOnline));
            PrintLine(QString("custom rows: %1").arg(wgtWindow.CountCustomTree().m_iRows));
            PrintLine(QString("favourite rows: %1").arg(wgtWindow.CountFavoriteTree().m_iRows));
            PrintLine(QString("status batches applied: %1").arg(wgtWindow.StatusBatches()));
            PrintLine(QString("status entries applied: %1").arg(wgtWindow.StatusEntries()));
            PrintLine(QString("simulated changes: %1").arg(clsSiblings.m_pFunSimulationChanges()));
            PrintLine(QString("window: %1x%2").arg(wgtWindow.width()).arg(wgtWindow.height()));
            // The window's own texts as shown, in the language of the run.
            const QMap<QString, QString> qmapCaptions = wgtWindow.Captions();
            for (auto it = qmapCaptions.cbegin(); it != qmapCaptions.cend(); ++it)
                PrintLine("caption " + it.key() + ": " + it.value());
            if (qpixShot.isNull() || !qpixShot.save(qstrScreenshot, "PNG")) {
                PrintError("cannot write the screenshot " + qstrScreenshot);
                iExit = CONST_EXIT_SCREENSHOT;
            } else {
                const QFileInfo info(qstrScreenshot);
                PrintLine(QString("screenshot: %1 (%2 bytes)").arg(info.absoluteFilePath()).arg(info.size()));
            }
            QCoreApplication::exit(iExit);
        });
    };
    bool blFinishing = false;
    auto FinishOnce = [&]() {
        if (!blFinishing) {
            blFinishing = true;
            Finish();
        }
    };
    QTimer::singleShot(iSeconds * 1000, &wgtWindow, [&]() {
        if (wgtWindow.StatusBatches() > 0) {
            FinishOnce();
            return;
        }
        QObject::connect(&wgtWindow, &CLS_DemoWindow::SignStatusBatchApplied, &wgtWindow, FinishOnce);
        QTimer::singleShot(CONST_FIRST_BATCH_GRACE_MSECS, &wgtWindow, FinishOnce);
    });
    const int iRet = app.exec();
    clsSiblings.m_pFunStopSimulation();
    return 0 != iRet ? iRet : iExit;
}
