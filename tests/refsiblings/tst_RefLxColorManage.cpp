// The reference colour library "libLxColorManage.so" behind the ColorManage gateway: named colours
// per skin, the group fallback to "Common", an empty text for unknown names, the skin chosen by
// the library's control, by LXCOLOR_SKIN and by the settings library, and the background that
// CLS_WgtItemToolBar paints from "<ArgRight_TreeBranch>".

#include "CLS_WgtItemToolBar.h"
#include "ColorManage.h"
#include "LxColorManageControl.h"
#include "Param.h"

#include <QApplication>
#include <QColor>
#include <QSet>
#include <QtTest>

#include <string>

namespace {

using PFun_SetParam = int (*)(const std::string&, const std::string&, const std::string&);
using PFun_DeleteParam = int (*)(const std::string&, const std::string&);

// "GetNamedColor" as the widget library reaches it.
QString NamedColor(const std::string& _strGroup, const std::string& _strName,
                   const std::string& _strSkin = "")
{
    auto pFun =
        reinterpret_cast<ColorManage::PFun_GetNamedColor>(ColorManage::GetModuleFun("GetNamedColor", ""));
    if (nullptr == pFun) {
        return "<GetNamedColor not bound>";
    }
    return QString::fromStdString(pFun(_strGroup, _strName, _strSkin));
}

int SetStoredSkin(const std::string& _strSkin)
{
    auto pFun = reinterpret_cast<PFun_SetParam>(Param::GetModuleFun("SetParam", ""));
    return nullptr == pFun ? -100 : pFun("SystemConfig", "skin", _strSkin);
}

QStringList Colours(QWidget& _widget)
{
    const QImage image = _widget.grab().toImage();
    QSet<QString> qsetNames;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            qsetNames.insert(QColor(image.pixel(x, y)).name());
        }
    }
    QStringList qlstNames = qsetNames.values();
    qlstNames.sort();
    return qlstNames;
}

} // namespace

class tst_RefLxColorManage : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void shouldGiveNamedColourPerSkin_data();
    void shouldGiveNamedColourPerSkin();
    void shouldGiveColoursThatStyleSheetsAccept();
    void shouldGiveEmptyTextForUnknownName();
    void shouldWearDarkForSkinWithoutTable();
    void shouldFollowSkinOfSettingsLibrary();
    void shouldPreferEnvironmentOverSettings();
    void shouldPreferFixedSkinOverEverything();
    void shouldPaintItemToolBarInBranchColourOfSkin();
};

void tst_RefLxColorManage::init()
{
    QCOMPARE(LxColorCtl_SetSkin(""), 0);
    qunsetenv("LXCOLOR_SKIN");
    auto pFunDelete = reinterpret_cast<PFun_DeleteParam>(Param::GetModuleFun("DeleteParam", ""));
    QVERIFY(nullptr != pFunDelete);
    pFunDelete("SystemConfig", "skin"); // -1 when there was none
    QCOMPARE(Param::GetParam("SystemConfig", "skin", "dark"), std::string("dark"));
}

void tst_RefLxColorManage::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test leaked a top-level widget");
}

void tst_RefLxColorManage::shouldGiveNamedColourPerSkin_data()
{
    QTest::addColumn<QString>("qstrSkin");
    QTest::addColumn<QString>("qstrGroup");
    QTest::addColumn<QString>("qstrName");
    QTest::addColumn<QString>("qstrExpected");

    QTest::newRow("dark branch") << "dark"
                                 << "Common"
                                 << "<ArgRight_TreeBranch>"
                                 << "#2b3a4f";
    QTest::newRow("light branch") << "light"
                                  << "Common"
                                  << "<ArgRight_TreeBranch>"
                                  << "#dce3ec";
    QTest::newRow("dark background") << "dark"
                                     << "Common"
                                     << "<Background>"
                                     << "#1e2632";
    QTest::newRow("light background") << "light"
                                      << "Common"
                                      << "<Background>"
                                      << "#f5f7fa";
    QTest::newRow("module colour") << "dark"
                                   << "WgtTreeWidget"
                                   << "<TreeSelected>"
                                   << "#2d4a73";
    QTest::newRow("module falls back to Common") << "light"
                                                 << "WgtTreeWidget"
                                                 << "<ArgRight_TreeBranch>"
                                                 << "#dce3ec";
    QTest::newRow("unknown group falls back to Common") << "dark"
                                                        << "Elsewhere"
                                                        << "<Border>"
                                                        << "#3a4658";
    QTest::newRow("module colour not in Common") << "dark"
                                                 << "Common"
                                                 << "<TreeSelected>"
                                                 << "";
}

void tst_RefLxColorManage::shouldGiveNamedColourPerSkin()
{
    QFETCH(QString, qstrSkin);
    QFETCH(QString, qstrGroup);
    QFETCH(QString, qstrName);
    QFETCH(QString, qstrExpected);

    // Asked for the skin by the third argument, and as the skin in force.
    QCOMPARE(NamedColor(qstrGroup.toStdString(), qstrName.toStdString(), qstrSkin.toStdString()),
             qstrExpected);
    QCOMPARE(LxColorCtl_SetSkin(qstrSkin.toStdString()), 0);
    QCOMPARE(NamedColor(qstrGroup.toStdString(), qstrName.toStdString()), qstrExpected);
}

