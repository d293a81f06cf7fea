#include <QLocale>
#include <QScopeGuard>
#include <QStringMatcher>
#include <rapidcheck/gtest.h>

#include "editor/CommandRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// Letters with two, three and four forms, some beyond the first plane, and unpaired halves of pairs.
QString anyText(int maxLength) {
  static const std::vector<QString> letters{
      QStringLiteral("k"),          QStringLiteral("K"),      QStringLiteral("\u212A"), QStringLiteral("s"),
      QStringLiteral("\u017F"),     QStringLiteral("\u00DF"), QStringLiteral("σ"),      QStringLiteral("ς"),
      QStringLiteral("Σ"),          QStringLiteral("θ"),      QStringLiteral("\u03F4"), QStringLiteral("i"),
      QStringLiteral("I"),          QStringLiteral("ı"),      QStringLiteral("İ"),      QStringLiteral("\U00010400"),
      QStringLiteral("\U00010428"), QString(QChar(0xD801)),   QString(QChar(0xDC00)),   QString(QChar(0xDC28)),
      QStringLiteral(" ")};
  QString text;
  const int length = *rc::gen::inRange(0, maxLength + 1);
  for (int i = 0; i < length; ++i) text += letters[*rc::gen::inRange<std::size_t>(0, letters.size())];
  return text;
}

MindMap anyTexts() {
  MindMap map = mapOf({});
  const int count = *rc::gen::inRange(0, 150);
  for (int i = 0; i < count; ++i) {
    Node node = topic(*rc::gen::inRange(0, 200), 0.0, 0.0);
    node.title = anyText(5);
    node.notes = anyText(8);
    map.nodes.append(node);
  }
  return map;
}

std::vector<QUuid> naiveResults(const MindMap& map, const QString& query) {
  std::vector<QUuid> results;
  const QLocale locale;
  const bool isTurkic = locale.language() == QLocale::Turkish;
  const QStringMatcher matcher(isTurkic ? locale.toLower(query) : query,
                               isTurkic ? Qt::CaseSensitive : Qt::CaseInsensitive);
  const auto isIn = [&](const QString& text) {
    return !text.isEmpty() && matcher.indexIn(isTurkic ? locale.toLower(text) : text) >= 0;
  };
  for (const Node& node : map.nodes)
    if (!query.isEmpty() && (isIn(node.title) || isIn(node.notes))) results.push_back(node.id);
  return results;
}

// Something that may happen between two letters.
void changeSomething(CommandRig& rig) {
  const std::size_t count = rig.editor.mindMap().nodes.size();
  const auto anyTopic = [&] { return rig.editor.mindMap().nodes[*rc::gen::inRange<std::size_t>(0, count)].id; };
  switch (*rc::gen::inRange(0, 6)) {
    case 0:
      if (count > 0) rig.editor.setNodeTitle(anyTopic(), anyText(5));
      break;
    case 1:
      if (count > 0) rig.editor.setNodeNotes(anyTopic(), anyText(8));
      break;
    case 2:
      if (count > 0) rig.editor.deleteNode(anyTopic());
      break;
    case 3:
      rig.editor.createFreeNode(10.0, 10.0);
      break;
    case 4:
      rig.editor.undo();
      break;
    default:
      rig.editor.toggleSearch();
      break;
  }
}

void searchLikeNaively() {
  CommandRig rig(anyTexts());
  QString query;
  const int steps = *rc::gen::inRange(1, 25);
  for (int step = 0; step < steps; ++step) {
    const int kind = *rc::gen::inRange(0, 10);
    if (kind == 0)
      changeSomething(rig);
    else if (kind == 1)
      query.chop(1);
    else if (kind == 2)
      query = anyText(3);
    else if (kind == 3)
      query = *rc::gen::arbitrary<bool>() ? query.toUpper() : query.toLower();
    else if (query.size() > 4)
      query.clear();
    else
      query += anyText(1);
    rig.editor.setSearchQuery(query);
    rig.editor.runSearch();
    RC_ASSERT(rig.editor.searchResultIDs() == naiveResults(rig.editor.mindMap(), query));
  }
}

}  // namespace

RC_GTEST_PROP(SearchLaws, ATypedQueryFindsWhatALookAtAllTopicsFinds, ()) {
  searchLikeNaively();
}

RC_GTEST_PROP(SearchLaws, SoUnderATurkishLocale, ()) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::Turkish));
  const auto restore = qScopeGuard([&] { QLocale::setDefault(before); });
  searchLikeNaively();
}
