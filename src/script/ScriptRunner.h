#pragma once

#include <map>

#include "script/Operations.h"

namespace quilmora {

// Answers the lines of a script, one by one.
class ScriptRunner {
 public:
  ScriptRunner();

  // The answer, one line of JSON without its line end. Never throws: whatever the line contains, an answer with `ok`
  // false says why.
  QByteArray answer(const QByteArray& line);

 private:
  ScriptEditor m_script;
  std::map<QString, Operation> m_operations;
};

// Answers every line of standard input on standard output, each at once, until the input ends. Returns whether all
// answers could be written.
bool runScript();

}  // namespace quilmora
