#pragma once
// Draws the images of a skin: device icons with their status badges, the search line's buttons,
// the branch arrows of the tree and the demo's tool buttons. Plain QImage and QPainter, no text and
// no platform plugin, so it runs as a build step anywhere. One thread at a time per object.

#include <QColor>
#include <QImage>
#include <QMap>
#include <QString>
#include <QStringList>

class QPainter;

// The colours one skin draws with.
struct STRCT_SkinPalette
{
    QColor m_clrLine;    // outlines of devices on line and of neutral shapes
    QColor m_clrFill;    // inner faces of boxes
    QColor m_clrAccent;  // screens, lenses, play marks
    QColor m_clrOnline;  // status badge: on line
    QColor m_clrOffline; // status badge and outlines: off line
    QColor m_clrError;   // status badge: error, no video
    QColor m_clrAlarm;   // alarm inputs and outputs
    QColor m_clrFolder;  // groups
    QColor m_clrMark;    // marks drawn on top of a badge or a button face
};

class CLS_SkinPainter
{
public:
    explicit CLS_SkinPainter(const STRCT_SkinPalette& _clsPalette);

    // The palette of a skin we ship ("dark", "light"); -1 for any other name.
    static int GetPalette(const QString& _qstrSkin, STRCT_SkinPalette& _clsPalette);

    // Every image name this painter can draw, file names with ".png".
    QStringList GetImageNames() const;

    // One image at _iScale times 16 pixels square; a null image for an unknown name or a scale
    // below 1.
    QImage Draw(const QString& _qstrName, int _iScale) const;

    // Writes <dir>/<name> at 16 pixels and <dir>/<base>@2x.png at 32 pixels. 0, or -1 for an
    // unknown name or a file that can't be written.
    int Save(const QString& _qstrName, const QString& _qstrDir) const;

private:
    typedef void (CLS_SkinPainter::*PFun_Draw)(QPainter&) const;

    void StatusBadge(QPainter& _painter, const QColor& _clrBadge) const;
    void Recorder(QPainter& _painter, const QColor& _clrLine) const;
    void Camera(QPainter& _painter, const QColor& _clrLine) const;
    void Car(QPainter& _painter) const;
    void Pad(QPainter& _painter) const;
    void Way(QPainter& _painter) const;

    void HostOffline(QPainter& _painter) const;
    void HostOnline(QPainter& _painter) const;
    void ChannelOffline(QPainter& _painter) const;
    void ChannelOnline(QPainter& _painter) const;
    void ChannelNo(QPainter& _painter) const;
    void AlarmIn(QPainter& _painter) const;
    void AlarmOut(QPainter& _painter) const;
    void DecoderOnline(QPainter& _painter) const;
    void DecoderOutOnline(QPainter& _painter) const;
    void DecoderInOnline(QPainter& _painter) const;
    void CarItem(QPainter& _painter) const;
    void CarErrItem(QPainter& _painter) const;
    void PadItem(QPainter& _painter) const;
    void PadErrItem(QPainter& _painter) const;
    void WayItem(QPainter& _painter) const;
    void WayErrItem(QPainter& _painter) const;
    void Group(QPainter& _painter) const;
    void Root(QPainter& _painter) const;
    void Search(QPainter& _painter) const;
    void Close(QPainter& _painter) const;
    void Preview(QPainter& _painter) const;
    void Playback(QPainter& _painter) const;
    void BranchClosed(QPainter& _painter) const;
    void BranchOpen(QPainter& _painter) const;

    STRCT_SkinPalette m_clsPalette;
    QMap<QString, PFun_Draw> m_qmapDrawers; // image name -> drawing on a 16 by 16 grid
};
