#include "script/LineReader.h"

#include <cerrno>

#include <unistd.h>

namespace quilmora {

namespace {

constexpr qsizetype chunkSize = 64 * 1024;

}  // namespace

// Takes what is there, which may be less than a chunk: waiting for more would hold back a line that is complete.
bool LineReader::fill() {
  m_buffer.resize(chunkSize);
  m_position = 0;
  ssize_t count;
  do {
    count = ::read(::fileno(m_file), m_buffer.data(), static_cast<std::size_t>(chunkSize));
  } while (count < 0 && errno == EINTR);
  m_buffer.resize(count > 0 ? static_cast<qsizetype>(count) : 0);
  return count > 0;
}

std::optional<LineReader::Line> LineReader::next() {
  Line line;
  bool hasBytes = false;
  while (true) {
    if (m_position == m_buffer.size() && !fill()) return hasBytes ? std::optional(line) : std::nullopt;
    hasBytes = true;
    const qsizetype end = m_buffer.indexOf('\n', m_position);
    const qsizetype stop = end < 0 ? m_buffer.size() : end;
    if (!line.isTooLong) line.text.append(m_buffer.constData() + m_position, stop - m_position);
    if (line.text.size() > maxLength) line = Line{QByteArray(), true};
    m_position = end < 0 ? stop : end + 1;
    if (end >= 0) return line;
  }
}

}  // namespace quilmora
