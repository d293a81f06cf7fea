#pragma once

#include <QUuid>

namespace quilmora {

// A new random id like those of QUuid::createUuid(). It reads randomness from the system in larger pieces, so that a
// hundred thousand ids take milliseconds.
QUuid newId();

}  // namespace quilmora
