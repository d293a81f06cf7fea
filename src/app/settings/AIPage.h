#pragma once

#include <optional>

#include "app/settings/SettingsForm.h"

class QLineEdit;

namespace quilmora {

struct Machine;

// The page of the settings window that says which AI answers and where the text goes, with the vendor's key or the
// server on this machine.
class AIPage final : public QObject {
  Q_OBJECT

 public:
  // Fills the page, which becomes its parent. The machine must outlive it.
  AIPage(FormPage& page, Machine& machine);

 private:
  QString provider() const;
  void settingChanged(const QString& key);
  // Updates the notes and the section for the provider.
  void refresh();
  void refreshNotes();
  void addServerRows();
  void addServerField(const QString& name, const QString& key, const QString& placeholder);
  void lookForServer();

  FormPage& m_page;
  Machine& m_machine;
  TextLabel* m_note = nullptr;
  TextLabel* m_fallbackNote = nullptr;
  TextLabel* m_destination = nullptr;
  std::optional<QString> m_detailProvider;  // the provider whose key or server the section shows
  FormSection* m_detail = nullptr;
  TextLabel* m_serverNote = nullptr;  // part of it
};

FormPage* makeAIPage(Machine& machine, QWidget* parent);

}  // namespace quilmora
