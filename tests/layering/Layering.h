#pragma once

#include <string>
#include <vector>

// The house's floors: which folder of src/ may include from which.
namespace layering {

// A source file as it is judged: its path below src/ and its text.
struct SourceFile {
  std::string path;
  std::string text;
};

// Every file of these that includes what its folder may not: a line for each, "path:line: reason".
std::vector<std::string> violations(const std::vector<SourceFile>& files);

// The C++ files below this folder.
std::vector<SourceFile> readSources(const std::string& sourceFolder);

}  // namespace layering
