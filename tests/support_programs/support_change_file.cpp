// Does to a file what other programs do.
// Usage: support_change_file WORK PATH [OTHER]
//   write OTHER     writes the content of OTHER into the file, in place
//   replace OTHER   puts a copy of OTHER in its place, as those do that save whole files
//   rewrite         writes its own content anew, with another time
//   remove          removes it
//   rename OTHER    moves it to OTHER
//   link OTHER      puts a symbolic link to OTHER in its place
//   protect, free   takes everybody's right to write it, and gives the owner's back

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string contentOf(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool write(const std::string& path, const std::string& content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << content;
  return file.flush().good();
}

bool replace(const char* path, const std::string& content) {
  const std::string beside = std::string(path) + "~";
  return write(beside, content) && std::rename(beside.c_str(), path) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const std::string_view work = argv[1];
  const char* path = argv[2];
  const char* other = argc > 3 ? argv[3] : "";
  if (work == "write") return write(path, contentOf(other)) ? 0 : 1;
  if (work == "replace") return replace(path, contentOf(other)) ? 0 : 1;
  if (work == "rewrite") return replace(path, contentOf(path)) ? 0 : 1;
  if (work == "remove") return ::unlink(path);
  if (work == "rename") return std::rename(path, other);
  if (work == "link") return ::unlink(path) == 0 && ::symlink(other, path) == 0 ? 0 : 1;
  if (work == "protect") return ::chmod(path, 0444);
  if (work == "free") return ::chmod(path, 0644);
  return 2;
}
