#include "canvas/painting/TopicPictures.h"

#include <algorithm>
#include <new>
#include <optional>

#include <QBuffer>
#include <QFuture>
#include <QImageReader>
#include <QTimer>

#include "editor/PictureFiles.h"
#include "platform/Futures.h"
#include "platform/StartInPool.h"

namespace quilmora {

namespace {

constexpr qsizetype maxImageDataLength = 64 * 1024 * 1024;
constexpr int maxImageSide = 16384;
constexpr qint64 maxImagePixels = 48LL * 1024 * 1024;
// Pictures are kept as large as the deepest zoom shows them.
constexpr QSize keptImageSize(1000, 2000);
constexpr int smallWidth = 128;
constexpr int keptSmallKilobytes = 48 * 1024;
// Up to this size a picture is decoded when it is requested: a few milliseconds' work, and more than any picture that
// this program makes.
constexpr qint64 quickPixels = 800 * 800;
constexpr qsizetype quickDataLength = 1024 * 1024;
// Most files give their size within this many letters of base64.
constexpr qsizetype headerLength = 64 * 1024;
constexpr int threadCount = 2;
constexpr std::size_t maxWaiting = 256;
// Otherwise, pictures that exceed the budget together would be decoded again and again.
constexpr qint64 restMilliseconds = 5000;
constexpr int readyDelayMilliseconds = 60;
const QColor placeholderColor(128, 128, 128, 64);

bool isTooLarge(QSize size) {
  return size.width() > maxImageSide || size.height() > maxImageSide ||
         qint64{size.width()} * size.height() > maxImagePixels;
}

QSize keptSize(QSize size) {
  const bool fits = size.width() <= keptImageSize.width() && size.height() <= keptImageSize.height();
  return fits ? size : size.scaled(keptImageSize, Qt::KeepAspectRatio).expandedTo({1, 1});
}

// The size according to the file's first bytes: empty if the picture cannot be shown; nothing if they do not say.
std::optional<QSize> promisedSize(const QString& imageData) {
  const bool isWhole = imageData.size() <= headerLength;
  const QByteArray letters = imageData.left(headerLength).toLatin1();
  auto bytes = QByteArray::fromBase64Encoding(letters, QByteArray::AbortOnBase64DecodingErrors);
  if (!bytes || bytes.decoded.isEmpty()) return QSize();
  QBuffer buffer(&bytes.decoded);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  if (!isPixelFormat(reader.format())) return QSize();
  reader.setAutoTransform(true);
  QSize size = reader.size();
  if (!size.isValid()) return isWhole ? std::optional(QSize()) : std::nullopt;
  if (isTooLarge(size)) return QSize();
  if (reader.transformation() & QImageIOHandler::TransformationRotate90) size.transpose();
  return size;
}

QImage decoded(const QString& imageData) try {
  if (imageData.size() > maxImageDataLength) return {};
  auto bytes = QByteArray::fromBase64Encoding(imageData.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
  if (!bytes || bytes.decoded.isEmpty()) return {};
  QBuffer buffer(&bytes.decoded);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  if (!isPixelFormat(reader.format()) || isTooLarge(reader.size())) return {};
  QImage image = reader.read();
  if (image.isNull()) return {};
  if (image.size() != keptSize(image.size()))
    image = image.scaled(keptSize(image.size()), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
} catch (const std::bad_alloc&) {
  return {};
}

bool canBeHalved(const QImage& picture) {
  return picture.width() >= 16 && picture.height() >= 16;
}

int halvedWidth(const QImage& picture) {
  return picture.width() / 2;
}

QImage halved(const QImage& picture) {
  return picture.scaled(picture.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// One of the halvings that the full picture has too, so that nobody sees which of them was kept.
QImage smallVersion(QImage picture) {
  while (picture.width() > smallWidth && canBeHalved(picture)) picture = halved(picture);
  return picture;
}

QImage placeholder() {
  QImage surface(1, 1, QImage::Format_ARGB32_Premultiplied);
  surface.fill(placeholderColor);
  return surface;
}

int costOf(const QImage& picture, const QString& data, int most) {
  // The halvings together take another third of the picture's size.
  const qsizetype bytes = picture.sizeInBytes() * 4 / 3 + data.size() * 2;
  return static_cast<int>(std::min<qsizetype>(1 + bytes / 1024, most));
}

}  // namespace

const QImage& ShownImage::forWidth(double pixelWidth) {
  const QImage* best = &full;
  for (std::size_t level = 0; halvedWidth(*best) >= pixelWidth && canBeHalved(*best); ++level) {
    if (level == halvings.size()) halvings.push_back(halved(*best));
    best = &halvings[level];
  }
  return *best;
}

TopicPictures::TopicPictures() : m_whole(keptKilobytes), m_small(keptSmallKilobytes) {
  m_time.start();
}

TopicPictures::~TopicPictures() {
  if (m_pool) m_pool->clear();
}

void TopicPictures::decodeInBackground(std::function<void()> ready) {
  m_ready = std::move(ready);
  if (m_pool) return;
  m_pool = std::make_unique<QThreadPool>();
  m_pool->setMaxThreadCount(threadCount);
}

ShownImage* TopicPictures::image(const QString& imageData, double pixelWidth) {
  if (imageData.isEmpty()) return nullptr;
  const Key key{imageData.constData(), imageData.size()};
  if (Whole* whole = m_whole.object(key)) return whole->image.full.isNull() ? nullptr : &whole->image;
  if (!m_ready) return imageAtOnce(imageData, key, pixelWidth);
  Small* small = smallOf(imageData, key);
  if (small == nullptr) return image(imageData, pixelWidth);  // it was decoded at once
  const bool isEnough = small->isDecoded && (small->image.full.isNull() || pixelWidth <= small->image.full.width());
  const bool hasRested = !small->isDecoded || m_time.elapsed() - small->lastDecoded > restMilliseconds;
  if (!isEnough && hasRested) request(imageData, key);
  return small->image.full.isNull() ? nullptr : &small->image;
}

ShownImage* TopicPictures::imageAtOnce(const QString& imageData, const Key& key, double pixelWidth) {
  Small* small = m_small.object(key);
  if (small == nullptr || pixelWidth > small->image.full.width()) {
    const QImage picture = decoded(imageData);
    keepSmall(imageData, picture);
    if (Whole* whole = keep(imageData, picture)) return picture.isNull() ? nullptr : &whole->image;
    small = m_small.object(key);
  }
  return small == nullptr || small->image.full.isNull() ? nullptr : &small->image;
}

void TopicPictures::keepSmall(const QString& data, const QImage& picture) {
  auto* small = new Small{data, true, m_time.elapsed(), {picture.size(), smallVersion(picture), {}}};
  const int cost = costOf(small->image.full, data, m_small.maxCost());
  m_small.insert({data.constData(), data.size()}, small, cost);
}

// Null if the picture alone exceeds the budget.
TopicPictures::Whole* TopicPictures::keep(const QString& data, QImage picture) {
  const Key key{data.constData(), data.size()};
  const int cost = costOf(picture, data, m_whole.maxCost());
  auto* whole = new Whole{data, {picture.size(), std::move(picture), {}}};
  return m_whole.insert(key, whole, cost) ? whole : nullptr;
}

// Null if the picture was small enough to be decoded at once, and is now kept in full.
TopicPictures::Small* TopicPictures::smallOf(const QString& data, const Key& key) {
  if (Small* known = m_small.object(key)) return known;
  const std::optional<QSize> promised = promisedSize(data);
  const bool isQuick =
      promised && qint64{promised->width()} * promised->height() <= quickPixels && data.size() <= quickDataLength;
  if (isQuick && keep(data, promised->isEmpty() ? QImage() : decoded(data)) != nullptr) return nullptr;
  auto* small = new Small{data, false, 0, {}};
  if (promised) small->image = {keptSize(*promised), placeholder(), {}};
  m_small.insert(key, small, 1);
  return small;
}

void TopicPictures::request(const QString& data, const Key& key) {
  if (m_inFlight.contains(key)) return;
  std::erase_if(m_waiting, [&](const QString& other) { return other.constData() == key.address; });
  m_waiting.push_front(data);
  if (m_waiting.size() > maxWaiting) m_waiting.pop_back();
  startWaiting();
}

void TopicPictures::startWaiting() {
  while (!m_waiting.empty() && m_inFlight.size() < threadCount) {
    const QString data = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_inFlight.insert({data.constData(), data.size()}, data);
    whenFinished(
        startInPool(m_pool.get(), [data] { return decoded(data); }), &m_context,
        [this, data](const QImage& picture) { finished(data, picture); }, [](const std::exception&) {});
  }
}

void TopicPictures::finished(const QString& data, const QImage& picture) {
  const Key key{data.constData(), data.size()};
  m_inFlight.remove(key);
  keepSmall(data, picture);
  keep(data, picture);
  startWaiting();
  // Several together, because each notice repaints something.
  if (std::exchange(m_isReadyPending, true)) return;
  QTimer::singleShot(isDecoding() ? readyDelayMilliseconds : 0, &m_context, [this] {
    m_isReadyPending = false;
    m_ready();
  });
}

}  // namespace quilmora
