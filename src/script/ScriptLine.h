#pragma once

#include <memory>
#include <span>

#include "script/Arguments.h"

namespace quilmora {

// One parsed line of a script: a JSON object whose key `do` names the operation. Nothing in a line can make reading it
// recurse or run away: nesting beyond 1,024 levels is refused.
class ScriptLine {
 public:
  // Throws ScriptError unless the line is one JSON object with a text under `do` and no key twice.
  explicit ScriptLine(const QByteArray& line);
  ~ScriptLine();

  const QString& operation() const { return m_operation; }
  // The line's values for the rules. Throws ScriptError for one that is missing or of another kind.
  Arguments arguments(std::span<const ArgumentRule> rules) const;

 private:
  struct Parsed;
  std::unique_ptr<Parsed> m_parsed;
  QString m_operation;
};

}  // namespace quilmora
