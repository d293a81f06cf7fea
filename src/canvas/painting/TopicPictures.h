#pragma once

#include <deque>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

#include <QCache>
#include <QElapsedTimer>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QString>
#include <QThreadPool>

namespace quilmora {

// A decoded picture and its halvings; drawing a picture much smaller than it is would flicker.
struct ShownImage {
  QSize size;  // of the full picture, which may not be decoded yet
  QImage full;
  std::vector<QImage> halvings;

  // The smallest version kept that is at least `pixelWidth` wide.
  const QImage& forWidth(double pixelWidth);
};

// The pictures of topics, from the base64 texts in a document. Decoded pictures are kept within a budget, the most
// recently used first. While a picture is not decoded yet, it is a plain surface of its size. For one thread.
class TopicPictures {
 public:
  static constexpr int keptKilobytes = 96 * 1024;

  TopicPictures();
  ~TopicPictures();

  void setKeptSize(int kilobytes) { m_whole.setMaxCost(kilobytes); }
  // From now on larger pictures are decoded on other threads, and `ready` is called when some of them are done; without
  // this every picture is decoded when it is requested.
  void decodeInBackground(std::function<void()> ready);
  // Whether requested pictures are still being decoded.
  bool isDecoding() const { return !m_inFlight.isEmpty() || !m_waiting.empty(); }

  // The picture in the text, or nullptr if it has none or is not known to have one. It will be drawn at most
  // `pixelWidth` pixels wide. Valid until the next call.
  ShownImage* image(const QString& imageData, double pixelWidth = std::numeric_limits<double>::infinity());

 private:
  // By address: the entry keeps a copy of the text, so that the address is not reused.
  struct Key {
    const QChar* address;
    qsizetype length;
    bool operator==(const Key&) const = default;
    friend std::size_t qHash(const Key& key, std::size_t seed) {
      return qHashMulti(seed, quintptr(key.address), key.length);
    }
  };
  // What is known of a picture that is not kept in full: its size and a small version.
  struct Small {
    QString data;
    bool isDecoded = false;
    qint64 lastDecoded = 0;  // by m_time, in milliseconds
    ShownImage image;
  };
  struct Whole {
    QString data;
    ShownImage image;
  };

  ShownImage* imageAtOnce(const QString& imageData, const Key& key, double pixelWidth);
  void keepSmall(const QString& data, const QImage& picture);
  Whole* keep(const QString& data, QImage picture);
  Small* smallOf(const QString& data, const Key& key);
  void request(const QString& data, const Key& key);
  void startWaiting();
  void finished(const QString& data, const QImage& picture);

  QCache<Key, Whole> m_whole;
  QCache<Key, Small> m_small;
  std::function<void()> m_ready;
  QElapsedTimer m_time;
  QHash<Key, QString> m_inFlight;
  std::deque<QString> m_waiting;  // the last one requested is decoded first
  bool m_isReadyPending = false;
  QObject m_context;  // results that arrive after it is destroyed are dropped
  std::unique_ptr<QThreadPool> m_pool;
};

}  // namespace quilmora
