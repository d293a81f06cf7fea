#pragma once

#include <vector>

#include "script/Arguments.h"
#include "script/JsonText.h"
#include "script/ScriptEditor.h"

namespace quilmora {

// One operation of a script. Its arguments are checked against the rules before run() is called. run() writes the
// result, if there is one, and throws ScriptError before it changes anything.
struct Operation {
  const char* name;
  std::vector<ArgumentRule> rules;
  void (*run)(ScriptEditor& script, const Arguments& arguments, JsonText& result);
};

// One list per chapter.
std::vector<Operation> documentOperations();
std::vector<Operation> editingOperations();
std::vector<Operation> connectionOperations();
std::vector<Operation> viewOperations();
std::vector<Operation> layoutOperations();
std::vector<Operation> geometryOperations();
std::vector<Operation> themeOperations();
std::vector<Operation> aiOperations();

}  // namespace quilmora
