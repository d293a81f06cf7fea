#include "ai/PromptModes.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quilmora {

namespace {

using Layout = MindMap::Layout;

struct LayoutWords {
  Layout layout;
  std::vector<const char16_t*> words;
};

}  // namespace

const std::vector<PromptMode>& promptModes() {
  static const std::vector<PromptMode> modes{
      {u"brainstorm"_s,
       u"Brainstorm"_s,
       u"lightbulb"_s,
       u"e.g. Creative marketing ideas for a coffee shop"_s,
       QString(),
       Layout::radial,
       {u"Marketing ideas for a coffee shop"_s, u"Features for a habit tracker app"_s, u"Weekend trip to Lisbon"_s,
        u"Birthday party themes"_s}},
      {u"plan"_s,
       u"Project Plan"_s,
       u"checklist"_s,
       u"e.g. Launch plan for a mobile fitness app"_s,
       u"Create a project plan for: "_s,
       Layout::tree,
       {u"Launch plan for a mobile fitness app"_s, u"Renovate a small kitchen"_s, u"Write and publish a book"_s,
        u"Hire a first engineer"_s}},
      {u"compare"_s,
       u"Compare"_s,
       u"arrow.left.arrow.right"_s,
       u"e.g. React vs Vue vs Angular"_s,
       u"Create a comparison map: "_s,
       Layout::leftRightTree,
       {u"React vs Vue vs Angular"_s, u"Coffee vs Tea vs Matcha"_s, u"Rent vs Buy a home"_s,
        u"SQL vs NoSQL databases"_s}},
      {u"study"_s,
       u"Study Guide"_s,
       u"book"_s,
       u"e.g. Machine learning fundamentals"_s,
       u"Create a study guide about: "_s,
       Layout::verticalTree,
       {u"Machine learning fundamentals"_s, u"World War II overview"_s, u"Human nervous system"_s,
        u"Introduction to economics"_s}},
      {u"swot"_s,
       u"SWOT Analysis"_s,
       u"chart.bar"_s,
       u"e.g. Starting a food delivery startup"_s,
       u"Create a SWOT analysis for: "_s,
       Layout::orgChart,
       {u"Starting a food delivery startup"_s, u"Launching a podcast"_s, u"Opening a yoga studio"_s,
        u"Switching careers to product management"_s}},
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
