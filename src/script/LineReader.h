#pragma once

#include <cstdio>
#include <optional>

#include <QByteArray>

namespace quilmora {

// Reads lines of arbitrary bytes as they arrive. A line beyond the limit is read to its end and dropped, in bounded
// memory.
class LineReader {
 public:
  static constexpr qsizetype maxLength = 256 * 1024 * 1024;

  struct Line {
    QByteArray text;  // without its line end; empty when too long
    bool isTooLong = false;
  };

  explicit LineReader(std::FILE* file) : m_file(file) {}

  // The next line, or nothing at the end of the input. Waits for a whole line.
  std::optional<Line> next();

 private:
  bool fill();

  std::FILE* m_file;
  QByteArray m_buffer;
  qsizetype m_position = 0;
};

}  // namespace quilmora
