#include "editor/PictureFiles.h"

#include <algorithm>
#include <array>
#include <new>

#include <QBuffer>
#include <QImageReader>

#include "platform/RegularFile.h"

namespace quilmora {

namespace {

constexpr std::array pixelFormats = {
    QByteArrayView("avif"), QByteArrayView("bmp"),  QByteArrayView("cur"),  QByteArrayView("gif"),
    QByteArrayView("heic"), QByteArrayView("heif"), QByteArrayView("icns"), QByteArrayView("ico"),
    QByteArrayView("jp2"),  QByteArrayView("jpeg"), QByteArrayView("jpg"),  QByteArrayView("jxl"),
    QByteArrayView("pbm"),  QByteArrayView("pgm"),  QByteArrayView("png"),  QByteArrayView("ppm"),
    QByteArrayView("tga"),  QByteArrayView("tif"),  QByteArrayView("tiff"), QByteArrayView("wbmp"),
    QByteArrayView("webp"), QByteArrayView("xbm"),  QByteArrayView("xpm")};

constexpr qsizetype maxFileBytes = qsizetype{256} << 20;
// The most pixels that a decoder may have to process, however few are kept in the end.
constexpr qint64 maxPixels = 250'000'000;
// Larger pictures are read at this size if their format can, as a topic keeps a much smaller one.
constexpr int maxSideRead = 1600;

PictureRead refused(const QString& error) {
  return {{}, error};
}

PictureRead readPicture(QIODevice& device) {
  QImageReader reader(&device);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const QByteArray format = reader.format();
  if (format.isEmpty()) return refused(QStringLiteral("This is not a picture that can be read."));
  if (!isPixelFormat(format))
    return refused(QStringLiteral("This is a drawing. Save it as PNG or JPEG, and add that."));
  const QSize size = reader.size();
  if (qint64{size.width()} * size.height() > maxPixels) return refused(QStringLiteral("The picture is too large."));
  if (std::max(size.width(), size.height()) > maxSideRead)
    reader.setScaledSize(size.scaled(maxSideRead, maxSideRead, Qt::KeepAspectRatio).expandedTo({1, 1}));
  QImage image = reader.read();
  if (image.isNull()) return refused(reader.errorString());
  return {std::move(image), {}};
}

}  // namespace

QStringList pictureExtensions() {
  QStringList extensions;
  for (const QByteArray& format : QImageReader::supportedImageFormats())
    if (isPixelFormat(format)) extensions.append(QString::fromLatin1(format));
  return extensions;
}

bool isPixelFormat(const QByteArray& format) {
  return std::ranges::find(pixelFormats, QByteArrayView(format)) != pixelFormats.end();
}

PictureRead readPictureFile(const QString& path) {
  try {
    QByteArray bytes = readWholeFile(path, maxFileBytes);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return readPicture(buffer);
  } catch (const FileReadError& error) {
    return refused(error.message());
  } catch (const std::bad_alloc&) {
    return refused(QStringLiteral("There is not enough memory for it."));
  }
}

}  // namespace quilmora
