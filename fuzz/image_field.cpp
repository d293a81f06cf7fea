#include <cstdint>
#include <cstdlib>

#include <QGuiApplication>
#include <QPainter>

#include "canvas/painting/NodeMetrics.h"
#include "model/Records.h"

using namespace quilmora;

namespace {

// A document may have any text in the field: measuring and drawing the topic give a picture of bounded size, or none.
void show(const QString& imageData) {
  NodeMeasurer measurer;
  Node node;
  node.style = NodeStyle::defaultStyle();
  node.imageData = imageData;
  const NodeMetrics metrics = measurer.measure(node, std::nullopt, nullptr);
  ShownImage* shown = measurer.pictures().image(imageData);
  if (metrics.image.isEmpty() != (shown == nullptr)) std::abort();
  if (shown == nullptr) return;
  if (!metrics.box.contains(metrics.image) || metrics.image.width() > 1000 || metrics.image.height() > 1000)
    std::abort();
  QImage target(64, 64, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&target);
  for (const double width : {0.5, 7.0, 60.0, 500.0}) painter.drawImage(QRectF(0, 0, 64, 64), shown->forWidth(width));
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static const QGuiApplication application(*argc, *argv);
  return 0;
}

// Uses the bytes once as the file in the field, and once as the field itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  show(QString::fromLatin1(bytes.toBase64()));
  show(QString::fromLatin1(bytes));
  return 0;
}
