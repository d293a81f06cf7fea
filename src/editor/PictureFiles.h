#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

namespace quilmora {

// Files as pictures of topics, wherever they come from: a panel, a drop or a script. Only what is made of pixels counts
// as a picture; a drawing may name other files and devices, and hold work without bounds.

// The extensions of what can be read, without the dot.
QStringList pictureExtensions();

// Whether files of this format, as the toolkit names it, are made of pixels.
bool isPixelFormat(const QByteArray& format);

struct PictureRead {
  QImage image;   // null where the file holds no picture
  QString error;  // then why, fit to be shown
};

// The picture in a regular file, upright, and scaled down while it is read where its format can. What the file is
// decides, not how it is called.
PictureRead readPictureFile(const QString& path);

}  // namespace quilmora
