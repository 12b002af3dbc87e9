// The skins at a screen scale factor of 2. Qt multiplies every length of a style sheet by
// QT_SCALE_FACTOR itself, so a device tree styled by the "_4K" sheet at a factor of 2 must come out
// with the logical sizes the plain sheet gives at a factor of 1. Qt and the style loader read the
// factor once per process: the program runs itself as a child ("--measure") for every skin and
// factor, and compares what the children report. The children find the skin as the demo does,
// below the program's folder.

#include "SkinTestFiles.h"

#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtTreeWidget.h"
#include "FunctionUtil.h"
#include "TreeStructDefine.h"

#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QMap>
#include <QProcess>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolButton>
#include <QTreeWidgetItem>
#include <QtTest>

#include <cstdio>

namespace {

const char* const CONST_pMeasureArg = "--measure";
const char* const CONST_pReportMark = "measure:";

CLS_CustomTreeNode MakeNode(const QString& _qstrTreeId, const QString& _qstrParentId, int _iType,
                            int _iSortNo, int _iStatus)
{
    CLS_CustomTreeNode node;
    node.m_qstrTreeId = _qstrTreeId;
    node.m_qstrTreeParentId = _qstrParentId;
    node.m_qstrDevId = _qstrTreeId;
    node.m_qstrName = "Entrance " + _qstrTreeId;
    node.m_iType = _iType;
    node.m_iSortNo = _iSortNo;
    node.m_iStatus = _iStatus;
    return node;
}

// Where the style leaves room for the text of a line edit, as insets from its edges. The option is
// made by hand (QLineEdit::initStyleOption is protected); a sheet's box decides the rectangle.
QMargins TextInsets(QLineEdit& _line)
{
    QStyleOptionFrame option;
    option.initFrom(&_line);
    option.rect = _line.rect();
    option.lineWidth =
        _line.hasFrame() ? _line.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &_line) : 0;
    option.midLineWidth = 0;
    option.state |= QStyle::State_Sunken;
    const QRect qrectText = _line.style()->subElementRect(QStyle::SE_LineEditContents, &option, &_line);
    const QRect qrectLine = _line.rect();
    return QMargins(qrectText.left() - qrectLine.left(), qrectText.top() - qrectLine.top(),
                    qrectLine.right() - qrectText.right(), qrectLine.bottom() - qrectText.bottom());
}

// The child: a device tree with a search line, a group of channels with tool buttons, in the skin
// the settings library names, shown offscreen. Prints one line of "key=value" pairs, in logical
// pixels; exit code 0, or the step that failed.
int RunMeasure(int _iArgc, char* _apArgv[])
{
    QApplication app(_iArgc, _apArgv);

    CLS_WgtDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    qmapNodes.insert("g1", MakeNode("g1", "custom_root_id", 2, 1, 0));
    for (int i = 1; i <= 4; ++i) {
        const QString qstrId = QString("c%1").arg(i);
        qmapNodes.insert(qstrId, MakeNode(qstrId, "g1", 4, i, i % 2));
    }
    CLS_ItemButton clsPreview;
    clsPreview.m_qstrId = "preview";
    clsPreview.m_qstrTooltip = "preview";
    QMap<int, QVector<CLS_ItemButton>> qmapButtons;
    qmapButtons.insert(4, {clsPreview});
    if (tree.Init(qmapNodes, "Root", qmapButtons) != 0)
        return 2;
    tree.ExpandAll();
    tree.resize(360, 480);
    tree.show();
    if (!QTest::qWaitForWindowExposed(&tree))
        return 3;

    auto* pPanel = tree.findChild<CLS_WgtTreeWidget*>();
    CLS_WgtBaseTreeWidget* pBase = pPanel == nullptr ? nullptr : pPanel->GetBaseTree();
    auto* pLine = tree.findChild<QLineEdit*>("qlineedtQueryInput");
    auto* pSearch = tree.findChild<QToolButton*>("qtoolbtnSearch");
    QTreeWidgetItem* pRow = pBase == nullptr ? nullptr : pBase->GetNodeById("c1");
    auto* pToolBar = pBase == nullptr ? nullptr : pBase->findChild<CLS_WgtItemToolBar*>();
    if (pBase == nullptr || pLine == nullptr || pSearch == nullptr || pRow == nullptr || pToolBar == nullptr)
        return 4;

    QString qstrSheet;
    FunctionUtil::GetQssPath("WgtTreeWidget", "WgtTreeWidget", qstrSheet);
    const QMargins margins = TextInsets(*pLine);
    const QString qstrReport =
        QString("%1 ratio=%2 sheet=%3 row=%4 line=%5 line_hint=%6 text_insets=%7,%8,%9,%10 "
                "tree_icon=%11 search_icon=%12 toolbar_icon=%13")
            .arg(CONST_pReportMark)
            .arg(tree.devicePixelRatioF())
            .arg(QFileInfo(qstrSheet).fileName())
            .arg(pBase->visualItemRect(pRow).height())
            .arg(pLine->height())
            .arg(pLine->sizeHint().height())
            .arg(margins.left())
            .arg(margins.top())
            .arg(margins.right())
            .arg(margins.bottom())
            .arg(pBase->iconSize().height())
            .arg(pSearch->iconSize().height())
            .arg(pToolBar->iconSize().height());
    std::printf("%s\n", qPrintable(qstrReport));
    std::fflush(stdout);
    return 0;
}

