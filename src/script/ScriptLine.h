#pragma once

#include <memory>
#include <span>

#include "script/Arguments.h"

namespace quilmora {

// A parsed JSON object, such as a line of a script. Reading it takes bounded stack and time: nesting beyond 1,024
// levels is refused.
class ScriptObject {
 public:
  // Throws ScriptError unless the text is one JSON object without repeated keys.
  explicit ScriptObject(const QByteArray& json);
  ~ScriptObject();

  // The object's values for the rules. Throws ScriptError if one is missing or of another kind.
  Arguments arguments(std::span<const ArgumentRule> rules) const;

 protected:
  struct Parsed;
  std::unique_ptr<Parsed> m_parsed;
};

// One line of a script: an object whose key `do` names the operation.
class ScriptLine : public ScriptObject {
 public:
  // Throws ScriptError unless the line is such an object.
  explicit ScriptLine(const QByteArray& line);

  const QString& operation() const { return m_operation; }

 private:
  QString m_operation;
};

}  // namespace quilmora
