#include "platform/PlatformText.h"

#include <QRegularExpression>
#include <QStringList>

namespace quilmora {

namespace {

// The modifiers of one run in this desktop's order.
QStringList orderedModifiers(const QString& run) {
  const auto holds = [&](QChar symbol, const QString& name) {
    return run.contains(symbol) || run.contains(name, Qt::CaseInsensitive);
  };
  QStringList names;
  if (holds(u'⌘', QStringLiteral("Cmd"))) names.append(QStringLiteral("Ctrl"));
  if (holds(u'⌥', QStringLiteral("Option"))) names.append(QStringLiteral("Alt"));
  if (holds(u'⇧', QStringLiteral("Shift"))) names.append(QStringLiteral("Shift"));
  return names;
}

}  // namespace

QString platformText(const QString& text) {
  // A run of symbols, followed by a plus if a word comes next; or a run of words including Cmd or Option, joined by
  // pluses that may have spaces around them.
  static const QRegularExpression pattern(
      QStringLiteral("(?<symbols>[⌘⌥⇧]+)(?:\\+(?=\\w))?"
                     "|\\b(?<words>(?:Shift ?\\+ ?)*(?:Cmd|Option)(?: ?\\+ ?(?:Shift|Option|Cmd)\\b)*)(?= ?\\+)"),
      QRegularExpression::UseUnicodePropertiesOption);
  QString result;
  qsizetype end = 0;
  for (auto matches = pattern.globalMatch(text); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    result += QStringView(text).mid(end, match.capturedStart() - end);
    end = match.capturedEnd();
    const QString symbols = match.captured(QStringLiteral("symbols"));
    if (symbols.isEmpty()) {
      const QString words = match.captured(QStringLiteral("words"));
      result += orderedModifiers(words).join(words.contains(u' ') ? QStringLiteral(" + ") : QStringLiteral("+"));
      continue;
    }
    result += orderedModifiers(symbols).join(u'+');
    const bool isAlone = end == text.size() || text.at(end).isSpace() || text.at(end) == u')';
    if (!isAlone) result += u'+';
  }
  result += QStringView(text).mid(end);
  result.replace(QStringLiteral("your Mac"), QStringLiteral("your desktop"));
  return result.replace(u'⌫', QStringLiteral("Delete"));
}

}  // namespace quilmora
