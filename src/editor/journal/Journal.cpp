#include "editor/journal/Journal.h"

#include <new>
#include <utility>

#include "editor/journal/JournalWriter.h"
#include "platform/Futures.h"
#include "platform/Log.h"
#include "platform/StartInPool.h"

namespace quilmora {

Journal::Journal(Scheduler& scheduler, Log& log, QString folder)
    : m_scheduler(scheduler),
      m_log(log),
      m_folder(std::move(folder)),
      m_writer(std::make_shared<journal::JournalWriter>(m_folder)) {
  // One at a time, in order.
  m_pool.setMaxThreadCount(1);
}

Journal::~Journal() {
  m_scheduler.cancel(m_task);
  if (m_isRunning) m_running.waitForFinished();
}

journal::Recovery Journal::start(const QString& document, const MindMap& base) {
  m_scheduler.cancel(std::exchange(m_task, 0));
  m_waiting.clear();
  m_isStateWaiting = false;
  finishRunning();
  journal::Recovery recovery = journal::recover(m_folder, document, base);
  add([document, base, takesOver = recovery.map.has_value()](journal::JournalWriter& writer) {
    return writer.start(document, base, takesOver);
  });
  return recovery;
}

void Journal::changed() {
  if (m_task == 0) m_task = m_scheduler.after(m_problem.isEmpty() ? delay : retryDelay, [this] { flush(); });
}

void Journal::flush() {
  m_task = 0;
  // If one is still running, it is followed by the map as it is then.
  if (m_isRunning)
    m_isStateWaiting = true;
  else
    addCurrentState();
}

void Journal::addCurrentState() {
  m_isStateWaiting = false;
  if (!m_source) return;
  State state = m_source();
  if (state.isKept && !state.openText) {
    add([](journal::JournalWriter& writer) {
      writer.clear();
      return QString();
    });
    return;
  }
  add([state = std::move(state)](journal::JournalWriter& writer) {
    return writer.record(state.openText ? withOpenText(state.map, *state.openText) : state.map);
  });
}

void Journal::savingBegins(const MindMap& map) {
  add([map](journal::JournalWriter& writer) { return writer.size() > 0 ? writer.record(map) : QString(); });
}

void Journal::saved(const QString& document, const MindMap& map) {
  add([document, map](journal::JournalWriter& writer) { return writer.moveBase(document, map); });
  changed();
}

void Journal::settle() {
  m_scheduler.cancel(std::exchange(m_task, 0));
  finishRunning();
  addCurrentState();
  finishRunning();
}

void Journal::add(Step step) {
  m_waiting.push_back(std::move(step));
  if (!m_isRunning) run();
}

void Journal::run() {
  m_isRunning = true;
  m_running = startInPool(&m_pool, [writer = m_writer, steps = std::exchange(m_waiting, {})]() mutable {
    QString problem;
    try {
      for (const Step& step : steps)
        if (const QString failure = step(*writer); !failure.isEmpty()) problem = failure;
    } catch (const std::bad_alloc&) {
      problem = QStringLiteral("There is not enough memory for it.");
    }
    // Release the maps before anybody learns of the end.
    steps.clear();
    return problem;
  });
  whenFinished(
      m_running, this,
      [this, run = ++m_runCount](const QString& problem) {
        // Somebody may have waited for it in the meantime.
        if (m_isRunning && run == m_runCount) finished(problem);
      },
      [](const std::exception&) {});
}

void Journal::finished(const QString& problem) {
  m_isRunning = false;
  if (!problem.isEmpty() && m_problem.isEmpty()) m_log.write(QStringLiteral("Quilmora: journal FAILED: ") + problem);
  m_problem = problem;
  if (!m_problem.isEmpty()) changed();
  if (m_isStateWaiting) addCurrentState();
  if (!m_isRunning && !m_waiting.empty()) run();
}

QString Journal::finishRunning() {
  while (m_isRunning) {
    m_running.waitForFinished();
    finished(m_running.result());
  }
  return m_problem;
}

}  // namespace quilmora
