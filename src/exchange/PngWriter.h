#pragma once

#include <QtGlobal>

#include "exchange/PictureScene.h"

namespace quilmora {

class FileStream;

// Writes a PNG file with 8 bits each of red, green and blue from a picture whose rows arrive compressed; two pixels per
// point (144 per inch). Each function returns false once the file has failed.
class PngWriter {
 public:
  PngWriter(FileStream& file, PictureSize size) : m_file(file), m_size(size) {}

  bool begin();
  bool take(const char* data, qsizetype size);
  bool finish();

 private:
  bool writeChunk(const char* type, const char* data, qsizetype size);

  FileStream& m_file;
  PictureSize m_size;
};

}  // namespace quilmora
