#include "ai/PromptModes.h"

#include <algorithm>

namespace quilmora {

namespace {

using Layout = MindMap::Layout;

QString text(const char16_t* literal) {
  return QString::fromUtf16(literal);
}

struct LayoutWords {
  Layout layout;
  std::vector<const char16_t*> words;
};

}  // namespace

const std::vector<PromptMode>& promptModes() {
  static const std::vector<PromptMode> modes{
      {text(u"brainstorm"),
       text(u"Brainstorm"),
       text(u"lightbulb"),
       text(u"e.g. Creative marketing ideas for a coffee shop"),
       QString(),
       Layout::radial,
       {text(u"Marketing ideas for a coffee shop"), text(u"Features for a habit tracker app"),
        text(u"Weekend trip to Lisbon"), text(u"Birthday party themes")}},
      {text(u"plan"),
       text(u"Project Plan"),
       text(u"checklist"),
       text(u"e.g. Launch plan for a mobile fitness app"),
       text(u"Create a project plan for: "),
       Layout::tree,
       {text(u"Launch plan for a mobile fitness app"), text(u"Renovate a small kitchen"),
        text(u"Write and publish a book"), text(u"Hire a first engineer")}},
      {text(u"compare"),
       text(u"Compare"),
       text(u"arrow.left.arrow.right"),
       text(u"e.g. React vs Vue vs Angular"),
       text(u"Create a comparison map: "),
       Layout::leftRightTree,
       {text(u"React vs Vue vs Angular"), text(u"Coffee vs Tea vs Matcha"), text(u"Rent vs Buy a home"),
        text(u"SQL vs NoSQL databases")}},
      {text(u"study"),
       text(u"Study Guide"),
       text(u"book"),
       text(u"e.g. Machine learning fundamentals"),
       text(u"Create a study guide about: "),
       Layout::verticalTree,
       {text(u"Machine learning fundamentals"), text(u"World War II overview"), text(u"Human nervous system"),
        text(u"Introduction to economics")}},
      {text(u"swot"),
       text(u"SWOT Analysis"),
       text(u"chart.bar"),
       text(u"e.g. Starting a food delivery startup"),
       text(u"Create a SWOT analysis for: "),
       Layout::orgChart,
       {text(u"Starting a food delivery startup"), text(u"Launching a podcast"), text(u"Opening a yoga studio"),
        text(u"Switching careers to product management")}},
  };
  return modes;
}

MindMap::Layout layoutForPrompt(const QString& prompt, MindMap::Layout usual) {
  static const std::vector<LayoutWords> table{
      {Layout::tree, {u"tree layout", u"horizontal"}},
      {Layout::verticalTree, {u"vertical"}},
      {Layout::radial, {u"radial", u"circular"}},
      {Layout::leftRightTree, {u"left right", u"l-r", u"compare"}},
      {Layout::orgChart, {u"org chart"}},
  };
  const QString lower = prompt.toLower();
  for (const LayoutWords& row : table)
    if (std::any_of(row.words.begin(), row.words.end(),
                    [&lower](const char16_t* word) { return lower.contains(QStringView(word)); }))
      return row.layout;
  return usual;
}

}  // namespace quilmora
