// The generated images of both skins: every name the library asks for is there, loads, has the
// size of a tree icon, and shows its status in the badge colour.

#include "SkinTestFiles.h"

#include <QFileInfo>
#include <QImage>
#include <QtTest>

namespace {

enum n_BadgeKind
{
    BADGE_ONLINE,  // green
    BADGE_OFFLINE, // grey
    BADGE_ERROR    // red
};

QImage LoadImage(const QString& _qstrSkin, const QString& _qstrName)
{
    return QImage(SkinTest::ImageDir(_qstrSkin) + _qstrName).convertToFormat(QImage::Format_ARGB32);
}

QString TwiceName(const QString& _qstrName)
{
    return QFileInfo(_qstrName).completeBaseName() + "@2x.png";
}

QString Describe(QRgb _rgb)
{
    return QString("rgba(%1,%2,%3,%4)").arg(qRed(_rgb)).arg(qGreen(_rgb)).arg(qBlue(_rgb)).arg(qAlpha(_rgb));
}

} // namespace

class CLS_TestSkinImages : public QObject
{
    Q_OBJECT

private slots:
    void shouldHaveEveryImageAtIconSize_data();
    void shouldHaveEveryImageAtIconSize();
    void shouldHaveTwiceSizedImageForScaledScreens_data();
    void shouldHaveTwiceSizedImageForScaledScreens();
    void shouldTellRelatedImagesApart_data();
    void shouldTellRelatedImagesApart();
    void shouldShowStatusInBadgeColour_data();
    void shouldShowStatusInBadgeColour();
    void shouldDrawEveryImageOfASkinDistinct_data();
    void shouldDrawEveryImageOfASkinDistinct();
    void shouldDrawLightSkinInOtherColours_data();
    void shouldDrawLightSkinInOtherColours();
};

void CLS_TestSkinImages::shouldHaveEveryImageAtIconSize_data()
{
    QTest::addColumn<QString>("_qstrSkin");
    QTest::addColumn<QString>("_qstrName");
    for (const QString& qstrSkin : SkinTest::SkinNames()) {
        for (const QString& qstrName : SkinTest::ImageNames()) {
            QTest::newRow(qPrintable(qstrSkin + "/" + qstrName)) << qstrSkin << qstrName;
        }
    }
}

void CLS_TestSkinImages::shouldHaveEveryImageAtIconSize()
{
    QFETCH(QString, _qstrSkin);
    QFETCH(QString, _qstrName);

    const QString qstrPath = SkinTest::ImageDir(_qstrSkin) + _qstrName;
    QVERIFY2(QFile::exists(qstrPath), qPrintable("missing: " + qstrPath));
    const QImage image = LoadImage(_qstrSkin, _qstrName);
    QVERIFY2(!image.isNull(), qPrintable("not an image: " + qstrPath));
    QCOMPARE(image.size(), QSize(16, 16));

    // Drawn on a clear ground: some pixels show, some stay transparent.
    int iShown = 0;
    int iClear = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int iAlpha = qAlpha(image.pixel(x, y));
            iShown += iAlpha > 128 ? 1 : 0;
            iClear += iAlpha == 0 ? 1 : 0;
        }
    }
    QVERIFY2(iShown >= 12, qPrintable(QString("only %1 visible pixels").arg(iShown)));
    QVERIFY2(iClear >= 12, qPrintable(QString("only %1 transparent pixels").arg(iClear)));
}

void CLS_TestSkinImages::shouldHaveTwiceSizedImageForScaledScreens_data()
{
    shouldHaveEveryImageAtIconSize_data();
}

void CLS_TestSkinImages::shouldHaveTwiceSizedImageForScaledScreens()
{
    QFETCH(QString, _qstrSkin);
    QFETCH(QString, _qstrName);

    const QImage image = LoadImage(_qstrSkin, TwiceName(_qstrName));
    QVERIFY2(!image.isNull(), qPrintable("missing or unreadable: " + TwiceName(_qstrName)));
    QCOMPARE(image.size(), QSize(32, 32));

    // The same drawing: scaled down it stays close to the plain image.
    const QImage imageSmall = image.scaled(16, 16, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage imagePlain = LoadImage(_qstrSkin, _qstrName);
    int iFar = 0;
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            iFar += qAbs(qAlpha(imageSmall.pixel(x, y)) - qAlpha(imagePlain.pixel(x, y))) > 160 ? 1 : 0;
        }
    }
    QVERIFY2(iFar <= 8, qPrintable(QString("%1 pixels differ in coverage").arg(iFar)));
}

void CLS_TestSkinImages::shouldTellRelatedImagesApart_data()
{
    QTest::addColumn<QString>("_qstrSkin");
    QTest::addColumn<QString>("_qstrFirst");
    QTest::addColumn<QString>("_qstrSecond");
    const QList<QPair<QString, QString>> qlstPairs = {{"host_online.png", "host_offline.png"},
                                                      {"channel_online.png", "channel_offline.png"},
                                                      {"channel_no.png", "channel_offline.png"},
                                                      {"channel_no.png", "channel_online.png"},
                                                      {"car_item.png", "carerr_item.png"},
                                                      {"pad_item.png", "paderr_item.png"},
                                                      {"way_item.png", "wayerr_item.png"},
                                                      {"branch_open.png", "branch_closed.png"},
                                                      {"preview.png", "playback.png"},
                                                      {"alarm_in.png", "alarm_out.png"},
                                                      {"decoderin_online.png", "decoderout_online.png"}};
    for (const QString& qstrSkin : SkinTest::SkinNames()) {
        for (const auto& pair : qlstPairs) {
            QTest::newRow(qPrintable(qstrSkin + ": " + pair.first + " vs " + pair.second))
                << qstrSkin << pair.first << pair.second;
        }
    }
}

