#pragma once

#include <string>
#include <vector>

// The floors of src/: which folder may include from which.
namespace layering {

// A source file to check: its path below src/ and its text.
struct SourceFile {
  std::string path;
  std::string text;
};

// A line "path:line: reason" for every include of these files that their folders do not allow.
std::vector<std::string> violations(const std::vector<SourceFile>& files);

// The C++ files below this folder.
std::vector<SourceFile> readSources(const std::string& sourceFolder);

}  // namespace layering
