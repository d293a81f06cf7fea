#pragma once

#include <optional>

#include "app/companions/Card.h"
#include "model/Records.h"

class QPlainTextEdit;

namespace quilmora {

class EditorNavigation;
class TextLabel;

// The details of the editor's quick look topic: title with its badge, notes, number of children and depth. Hidden while
// that topic does not exist.
class NodeQuickLook : public Card {
  Q_OBJECT

 public:
  NodeQuickLook(const Look& look, EditorNavigation& editor, QWidget* canvas);

  // The topic shown.
  const std::optional<Node>& node() const { return m_node; }
  QString titleText() const;
  // Empty if the topic has none.
  QString notesText() const;
  QString childrenText() const;
  QString depthText() const;

  QSize wantedSize(QSize room) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  class BadgeMark;

  void refreshSoon();
  void refresh();
  int notesHeight(int width, int maxHeight) const;

  EditorNavigation& m_editor;
  std::optional<Node> m_node;
  BadgeMark* m_badge;
  TextLabel* m_title;
  QPlainTextEdit* m_notes;
  TextLabel* m_children;
  TextLabel* m_depth;
  bool m_isRefreshPending = false;
};

}  // namespace quilmora
