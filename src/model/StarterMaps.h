#pragma once

#include <vector>

#include <QStringList>

#include "model/MindMap.h"

namespace quilmora {

// A map to begin with: a root with the template's name and a branch for each title. The name is its identity.
struct StarterMap {
  QString name;
  QString icon;  // the name of a symbol
  QStringList branches;
};

// In the order in which they are offered.
const std::vector<StarterMap>& templates();
// nullptr where no template has the name.
const StarterMap* templateNamed(const QString& name);

// The root in the middle of a blank map and the branches around it, clockwise from straight above. Reads the clock
// twice.
MindMap templateMap(const QString& name, const QStringList& branches, const Clock& clock);

}  // namespace quilmora
