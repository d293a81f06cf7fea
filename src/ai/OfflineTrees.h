#pragma once

#include <QStringList>

#include "ai/AITreeNode.h"

namespace quilmora {

// The trees that the offline generator makes.

// A map for a prompt: one of the fixed structures where the prompt asks for one, and otherwise the branches of the
// closest subject of the table, or of a template.
AITreeNode generateTree(const QString& prompt);

// The title with the branches of the subject of exactly this name, or with four that fit any.
AITreeNode expandTree(const QString& title);

// Up to five children for the title that are not among the siblings, whatever the case.
AITreeNode suggestTree(const QString& title, const QStringList& siblings);

}  // namespace quilmora