void CLS_TestSkinImages::shouldTellRelatedImagesApart()
{
    QFETCH(QString, _qstrSkin);
    QFETCH(QString, _qstrFirst);
    QFETCH(QString, _qstrSecond);

    const QImage imageFirst = LoadImage(_qstrSkin, _qstrFirst);
    const QImage imageSecond = LoadImage(_qstrSkin, _qstrSecond);
    QVERIFY(!imageFirst.isNull());
    QVERIFY(!imageSecond.isNull());
    QVERIFY2(imageFirst != imageSecond, "the two images are the same");
}

void CLS_TestSkinImages::shouldShowStatusInBadgeColour_data()
{
    QTest::addColumn<QString>("_qstrSkin");
    QTest::addColumn<QString>("_qstrName");
    QTest::addColumn<int>("_iKind");
    const QList<QPair<QString, int>> qlstBadges = {
        {"host_online.png", BADGE_ONLINE},    {"host_offline.png", BADGE_OFFLINE},
        {"channel_online.png", BADGE_ONLINE}, {"channel_offline.png", BADGE_OFFLINE},
        {"channel_no.png", BADGE_ERROR},      {"car_item.png", BADGE_ONLINE},
        {"carerr_item.png", BADGE_ERROR},     {"pad_item.png", BADGE_ONLINE},
        {"paderr_item.png", BADGE_ERROR},     {"way_item.png", BADGE_ONLINE},
        {"wayerr_item.png", BADGE_ERROR}};
    for (const QString& qstrSkin : SkinTest::SkinNames()) {
        for (const auto& badge : qlstBadges) {
            QTest::newRow(qPrintable(qstrSkin + "/" + badge.first))
                << qstrSkin << badge.first << badge.second;
        }
    }
}

// The status badge sits in the lower right corner; its lower half is plain badge colour.
void CLS_TestSkinImages::shouldShowStatusInBadgeColour()
{
    QFETCH(QString, _qstrSkin);
    QFETCH(QString, _qstrName);
    QFETCH(int, _iKind);

    const QImage image = LoadImage(_qstrSkin, _qstrName);
    QVERIFY(!image.isNull());
    const QRgb rgb = image.pixel(12, 14);
    QVERIFY2(qAlpha(rgb) == 255, qPrintable("badge not opaque: " + Describe(rgb)));

    const int iRed = qRed(rgb);
    const int iGreen = qGreen(rgb);
    const int iBlue = qBlue(rgb);
    const int iSpread = qMax(iRed, qMax(iGreen, iBlue)) - qMin(iRed, qMin(iGreen, iBlue));
    switch (_iKind) {
    case BADGE_ONLINE:
        QVERIFY2(iGreen > iRed + 40 && iGreen > iBlue + 20, qPrintable("not green: " + Describe(rgb)));
        break;
    case BADGE_ERROR:
        QVERIFY2(iRed > iGreen + 80 && iRed > iBlue + 80, qPrintable("not red: " + Describe(rgb)));
        break;
    default:
        QVERIFY2(iSpread < 40, qPrintable("not grey: " + Describe(rgb)));
        break;
    }
}

void CLS_TestSkinImages::shouldDrawEveryImageOfASkinDistinct_data()
{
    QTest::addColumn<QString>("_qstrSkin");
    for (const QString& qstrSkin : SkinTest::SkinNames()) {
        QTest::newRow(qPrintable(qstrSkin)) << qstrSkin;
    }
}

void CLS_TestSkinImages::shouldDrawEveryImageOfASkinDistinct()
{
    QFETCH(QString, _qstrSkin);

    const QStringList qlstNames = SkinTest::ImageNames();
    QMap<QString, QImage> qmapImages;
    for (const QString& qstrName : qlstNames) {
        qmapImages.insert(qstrName, LoadImage(_qstrSkin, qstrName));
    }
    QStringList qlstSame;
    for (int i = 0; i < qlstNames.size(); ++i) {
        for (int j = i + 1; j < qlstNames.size(); ++j) {
            if (qmapImages.value(qlstNames.at(i)) == qmapImages.value(qlstNames.at(j))) {
                qlstSame << qlstNames.at(i) + " = " + qlstNames.at(j);
            }
        }
    }
    QVERIFY2(qlstSame.isEmpty(), qPrintable(qlstSame.join(", ")));
}

void CLS_TestSkinImages::shouldDrawLightSkinInOtherColours_data()
{
    QTest::addColumn<QString>("_qstrName");
    for (const QString& qstrName : SkinTest::ImageNames()) {
        QTest::newRow(qPrintable(qstrName)) << qstrName;
    }
}

void CLS_TestSkinImages::shouldDrawLightSkinInOtherColours()
{
    QFETCH(QString, _qstrName);

    const QImage imageDark = LoadImage("dark", _qstrName);
    const QImage imageLight = LoadImage("light", _qstrName);
    QVERIFY(!imageDark.isNull());
    QVERIFY(!imageLight.isNull());
    QVERIFY2(imageDark != imageLight, "dark and light images are the same");
}

QTEST_MAIN(CLS_TestSkinImages)
#include "tst_skinimages.moc"
