// The style sheets of both skins: Qt parses them without a complaint on a tree panel, they take
// effect there, they address objects the panel really has, the scaled sheet keeps every size of
// the plain one (Qt scales them by the factor itself), and their relative image paths are ones the
// style loader rewrites.

#include "SkinTestFiles.h"

#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtTreeWidget.h"

#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QtTest>

namespace {

QStringList s_qlstMessages;
QtMessageHandler s_pfunPrevious = nullptr;

// Keeps every warning; the sheet parser reports a bad sheet as "Could not parse stylesheet ...".
void CollectMessage(QtMsgType _iType, const QMessageLogContext& _context, const QString& _qstrMsg)
{
    if (_iType == QtWarningMsg || _iType == QtCriticalMsg) {
        s_qlstMessages << _qstrMsg;
    }
    if (s_pfunPrevious != nullptr) {
        s_pfunPrevious(_iType, _context, _qstrMsg);
    }
}

// The complaints of Qt's sheet handling among the collected warnings: a sheet it can't parse, and
// a "qproperty-" the widget doesn't have.
QStringList SheetComplaints()
{
    QStringList qlstComplaints;
    for (const QString& qstrMsg : s_qlstMessages) {
        if (qstrMsg.contains("Could not parse", Qt::CaseInsensitive) ||
            qstrMsg.contains("stylesheet", Qt::CaseInsensitive) ||
            qstrMsg.contains("style sheet", Qt::CaseInsensitive) ||
            qstrMsg.contains("does not have a property", Qt::CaseInsensitive) ||
            qstrMsg.contains("Unknown property", Qt::CaseInsensitive)) {
            qlstComplaints << qstrMsg;
        }
    }
    return qlstComplaints;
}

CLS_TreeItem MakeItem(const QString& _qstrId, const QString& _qstrParentId, int _iButtons)
{
    CLS_TreeItem clsItem;
    clsItem.m_qstrId = _qstrId;
    clsItem.m_qstrText = _qstrId;
    clsItem.m_qstrTooltip = _qstrId;
    clsItem.m_qstrParentId = _qstrParentId;
    for (int i = 0; i < _iButtons; ++i) {
        CLS_ItemButton clsButton;
        clsButton.m_qstrId = i == 0 ? "preview" : "playback";
        clsButton.m_qstrTooltip = clsButton.m_qstrId;
        clsButton.m_blCheckable = i == 1;
        clsItem.m_qvecButtons.append(clsButton);
    }
    return clsItem;
}

// A root, two hosts with three channels each, the channels with two tool buttons; all expanded.
bool FillPanel(CLS_WgtTreeWidget& _panel, const QString& _qstrSkin)
{
    const QString qstrImages = SkinTest::ImageDir(_qstrSkin);
    QMap<QString, CLS_TreeItem> qmapItems;
    CLS_TreeItem clsRoot = MakeItem("root", QString(), 0);
    clsRoot.m_qstrIcon = qstrImages + "root_icon.png";
    qmapItems.insert(clsRoot.m_qstrId, clsRoot);
    for (int iHost = 0; iHost < 2; ++iHost) {
        CLS_TreeItem clsHost = MakeItem(QString("host%1").arg(iHost), "root", 0);
        clsHost.m_qstrIcon = qstrImages + (iHost == 0 ? "host_online.png" : "host_offline.png");
        qmapItems.insert(clsHost.m_qstrId, clsHost);
        for (int iChannel = 0; iChannel < 3; ++iChannel) {
            CLS_TreeItem clsChannel =
                MakeItem(QString("host%1_ch%2").arg(iHost).arg(iChannel), clsHost.m_qstrId, 2);
            clsChannel.m_qstrIcon = qstrImages + "channel_online.png";
            qmapItems.insert(clsChannel.m_qstrId, clsChannel);
        }
    }
    if (_panel.Init("root", qmapItems, true) != 0) {
        return false;
    }
    _panel.SetAllExpandStatus(true);
    return true;
}

// The panel already carries the sheet of the default skin from its constructor, and Qt keeps the
// parse of an old sheet when a widget that was never polished gets a new one: polish first, so
// that the new text is parsed and applied.
void ApplySheet(QWidget& _widget, const QString& _qstrSheet)
{
    _widget.ensurePolished();
    _widget.setStyleSheet(_qstrSheet);
}

QString PanelSheet(const QString& _qstrSkin, bool _blScaled)
{
    return SkinTest::CommonText(_qstrSkin) +
           SkinTest::ReadSheet(SkinTest::ModuleSheetPath(_qstrSkin, _blScaled));
}

// The selector part of every rule, comments removed.
QStringList Selectors(const QString& _qstrSheet)
{
    QString qstrText = _qstrSheet;
    qstrText.remove(QRegularExpression("/\\*.*?\\*/", QRegularExpression::DotMatchesEverythingOption));
    QStringList qlstSelectors;
    for (const QString& qstrRule : qstrText.split('}', Qt::SkipEmptyParts)) {
        const int iBrace = qstrRule.indexOf('{');
        if (iBrace > 0) {
            qlstSelectors << qstrRule.left(iBrace).simplified();
        }
    }
    return qlstSelectors;
}

// Sizes of a sheet in order of appearance, with the text of their line: numbers before "px",
// "pt", or standing alone, never the digits of a colour.
QList<QPair<double, QString>> Sizes(const QString& _qstrSheet)
{
    QList<QPair<double, QString>> qlstSizes;
    static const QRegularExpression s_regNumber("(?<![#\\w.])(\\d+(?:\\.\\d+)?)(?=px|pt|\\b)");
    const QStringList qlstLines = _qstrSheet.split('\n');
    for (const QString& qstrLine : qlstLines) {
        if (qstrLine.trimmed().startsWith("/*") || qstrLine.trimmed().startsWith("*")) {
            continue;
        }
        QString qstrCode = qstrLine;
        qstrCode.remove(QRegularExpression("/\\*.*\\*/"));
        qstrCode.remove(QRegularExpression("url\\([^)]*\\)"));
        auto itMatch = s_regNumber.globalMatch(qstrCode);
        while (itMatch.hasNext()) {
            qlstSizes << qMakePair(itMatch.next().captured(1).toDouble(), qstrLine);
        }
    }
    return qlstSizes;
}

} // namespace

