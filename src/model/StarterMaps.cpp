#include "model/StarterMaps.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "model/NewId.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;

constexpr double radius = 180.0;

Node branchNode(const QString& title, QPointF position) {
  Node node;
  node.id = newId();
  node.title = title;
  node.position = position;
  node.style = NodeStyle::defaultStyle();
  return node;
}

}  // namespace

const std::vector<StarterMap>& templates() {
  static const std::vector<StarterMap> table = {
      {u"Brainstorm"_s, u"lightbulb"_s, {u"Ideas"_s, u"Research"_s, u"Questions"_s, u"Inspiration"_s, u"Next Steps"_s}},
      {u"Project Plan"_s, u"checklist"_s, {u"Goals"_s, u"Timeline"_s, u"Resources"_s, u"Risks"_s, u"Milestones"_s}},
      {u"Meeting Notes"_s, u"person.3"_s, {u"Agenda"_s, u"Decisions"_s, u"Action Items"_s, u"Follow-ups"_s}},
      {u"Research"_s, u"book"_s, {u"Hypothesis"_s, u"Sources"_s, u"Findings"_s, u"Analysis"_s, u"Conclusion"_s}},
      {u"Personal Goals"_s, u"star"_s, {u"Health"_s, u"Career"_s, u"Learning"_s, u"Finance"_s, u"Relationships"_s}},
  };
  return table;
}

const StarterMap* templateNamed(const QString& name) {
  const auto found = std::ranges::find(templates(), name, &StarterMap::name);
  return found == templates().end() ? nullptr : &*found;
}

MindMap templateMap(const QString& name, const QStringList& branches, const Clock& clock) {
  MindMap map = MindMap::blankMap(clock);
  map.title = name;
  map.nodes.update(0, [&](Node& root) { root.title = name; });
  const Node root = map.nodes[0];
  for (qsizetype i = 0; i < branches.size(); ++i) {
    const double turn = static_cast<double>(i) * 2.0 * std::numbers::pi / static_cast<double>(branches.size());
    const double angle = turn - std::numbers::pi / 2.0;
    const Node node =
        branchNode(branches.at(i), root.position + QPointF(radius * std::cos(angle), radius * std::sin(angle)));
    Edge edge;
    edge.id = newId();
    edge.from = root.id;
    edge.to = node.id;
    edge.style = EdgeStyle::defaultStyle();
    map.nodes.append(node);
    map.edges.append(std::move(edge));
  }
  return map;
}

}  // namespace quilmora
