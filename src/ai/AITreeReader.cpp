#include <algorithm>

#include "ai/AIProviderError.h"
#include "ai/AITreeNode.h"
#include "model/DocumentError.h"
#include "model/JsonDiagnosis.h"
#include "model/JsonRecord.h"

namespace quilmora {

namespace {

using simdjson::dom::element;

// Levels of JSON, two for each level of topics. Each takes some bytes of memory, but no stack.
constexpr std::size_t deepestNesting = 1'000'000;

class TreeReader {
 public:
  AITreeNode read(element root) {
    AITreeNode tree;
    enter(root, tree);
    while (!m_open.empty()) {
      Level& level = m_open.back();
      if (level.next == level.end) {
        m_open.pop_back();
        continue;
      }
      const element value = *level.next;
      ++level.next;
      ++level.index;
      enter(value, level.list->emplace_back());
    }
    return tree;
  }

 private:
  // A list of children being read.
  struct Level {
    simdjson::dom::array::iterator next;
    simdjson::dom::array::iterator end;
    std::vector<AITreeNode>* list;
    std::size_t index;  // of the child after the one being read
  };

  // Reads one topic, and opens its list of children.
  void enter(element value, AITreeNode& node) {
    simdjson::dom::object object;
    if (value.get(object) != simdjson::SUCCESS) fail({}, "expected an object");
    element title, notes, children;
    bool hasTitle = false, hasNotes = false, hasChildren = false;
    for (const auto& [key, field] : object) {
      if (key == "title") {
        title = field;
        hasTitle = true;
      } else if (key == "notes") {
        notes = field;
        hasNotes = !field.is_null();
      } else if (key == "children") {
        children = field;
        hasChildren = !field.is_null();
      }
    }
    if (!hasTitle) fail("title", "missing");
    node.title = text("title", title);
    if (hasNotes) node.notes = text("notes", notes);
    if (!hasChildren) return;
    simdjson::dom::array array;
    if (children.get(array) != simdjson::SUCCESS) fail("children", "expected an array");
    std::vector<AITreeNode>& list = node.children.emplace();
    list.reserve(array.size());
    m_open.push_back({array.begin(), array.end(), &list, 0});
  }

  QString text(std::string_view key, element value) const {
    std::string_view utf8;
    if (value.get(utf8) != simdjson::SUCCESS) fail(key, "expected a text");
    return json::textFromUtf8(utf8);
  }

  // The place is given by its innermost levels, so that the message stays on one line.
  [[noreturn]] void fail(std::string_view key, std::string_view cause) const {
    constexpr std::size_t toldLevels = 6;
    QString place;
    const std::size_t first = m_open.size() - std::min(m_open.size(), toldLevels);
    for (std::size_t i = first; i < m_open.size(); ++i)
      place += QStringLiteral("children[%1].").arg(m_open[i].index - 1);
    if (first > 0) place.prepend(QStringLiteral("…."));
    place += QLatin1String(key.data(), static_cast<qsizetype>(key.size()));
    if (place.endsWith(u'.')) place.chop(1);
    if (place.isEmpty()) place = QStringLiteral("the reply");
    throw AITreeError(place + QStringLiteral(": ") + QLatin1String(cause.data(), static_cast<qsizetype>(cause.size())));
  }

  std::vector<Level> m_open;
};

simdjson::error_code parse(const QByteArray& json, simdjson::dom::parser& parser, element& root) {
  const auto size = static_cast<std::size_t>(json.size());
  const auto opens = static_cast<std::size_t>(
      std::count_if(json.begin(), json.end(), [](char character) { return character == '{' || character == '['; }));
  const auto error = parser.allocate(std::max<std::size_t>(size, 64), std::min(opens + 2, deepestNesting));
  if (error != simdjson::SUCCESS) return error;
  return parser.parse(json.constData(), size, true).get(root);
}

// The parser cannot read whole numbers of this length, so they are rewritten as reals; nothing uses their values.
QByteArray withRealNumbers(const QByteArray& json, const std::vector<std::size_t>& ends) {
  QByteArray result;
  result.reserve(json.size() + 2 * static_cast<qsizetype>(ends.size()));
  qsizetype at = 0;
  for (const std::size_t end : ends) {
    result += json.mid(at, static_cast<qsizetype>(end) - at) + "e0";
    at = static_cast<qsizetype>(end);
  }
  return result + json.mid(at);
}

}  // namespace

AITreeNode decodeTree(const QByteArray& json) {
  if (json.isEmpty()) throw AITreeError(QStringLiteral("the reply is empty"));
  simdjson::dom::parser parser;
  element root;
  auto error = parse(json, parser, root);
  if (error != simdjson::SUCCESS) {
    try {
      const auto view = std::string_view(json.constData(), static_cast<std::size_t>(json.size()));
      const std::vector<std::size_t> longNumbers = json::diagnose(view, deepestNesting - 2);
      if (!longNumbers.empty()) error = parse(withRealNumbers(json, longNumbers), parser, root);
    } catch (const DocumentError& fault) {
      throw AITreeError(fault.message());
    }
  }
  if (error != simdjson::SUCCESS) throw AITreeError(QLatin1String(simdjson::error_message(error)));
  return TreeReader().read(root);
}

}  // namespace quilmora
