#pragma once

#include <QString>

namespace quilmora {

class DocumentWatch;

// What keeps the open map from being saved, and what can be done about it. It is not modal: nothing waits for an
// answer.
struct DocumentProblem {
  QString text;  // empty if there is no problem
  bool canReload = false;
  bool canKeepMine = false;

  bool operator==(const DocumentProblem&) const = default;
};

// `autoSaveProblem` and `reloadProblem` are why these last failed, or empty.
DocumentProblem problemOf(const QString& path, const DocumentWatch& watch, const QString& autoSaveProblem,
                          const QString& reloadProblem);

}  // namespace quilmora