// What one child reported, by key; empty when it failed, with the reason in _qstrError.
QMap<QString, QString> Measure(const QString& _qstrSkin, const QString& _qstrFactor, QString& _qstrError)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    // The factor under test is the only scaling the child sees.
    for (const char* pName : {"QT_SCREEN_SCALE_FACTORS", "QT_AUTO_SCREEN_SCALE_FACTOR",
                              "QT_ENABLE_HIGHDPI_SCALING", "QT_DEVICE_PIXEL_RATIO"}) {
        env.remove(pName);
    }
    env.insert("QT_SCALE_FACTOR", _qstrFactor);
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("WGT_TEST_SKIN", _qstrSkin);

    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QCoreApplication::applicationFilePath(), {CONST_pMeasureArg});
    const bool blFinished = process.waitForFinished(60000);
    const QString qstrOut = QString::fromLocal8Bit(process.readAllStandardOutput());
    const QString qstrErr = QString::fromLocal8Bit(process.readAllStandardError());
    if (!blFinished || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        _qstrError = QString("%1 at %2: exit %3\n%4")
                         .arg(_qstrSkin, _qstrFactor)
                         .arg(process.exitCode())
                         .arg(qstrErr.right(4000));
        return {};
    }
    QMap<QString, QString> qmapReport;
    for (const QString& qstrLine : qstrOut.split('\n')) {
        if (!qstrLine.startsWith(CONST_pReportMark))
            continue;
        for (const QString& qstrPair :
             qstrLine.mid(int(qstrlen(CONST_pReportMark))).split(' ', Qt::SkipEmptyParts)) {
            const int iEquals = qstrPair.indexOf('=');
            if (iEquals > 0)
                qmapReport.insert(qstrPair.left(iEquals), qstrPair.mid(iEquals + 1));
        }
    }
    if (qmapReport.isEmpty())
        _qstrError = QString("%1 at %2: no report\n%3").arg(_qstrSkin, _qstrFactor, qstrOut.right(4000));
    return qmapReport;
}

// The named entries of a report as "key=value ...", so a failed comparison shows both children.
QString Pick(const QMap<QString, QString>& _qmapReport, const QStringList& _qlstKeys)
{
    QStringList qlstPairs;
    for (const QString& qstrKey : _qlstKeys)
        qlstPairs << qstrKey + "=" + _qmapReport.value(qstrKey, "?");
    return qlstPairs.join(' ');
}

} // namespace

class CLS_TestSkinScale : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void shouldLoadTheScaledSheetOnlyAtFactorTwo_data();
    void shouldLoadTheScaledSheetOnlyAtFactorTwo();
    void shouldKeepRowHeightAtFactorTwo_data();
    void shouldKeepRowHeightAtFactorTwo();
    void shouldKeepSearchLineHeightAtFactorTwo_data();
    void shouldKeepSearchLineHeightAtFactorTwo();
    void shouldKeepSearchLineTextRoomAtFactorTwo_data();
    void shouldKeepSearchLineTextRoomAtFactorTwo();
    void shouldKeepIconSizesAtFactorTwo_data();
    void shouldKeepIconSizesAtFactorTwo();

private:
    void AddSkinRows();
    // Compares the keys of the current skin's reports at factors 2 and 1.
    void CompareAtBothFactors(const QStringList& _qlstKeys);

    QMap<QString, QMap<QString, QString>> m_qmapAt1; // skin -> report at factor 1
    QMap<QString, QMap<QString, QString>> m_qmapAt2; // skin -> report at factor 2
};

