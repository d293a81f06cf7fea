#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

namespace quilmora {

// Files as pictures of topics, wherever they come from: a dialog, a drop or a script. Only pixel formats are accepted;
// a drawing may refer to other files and devices, and take unbounded work.

// The extensions of readable formats, without the dot.
QStringList pictureExtensions();

// Whether this format, by the toolkit's name, is a pixel format.
bool isPixelFormat(const QByteArray& format);

struct PictureRead {
  QImage image;   // null if the file has no picture
  QString error;  // why the image is null, as a text to show
};

// The picture in a regular file, upright, and scaled down while reading if its format allows. The file's content
// decides its format, not its name.
PictureRead readPictureFile(const QString& path);

}  // namespace quilmora