class CLS_TestSkinSheets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldReportABrokenSheet();
    void shouldApplyEverySheetWithoutComplaint_data();
    void shouldApplyEverySheetWithoutComplaint();
    void shouldPaintTreeInSkinColours_data();
    void shouldPaintTreeInSkinColours();
    void shouldAddressObjectsThePanelHas_data();
    void shouldAddressObjectsThePanelHas();
    void shouldKeepEverySizeInScaledSheet_data();
    void shouldKeepEverySizeInScaledSheet();
    void shouldKeepRelativePathsAwayFromStart_data();
    void shouldKeepRelativePathsAwayFromStart();
    void shouldPointAtImagesOfTheSameSkin_data();
    void shouldPointAtImagesOfTheSameSkin();
};

void CLS_TestSkinSheets::initTestCase()
{
    for (const QString& qstrSkin : SkinTest::SkinNames()) {
        QVERIFY2(QFileInfo(SkinTest::SkinDir(qstrSkin)).isDir(),
                 qPrintable("no skin: " + SkinTest::SkinDir(qstrSkin)));
        QVERIFY2(SkinTest::CommonFiles(qstrSkin).size() >= 1, qPrintable("no common sheet for " + qstrSkin));
        QVERIFY(QFile::exists(SkinTest::ModuleSheetPath(qstrSkin, false)));
        QVERIFY(QFile::exists(SkinTest::ModuleSheetPath(qstrSkin, true)));
    }
    s_pfunPrevious = qInstallMessageHandler(CollectMessage);
}

void CLS_TestSkinSheets::init()
{
    s_qlstMessages.clear();
}

void CLS_TestSkinSheets::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a top-level widget was left behind");
}

