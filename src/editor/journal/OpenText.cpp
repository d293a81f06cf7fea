#include "editor/journal/OpenText.h"

namespace quilmora {

namespace {

template <class Record>
void setText(SharedArray<Record>& records, const QUuid& id, QString Record::*text, const QString& value) {
  records.updateIf([&](const Record& record) { return record.id == id && record.*text != value; },
                   [&](Record& record) { record.*text = value; });
}

}  // namespace

MindMap withOpenText(MindMap map, const OpenText& open) {
  if (open.field == OpenText::Field::topicTitle)
    setText(map.nodes, open.id, &Node::title, open.text);
  else
    setText(map.regions, open.id, &Region::label, open.text);
  return map;
}

}  // namespace quilmora
