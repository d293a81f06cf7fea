#pragma once

#include "app/dialogs/Sheet.h"
#include "editor/edits/SmartPaste.h"

namespace quilmora {

class MindMapViewModel;

// Asks how the text to be pasted becomes topics: a row for each way that suits the text. Choosing one pastes and clears
// the editor's showSmartPaste; closing the sheet without a choice only clears it.
class SmartPasteView final : public Sheet {
  Q_OBJECT

 public:
  // Both must outlive the sheet. The text is taken from the editor at once.
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
