#include "model/JsonParsing.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "model/DocumentError.h"
#include "model/JsonDiagnosis.h"
#include "platform/TaskThread.h"

namespace quilmora::json {

namespace {

static_assert(PaddedText::padding >= simdjson::SIMDJSON_PADDING);

using simdjson::dom::document;
using simdjson::dom::parser;

// The text with its overlong whole numbers, which the parser refuses, rewritten as reals.
PaddedText withRealNumbers(std::string_view before, const std::vector<std::size_t>& ends) {
  std::string after;
  after.reserve(before.size() + 2 * ends.size());
  std::size_t at = 0;
  for (const std::size_t end : ends) {
    after += before.substr(at, end - at);
    after += "e0";
    at = end;
  }
  after += before.substr(at);
  return PaddedText::copyOf(after);
}

// One parser and one set of values for consecutive texts, so that their memory is reused.
class Parsing {
 public:
  Parsing(std::size_t capacity, std::size_t deepest) : m_capacity(capacity), m_deepest(deepest) {}

  // `text` must be followed by the padding. The values are valid until the next call. `origin` is the text's place in
  // the document.
  const document& parse(std::string_view text, TextOrigin origin) {
    auto error = tryParse(text);
    if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
      throw DocumentError(QStringLiteral("the file is too large for the memory of this machine"));
    if (error != simdjson::SUCCESS) {
      const std::vector<std::size_t> longNumbers = diagnose(text, m_deepest, origin);
      if (!longNumbers.empty()) error = tryParse(withRealNumbers(text, longNumbers).view());
    }
    if (error != simdjson::SUCCESS)
      throw DocumentError(QStringLiteral("not a JSON text (%1)").arg(QLatin1String(simdjson::error_message(error))));
    return m_document;
  }
  document take() { return std::move(m_document); }

 private:
  simdjson::error_code tryParse(std::string_view text) {
    if (text.size() > simdjson::SIMDJSON_MAXSIZE_BYTES) return simdjson::CAPACITY;
    if (!m_isReady || text.size() > m_capacity) {
      m_capacity = std::max<std::size_t>({m_capacity, text.size(), 64});
      auto error = m_parser.allocate(m_capacity, m_deepest);
      if (error == simdjson::SUCCESS) error = m_document.allocate(m_capacity);
      if (error != simdjson::SUCCESS) return error;
      m_isReady = true;
      adviseLargePages(m_document.tape.get(), m_capacity * sizeof(m_document.tape[0]));
      adviseLargePages(m_document.string_buf.get(), m_capacity);
    }
    return m_parser.parse_into_document(m_document, text.data(), text.size(), false).error();
  }

  parser m_parser;
  document m_document;
  std::size_t m_capacity;
  std::size_t m_deepest;
  bool m_isReady = false;
};

void refuseMark(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) throw DocumentError(QStringLiteral("the file begins with a byte-order mark"));
}

// Finds where arrays and items start and end. It need not detect faults, only cut the text so that the parser finds
// every fault in one of the parts.
//
// One thread cuts and another one reads what was cut, in order. The reader alone changes the text, and only what the
// cutter has passed. Of two faults the first in the text is told, as if each window were read before the next is cut.
class Windows {
 public:
  Windows(PaddedText text, std::span<const std::string_view> keys, std::size_t windowSize, const ItemReceiver& receive)
      : m_text(std::move(text)),
        m_keys(keys),
        m_windowSize(windowSize),
        m_receive(receive),
        // An item is nested in an array within the outermost object, but only in an array when it is parsed.
        m_parsing(windowSize + windowSize / 4, deepestNesting - 1) {}

  document read() {
    std::size_t depth = 0;
    std::size_t at = 0;
    for (; at < m_text.size; ++at) {
      switch (byte(at)) {
        case '"': {
          const std::size_t end = endOfString(at);
          const std::size_t array = depth == 1 ? arrayBehind(end) : none;
          const std::string_view key = array == none ? std::string_view() : wantedKey(at, end);
          at = key.empty() ? end - 1 : readItems(key, array);
          break;
        }
        case '{':
        case '[':
          ++depth;
          break;
        case '}':
        case ']':
          depth = std::max<std::size_t>(depth, 1) - 1;
          break;
        default:
          break;
      }
    }
    keepUntil(m_text.size);
    m_reader.finish();
    m_text.bytes.reset();
    PaddedText rest = PaddedText::copyOf(m_rest);
    m_rest = std::string();
    return parseWhole(std::move(rest));
  }

 private:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  char byte(std::size_t at) const { return m_text.bytes[at]; }
  std::string_view between(std::size_t begin, std::size_t end) const {
    return m_text.view().substr(begin, end - begin);
  }

  static bool isSpace(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }
  std::size_t behindSpace(std::size_t at) const {
    while (at < m_text.size && isSpace(byte(at))) ++at;
    return at;
  }

