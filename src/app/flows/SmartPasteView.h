#pragma once

#include "app/dialogs/Sheet.h"
#include "editor/edits/SmartPaste.h"

namespace quilmora {

class MindMapViewModel;

// Asks how the editor's pasted text becomes topics: a row for each way that suits the text. Choosing one pastes and
// clears the editor's showSmartPaste; so does leaving without a choice, which pastes nothing.
class SmartPasteView final : public Sheet {
  Q_OBJECT

 public:
  // Both outlive the sheet. The text is the editor's at this moment.
  SmartPasteView(const Look& look, MindMapViewModel& editor, QWidget* window);

  const QString& text() const { return m_text; }

 private:
  void addHead(qsizetype count);
  void addRows(qsizetype count);
  void addCancel();
  void choose(SmartPasteMode mode);

  MindMapViewModel& m_editor;
  QString m_text;
};

}  // namespace quilmora