void CLS_TestSkinScale::initTestCase()
{
    for (const QString& qstrSkin : SkinTest::SkinNames()) {
        QVERIFY2(QFile::exists(SkinTest::ModuleSheetPath(qstrSkin, false)),
                 qPrintable("no sheet: " + SkinTest::ModuleSheetPath(qstrSkin, false)));
        QVERIFY2(QFile::exists(SkinTest::ModuleSheetPath(qstrSkin, true)),
                 qPrintable("no sheet: " + SkinTest::ModuleSheetPath(qstrSkin, true)));
        QString qstrError;
        m_qmapAt1.insert(qstrSkin, Measure(qstrSkin, "1", qstrError));
        QVERIFY2(qstrError.isEmpty(), qPrintable(qstrError));
        m_qmapAt2.insert(qstrSkin, Measure(qstrSkin, "2", qstrError));
        QVERIFY2(qstrError.isEmpty(), qPrintable(qstrError));
    }
}

void CLS_TestSkinScale::AddSkinRows()
{
    QTest::addColumn<QString>("_qstrSkin");
    for (const QString& qstrSkin : SkinTest::SkinNames())
        QTest::newRow(qPrintable(qstrSkin)) << qstrSkin;
}

void CLS_TestSkinScale::CompareAtBothFactors(const QStringList& _qlstKeys)
{
    QFETCH(QString, _qstrSkin);
    const QString qstrAt1 = Pick(m_qmapAt1.value(_qstrSkin), _qlstKeys);
    const QString qstrAt2 = Pick(m_qmapAt2.value(_qstrSkin), _qlstKeys);
    QVERIFY2(!qstrAt1.contains('?'), qPrintable(qstrAt1));
    QCOMPARE(qstrAt2, qstrAt1);
}

void CLS_TestSkinScale::shouldLoadTheScaledSheetOnlyAtFactorTwo_data()
{
    AddSkinRows();
}

// Each child really ran at its factor, with the sheet the loader picks for it; without this the
// comparisons below could pass on two runs of the same thing.
void CLS_TestSkinScale::shouldLoadTheScaledSheetOnlyAtFactorTwo()
{
    QFETCH(QString, _qstrSkin);
    const QStringList qlstKeys{"ratio", "sheet"};
    QCOMPARE(Pick(m_qmapAt1.value(_qstrSkin), qlstKeys), QString("ratio=1 sheet=WgtTreeWidget.qss"));
    QCOMPARE(Pick(m_qmapAt2.value(_qstrSkin), qlstKeys), QString("ratio=2 sheet=WgtTreeWidget_4K.qss"));
}

void CLS_TestSkinScale::shouldKeepRowHeightAtFactorTwo_data()
{
    AddSkinRows();
}

void CLS_TestSkinScale::shouldKeepRowHeightAtFactorTwo()
{
    CompareAtBothFactors({"row"});
}

void CLS_TestSkinScale::shouldKeepSearchLineHeightAtFactorTwo_data()
{
    AddSkinRows();
}

// The panel pins the line's height; the height the sheet asks for (frame and padding around the
// text) is the size hint.
void CLS_TestSkinScale::shouldKeepSearchLineHeightAtFactorTwo()
{
    CompareAtBothFactors({"line", "line_hint"});
}

void CLS_TestSkinScale::shouldKeepSearchLineTextRoomAtFactorTwo_data()
{
    AddSkinRows();
}

// Border and padding of the line, the right one keeping the text clear of the buttons.
void CLS_TestSkinScale::shouldKeepSearchLineTextRoomAtFactorTwo()
{
    CompareAtBothFactors({"text_insets"});
}

void CLS_TestSkinScale::shouldKeepIconSizesAtFactorTwo_data()
{
    AddSkinRows();
}

void CLS_TestSkinScale::shouldKeepIconSizesAtFactorTwo()
{
    CompareAtBothFactors({"tree_icon", "search_icon", "toolbar_icon"});
}

int main(int argc, char* argv[])
{
    if (argc > 1 && qstrcmp(argv[1], CONST_pMeasureArg) == 0)
        return RunMeasure(argc, argv);
    QCoreApplication app(argc, argv);
    CLS_TestSkinScale test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_skinscale.moc"