// The check below is only worth something if a bad sheet is caught by it.
void CLS_TestSkinSheets::shouldReportABrokenSheet()
{
    CLS_WgtTreeWidget panel(nullptr, false, false, true);
    QVERIFY(FillPanel(panel, "dark"));
    ApplySheet(panel, "QTreeView { color: #ffffff; } }");
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    panel.grab();

    QVERIFY2(!SheetComplaints().isEmpty(), "a broken sheet went unnoticed");
}

void CLS_TestSkinSheets::shouldApplyEverySheetWithoutComplaint_data()
{
    QTest::addColumn<QString>("_qstrSkin");
    QTest::addColumn<bool>("_blScaled");
    for (const QString& qstrSkin : SkinTest::SkinNames()) {
        QTest::newRow(qPrintable(qstrSkin)) << qstrSkin << false;
        QTest::newRow(qPrintable(qstrSkin + "_4K")) << qstrSkin << true;
    }
}

void CLS_TestSkinSheets::shouldApplyEverySheetWithoutComplaint()
{
    QFETCH(QString, _qstrSkin);
    QFETCH(bool, _blScaled);

    const QString qstrSheet = PanelSheet(_qstrSkin, _blScaled);
    QVERIFY(!qstrSheet.isEmpty());

    CLS_WgtTreeWidget panel(nullptr, true, true, true, false, true, ITEM_BTN_SHOW_ALWAYS);
    QVERIFY(FillPanel(panel, _qstrSkin));
    ApplySheet(panel, qstrSheet);
    panel.resize(300, 400);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    panel.SetCurrentItem("host0_ch1");
    // A search result list and the drag picture's button get the sheet, too.
    auto* pLine = panel.findChild<QLineEdit*>("qlineedtQueryInput");
    QVERIFY(pLine != nullptr);
    QTest::keyClicks(pLine, "ch");
    QPushButton dragBgBtn;
    dragBgBtn.setObjectName("dragBgBtn");
    dragBgBtn.setStyleSheet(qstrSheet);
    dragBgBtn.setText("host0_ch1");
    const QPixmap pixmapDrag = dragBgBtn.grab();
    const QPixmap pixmapPanel = panel.grab();

    QVERIFY(!pixmapDrag.isNull());
    QVERIFY(!pixmapPanel.isNull());
    QVERIFY2(SheetComplaints().isEmpty(), qPrintable(SheetComplaints().join("\n")));
}

void CLS_TestSkinSheets::shouldPaintTreeInSkinColours_data()
{
    QTest::addColumn<QString>("_qstrSkin");
    QTest::addColumn<bool>("_blScaled");
    QTest::addColumn<QColor>("_clrBase");
    QTest::addColumn<QColor>("_clrSelected");
    QTest::newRow("dark") << "dark" << false << QColor("#1b1f24") << QColor("#1f4f8a");
    QTest::newRow("dark_4K") << "dark" << true << QColor("#1b1f24") << QColor("#1f4f8a");
    QTest::newRow("light") << "light" << false << QColor("#ffffff") << QColor("#cfe4ff");
    QTest::newRow("light_4K") << "light" << true << QColor("#ffffff") << QColor("#cfe4ff");
}

// The tree's ground and a selected row take the skin's colours: the sheet reached the tree.
void CLS_TestSkinSheets::shouldPaintTreeInSkinColours()
{
    QFETCH(QString, _qstrSkin);
    QFETCH(bool, _blScaled);
    QFETCH(QColor, _clrBase);
    QFETCH(QColor, _clrSelected);

    CLS_WgtTreeWidget panel(nullptr, false, false, true);
    QVERIFY(FillPanel(panel, _qstrSkin));
    ApplySheet(panel, PanelSheet(_qstrSkin, _blScaled));
    panel.resize(300, 600);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    panel.SetCurrentItem("host1");

    CLS_WgtBaseTreeWidget* pTree = panel.GetBaseTree();
    QVERIFY(pTree != nullptr);
    QTreeWidgetItem* pSelected = pTree->currentItem();
    QVERIFY(pSelected != nullptr);
    const QRect qrectRow = pTree->visualItemRect(pSelected);
    QVERIFY(!qrectRow.isEmpty());

    // Below the last row, and at the right end of the selected row.
    QWidget* pViewport = pTree->viewport();
    const QPoint qptGround(pViewport->width() / 2, pViewport->height() - 4);
    QVERIFY2(pTree->itemAt(qptGround) == nullptr, "the rows fill the tree");
    const QPoint qptRow(qrectRow.right() - 2, qrectRow.center().y());
    const QImage image = panel.grab().toImage();
    const QColor clrGround = image.pixelColor(pViewport->mapTo(&panel, qptGround));
    const QColor clrRow = image.pixelColor(pViewport->mapTo(&panel, qptRow));
    QCOMPARE(clrGround.name(), _clrBase.name());
    QCOMPARE(clrRow.name(), _clrSelected.name());
    QVERIFY2(SheetComplaints().isEmpty(), qPrintable(SheetComplaints().join("\n")));
}

