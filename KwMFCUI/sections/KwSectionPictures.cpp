#include "KwSectionPictures.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

QSize KwSectionPictureSize()
{
    return QSize(200, 150);
}

QPixmap KwSectionPicture(int pictureId, qreal dpr)
{
    const QString path = QStringLiteral(":/kwmfcui/sections/shape-%1.svg").arg(pictureId);
    if (pictureId < 0 || !QFile::exists(path))
        return QPixmap();
    QSvgRenderer svg(path);
    const QSize logical = KwSectionPictureSize();
    QPixmap pm(logical * dpr);
    pm.setDevicePixelRatio(dpr);
    pm.fill(Qt::white);
    QPainter p(&pm);
    svg.render(&p, QRectF(QPointF(0, 0), QSizeF(logical)));
    return pm;
}
