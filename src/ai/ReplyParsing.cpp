#include "ai/ReplyParsing.h"

#include <QStringList>

#include "ai/AIProviderError.h"
#include "ai/UserCharacters.h"

namespace quilmora {

namespace {

const QLatin1String fence("```");

// Without surrounding white space and, if it begins with a fence, without the fence lines.
QString unwrapped(const QString& reply) {
  const QString text = reply.trimmed();
  if (!text.startsWith(fence)) return text;
  QString kept;
  bool isFirst = true;
  for (qsizetype at = 0; at <= text.size();) {
    qsizetype end = text.indexOf(u'\n', at);
    if (end < 0) end = text.size();
    const QStringView line = QStringView(text).mid(at, end - at);
    if (!line.startsWith(fence)) {
      if (!isFirst) kept += u'\n';
      kept += line;
      isFirst = false;
    }
    at = end + 1;
  }
  return kept;
}

// From the first opening brace to the last closing one; nothing if one is missing or they are in the wrong order.
std::optional<QString> betweenBraces(const QString& text) {
  const qsizetype first = text.indexOf(u'{');
  const qsizetype last = text.lastIndexOf(u'}');
  if (first < 0 || last < first) return std::nullopt;
  return text.mid(first, last - first + 1);
}

}  // namespace

AITreeNode parseTreeReply(const QString& reply, ReplyVariant variant) {
  constexpr int keptCharacters = 200;
  if (!reply.isValidUtf16()) throw AIProviderError::invalidResponse(reply);
  QString text = unwrapped(reply);
  if (variant == ReplyVariant::onDevice) text = betweenBraces(text).value_or(text);
  try {
    return decodeTree(text.toUtf8());
  } catch (const AITreeError&) {
    if (variant != ReplyVariant::claude) throw;
  }
  throw AIProviderError::invalidResponse(firstCharacters(reply, keptCharacters));
}

std::optional<AITreeNode> detectChatAction(const QString& reply) {
  if (!reply.isValidUtf16()) return std::nullopt;
  const auto text = betweenBraces(unwrapped(reply));
  if (!text) return std::nullopt;
  try {
    AITreeNode tree = decodeTree(text->toUtf8());
    if (tree.children && !tree.children->empty()) return tree;
  } catch (const AITreeError&) {
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace quilmora
