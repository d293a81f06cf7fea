#pragma once

#include "app/settings/SettingsForm.h"

class QLineEdit;
class QPushButton;

namespace quilmora {

class KeyStore;

// What the user is told about a vendor's key.
struct ApiKeyVendor {
  QString account;  // in the key store
  QString title;    // "Claude API Key"
  QString hint;     // where to get a key
};
// For the values of `ai_provider` that need a key; nullptr for others.
const ApiKeyVendor* apiKeyVendor(const QString& provider);

// One vendor's key: a password field over the key store, where to get a key, and a button that removes it. Never
// blocks: the field shows the key once the store has answered, unless something was typed before.
class ApiKeyRows final : public QObject {
  Q_OBJECT

 public:
  // Adds its rows to the section, which becomes its parent. The store must outlive it.
  ApiKeyRows(FormSection& section, KeyStore& keys, const ApiKeyVendor& vendor);

 private:
  void refresh();

  KeyStore& m_keys;
  QString m_account;
  QLineEdit* m_field;
  QPushButton* m_remove;
  TextLabel* m_note;
};

}  // namespace quilmora
