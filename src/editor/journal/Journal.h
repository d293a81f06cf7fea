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

// Records on disk what happens between two saves, so that a crash loses no more than a second of work. Comparing,
// encoding and writing happen off the main thread, which only passes copies on.
class Journal : public QObject {
  Q_OBJECT

 public:
  // From a change until it is recorded; changes in between are recorded together.
  static constexpr std::chrono::milliseconds delay{300};
  // After a failure, so that a full disk is not tried all the time.
  static constexpr std::chrono::milliseconds retryDelay{5000};

  // What the editor holds at the moment.
  struct State {
    MindMap map;
    bool isKept = false;  // nothing would be lost if the map were gone
    std::optional<OpenText> openText;
  };

  // All must outlive the journal; `folder` is where journals are kept.
  Journal(Scheduler& scheduler, Log& log, QString folder);
  // Leaves the journal in place, with everything that was recorded.
  ~Journal() override;

  void setSource(std::function<State()> source) { m_source = std::move(source); }

  // Another map is open: that of this document, or of none if it is empty, whose file holds `base`. Returns what an
  // ended process left behind; the caller then puts that into the editor.
  journal::Recovery start(const QString& document, const MindMap& base);
  // The map, an open text or whether they are saved changed. Costs next to nothing.
  void changed();
  // The document is about to be written with this map, so that recovery recognises it.
  void savingBegins(const MindMap& map);
  // The document at this place holds this map now.
  void saved(const QString& document, const MindMap& map);
  // Waits until everything in the editor is recorded. For the end of the process.
  void settle();
  // Why the last record could not be written, or an empty text.
  const QString& problem() const { return m_problem; }
  // Nothing is in progress.
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
  bool m_isStateWaiting = false;  // the last step is the state, which is read when the step runs
  Scheduler::Task m_task = 0;
  QString m_problem;
};

}  // namespace quilmora
