#include "editor/journal/OpenText.h"

namespace quilmora {

namespace {

template <class Record, class Text>
void setText(SharedArray<Record>& records, const QUuid& id, Text Record::*text, const Text& value) {
  records.updateIf([&](const Record& record) { return record.id == id && record.*text != value; },
                   [&](Record& record) { record.*text = value; });
}

}  // namespace

MindMap withOpenText(MindMap map, const OpenText& open) {
  switch (open.field) {
    case OpenText::Field::topicTitle:
      setText(map.nodes, open.id, &Node::title, open.text);
      break;
    case OpenText::Field::topicNotes:
      setText(map.nodes, open.id, &Node::notes, open.text);
      break;
    case OpenText::Field::topicUrl:
      setText(map.nodes, open.id, &Node::url, open.text.isEmpty() ? std::nullopt : std::optional(open.text));
      break;
    case OpenText::Field::regionLabel:
      setText(map.regions, open.id, &Region::label, open.text);
      break;
  }
  return map;
}

}  // namespace quilmora
