#pragma once

#include "app/look/Widgets.h"
#include "editor/DocumentTrouble.h"

class QBoxLayout;
class QPushButton;

namespace quilmora {

// A quiet strip above the canvas: what keeps the map from being saved, and what a person can do about it. Hidden while
// there is nothing to tell; it takes no keyboard and waits for no answer.
class DocumentBar : public Ground {
  Q_OBJECT

 public:
  DocumentBar(const Look& look, QWidget* parent);

  void setTrouble(const DocumentTrouble& trouble);
  bool isWanted() const { return !m_trouble.text.isEmpty(); }
  QString text() const { return m_text->text(); }
  // Of the three that follow, those that can be used now.
  QPushButton& reloadButton() const { return *m_reload; }
  QPushButton& keepMineButton() const { return *m_keepMine; }
  QPushButton& saveCopyButton() const { return *m_saveCopy; }

  int heightForWidth(int width) const override;

 Q_SIGNALS:
  // It is wanted now, or no more, or needs another height.
  void changed();
  void reloadWanted();
  void keepMineWanted();
  void saveCopyWanted();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  bool isNarrow(int width) const;

  DocumentTrouble m_trouble;
  TextLabel* m_text;
  QWidget* m_buttons;
  QPushButton* m_reload;
  QPushButton* m_keepMine;
  QPushButton* m_saveCopy;
  QBoxLayout* m_rows;
};

}  // namespace quilmora
