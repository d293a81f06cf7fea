#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include <QFuture>
#include <QObject>
#include <QThreadPool>

#include "editor/journal/JournalRecovery.h"
#include "editor/journal/OpenText.h"
#include "model/MindMap.h"
#include "platform/Scheduler.h"

namespace quilmora {

class Log;
namespace journal {
class JournalWriter;
}

// Keeps what happens between two saves on the disk, so that the end of the process loses no more than a second of work.
// Comparing, encoding and writing happen beside the main thread, which only hands over copies.
class Journal : public QObject {
  Q_OBJECT

 public:
  // From a change until it is recorded; those in between go together.
  static constexpr std::chrono::milliseconds delay{300};
  // After a failure, so that a full disk is not asked all the time.
  static constexpr std::chrono::milliseconds retryDelay{5000};

  // What the editor holds at this moment.
  struct State {
    MindMap map;
    bool isKept = false;  // nothing would be missed if the map were gone
    std::optional<OpenText> openText;
  };

  // All outlive the journal; `folder` is where journals lie.
  Journal(Scheduler& scheduler, Log& log, QString folder);
  // Leaves the journal where it is, with all that was recorded.
  ~Journal() override;

  void setSource(std::function<State()> source) { m_source = std::move(source); }

  // Another map is open: that of this document, or of none where it is empty, which holds `base`. Returns what an ended
  // process left of it; the caller then makes the editor hold that.
  journal::Recovery start(const QString& document, const MindMap& base);
  // The map, an open text or whether they are kept changed. Costs next to nothing.
  void changed();
  // The document is about to be written with this map, so that recovery finds it among those on the way.
  void savingBegins(const MindMap& map);
  // The document at this place holds this map now.
  void saved(const QString& document, const MindMap& map);
  // Waits until all that the editor holds is recorded. For the end of the process.
  void settle();
  // Why the last record could not be written, or an empty text.
  const QString& problem() const { return m_problem; }
  // Nothing is under way.
  bool isAtRest() const { return !m_isRunning && m_waiting.empty() && !m_isStateWaiting; }

 private:
  using Step = std::function<QString(journal::JournalWriter&)>;

  void flush();
  void addCurrentState();
  void add(Step step);
  void run();
  void finished(const QString& problem);
  QString finishRunning();

  Scheduler& m_scheduler;
  Log& m_log;
  QString m_folder;
  std::function<State()> m_source;
  std::shared_ptr<journal::JournalWriter> m_writer;
  QThreadPool m_pool;
  QFuture<QString> m_running;
  bool m_isRunning = false;
  quint64 m_runCount = 0;
  std::vector<Step> m_waiting;
  bool m_isStateWaiting = false;  // as the last step, to be taken when it is run
  Scheduler::Task m_task = 0;
  QString m_problem;
};

}  // namespace quilmora
