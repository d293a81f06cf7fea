#pragma once

#include <vector>

#include <QColor>
#include <QFont>
#include <QTextEdit>

#include "canvas/view/CanvasScene.h"
#include "canvas/view/TextPart.h"
#include "platform/Scheduler.h"

namespace quilmora {

// The text field in which a topic's title is edited on the canvas, exactly over the title. Sizes are canvas units: the
// field is as large as its text within limits, and its text is where the finished title will be. Of a very long title
// it lays out only the part around the text cursor.
class TitleEditor : public QTextEdit {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds focusDelay{50};

  // Takes the keyboard after focusDelay, with the whole title selected.
  TitleEditor(const QString& title, Scheduler& scheduler, QWidget* canvas);
  ~TitleEditor() override;

  void setTitleLook(const TitleLook& look);
  // The text as shown, including an input method's composition; for a very long title, the part laid out.
  QString shownTitle() const;
  // Puts the field over `field`, in view coordinates.
  void place(const QRectF& field, double zoom);

  // The text, with "\n" for its line breaks.
  QString editableTitle() const;
  // Passes on a key that came before the keyboard did; takes the keyboard at once.
  void takeKey(const QKeyEvent& event);
  // The same for an input method's composition; takes the keyboard once it is complete.
  void takeInput(const QInputMethodEvent& event);
  // Ends the edit as leaving the field does.
  void commit();

 public Q_SLOTS:
  // These work on the whole text, whichever part is laid out; menus call them by name.
  void undo();
  void redo();
  void selectAll();

 Q_SIGNALS:
  void committed(const QString& title);
  void cancelled();
  void shownTitleChanged();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  QMimeData* createMimeDataFromSelection() const override;

 private:
  // The whole text at some time, with the position of the text cursor.
  struct Step {
    QString text;
    qsizetype cursor = 0;
  };

  Step present() const;
  void showStep(const Step& step);
  void keepStep();
  void insert(const QString& text);
  bool takePartKey(const QKeyEvent& event);
  void followCursor();
  void contentsChanged(int removed);
  void takeFocus();
  QFont fontAt(double zoom) const;
  void setLineSpacing(double percent);
  void cancel();
  void returnKey(const QKeyEvent& event);

  Scheduler& m_scheduler;
  Scheduler::Task m_focusTask = 0;
  TitleLook m_look;
  TextPart m_part;
  Step m_shown;  // as it was when the part was chosen
  // Beyond what the document of the part can undo and redo.
  std::vector<Step> m_past;
  std::vector<Step> m_future;
  bool m_isChoosing = false;
  bool m_isStepping = false;
  bool m_isAllSelected = false;  // not only the part
  bool m_isDone = false;
};

}  // namespace quilmora
