#pragma once

#include <QString>

#include "ai/AIProvider.h"

namespace quilmora {

// The texts that go to a model.

// What tells the model its task, one text for each kind of request.
QString systemPrompt(const AIRequest& request);

// What the user asks for.
QString userPrompt(const AIRequest& request);

// What tells the model to chat; the outline of the map follows it directly.
QString chatPrompt();

}  // namespace quilmora
