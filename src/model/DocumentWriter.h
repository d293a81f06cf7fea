#pragma once

#include <QByteArray>

#include "model/MindMap.h"

namespace quilmora {

enum class JsonForm { pretty, compact };

// The map as JSON text: UTF-8, sorted keys, indented unless compact is asked for, dates in whole seconds. Always
// readable by decodeDocument: a number that is not finite is written as the nearest finite one.
QByteArray encodeDocument(const MindMap& map, JsonForm form = JsonForm::pretty);

// One record of a document by itself, compact.
QByteArray encodeNodeStyle(const NodeStyle& style);

}  // namespace quilmora
