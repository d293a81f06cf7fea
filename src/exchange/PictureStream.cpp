#include "exchange/PictureStream.h"

#include <algorithm>
#include <array>
#include <deque>
#include <new>
#include <optional>
#include <system_error>

#include <QTemporaryFile>

#include "exchange/PaintCrew.h"
#include "exchange/PictureSweep.h"
#include "exchange/PixelDeflate.h"

namespace quilmora {

namespace {

constexpr qsizetype pieceSize = 1 << 20;
constexpr qint64 memoryOfSpool = 32LL * 1024 * 1024;
constexpr int maxColumnRows = 512;

struct Stopped {};
struct OutOfRoom {};

// Joins consecutive stretches into one stream.
class StreamEnds {
 public:
  explicit StreamEnds(const std::function<bool(const char*, qsizetype)>& take) : m_take(take) {
    add("\x78\x01", 2);  // deflate with a window of 32 KB
  }

  void add(const DeflatedStretch& stretch) {
    DeflatedStretch sum{{}, m_checksum, 0};
    sum.append({{}, stretch.checksum, stretch.rawLength});
    m_checksum = sum.checksum;
    add(stretch.bytes.data(), stretch.bytes.size());
  }
  void finish() {
    add("\x03\x00", 2);  // an empty last block
    const std::array<char, 4> checksum{static_cast<char>(m_checksum >> 24), static_cast<char>(m_checksum >> 16),
                                       static_cast<char>(m_checksum >> 8), static_cast<char>(m_checksum)};
    add(checksum.data(), checksum.size());
    flush();
  }

 private:
  void add(const char* data, std::size_t size) {
    m_piece.append(data, static_cast<qsizetype>(size));
    if (m_piece.size() >= pieceSize) flush();
  }
  void flush() {
    if (!m_take(m_piece.constData(), m_piece.size())) throw Stopped();
    m_piece.resize(0);
  }

  const std::function<bool(const char*, qsizetype)>& m_take;
  QByteArray m_piece;
  std::uint32_t m_checksum = 1;
};

// Bytes waiting for their turn.
class Spool {
 public:
  explicit Spool(const QString& folder) : m_file(folder + QStringLiteral("/.quilmora-XXXXXX")) {}

  // Returns their offset.
  qint64 add(const std::vector<char>& bytes) {
    const qint64 start = m_size;
    m_size += static_cast<qint64>(bytes.size());
    if (m_size <= memoryOfSpool) {
      m_memory.insert(m_memory.end(), bytes.begin(), bytes.end());
    } else {
      // An unnamed file disappears with the process.
      if (!m_file.isOpen() && !m_file.open()) throw OutOfRoom();
      const qint64 place = start - static_cast<qint64>(m_memory.size());
      if (!m_file.seek(place) ||
          m_file.write(bytes.data(), static_cast<qint64>(bytes.size())) != static_cast<qint64>(bytes.size()))
        throw OutOfRoom();
    }
    return start;
  }
  void read(qint64 start, std::size_t size, std::vector<char>& target) {
    target.resize(size);
    const auto inMemory = static_cast<qint64>(m_memory.size());
    if (start < inMemory) {
      std::copy_n(m_memory.begin() + start, size, target.begin());
    } else if (!m_file.seek(start - inMemory) ||
               m_file.read(target.data(), static_cast<qint64>(size)) != static_cast<qint64>(size)) {
      throw OutOfRoom();
    }
  }
  void clear() {
    m_size = 0;
    m_memory.clear();
  }

 private:
  qint64 m_size = 0;
  std::vector<char> m_memory;
  QTemporaryFile m_file;
};

// The compressed rows of a part that is narrower than the picture.
struct PartRows {
  struct Row {
    std::uint32_t length = 0;  // 0 for a row equal to the one above it
    std::uint32_t checksum = 1;
  };
  std::vector<char> bytes;
  std::vector<Row> rows;
};

class Streaming {
 public:
  Streaming(const PictureScene& scene, const QString& folder, const std::function<bool(const char*, qsizetype)>& take,
            const std::function<void(double)>& progress, const std::stop_token& stop, const PictureParts& parts)
      : m_scene(scene),
        m_progress(progress),
        m_stop(stop),
        m_parts(parts),
        m_output(take),
        m_sweep(scene),
        m_spool(folder),
        m_crew(parts.threads > 0 ? parts.threads : PaintCrew::usualSize()) {}

