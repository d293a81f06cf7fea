#pragma once

#include <memory>
#include <optional>

#include <QFuture>
#include <QThreadPool>

#include "editor/versions/VersionStore.h"

namespace quilmora {

class Clock;
class Log;

// Keeps what saves, imports and other programs replace in a document, so that the user can go back to it. All work
// happens off the main thread, in the order of the calls.
class EarlierVersions {
 public:
  using Origin = versions::Origin;

  // `folder` is where the versions are kept.
  EarlierVersions(const Clock& clock, Log& log, const QString& folder);
  // Waits until everything requested has been kept.
  ~EarlierVersions();

  // The document holds this map from now on, or has since `time`.
  void documentHolds(const QString& document, const MindMap& map, Origin origin, std::optional<TimePoint> time = {});
  // What the document holds is about to be replaced, even if another program wrote it or the document was never open.
  void documentWillBeReplaced(const QString& document);
  // Another program has replaced what the document held.
  void documentWasReplaced();
  // Keeps a map that no file of the document holds, such as one that another version replaces.
  void keep(const QString& document, const MindMap& map);

  // Newest first.
  QFuture<std::vector<versions::Version>> list(const QString& document);
  // Nothing if it cannot be read.
  QFuture<std::optional<MindMap>> load(const QString& document, std::uint64_t number);
  // Returns when everything requested is done.
  void settle() { m_pool.waitForDone(); }

 private:
  struct Held {
    QString document;
    MindMap map;
    TimePoint time;
    Origin origin = Origin::opened;
    qint64 modified = 0;
  };

  void keepAt(const QString& document, const MindMap& map, TimePoint time);
  void keepFile(const QString& document);

  const Clock& m_clock;
  Log& m_log;
  std::shared_ptr<versions::VersionStore> m_store;
  std::optional<Held> m_held;
  std::optional<TimePoint> m_lastKept;
  QThreadPool m_pool;
};

}  // namespace quilmora
