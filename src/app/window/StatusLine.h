#pragma once

#include "app/look/Widgets.h"

namespace quilmora {

class EditorState;

// The line below the canvas: how many topics the map has, and what the user should know without being interrupted.
class StatusLine : public Ground {
  Q_OBJECT

 public:
  StatusLine(const Look& look, const EditorState& editor, QWidget* parent = nullptr);
  QString text() const { return m_count->text(); }
  QString notice() const { return m_notice->text(); }
  // An empty text takes it away.
  void setNotice(const QString& notice);

 private:
  void refresh();

  const EditorState& m_editor;
  TextLabel* m_count;
  TextLabel* m_notice;
};

}  // namespace quilmora
