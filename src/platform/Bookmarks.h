#pragma once

#include <optional>

#include <QByteArray>
#include <QString>

namespace quilmora {

// A bookmark remembers a file in the settings. This desktop has no sandbox, so a bookmark is the file's path in UTF-8
// and access to it always succeeds; the calls are where a sandboxed desktop would need them.
class Bookmarks {
 public:
  struct Resolved {
    QString path;
    bool stale = false;
  };
  enum class Kind { securityScoped, plain };
  struct Made {
    QByteArray data;  // empty on failure
    QString error;    // why it failed
  };

  virtual ~Bookmarks() = default;
  virtual Made make(const QString& path, Kind kind) = 0;
  virtual std::optional<Resolved> resolve(const QByteArray& bookmark, Kind kind) = 0;
  virtual bool startAccess(const QString& path) = 0;
  virtual void stopAccess(const QString& path) = 0;
};

class PathBookmarks final : public Bookmarks {
 public:
  Made make(const QString& path, Kind kind) override;
  std::optional<Resolved> resolve(const QByteArray& bookmark, Kind kind) override;
  bool startAccess(const QString&) override { return true; }
  void stopAccess(const QString&) override {}
};

}  // namespace quilmora
