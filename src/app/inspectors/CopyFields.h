#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>

#include "platform/Scheduler.h"

namespace quilmora {

// Fields over a local copy of a text. Typed text waits in the field until the edit ends; then written() passes it on,
// once. A text too long to be laid out in a panel is shown in part and cannot be edited there.

// A line: its edit ends with Return, when it loses the keyboard, and at commit(). Escape reverts it.
class CopyField final : public QLineEdit {
  Q_OBJECT

 public:
  static constexpr int longest = 10'000;

  CopyField(const QString& name, const QString& prompt, QWidget* parent);

  // Shows another subject's text; pending text is dropped.
  void load(const QString& text);
  // Shows the same subject's current text, unless there is pending text.
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

// Several lines: the edit also ends after a second without typing, since notes take a long time to write. Tab leaves
// the field.
class CopyNotes final : public QPlainTextEdit {
  Q_OBJECT

 public:
  static constexpr int longest = 1'000'000;
  static constexpr int maxParagraphLength = 20'000;
  static constexpr int maxWordLength = 1'000;
  static constexpr std::chrono::milliseconds pause{1000};

  CopyNotes(const QString& name, Scheduler& scheduler, QWidget* parent);
  ~CopyNotes() override;

  void load(const QString& text);
  void follow(const QString& text);
  bool isWaiting() const;
  // The text in the field.
  QString text() const;
  void commit();

 Q_SIGNALS:
  void typed();
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
