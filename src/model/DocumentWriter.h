#pragma once

#include <QByteArray>

#include "model/MindMap.h"

namespace quilmora {

enum class JsonForm { pretty, compact };

// The map as JSON text: UTF-8, sorted keys, indented unless compact form is requested, dates in whole seconds.
// decodeDocument can always read it: a number that is not finite is written as the nearest finite one, and a record or
// title so large (nearly 4 GB) that it could not be read throws DocumentError.
QByteArray encodeDocument(const MindMap& map, JsonForm form = JsonForm::pretty);

// A single record of a document, in compact form.
QByteArray encodeNodeStyle(const NodeStyle& style);

}  // namespace quilmora
