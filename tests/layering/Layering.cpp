#include "layering/Layering.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace layering {

namespace {

struct Floor {
  std::string folder;
  std::vector<std::string> below;  // what it may include from, besides itself
  bool isHeadless = true;          // no Widgets
};

// src/floors.txt: "folder *: folders below"; the star allows widgets.
std::vector<Floor> readFloors() {
  std::ifstream file(QUILMORA_FLOORS);
  std::vector<Floor> floors;
  for (std::string line; std::getline(file, line);) {
    const std::size_t colon = line.find(':');
    if (line.starts_with('#') || colon == std::string::npos) continue;
    std::istringstream head(line.substr(0, colon));
    std::istringstream tail(line.substr(colon + 1));
    Floor floor;
    std::string star;
    head >> floor.folder >> star;
    floor.isHeadless = star != "*";
    floor.below.assign(std::istream_iterator<std::string>(tail), {});
    floors.push_back(floor);
  }
  return floors;
}

const Floor* floorOf(const std::string& path) {
  static const std::vector<Floor> floors = readFloors();
  const Floor* found = nullptr;
  for (const Floor& floor : floors)
    if (path.starts_with(floor.folder + "/") && (!found || floor.folder.size() > found->folder.size())) found = &floor;
  return found;
}

// The names of Qt's own headers for widgets, such as "QWidget" and "qwidget.h".
const std::set<std::string>& widgetHeaders() {
  static const std::set<std::string> names = [] {
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(QUILMORA_WIDGET_HEADERS))
      found.insert(entry.path().filename().string());
    return found;
  }();
  return names;
}

bool isWidgetHeader(const std::string& name) {
  return name.rfind("QtWidgets", 0) == 0 || widgetHeaders().count(name) > 0;
}

// Why this include is not allowed in a file of this floor, or an empty text.
std::string judge(const Floor& floor, const std::string& name, bool isOwn) {
  if (!isOwn)
    return floor.isHeadless && isWidgetHeader(name) ? "a headless file includes the widget header " + name : "";
  const Floor* target = floorOf(name);
  if (!target) return "\"" + name + "\" is not written as folder/File.h";
  if (target == &floor || std::count(floor.below.begin(), floor.below.end(), target->folder) > 0) return "";
  return floor.folder + " may not include from " + target->folder;
}

}  // namespace

std::vector<std::string> violations(const std::vector<SourceFile>& files) {
  static const std::regex include(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
  std::vector<std::string> found;
  for (const SourceFile& file : files) {
    const Floor* floor = floorOf(file.path);
    if (!floor) {
      found.push_back(file.path + ":1: stands in no known folder");
      continue;
    }
    std::size_t number = 0;
    std::size_t start = 0;
    while (start < file.text.size()) {
      const std::size_t end = std::min(file.text.find('\n', start), file.text.size());
      const std::string line = file.text.substr(start, end - start);
      start = end + 1;
      ++number;
      std::smatch match;
      if (line.find("include") == std::string::npos || !std::regex_search(line, match, include)) continue;
      const std::string reason = judge(*floor, match[2], match[1] == "\"");
      if (!reason.empty()) found.push_back(file.path + ":" + std::to_string(number) + ": " + reason);
    }
  }
  return found;
}

std::vector<SourceFile> readSources(const std::string& sourceFolder) {
  std::vector<SourceFile> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(sourceFolder)) {
    const auto extension = entry.path().extension();
    if (!entry.is_regular_file() || (extension != ".h" && extension != ".cpp")) continue;
    std::ifstream in(entry.path(), std::ios::binary);
    files.push_back({std::filesystem::relative(entry.path(), sourceFolder).generic_string(),
                     std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>())});
  }
  return files;
}

}  // namespace layering