  void run() {
    if (m_scene.size().width <= m_parts.maxWidth)
      streamBands();
    else
      streamColumns();
    m_output.finish();
  }

 private:
  void report(std::int64_t rows) {
    if (m_stop.stop_requested()) throw Stopped();
    if (m_progress) m_progress(static_cast<double>(rows) / static_cast<double>(m_scene.size().height));
  }

  // Resizes the tools' picture to a part, and paints it.
  static void paintPart(const PictureScene& scene, PaintTools& tools, const QRect& place,
                        const PictureScene::Content& content) {
    if (tools.image.size() != place.size()) {
      tools.image = QImage();
      tools.image = QImage(place.size(), QImage::Format_RGB32);
    }
    if (tools.image.isNull()) throw std::bad_alloc();
    scene.paint(tools.painter, tools.image, place.topLeft(), content);
  }

  void streamBands();
  DeflatedStretch blankBand(int rows, const SteadyRows& steady) const;
  void streamColumns();
  void streamColumnBand(PictureScene::Range rows);
  std::future<PartRows> postPart(const QRect& place, PictureScene::Content content);

  const PictureScene& m_scene;
  const std::function<void(double)>& m_progress;
  const std::stop_token& m_stop;
  const PictureParts& m_parts;
  StreamEnds m_output;
  PictureSweep m_sweep;
  Spool m_spool;
  std::optional<SteadyRows> m_steadyBand;
  std::optional<SteadyRows> m_steadyColumn;
  std::optional<SteadyRows> m_steadyLastColumn;
  std::array<DeflatedStretch, 2> m_filters;  // of a band's first row, and of the others
  PaintCrew m_crew;                          // last, so that it ends before the members its tasks use
};

void Streaming::streamBands() {
  const int width = static_cast<int>(m_scene.size().width);
  const std::int64_t height = m_scene.size().height;
  const auto bandRows = static_cast<int>(
      std::clamp<std::int64_t>(m_parts.pixelCount / width, 1, std::min<std::int64_t>(height, 1 << 15)));
  const SteadyRows& steady = m_steadyBand.emplace(width, m_scene.background(), true);
  const std::size_t ahead = static_cast<std::size_t>(m_crew.size()) + 2;
  std::deque<std::future<DeflatedStretch>> bands;
  std::int64_t posted = 0;
  std::int64_t done = 0;
  while (done < height) {
    for (; posted < height && bands.size() < ahead; posted += std::min<std::int64_t>(bandRows, height - posted)) {
      const int rows = static_cast<int>(std::min<std::int64_t>(bandRows, height - posted));
      auto content = m_sweep.contentOf({posted, posted + rows - 1});
      const QRect place(0, static_cast<int>(posted), width, rows);
      bands.push_back(
          m_crew.post<DeflatedStretch>([this, place, &steady, content = std::move(content)](PaintTools& tools) {
            if (content.isEmpty()) return blankBand(place.height(), steady);
            paintPart(m_scene, tools, place, content);
            return tools.deflater.rows(reinterpret_cast<const QRgb*>(tools.image.constBits()), place.width(),
                                       place.height(), steady);
          }));
    }
    m_output.add(bands.front().get());
    bands.pop_front();
    done = std::min<std::int64_t>(done + bandRows, height);
    report(done);
  }
}

DeflatedStretch Streaming::blankBand(int rows, const SteadyRows& steady) const {
  DeflatedStretch band = steady.backgroundRow();
  int left = rows - 1;
  for (; left >= SteadyRows::blockRows; left -= SteadyRows::blockRows) band.append(steady.block());
  for (; left > 0; --left) band.append(steady.row());
  return band;
}

void Streaming::streamColumns() {
  const std::int64_t width = m_scene.size().width;
  const std::int64_t height = m_scene.size().height;
  const auto bandRows =
      std::clamp<std::int64_t>(m_parts.bandPixelCount / width, 1,
                               std::min<std::int64_t>(maxColumnRows, m_parts.pixelCount / m_parts.columnWidth));
  m_steadyColumn.emplace(m_parts.columnWidth, m_scene.background(), false);
  m_steadyLastColumn.emplace(static_cast<int>((width - 1) % m_parts.columnWidth + 1), m_scene.background(), false);
  StretchDeflater deflater;
  for (const std::uint8_t filter : {filterNone, filterUp}) {
    deflater.append(&filter, 1);
    deflater.finish(m_filters[filter == filterNone ? 0 : 1]);
  }
  for (std::int64_t top = 0; top < height; top += bandRows) {
    streamColumnBand({top, std::min(top + bandRows, height) - 1});
    report(std::min(top + bandRows, height));
  }
}

std::future<PartRows> Streaming::postPart(const QRect& place, PictureScene::Content content) {
  return m_crew.post<PartRows>([this, place, content = std::move(content)](PaintTools& tools) {
    paintPart(m_scene, tools, place, content);
    PartRows part;
    const QRgb* above = nullptr;
    for (int y = 0; y < place.height(); ++y) {
      const auto* row = reinterpret_cast<const QRgb*>(tools.image.constScanLine(y));
      if (above && std::equal(row, row + place.width(), above)) {
        part.rows.push_back({});
      } else {
        const DeflatedStretch stretch = tools.deflater.rowPart(row, above, place.width());
        part.bytes.insert(part.bytes.end(), stretch.bytes.begin(), stretch.bytes.end());
        part.rows.push_back({static_cast<std::uint32_t>(stretch.bytes.size()), stretch.checksum});
      }
      above = row;
    }
    return part;
  });
}

void Streaming::streamColumnBand(PictureScene::Range rows) {
  struct Waiting {
    std::vector<PartRows::Row> rows;
    qint64 next = 0;  // where the next row starts
  };
  const int columnWidth = m_parts.columnWidth;
  const std::int64_t width = m_scene.size().width;
  const auto widthOf = [&](std::int64_t column) {
    return static_cast<int>(std::min<std::int64_t>(columnWidth, width - column * columnWidth));
  };
  auto content = m_sweep.parts(m_sweep.contentOf(rows), rows, columnWidth);
  const int rowCount = static_cast<int>(rows.last - rows.first + 1);
  std::map<std::int64_t, Waiting> waiting;
  std::deque<std::pair<std::int64_t, std::future<PartRows>>> painted;
  const std::size_t ahead = static_cast<std::size_t>(m_crew.size()) + 2;
  m_spool.clear();
  for (auto next = content.begin(); next != content.end() || !painted.empty();) {
    for (; next != content.end() && painted.size() < ahead; ++next) {
      const QRect place(static_cast<int>(next->first * columnWidth), static_cast<int>(rows.first), widthOf(next->first),
                        rowCount);
      painted.emplace_back(next->first, postPart(place, std::move(next->second)));
    }
    PartRows part = painted.front().second.get();
    waiting[painted.front().first] = {std::move(part.rows), m_spool.add(part.bytes)};
    painted.pop_front();
    if (m_stop.stop_requested()) throw Stopped();
  }
  const std::int64_t columnCount = (width + columnWidth - 1) / columnWidth;
  DeflatedStretch stretch;
  for (int y = 0; y < rowCount; ++y) {
    m_output.add(m_filters[y == 0 ? 0 : 1]);
    auto part = waiting.begin();
    for (std::int64_t column = 0; column < columnCount; ++column) {
      const SteadyRows& steady = column + 1 < columnCount ? *m_steadyColumn : *m_steadyLastColumn;
      if (part == waiting.end() || part->first != column) {
        m_output.add(y == 0 ? steady.backgroundRow() : steady.row());
        continue;
      }
      const PartRows::Row& row = part->second.rows[static_cast<std::size_t>(y)];
      if (row.length == 0) {
        m_output.add(steady.row());
      } else {
        m_spool.read(part->second.next, row.length, stretch.bytes);
        part->second.next += row.length;
        stretch.checksum = row.checksum;
        stretch.rawLength = static_cast<std::uint64_t>(widthOf(column)) * bytesPerPixel;
        m_output.add(stretch);
      }
      ++part;
    }
  }
}

}  // namespace

PictureStreamEnd streamPicture(const PictureScene& scene, const QString& folder,
                               const std::function<bool(const char*, qsizetype)>& take,
                               const std::function<void(double)>& progress, const std::stop_token& stop,
                               const PictureParts& parts) {
  try {
    Streaming(scene, folder, take, progress, stop, parts).run();
    return PictureStreamEnd::done;
  } catch (const Stopped&) {
    return PictureStreamEnd::stopped;
  } catch (const OutOfRoom&) {
    return PictureStreamEnd::outOfRoom;
  } catch (const std::bad_alloc&) {
    return PictureStreamEnd::notDrawn;
  } catch (const std::system_error&) {  // no thread to paint in
    return PictureStreamEnd::notDrawn;
  }
}

}  // namespace quilmora
