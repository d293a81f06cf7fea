#include "platform/TemporaryFiles.h"

#include <algorithm>
#include <ctime>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <QRandomGenerator>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quilmora {

namespace {

constexpr std::string_view prefix = ".quilmora-";
constexpr std::time_t minute = 60;
// Longer than any write takes between two checks of its file.
constexpr std::time_t youngestFile = 10 * minute;
constexpr std::time_t youngestFolder = 24 * 60 * minute;
constexpr int maxEntries = 200'000;

bool isAll(std::string_view text, std::string_view letters, std::size_t longest) {
  return !text.empty() && text.size() <= longest && text.find_first_not_of(letters) == std::string_view::npos;
}

bool isOwnName(std::string_view name) {
  return name.starts_with(prefix) && isAll(name.substr(prefix.size()), "0123456789abcdefghijklmnopqrstuvwxyz", 13);
}

// The names that packages were built under before they shared those of files.
bool isOldFolderName(std::string_view name) {
  constexpr std::string_view ending = ".mindmap.";
  const std::size_t index = name.rfind(ending);
  return name.starts_with('.') && index != std::string_view::npos &&
         isAll(name.substr(index + ending.size()), "0123456789abcdef", 16);
}

class Descriptor {
 public:
  Descriptor(int folder, const char* name, int flags)
      : m_number(::openat(folder, name, flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (m_number >= 0) ::close(m_number);
  }
  int number() const { return m_number; }
  // Nothing unless it is the user's own and was last changed at least this many seconds ago.
  std::optional<struct stat> ownSince(std::time_t seconds) const {
    struct stat status {};
    if (m_number < 0 || ::fstat(m_number, &status) != 0 || status.st_uid != ::geteuid()) return std::nullopt;
    if (std::time(nullptr) - status.st_mtime < seconds) return std::nullopt;
    return status;
  }

 private:
  int m_number;
};

std::vector<std::string> namesIn(int folder) {
  std::vector<std::string> names;
  const int own = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  DIR* entries = own < 0 ? nullptr : ::fdopendir(own);
  if (entries == nullptr) {
    if (own >= 0) ::close(own);
    return names;
  }
  int count = 0;
  while (const dirent* entry = ::readdir(entries)) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
    if (++count == maxEntries) break;
  }
  ::closedir(entries);
  return names;
}

void removeFile(int folder, const char* name) {
  const Descriptor file(folder, name, O_RDONLY);
  const auto status = file.ownSince(youngestFile);
  if (!status || !S_ISREG(status->st_mode) || status->st_nlink != 1) return;
  // Its writer holds it.
  if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) return;
  ::unlinkat(folder, name, 0);
}

bool isEmptyFolder(int folder, const char* name) {
  const Descriptor inner(folder, name, O_RDONLY | O_DIRECTORY);
  return inner.number() >= 0 && namesIn(inner.number()).empty();
}

// A package being built contains only these; anything more belongs to somebody.
void removeFolder(int folder, const char* name) {
  {
    const Descriptor package(folder, name, O_RDONLY | O_DIRECTORY);
    if (!package.ownSince(youngestFolder)) return;
    const std::vector<std::string> names = namesIn(package.number());
    const bool isOurs = std::ranges::all_of(names, [&](const std::string& inner) {
      if (inner == "Assets" || inner == "Thumbnails") return isEmptyFolder(package.number(), inner.c_str());
      return inner == "document.json" || isOwnName(inner);
    });
    if (!isOurs) return;
    for (const std::string& inner : names) {
      const bool isFolder = inner == "Assets" || inner == "Thumbnails";
      ::unlinkat(package.number(), inner.c_str(), isFolder ? AT_REMOVEDIR : 0);
    }
  }
  ::unlinkat(folder, name, AT_REMOVEDIR);
}

bool isFolder(int folder, const char* name) {
  struct stat status {};
  return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

bool isRegular(int folder, const char* name) {
  struct stat status {};
  return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

QByteArray temporaryName() {
  return QByteArray(prefix.data(), static_cast<qsizetype>(prefix.size())) +
         QByteArray::number(QRandomGenerator::system()->generate64(), 36);
}

void holdTemporary(int descriptor) {
  ::flock(descriptor, LOCK_EX | LOCK_NB);
}

void removeStaleTemporaries(const QByteArray& path) {
  const int folder = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  for (const std::string& name : namesIn(folder)) {
    if (!isOwnName(name) && !isOldFolderName(name)) continue;
    // Only these are opened: opening a device may have effects.
    if (isFolder(folder, name.c_str()))
      removeFolder(folder, name.c_str());
    else if (isOwnName(name) && isRegular(folder, name.c_str()))
      removeFile(folder, name.c_str());
  }
  ::close(folder);
}

void removeStaleTemporariesOnce(const QByteArray& folder) {
  static std::mutex mutex;
  static std::set<QByteArray> seen;
  {
    const std::lock_guard lock(mutex);
    if (!seen.insert(folder).second) return;
  }
  removeStaleTemporaries(folder);
}

}  // namespace quilmora
