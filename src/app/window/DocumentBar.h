#pragma once

#include "app/look/Widgets.h"
#include "editor/DocumentProblem.h"

class QBoxLayout;
class QPushButton;

namespace quilmora {

// A quiet strip above the canvas: what keeps the map from being saved, and what the user can do about it. Hidden while
// there is nothing to say; it does not take the keyboard or wait for an answer.
class DocumentBar : public Ground {
  Q_OBJECT

 public:
  DocumentBar(const Look& look, QWidget* parent);

  void setProblem(const DocumentProblem& problem);
  bool isWanted() const { return !m_problem.text.isEmpty(); }
  QString text() const { return m_text->text(); }
  // Of the following three buttons, those that can be used now.
  QPushButton& reloadButton() const { return *m_reload; }
  QPushButton& keepMineButton() const { return *m_keepMine; }
  QPushButton& saveCopyButton() const { return *m_saveCopy; }

  int heightForWidth(int width) const override;

 Q_SIGNALS:
  // It should appear, disappear or change its height.
  void changed();
  void reloadWanted();
  void keepMineWanted();
  void saveCopyWanted();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  bool isNarrow(int width) const;

  DocumentProblem m_problem;
  TextLabel* m_text;
  QWidget* m_buttons;
  QPushButton* m_reload;
  QPushButton* m_keepMine;
  QPushButton* m_saveCopy;
  QBoxLayout* m_rows;
};

}  // namespace quilmora