void tst_RefLxColorManage::shouldGiveColoursThatStyleSheetsAccept()
{
    for (const char* pSkin : {"dark", "light"}) {
        for (const char* pName : {"<ArgRight_TreeBranch>", "<Background>", "<Foreground>", "<Border>",
                                  "<Highlight>", "<HighlightText>", "<Hover>", "<Disabled>"}) {
            const QString qstrColour = NamedColor("Common", pName, pSkin);
            const QColor color(qstrColour);
            QVERIFY2(color.isValid() && color.name() == qstrColour,
                     qPrintable(QString("%1 %2: %3").arg(pSkin, pName, qstrColour)));
        }
    }
    // Dark and light differ where it shows.
    QVERIFY(NamedColor("Common", "<ArgRight_TreeBranch>", "dark") !=
            NamedColor("Common", "<ArgRight_TreeBranch>", "light"));
}

void tst_RefLxColorManage::shouldGiveEmptyTextForUnknownName()
{
    QCOMPARE(NamedColor("Common", "<NoSuchColour>"), QString());
    QCOMPARE(NamedColor("Common", ""), QString());
    QCOMPARE(NamedColor("Common", "ArgRight_TreeBranch"), QString()); // without the brackets
    QCOMPARE(NamedColor("", "<NoSuchColour>", "light"), QString());
}

void tst_RefLxColorManage::shouldWearDarkForSkinWithoutTable()
{
    QCOMPARE(NamedColor("Common", "<ArgRight_TreeBranch>", "blue"), QString("#2b3a4f"));
    QCOMPARE(SetStoredSkin("blue"), 0);
    QCOMPARE(LxColorCtl_GetSkin(), std::string("dark"));
    QCOMPARE(LxColorCtl_SetSkin("blue"), -1);
}

void tst_RefLxColorManage::shouldFollowSkinOfSettingsLibrary()
{
    // Nothing stored: the default "dark".
    QCOMPARE(LxColorCtl_GetSkin(), std::string("dark"));
    QCOMPARE(NamedColor("Common", "<ArgRight_TreeBranch>"), QString("#2b3a4f"));

    QCOMPARE(SetStoredSkin("light"), 0);
    QCOMPARE(LxColorCtl_GetSkin(), std::string("light"));
    QCOMPARE(NamedColor("Common", "<ArgRight_TreeBranch>"), QString("#dce3ec"));

    QCOMPARE(SetStoredSkin("dark"), 0);
    QCOMPARE(NamedColor("Common", "<ArgRight_TreeBranch>"), QString("#2b3a4f"));
}

void tst_RefLxColorManage::shouldPreferEnvironmentOverSettings()
{
    QCOMPARE(SetStoredSkin("dark"), 0);
    qputenv("LXCOLOR_SKIN", "light");
    QCOMPARE(LxColorCtl_GetSkin(), std::string("light"));
    QCOMPARE(NamedColor("Common", "<ArgRight_TreeBranch>"), QString("#dce3ec"));
    qunsetenv("LXCOLOR_SKIN");
    QCOMPARE(NamedColor("Common", "<ArgRight_TreeBranch>"), QString("#2b3a4f"));
}

void tst_RefLxColorManage::shouldPreferFixedSkinOverEverything()
{
    QCOMPARE(SetStoredSkin("light"), 0);
    qputenv("LXCOLOR_SKIN", "light");
    QCOMPARE(LxColorCtl_SetSkin("dark"), 0);
    QCOMPARE(LxColorCtl_GetSkin(), std::string("dark"));
    QCOMPARE(NamedColor("Common", "<ArgRight_TreeBranch>"), QString("#2b3a4f"));
    // An explicit third argument still wins for that call.
    QCOMPARE(NamedColor("Common", "<ArgRight_TreeBranch>", "light"), QString("#dce3ec"));
    // Unfixed: back to the environment.
    QCOMPARE(LxColorCtl_SetSkin(""), 0);
    QCOMPARE(LxColorCtl_GetSkin(), std::string("light"));
}

void tst_RefLxColorManage::shouldPaintItemToolBarInBranchColourOfSkin()
{
    // The bar asks once, at construction, with the skin in force then.
    QCOMPARE(SetStoredSkin("light"), 0);
    CLS_WgtItemToolBar barLight;
    QCOMPARE(SetStoredSkin("dark"), 0);
    CLS_WgtItemToolBar barDark;

    barLight.resize(40, 20);
    barDark.resize(40, 20);
    QCOMPARE(Colours(barLight), QStringList({"#dce3ec"}));
    QCOMPARE(Colours(barDark), QStringList({"#2b3a4f"}));
}

QTEST_MAIN(tst_RefLxColorManage)
#include "tst_RefLxColorManage.moc"
