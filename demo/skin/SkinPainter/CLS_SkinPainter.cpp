#include "CLS_SkinPainter.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

namespace {

const int CONST_IMAGE_SIZE = 16; // every image is drawn on this grid, then scaled

QPen LinePen(const QColor& _clrLine, qreal _dWidth = 1.0)
{
    QPen pen(_clrLine, _dWidth);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

} // namespace

CLS_SkinPainter::CLS_SkinPainter(const STRCT_SkinPalette& _clsPalette) : m_clsPalette(_clsPalette)
{
    m_qmapDrawers.insert("host_offline.png", &CLS_SkinPainter::HostOffline);
    m_qmapDrawers.insert("host_online.png", &CLS_SkinPainter::HostOnline);
    m_qmapDrawers.insert("channel_offline.png", &CLS_SkinPainter::ChannelOffline);
    m_qmapDrawers.insert("channel_online.png", &CLS_SkinPainter::ChannelOnline);
    m_qmapDrawers.insert("channel_no.png", &CLS_SkinPainter::ChannelNo);
    m_qmapDrawers.insert("alarm_in.png", &CLS_SkinPainter::AlarmIn);
    m_qmapDrawers.insert("alarm_out.png", &CLS_SkinPainter::AlarmOut);
    m_qmapDrawers.insert("decoder_online.png", &CLS_SkinPainter::DecoderOnline);
    m_qmapDrawers.insert("decoderout_online.png", &CLS_SkinPainter::DecoderOutOnline);
    m_qmapDrawers.insert("decoderin_online.png", &CLS_SkinPainter::DecoderInOnline);
    m_qmapDrawers.insert("car_item.png", &CLS_SkinPainter::CarItem);
    m_qmapDrawers.insert("carerr_item.png", &CLS_SkinPainter::CarErrItem);
    m_qmapDrawers.insert("pad_item.png", &CLS_SkinPainter::PadItem);
    m_qmapDrawers.insert("paderr_item.png", &CLS_SkinPainter::PadErrItem);
    m_qmapDrawers.insert("way_item.png", &CLS_SkinPainter::WayItem);
    m_qmapDrawers.insert("wayerr_item.png", &CLS_SkinPainter::WayErrItem);
    m_qmapDrawers.insert("fenzu.png", &CLS_SkinPainter::Group);
    m_qmapDrawers.insert("root_icon.png", &CLS_SkinPainter::Root);
    m_qmapDrawers.insert("icon_search.png", &CLS_SkinPainter::Search);
    m_qmapDrawers.insert("edit_close.png", &CLS_SkinPainter::Close);
    m_qmapDrawers.insert("preview.png", &CLS_SkinPainter::Preview);
    m_qmapDrawers.insert("playback.png", &CLS_SkinPainter::Playback);
    m_qmapDrawers.insert("branch_closed.png", &CLS_SkinPainter::BranchClosed);
    m_qmapDrawers.insert("branch_open.png", &CLS_SkinPainter::BranchOpen);
}

int CLS_SkinPainter::GetPalette(const QString& _qstrSkin, STRCT_SkinPalette& _clsPalette)
{
    if (_qstrSkin == QLatin1String("dark")) {
        _clsPalette.m_clrLine = QColor("#c9d1d9");
        _clsPalette.m_clrFill = QColor("#2d333b");
        _clsPalette.m_clrAccent = QColor("#4493f8");
        _clsPalette.m_clrOnline = QColor("#3fb950");
        _clsPalette.m_clrOffline = QColor("#6e7681");
        _clsPalette.m_clrError = QColor("#f85149");
        _clsPalette.m_clrAlarm = QColor("#e3a008");
        _clsPalette.m_clrFolder = QColor("#d4a72c");
        _clsPalette.m_clrMark = QColor("#1f2329");
        return 0;
    }
    if (_qstrSkin == QLatin1String("light")) {
        _clsPalette.m_clrLine = QColor("#424a53");
        _clsPalette.m_clrFill = QColor("#eaeef2");
        _clsPalette.m_clrAccent = QColor("#0969da");
        _clsPalette.m_clrOnline = QColor("#1a7f37");
        _clsPalette.m_clrOffline = QColor("#8c959f");
        _clsPalette.m_clrError = QColor("#cf222e");
        _clsPalette.m_clrAlarm = QColor("#bf8700");
        _clsPalette.m_clrFolder = QColor("#d29922");
        _clsPalette.m_clrMark = QColor("#ffffff");
        return 0;
    }
    return -1;
}

QStringList CLS_SkinPainter::GetImageNames() const
{
    return m_qmapDrawers.keys();
}

QImage CLS_SkinPainter::Draw(const QString& _qstrName, int _iScale) const
{
    const auto itDrawer = m_qmapDrawers.constFind(_qstrName);
    if (itDrawer == m_qmapDrawers.constEnd() || _iScale < 1) {
        return QImage();
    }

    QImage image(CONST_IMAGE_SIZE * _iScale, CONST_IMAGE_SIZE * _iScale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.scale(_iScale, _iScale);
    (this->*itDrawer.value())(painter);
    painter.end();
    return image;
}

int CLS_SkinPainter::Save(const QString& _qstrName, const QString& _qstrDir) const
{
    const QImage image = Draw(_qstrName, 1);
    const QImage image2x = Draw(_qstrName, 2);
    if (image.isNull() || image2x.isNull()) {
        return -1;
    }

    const QDir qdir(_qstrDir);
    const QString qstr2xName = QFileInfo(_qstrName).completeBaseName() + "@2x.png";
    if (!image.save(qdir.filePath(_qstrName), "PNG") || !image2x.save(qdir.filePath(qstr2xName), "PNG")) {
        return -1;
    }
    return 0;
}

// ---- shared parts ------------------------------------------------------------------------------

// A round badge in the lower right corner, cut out of whatever lies beneath it so that it stays
// readable on top of the device.
void CLS_SkinPainter::StatusBadge(QPainter& _painter, const QColor& _clrBadge) const
{
    _painter.save();
    _painter.setPen(Qt::NoPen);
    _painter.setCompositionMode(QPainter::CompositionMode_Clear);
    _painter.setBrush(Qt::black);
    _painter.drawEllipse(QPointF(12.0, 12.0), 4.4, 4.4);
    _painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    _painter.setBrush(_clrBadge);
    _painter.drawEllipse(QPointF(12.0, 12.0), 3.4, 3.4);
    _painter.restore();
}

// A recorder: a flat box with two lamps and a disk slot.
void CLS_SkinPainter::Recorder(QPainter& _painter, const QColor& _clrLine) const
{
    _painter.setPen(LinePen(_clrLine));
    _painter.setBrush(m_clsPalette.m_clrFill);
    _painter.drawRoundedRect(QRectF(0.5, 3.5, 15.0, 8.0), 1.5, 1.5);
    _painter.setPen(Qt::NoPen);
    _painter.setBrush(_clrLine);
    _painter.drawRect(QRectF(2.0, 6.0, 2.0, 2.0));
    _painter.drawRect(QRectF(5.0, 6.0, 2.0, 2.0));
    _painter.setPen(LinePen(_clrLine));
    _painter.drawLine(QPointF(8.5, 7.0), QPointF(13.0, 7.0));
    _painter.drawLine(QPointF(2.5, 13.5), QPointF(4.5, 13.5));
}

// A bullet camera on a bracket, lens to the right.
void CLS_SkinPainter::Camera(QPainter& _painter, const QColor& _clrLine) const
{
    _painter.setPen(LinePen(_clrLine));
    _painter.setBrush(m_clsPalette.m_clrFill);
    _painter.drawRoundedRect(QRectF(0.5, 3.5, 10.0, 6.0), 1.5, 1.5);
    QPolygonF qpolyLens;
    qpolyLens << QPointF(10.5, 5.5) << QPointF(14.5, 3.5) << QPointF(14.5, 9.5) << QPointF(10.5, 7.5);
    _painter.setBrush(_clrLine);
    _painter.drawPolygon(qpolyLens);
    _painter.drawLine(QPointF(4.5, 9.5), QPointF(4.5, 13.5));
    _painter.drawLine(QPointF(1.5, 13.5), QPointF(7.5, 13.5));
}

// A car seen from the side.
void CLS_SkinPainter::Car(QPainter& _painter) const
{
    QPainterPath path;
    path.moveTo(0.5, 11.0);
    path.lineTo(0.5, 8.0);
    path.lineTo(3.5, 7.5);
    path.lineTo(5.5, 4.0);
    path.lineTo(10.5, 4.0);
    path.lineTo(12.5, 7.5);
    path.lineTo(15.5, 8.0);
    path.lineTo(15.5, 11.0);
    path.closeSubpath();
    _painter.setPen(LinePen(m_clsPalette.m_clrLine));
    _painter.setBrush(m_clsPalette.m_clrAccent);
    _painter.drawPath(path);
    _painter.setBrush(m_clsPalette.m_clrFill);
    _painter.drawRect(QRectF(6.0, 5.0, 4.0, 2.5));
    _painter.setBrush(m_clsPalette.m_clrLine);
    _painter.drawEllipse(QPointF(4.0, 11.5), 1.8, 1.8);
    _painter.drawEllipse(QPointF(12.0, 11.5), 1.8, 1.8);
}

// A tablet standing upright.
void CLS_SkinPainter::Pad(QPainter& _painter) const
{
    _painter.setPen(LinePen(m_clsPalette.m_clrLine));
    _painter.setBrush(m_clsPalette.m_clrFill);
    _painter.drawRoundedRect(QRectF(2.5, 0.5, 10.0, 15.0), 1.5, 1.5);
    _painter.setPen(Qt::NoPen);
    _painter.setBrush(m_clsPalette.m_clrAccent);
    _painter.drawRect(QRectF(4.0, 2.0, 7.0, 10.0));
    _painter.setBrush(m_clsPalette.m_clrLine);
    _painter.drawEllipse(QPointF(7.5, 13.8), 0.8, 0.8);
}

// A road running into the distance, with its centre line.
void CLS_SkinPainter::Way(QPainter& _painter) const
{
    QPolygonF qpolyRoad;
    qpolyRoad << QPointF(5.5, 0.5) << QPointF(10.5, 0.5) << QPointF(15.5, 15.5) << QPointF(0.5, 15.5);
    _painter.setPen(LinePen(m_clsPalette.m_clrLine));
    _painter.setBrush(m_clsPalette.m_clrOffline);
    _painter.drawPolygon(qpolyRoad);
    _painter.setPen(LinePen(m_clsPalette.m_clrMark, 1.2));
    _painter.drawLine(QPointF(8.0, 2.5), QPointF(8.0, 4.0));
    _painter.drawLine(QPointF(8.0, 6.5), QPointF(8.0, 8.5));
    _painter.drawLine(QPointF(8.0, 11.0), QPointF(8.0, 14.0));
}

// ---- the images ---------------------------------------------------------------------------------

void CLS_SkinPainter::HostOffline(QPainter& _painter) const
{
    Recorder(_painter, m_clsPalette.m_clrOffline);
    StatusBadge(_painter, m_clsPalette.m_clrOffline);
}

void CLS_SkinPainter::HostOnline(QPainter& _painter) const
{
    Recorder(_painter, m_clsPalette.m_clrLine);
    StatusBadge(_painter, m_clsPalette.m_clrOnline);
}

void CLS_SkinPainter::ChannelOffline(QPainter& _painter) const
{
    Camera(_painter, m_clsPalette.m_clrOffline);
    StatusBadge(_painter, m_clsPalette.m_clrOffline);
}

void CLS_SkinPainter::ChannelOnline(QPainter& _painter) const
{
    Camera(_painter, m_clsPalette.m_clrLine);
    StatusBadge(_painter, m_clsPalette.m_clrOnline);
}

// No video: a dimmed camera with a red "no entry" badge.
void CLS_SkinPainter::ChannelNo(QPainter& _painter) const
{
    Camera(_painter, m_clsPalette.m_clrOffline);
    StatusBadge(_painter, m_clsPalette.m_clrError);
    _painter.setPen(LinePen(m_clsPalette.m_clrMark, 1.2));
    _painter.drawLine(QPointF(10.3, 12.0), QPointF(13.7, 12.0));
}

// An alarm input: a bell.
void CLS_SkinPainter::AlarmIn(QPainter& _painter) const
{
    QPainterPath path;
    path.moveTo(2.5, 12.0);
    path.cubicTo(4.5, 10.5, 3.5, 3.0, 8.0, 2.5);
    path.cubicTo(12.5, 3.0, 11.5, 10.5, 13.5, 12.0);
    path.closeSubpath();
    _painter.setPen(LinePen(m_clsPalette.m_clrAlarm));
    _painter.setBrush(m_clsPalette.m_clrAlarm);
    _painter.drawPath(path);
    _painter.drawLine(QPointF(8.0, 1.0), QPointF(8.0, 2.5));
    _painter.drawEllipse(QPointF(8.0, 13.8), 1.5, 1.5);
}

// An alarm output: a beacon with its rays.
void CLS_SkinPainter::AlarmOut(QPainter& _painter) const
{
    _painter.setPen(LinePen(m_clsPalette.m_clrAlarm));
    _painter.setBrush(m_clsPalette.m_clrAlarm);
    _painter.drawPie(QRectF(4.0, 5.5, 8.0, 12.0), 0, 180 * 16);
    _painter.drawRoundedRect(QRectF(2.5, 11.5, 11.0, 3.0), 1.0, 1.0);
    _painter.setPen(LinePen(m_clsPalette.m_clrAlarm, 1.3));
    _painter.drawLine(QPointF(8.0, 1.0), QPointF(8.0, 3.0));
    _painter.drawLine(QPointF(2.0, 3.5), QPointF(3.5, 5.0));
    _painter.drawLine(QPointF(14.0, 3.5), QPointF(12.5, 5.0));
}

// A decoder: a box with a play mark.
void CLS_SkinPainter::DecoderOnline(QPainter& _painter) const
{
    _painter.setPen(LinePen(m_clsPalette.m_clrLine));
    _painter.setBrush(m_clsPalette.m_clrFill);
    _painter.drawRoundedRect(QRectF(0.5, 2.5, 15.0, 11.0), 1.5, 1.5);
    QPolygonF qpolyPlay;
    qpolyPlay << QPointF(6.0, 5.0) << QPointF(11.0, 8.0) << QPointF(6.0, 11.0);
    _painter.setPen(LinePen(m_clsPalette.m_clrAccent));
    _painter.setBrush(m_clsPalette.m_clrAccent);
    _painter.drawPolygon(qpolyPlay);
}

// A decoder output: the screen it drives.
void CLS_SkinPainter::DecoderOutOnline(QPainter& _painter) const
{
    _painter.setPen(LinePen(m_clsPalette.m_clrLine));
    _painter.setBrush(m_clsPalette.m_clrAccent);
    _painter.drawRoundedRect(QRectF(0.5, 1.5, 15.0, 10.0), 1.0, 1.0);
    _painter.drawLine(QPointF(8.0, 11.5), QPointF(8.0, 14.0));
    _painter.drawLine(QPointF(4.5, 14.5), QPointF(11.5, 14.5));
}

// A decoder input: a signal going into a port.
void CLS_SkinPainter::DecoderInOnline(QPainter& _painter) const
{
    _painter.setPen(LinePen(m_clsPalette.m_clrLine));
    _painter.setBrush(m_clsPalette.m_clrFill);
    _painter.drawRoundedRect(QRectF(8.5, 1.5, 7.0, 13.0), 1.5, 1.5);
    _painter.setPen(LinePen(m_clsPalette.m_clrAccent, 1.6));
    _painter.drawLine(QPointF(1.0, 8.0), QPointF(11.0, 8.0));
    QPolygonF qpolyHead;
    qpolyHead << QPointF(8.0, 5.0) << QPointF(11.5, 8.0) << QPointF(8.0, 11.0);
    _painter.setBrush(m_clsPalette.m_clrAccent);
    _painter.drawPolygon(qpolyHead);
}

void CLS_SkinPainter::CarItem(QPainter& _painter) const
{
    Car(_painter);
    StatusBadge(_painter, m_clsPalette.m_clrOnline);
}

void CLS_SkinPainter::CarErrItem(QPainter& _painter) const
{
    Car(_painter);
    StatusBadge(_painter, m_clsPalette.m_clrError);
}

void CLS_SkinPainter::PadItem(QPainter& _painter) const
{
    Pad(_painter);
    StatusBadge(_painter, m_clsPalette.m_clrOnline);
}

void CLS_SkinPainter::PadErrItem(QPainter& _painter) const
{
    Pad(_painter);
    StatusBadge(_painter, m_clsPalette.m_clrError);
}

void CLS_SkinPainter::WayItem(QPainter& _painter) const
{
    Way(_painter);
    StatusBadge(_painter, m_clsPalette.m_clrOnline);
}

void CLS_SkinPainter::WayErrItem(QPainter& _painter) const
{
    Way(_painter);
    StatusBadge(_painter, m_clsPalette.m_clrError);
}

// A group: a folder.
void CLS_SkinPainter::Group(QPainter& _painter) const
{
    QPolygonF qpolyBack;
    qpolyBack << QPointF(0.5, 2.5) << QPointF(5.5, 2.5) << QPointF(7.0, 4.5) << QPointF(15.5, 4.5)
              << QPointF(15.5, 13.5) << QPointF(0.5, 13.5);
    _painter.setPen(LinePen(m_clsPalette.m_clrFolder.darker(130)));
    _painter.setBrush(m_clsPalette.m_clrFolder.darker(115));
    _painter.drawPolygon(qpolyBack);
    _painter.setBrush(m_clsPalette.m_clrFolder);
    _painter.drawRect(QRectF(0.5, 6.5, 15.0, 7.0));
}

// The root of the resources: a small hierarchy.
void CLS_SkinPainter::Root(QPainter& _painter) const
{
    _painter.setPen(LinePen(m_clsPalette.m_clrLine));
    _painter.drawLine(QPointF(8.0, 5.5), QPointF(8.0, 8.0));
    _painter.drawLine(QPointF(3.5, 8.0), QPointF(12.5, 8.0));
    _painter.drawLine(QPointF(3.5, 8.0), QPointF(3.5, 10.5));
    _painter.drawLine(QPointF(12.5, 8.0), QPointF(12.5, 10.5));
    _painter.setBrush(m_clsPalette.m_clrAccent);
    _painter.drawRoundedRect(QRectF(5.0, 0.5, 6.0, 5.0), 1.0, 1.0);
    _painter.setBrush(m_clsPalette.m_clrFill);
    _painter.drawRoundedRect(QRectF(0.5, 10.5, 6.0, 5.0), 1.0, 1.0);
    _painter.drawRoundedRect(QRectF(9.5, 10.5, 6.0, 5.0), 1.0, 1.0);
}

// The search button: a magnifying glass.
void CLS_SkinPainter::Search(QPainter& _painter) const
{
    _painter.setBrush(Qt::NoBrush);
    _painter.setPen(LinePen(m_clsPalette.m_clrLine, 1.6));
    _painter.drawEllipse(QPointF(6.5, 6.5), 4.5, 4.5);
    _painter.setPen(LinePen(m_clsPalette.m_clrLine, 2.2));
    _painter.drawLine(QPointF(10.0, 10.0), QPointF(14.3, 14.3));
}

// The clear button: a cross on a round face.
void CLS_SkinPainter::Close(QPainter& _painter) const
{
    _painter.setPen(Qt::NoPen);
    _painter.setBrush(m_clsPalette.m_clrOffline);
    _painter.drawEllipse(QPointF(8.0, 8.0), 6.5, 6.5);
    _painter.setPen(LinePen(m_clsPalette.m_clrMark, 1.5));
    _painter.drawLine(QPointF(5.5, 5.5), QPointF(10.5, 10.5));
    _painter.drawLine(QPointF(10.5, 5.5), QPointF(5.5, 10.5));
}

// Live view: a play mark in a ring.
void CLS_SkinPainter::Preview(QPainter& _painter) const
{
    _painter.setPen(LinePen(m_clsPalette.m_clrAccent, 1.4));
    _painter.setBrush(Qt::NoBrush);
    _painter.drawEllipse(QPointF(8.0, 8.0), 6.8, 6.8);
    QPolygonF qpolyPlay;
    qpolyPlay << QPointF(6.3, 4.8) << QPointF(11.3, 8.0) << QPointF(6.3, 11.2);
    _painter.setPen(LinePen(m_clsPalette.m_clrAccent));
    _painter.setBrush(m_clsPalette.m_clrAccent);
    _painter.drawPolygon(qpolyPlay);
}

// Playback: a clock with an arrow running back round it.
void CLS_SkinPainter::Playback(QPainter& _painter) const
{
    _painter.setBrush(Qt::NoBrush);
    _painter.setPen(LinePen(m_clsPalette.m_clrAccent, 1.4));
    // From the upper left, counter-clockwise almost all the way round.
    _painter.drawArc(QRectF(1.5, 1.5, 13.0, 13.0), 135 * 16, 290 * 16);
    QPolygonF qpolyHead;
    qpolyHead << QPointF(0.8, 2.0) << QPointF(4.8, 5.6) << QPointF(0.8, 6.6);
    _painter.setBrush(m_clsPalette.m_clrAccent);
    _painter.setPen(LinePen(m_clsPalette.m_clrAccent, 0.8));
    _painter.drawPolygon(qpolyHead);
    _painter.setPen(LinePen(m_clsPalette.m_clrLine, 1.3));
    _painter.drawLine(QPointF(8.0, 8.0), QPointF(8.0, 4.5));
    _painter.drawLine(QPointF(8.0, 8.0), QPointF(10.5, 9.8));
}

void CLS_SkinPainter::BranchClosed(QPainter& _painter) const
{
    _painter.setBrush(Qt::NoBrush);
    _painter.setPen(LinePen(m_clsPalette.m_clrOffline.lighter(115), 1.5));
    _painter.drawPolyline(QPolygonF() << QPointF(6.0, 4.5) << QPointF(9.5, 8.0) << QPointF(6.0, 11.5));
}

void CLS_SkinPainter::BranchOpen(QPainter& _painter) const
{
    _painter.setBrush(Qt::NoBrush);
    _painter.setPen(LinePen(m_clsPalette.m_clrOffline.lighter(115), 1.5));
    _painter.drawPolyline(QPolygonF() << QPointF(4.5, 6.0) << QPointF(8.0, 9.5) << QPointF(11.5, 6.0));
}
