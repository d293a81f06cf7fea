#pragma once

#include <QString>

#include "ai/AIProvider.h"

namespace quilmora {

// The texts sent to a model.

// The model's task, one text for each kind of request.
QString systemPrompt(const AIRequest& request);

// The user's part of the request.
QString userPrompt(const AIRequest& request);

// The model's task in a chat; the outline of the map is appended directly.
QString chatPrompt();

}  // namespace quilmora
