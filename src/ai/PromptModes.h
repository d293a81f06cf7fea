#pragma once

#include <vector>

#include <QString>
#include <QStringList>

#include "model/MindMap.h"

namespace quilmora {

// What a person can ask for when a map is to be generated.
struct PromptMode {
  QString id;
  QString label;
  QString symbol;
  QString placeholder;
  QString prefix;  // goes before the person's words
  MindMap::Layout layout;
  QStringList examples;
};

// In the order of their buttons; the first is the one at the start.
const std::vector<PromptMode>& promptModes();

// The layout that the words of a whole prompt, prefix included, ask for, or `usual`.
MindMap::Layout layoutForPrompt(const QString& prompt, MindMap::Layout usual);

}  // namespace quilmora
