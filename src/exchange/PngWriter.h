#pragma once

#include <QtGlobal>

#include "exchange/PictureScene.h"

namespace quilmora {

class FileStream;

// Writes a PNG file of 8 bit red, green and blue around the compressed rows of a picture, marked as having two pixels a
// point (144 an inch). Each returns false once the file failed.
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
