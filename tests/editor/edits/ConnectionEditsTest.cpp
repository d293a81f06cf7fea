#include "editor/edits/ConnectionEdits.h"
#include "editor/edits/EditsRig.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

TEST(ConnectionEdits, NewConnectionsAreBareWithIdsOfTheirOwn) {
  const Edge edge = newEdge(topicId(0), topicId(1), EdgeStyle::defaultStyle());
  EXPECT_EQ(edge.from, topicId(0));
  EXPECT_EQ(edge.to, topicId(1));
  EXPECT_TRUE(edge.label.isEmpty());
  EXPECT_FALSE(edge.controlPointOffset);
  EXPECT_NE(edge.id, newEdge(topicId(0), topicId(1), EdgeStyle::defaultStyle()).id);
  const Relationship link = newRelationship(topicId(0), topicId(1));
  EXPECT_EQ(link.color, QStringLiteral("#888888"));
  EXPECT_NE(link.id, newRelationship(topicId(0), topicId(1)).id);
}

TEST(ConnectionEdits, ARelationshipHasADirection) {
  MindMap map = mapOf({0, 1});
  map.relationships.append(newRelationship(topicId(0), topicId(1)));
  EXPECT_TRUE(areRelated(map, topicId(0), topicId(1)));
  EXPECT_FALSE(areRelated(map, topicId(1), topicId(0)));
}
