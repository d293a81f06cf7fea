#pragma once

#include <vector>

#include <QStringList>

#include "model/MindMap.h"

namespace quilmora {

// A map to start from: a root with the template's name and a branch for each title. The name identifies it.
struct StarterMap {
  QString name;
  QString icon;  // name of a symbol
  QStringList branches;
};

// In the order in which they are offered.
const std::vector<StarterMap>& templates();
// nullptr if no template has the name.
const StarterMap* templateNamed(const QString& name);

// A blank map with the root in the middle and the branches around it, clockwise from straight above. Reads the clock
// twice.
MindMap templateMap(const QString& name, const QStringList& branches, const Clock& clock);

}  // namespace quilmora
