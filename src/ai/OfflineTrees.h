#pragma once

#include <QStringList>

#include "ai/AITreeNode.h"

namespace quilmora {

// The offline generator's trees.

// A map for a prompt: a fixed structure if the prompt asks for one, otherwise the branches of the closest subject in
// the table, or of a template.
AITreeNode generateTree(const QString& prompt);

// The title with the branches of the subject of exactly this name, or with four generic ones.
AITreeNode expandTree(const QString& title);

// Up to five children for the title that are not among the siblings; case is ignored.
AITreeNode suggestTree(const QString& title, const QStringList& siblings);

}  // namespace quilmora
