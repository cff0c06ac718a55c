#pragma once
// The pictures of the section shapes (our own drawings, kept as SVG so they stay crisp at any
// display scale).
#include <QPixmap>
#include <QSize>

// Logical size of a shape picture.
QSize KwSectionPictureSize();
// The picture with this id drawn for the given device pixel ratio; a null pixmap for an
// unknown id.
QPixmap KwSectionPicture(int pictureId, qreal devicePixelRatio);
