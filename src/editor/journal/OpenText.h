#pragma once

#include <QString>
#include <QUuid>

#include "model/MindMap.h"

namespace quilmora {

// The text in an open field, which goes into the map when the field is left.
struct OpenText {
  enum class Field { topicTitle, topicNotes, topicUrl, regionLabel };
  Field field = Field::topicTitle;
  QUuid id;
  QString text;

  bool operator==(const OpenText&) const = default;
};

// The map as it will be when the field is left.
MindMap withOpenText(MindMap map, const OpenText& open);

}  // namespace quilmora
