#pragma once

#include <vector>

#include <QString>
#include <QStringList>

#include "model/MindMap.h"

namespace quilmora {

// A kind of map that the user can ask for.
struct PromptMode {
  QString id;
  QString label;
  QString symbol;
  QString placeholder;
  QString prefix;  // put before the user's words
  MindMap::Layout layout;
  QStringList examples;
};

// In the order of their buttons; the first is preselected.
const std::vector<PromptMode>& promptModes();

// The layout that a whole prompt, prefix included, asks for, or `usual`.
MindMap::Layout layoutForPrompt(const QString& prompt, MindMap::Layout usual);

}  // namespace quilmora