void CLS_TestSkinSheets::shouldAddressObjectsThePanelHas_data()
{
    shouldApplyEverySheetWithoutComplaint_data();
}

// Every "#name" and every class of ours a sheet names exists in a panel, so a misspelt name can't
// hide. "dragBgBtn" lives only while a row is dragged, beside the tree.
void CLS_TestSkinSheets::shouldAddressObjectsThePanelHas()
{
    QFETCH(QString, _qstrSkin);
    QFETCH(bool, _blScaled);

    CLS_WgtTreeWidget panel(nullptr, false, false, true);
    QVERIFY(FillPanel(panel, _qstrSkin));

    QSet<QString> qsetNames;
    QSet<QString> qsetClasses;
    for (QObject* pObject : panel.findChildren<QObject*>()) {
        qsetNames.insert(pObject->objectName());
        for (const QMetaObject* pMeta = pObject->metaObject(); pMeta != nullptr;
             pMeta = pMeta->superClass()) {
            qsetClasses.insert(QString::fromLatin1(pMeta->className()));
        }
    }
    qsetNames.insert(panel.objectName());
    qsetNames.insert("dragBgBtn");
    qsetClasses.insert("CLS_WgtTreeWidget");

    const QStringList qlstSelectors = Selectors(PanelSheet(_qstrSkin, _blScaled));
    QVERIFY(!qlstSelectors.isEmpty());
    QStringList qlstUnknown;
    int iIds = 0;
    static const QRegularExpression s_regId("#([A-Za-z_]\\w*)");
    static const QRegularExpression s_regOurClass("\\b(CLS_\\w+)");
    for (const QString& qstrSelector : qlstSelectors) {
        auto itId = s_regId.globalMatch(qstrSelector);
        while (itId.hasNext()) {
            const QString qstrName = itId.next().captured(1);
            ++iIds;
            if (!qsetNames.contains(qstrName)) {
                qlstUnknown << "#" + qstrName;
            }
        }
        auto itClass = s_regOurClass.globalMatch(qstrSelector);
        while (itClass.hasNext()) {
            const QString qstrClass = itClass.next().captured(1);
            if (!qsetClasses.contains(qstrClass)) {
                qlstUnknown << qstrClass;
            }
        }
    }
    QVERIFY2(qlstUnknown.isEmpty(), qPrintable("not in a panel: " + qlstUnknown.join(", ")));

    // The panel's own names are all styled.
    const QString qstrSelectors = qlstSelectors.join('\n');
    for (const QString& qstrName :
         {"#qlineedtQueryInput", "#qtoolbtnSearch", "#qtoolbtnClear", "#qlistWgtQueryResult", "#dragBgBtn"}) {
        QVERIFY2(qstrSelectors.contains(qstrName), qPrintable("no rule for " + QString(qstrName)));
    }
    for (const QString& qstrClass : {"CLS_WgtBaseTreeWidget", "CLS_WgtItemToolBar", "QMenu", "QScrollBar"}) {
        QVERIFY2(qstrSelectors.contains(qstrClass), qPrintable("no rule for " + QString(qstrClass)));
    }
    QVERIFY(iIds >= 5);
}

void CLS_TestSkinSheets::shouldKeepEverySizeInScaledSheet_data()
{
    QTest::addColumn<QString>("_qstrSkin");
    for (const QString& qstrSkin : SkinTest::SkinNames()) {
        QTest::newRow(qPrintable(qstrSkin)) << qstrSkin;
    }
}

