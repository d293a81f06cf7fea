#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>

#include "platform/Scheduler.h"

namespace quilmora {

// Fields over a local copy of a text. What is typed waits in the field until the change ends; written() then hands it
// over, once. A text too long to be laid out in a panel is shown in part and cannot be edited there.

// A line: its change ends with Return, when the keyboard leaves and at commit(). Escape takes it back.
class CopyField final : public QLineEdit {
  Q_OBJECT

 public:
  static constexpr int longest = 10'000;

  CopyField(const QString& name, const QString& prompt, QWidget* parent);

  // Another subject's text; what waits is dropped.
  void load(const QString& text);
  // The same subject's text as it is now, unless something waits.
  void follow(const QString& text);
  bool isWaiting() const { return !isReadOnly() && text() != m_copy; }
  void commit();

 Q_SIGNALS:
  void written(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString m_copy;
};

// Several lines: the change also ends with a second without a letter, since notes are written for long. Tab leaves.
class CopyNotes final : public QPlainTextEdit {
  Q_OBJECT

 public:
  static constexpr int longest = 1'000'000;
  static constexpr int longestParagraph = 20'000;
  static constexpr int longestWord = 1'000;
  static constexpr std::chrono::milliseconds pause{1000};

  CopyNotes(const QString& name, Scheduler& scheduler, QWidget* parent);
  ~CopyNotes() override;

  void load(const QString& text);
  void follow(const QString& text);
  bool isWaiting() const;
  void commit();

 Q_SIGNALS:
  void written(const QString& text);

 protected:
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void wasTyped();

  Scheduler& m_scheduler;
  Scheduler::Task m_pause = 0;
  QString m_copy;
};

}  // namespace quilmora
