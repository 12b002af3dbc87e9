#include "CLS_DesignerTreeIcon.h"

#include <QPainter>
#include <QPixmap>

namespace CLS_DesignerTreeIcon {

QIcon Make(bool _blDevices)
{
    QIcon icon;
    for (int iSide : {16, 22, 32}) {
        QPixmap pixmap(iSide, iSide);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        const qreal dUnit = iSide / 16.0;
        const QColor colorLine(90, 100, 115);
        painter.setPen(QPen(colorLine, dUnit));
        // The root, and the guide line its three rows hang from.
        painter.fillRect(QRectF(1 * dUnit, 1 * dUnit, 5 * dUnit, 3 * dUnit), colorLine);
        painter.drawLine(QPointF(3.5 * dUnit, 4 * dUnit), QPointF(3.5 * dUnit, 13.5 * dUnit));
        for (int i = 0; i < 3; ++i) {
            const qreal dY = (6.5 + 3.5 * i) * dUnit;
            painter.drawLine(QPointF(3.5 * dUnit, dY), QPointF(6 * dUnit, dY));
            painter.fillRect(QRectF(7 * dUnit, dY - 1 * dUnit, 5 * dUnit, 2 * dUnit), QColor(60, 120, 200));
            if (_blDevices) {
                painter.setBrush(i == 1 ? QColor(200, 60, 60) : QColor(40, 170, 80));
                painter.setPen(Qt::NoPen);
                painter.drawEllipse(QPointF(14 * dUnit, dY), 1.4 * dUnit, 1.4 * dUnit);
                painter.setPen(QPen(colorLine, dUnit));
                painter.setBrush(Qt::NoBrush);
            }
        }
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace CLS_DesignerTreeIcon