// Same rules in the same order, with the same sizes: Qt multiplies the lengths of a sheet by
// QT_SCALE_FACTOR, so a size doubled here would be doubled twice on the screen. Image paths may
// differ.
void CLS_TestSkinSheets::shouldKeepEverySizeInScaledSheet()
{
    QFETCH(QString, _qstrSkin);

    const QString qstrPlain = SkinTest::ReadRaw(SkinTest::ModuleSheetPath(_qstrSkin, false));
    const QString qstrScaled = SkinTest::ReadRaw(SkinTest::ModuleSheetPath(_qstrSkin, true));
    QCOMPARE(Selectors(qstrScaled), Selectors(qstrPlain));

    const auto qlstPlain = Sizes(qstrPlain);
    const auto qlstScaled = Sizes(qstrScaled);
    QVERIFY(qlstPlain.size() >= 20);
    QCOMPARE(qlstScaled.size(), qlstPlain.size());
    for (int i = 0; i < qlstPlain.size(); ++i) {
        QVERIFY2(qFuzzyCompare(1.0 + qlstScaled.at(i).first, 1.0 + qlstPlain.at(i).first),
                 qPrintable(QString("\"%1\" against \"%2\"")
                                .arg(qlstScaled.at(i).second.trimmed(), qlstPlain.at(i).second.trimmed())));
    }
}

void CLS_TestSkinSheets::shouldKeepRelativePathsAwayFromStart_data()
{
    QTest::addColumn<QString>("_qstrPath");
    for (const QString& qstrSkin : SkinTest::SkinNames()) {
        for (const QString& qstrFile : SkinTest::CommonFiles(qstrSkin)) {
            QTest::newRow(qPrintable(qstrSkin + "/Common/" + qstrFile))
                << SkinTest::CommonDir(qstrSkin) + "/" + qstrFile;
        }
        QTest::newRow(qPrintable(qstrSkin + "/WgtTreeWidget.qss"))
            << SkinTest::ModuleSheetPath(qstrSkin, false);
        QTest::newRow(qPrintable(qstrSkin + "/WgtTreeWidget_4K.qss"))
            << SkinTest::ModuleSheetPath(qstrSkin, true);
    }
}

// The loader leaves every relative path of a sheet alone when one stands at its very start.
void CLS_TestSkinSheets::shouldKeepRelativePathsAwayFromStart()
{
    QFETCH(QString, _qstrPath);

    const QString qstrRaw = SkinTest::ReadRaw(_qstrPath);
    QVERIFY(!qstrRaw.isEmpty());
    QVERIFY(qstrRaw.indexOf("./resource/skin/") != 0);
    QVERIFY2(!qstrRaw.contains(QChar('\0')), "a NUL would end the sheet early");
    // Every path is relative: nothing of this build folder in a source sheet.
    for (const QString& qstrUrl : SkinTest::Urls(qstrRaw)) {
        QVERIFY2(qstrUrl.startsWith("./resource/skin/"), qPrintable("not relative: " + qstrUrl));
    }
}

void CLS_TestSkinSheets::shouldPointAtImagesOfTheSameSkin_data()
{
    shouldApplyEverySheetWithoutComplaint_data();
}

void CLS_TestSkinSheets::shouldPointAtImagesOfTheSameSkin()
{
    QFETCH(QString, _qstrSkin);
    QFETCH(bool, _blScaled);

    const QStringList qlstUrls = SkinTest::Urls(PanelSheet(_qstrSkin, _blScaled));
    QVERIFY(qlstUrls.size() >= 2); // the branch arrows
    for (const QString& qstrUrl : qlstUrls) {
        QVERIFY2(qstrUrl.startsWith(SkinTest::SkinDir(_qstrSkin) + "/"),
                 qPrintable("other skin: " + qstrUrl));
        QVERIFY2(QFile::exists(qstrUrl), qPrintable("missing: " + qstrUrl));
    }
}

QTEST_MAIN(CLS_TestSkinSheets)
#include "tst_skinsheets.moc"
