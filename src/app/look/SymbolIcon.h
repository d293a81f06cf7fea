#pragma once

#include <memory>

#include <QIcon>

#include "app/look/Tokens.h"

namespace quilmora {

// An icon drawn from a symbol's outline in the colours of the tokens at the time of drawing, sharp at every scale.
QIcon symbolIcon(std::shared_ptr<const Tokens> tokens, const QString& symbol, QColor Tokens::*color = &Tokens::text);

}  // namespace quilmora
