#include "support/ReferencePicture.h"

#include <algorithm>
#include <cstdlib>

#include <QDir>

#include "support/Folders.h"

namespace quilmora::test {

namespace {

bool isNear(QRgb a, QRgb b, int tolerance) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))}) <=
         tolerance;
}

// A pale copy of the reference with the differing pixels in red, and the number of them.
std::pair<QImage, int> differenceOf(const QImage& picture, const QImage& reference, int tolerance) {
  QImage shown(picture.size().expandedTo(reference.size()), QImage::Format_RGB32);
  shown.fill(Qt::red);
  int count = 0;
  for (int y = 0; y < shown.height(); ++y)
    for (int x = 0; x < shown.width(); ++x) {
      const bool isAlike =
          picture.valid(x, y) && reference.valid(x, y) && isNear(picture.pixel(x, y), reference.pixel(x, y), tolerance);
      count += isAlike ? 0 : 1;
      if (isAlike) shown.setPixel(x, y, qRgb(192 + qGray(reference.pixel(x, y)) / 4, 224, 224));
    }
  return {shown, count};
}

}  // namespace

testing::AssertionResult isReference(const QImage& picture, const QString& name, int tolerance) {
  const QString file = QStringLiteral("/%1.png").arg(name);
  const QString path = sourceFolder() + QStringLiteral("/tests/pictures") + file;
  const QImage opaque = picture.convertToFormat(QImage::Format_RGB32);
  if (qEnvironmentVariableIsSet("QUILMORA_REBASELINE")) {
    QDir().mkpath(sourceFolder() + QStringLiteral("/tests/pictures"));
    if (opaque.save(path)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "cannot write " << path.toStdString();
  }
  const QImage reference = QImage(path).convertToFormat(QImage::Format_RGB32);
  const auto [shown, count] = differenceOf(opaque, reference, tolerance);
  if (count == 0 && !reference.isNull()) return testing::AssertionSuccess();
  const QString folder = QDir::cleanPath(programFolder() + QStringLiteral("/../differences"));
  QDir().mkpath(folder);
  opaque.save(folder + file);
  shown.save(folder + QStringLiteral("/%1-difference.png").arg(name));
  return testing::AssertionFailure() << name.toStdString() << " differs in " << count << " pixels; see "
                                     << folder.toStdString() << ", and ./test --rebaseline where it is meant to";
}

}  // namespace quilmora::test
