#pragma once

#include "app/look/Widgets.h"

namespace quilmora {

class EditorState;

// The line below the canvas: how many topics the map has.
class StatusLine : public Ground {
  Q_OBJECT

 public:
  StatusLine(const Look& look, const EditorState& editor, QWidget* parent = nullptr);
  QString text() const { return m_count->text(); }

 private:
  void refresh();

  const EditorState& m_editor;
  TextLabel* m_count;
};

}  // namespace quilmora
