#pragma once

#include <QUuid>

namespace quilmora {

// A new random id, as QUuid::createUuid() makes one. Takes the randomness from the system in larger pieces, so that a
// hundred thousand ids cost milliseconds.
QUuid newId();

}  // namespace quilmora