  // The end of the string that starts at `at`; the end of the text if it is not closed.
  std::size_t endOfString(std::size_t at) const {
    const char* const begin = m_text.bytes.get();
    for (std::size_t from = at + 1; from < m_text.size;) {
      const void* found = std::memchr(begin + from, '"', m_text.size - from);
      if (found == nullptr) break;
      const auto mark = static_cast<std::size_t>(static_cast<const char*>(found) - begin);
      std::size_t slashes = 0;
      while (byte(mark - 1 - slashes) == '\\') ++slashes;
      if (slashes % 2 == 0) return mark + 1;
      from = mark + 1;
    }
    return m_text.size;
  }

  // The bracket of the array after a key that ends at `end`.
  std::size_t arrayBehind(std::size_t end) const {
    std::size_t at = behindSpace(end);
    if (at >= m_text.size || byte(at) != ':') return none;
    at = behindSpace(at + 1);
    return at < m_text.size && byte(at) == '[' ? at : none;
  }

  std::string_view wantedKey(std::size_t begin, std::size_t end) const {
    std::string_view key = between(begin + 1, end - 1);
    std::string plain;
    if (key.find('\\') != std::string_view::npos) {
      parser keyParser;
      const std::string value(between(begin, end));
      std::string_view read;
      if (keyParser.parse(value).get(read) != simdjson::SUCCESS) return {};
      plain = read;
      key = plain;
    }
    const auto found = std::ranges::find(m_keys, key);
    return found == m_keys.end() ? std::string_view() : *found;
  }

  // The comma after the first item that ends at or after `least`, or the bracket that ends the array.
  std::size_t endOfItems(std::size_t at, std::size_t least) const {
    std::size_t depth = 0;
    for (; at < m_text.size; ++at) {
      switch (byte(at)) {
        case '"':
          at = endOfString(at) - 1;
          break;
        case '{':
        case '[':
          ++depth;
          break;
        case '}':
        case ']':
          if (depth == 0) return at;
          --depth;
          break;
        case ',':
          if (depth == 0 && at >= least) return at;
          break;
        default:
          break;
      }
    }
    return at;
  }

  // Reads the items of the array that starts at `bracket` and returns where it ends.
  std::size_t readItems(std::string_view key, std::size_t bracket) {
    keepUntil(bracket + 1);
    std::size_t at = bracket + 1;
    for (bool isFirst = true;; isFirst = false) {
      const std::size_t end = endOfItems(at, at + m_windowSize);
      if (end >= m_text.size) {
        m_reader.finish();
        throw DocumentError(QStringLiteral("the document ends too early"));
      }
      const bool isEmpty = behindSpace(at) == end;
      if (isEmpty && (!isFirst || byte(end) != ']')) failAt(end, QStringLiteral("expected a value"));
      if (byte(end) == '}') failAt(end, QStringLiteral("expected a comma or a closing bracket"));
      const bool isLast = byte(end) == ']';
      if (!isEmpty) m_reader.post([this, key, at, end] { readWindow(key, at, end); });
      m_kept = end;
      if (isLast) return end;
      at = end + 1;
    }
  }

  // Turns the items into an array of their own, in place. Commas become brackets for good: nothing reads them again.
  void readWindow(std::string_view key, std::size_t begin, std::size_t end) {
    countLinesUntil(begin - 1);
    // The cutter may be looking at a bracket, which is therefore not written again.
    if (byte(begin - 1) != '[') m_text.bytes[begin - 1] = '[';
    if (byte(end) != ']') m_text.bytes[end] = ']';
    m_origin.bytes = begin - 1;
    simdjson::dom::array items;
    if (m_parsing.parse(between(begin - 1, end + 1), m_origin).root().get(items) != simdjson::SUCCESS)
      throw DocumentError(QStringLiteral("expected an array"));
    m_receive(key, items);
    countLinesUntil(end);
    m_text.forgetUntil(end);
  }

  void countLinesUntil(std::size_t end) {
    m_origin.lines += static_cast<std::size_t>(std::ranges::count(between(m_counted, end), '\n'));
    m_counted = end;
  }

  [[noreturn]] void failAt(std::size_t at, const QString& cause) {
    m_reader.finish();
    const auto line = m_origin.lines + static_cast<std::size_t>(std::ranges::count(between(m_counted, at), '\n')) + 1;
    throw DocumentError(QStringLiteral("line %1: %2").arg(line).arg(cause));
  }

  // The text between the last array and `end` belongs to the rest.
  void keepUntil(std::size_t end) {
    m_rest += between(m_kept, end);
    m_kept = end;
  }

  PaddedText m_text;
  std::span<const std::string_view> m_keys;
  std::size_t m_windowSize;
  const ItemReceiver& m_receive;
  Parsing m_parsing;
  std::string m_rest;
  std::size_t m_kept = 0;
  std::size_t m_counted = 0;  // from here on the reader's own
  TextOrigin m_origin;
  TaskThread m_reader;  // last, so that it ends before what its tasks use
};

}  // namespace

document parseWhole(PaddedText text) {
  refuseMark(text.view());
  Parsing parsing(text.size, deepestNesting);
  parsing.parse(text.view(), {});
  return parsing.take();
}

document parseInWindows(PaddedText text, std::span<const std::string_view> keys, std::size_t windowSize,
                        const ItemReceiver& receive) {
  refuseMark(text.view());
  return Windows(std::move(text), keys, windowSize, receive).read();
}

}  // namespace quilmora::json
