#pragma once

#include <vector>

#include <QByteArray>
#include <QSizeF>

#include "exchange/PictureScene.h"

namespace quilmora {

class FileStream;

// Writes a PDF file of one page, filled by one picture whose rows arrive compressed. Each function returns false once
// the file has failed.
class PdfWriter {
 public:
  // `page` is in points. A page larger than readers allow uses larger units, so that it keeps its size.
  PdfWriter(FileStream& file, PictureSize size, QSizeF page) : m_file(file), m_size(size), m_page(page) {}

  bool begin();
  bool take(const char* data, qsizetype size);
  bool finish();

 private:
  bool write(const QByteArray& text);
  // Starts the next object.
  bool beginObject();

  FileStream& m_file;
  PictureSize m_size;
  QSizeF m_page;
  qint64 m_written = 0;
  qint64 m_pictureLength = 0;
  std::vector<qint64> m_objects;  // offset of each object
};

}  // namespace quilmora
