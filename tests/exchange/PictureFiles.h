#pragma once

#include <csetjmp>
#include <cstdio>
#include <functional>
#include <memory>

#include <QFile>
#include <QImage>
#include <QPainter>
#include <png.h>

#include "exchange/PictureScene.h"

// Readers of exported pictures that share no code with the writers.
namespace quilmora::test {

// The header of a PNG file, as libpng reads it.
struct PngHead {
  bool isValid = false;
  unsigned width = 0;
  unsigned height = 0;
  int bitDepth = 0;
  int colorType = 0;
  unsigned pixelsPerMetre = 0;
};

// Reads a PNG file row by row, so that it may be larger than memory. `visit` gets the number of a row and its pixels,
// three bytes each. If the file is damaged anywhere, the header is invalid.
inline PngHead readPng(const QString& path, const std::function<void(unsigned, const unsigned char*)>& visit) {
  PngHead head;
  FILE* file = std::fopen(QFile::encodeName(path).constData(), "rb");
  if (!file) return head;
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  std::vector<unsigned char> row;
  if (setjmp(png_jmpbuf(png)) == 0) {
    png_init_io(png, file);
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_read_info(png, info);
    head.width = png_get_image_width(png, info);
    head.height = png_get_image_height(png, info);
    head.bitDepth = png_get_bit_depth(png, info);
    head.colorType = png_get_color_type(png, info);
    head.pixelsPerMetre = png_get_pixels_per_meter(png, info);
    row.resize(png_get_rowbytes(png, info));
    for (unsigned y = 0; y < head.height; ++y) {
      png_read_row(png, row.data(), nullptr);
      visit(y, row.data());
    }
    png_read_end(png, info);
    head.isValid = true;
  }
  png_destroy_read_struct(&png, &info, nullptr);
  std::fclose(file);
  return head;
}

inline QImage pngImage(const QString& path) {
  QImage image;
  const PngHead head = readPng(path, [](unsigned, const unsigned char*) {});
  if (!head.isValid) return image;
  image = QImage(static_cast<int>(head.width), static_cast<int>(head.height), QImage::Format_RGB32);
  readPng(path, [&](unsigned y, const unsigned char* row) {
    for (int x = 0; x < image.width(); ++x)
      image.setPixel(x, static_cast<int>(y), qRgb(row[3 * x], row[3 * x + 1], row[3 * x + 2]));
  });
  return image;
}

// The whole picture, painted at once.
inline QImage unbandedPicture(const MindMap& map) {
  const QRectF bounds = pictureBounds(map);
  const auto size = pictureSize(bounds);
  QImage image(static_cast<int>(size->width), static_cast<int>(size->height), QImage::Format_RGB32);
  MapScene scene;
  scene.map = map;
  scene.index = MapIndex(map.nodes, map.edges);
  scene.tree = TreeInfo(scene.index);
  scene.view = {-bounds.topLeft() * 2, 2.0};
  scene.exposed = QRectF(image.rect());
  QPainter painter(&image);
  MapPainter().paint(painter, scene, PaintOptions::forExport());
  return image;
}

// How many pixels differ; all of them if the sizes do.
inline int differingPixels(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return std::max(a.width() * a.height(), b.width() * b.height());
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (a.pixel(x, y) != b.pixel(x, y)) ++count;
  return count;
}

}  // namespace quilmora::test
