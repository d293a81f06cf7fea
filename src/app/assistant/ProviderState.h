#pragma once

#include <vector>

#include <QObject>
#include <QString>

#include "ai/ProviderChoice.h"

namespace quilmora {

// What the user is told about the chosen provider: its name, whether the offline generator replaces it and why, and
// where the text goes. It knows the last answers of key store and model server, and asks them again on request.
class ProviderState : public QObject {
  Q_OBJECT

 public:
  struct Row {
    QString id;    // a value of the setting
    QString text;  // including what is missing
    QString symbol;

    bool operator==(const Row&) const = default;
  };

  // Both must outlive it.
  ProviderState(AIProviders providers, SettingsStore& settings);

  // The value of the setting, or the default for an unknown value.
  QString chosen() const;
  QString label() const;  // "Claude"
  QString symbol() const;
  // Why the offline generator answers instead, or an empty text.
  QString warning() const;
  QString destination() const;
  // One per choice, in their order.
  std::vector<Row> rows() const;

  // Stores the choice.
  void choose(const QString& id);
  // Asks the key store or the model server for the chosen provider again; changed() follows if the answer differs.
  void check();
  // The same for every provider.
  void lookAtAll();

 Q_SIGNALS:
  void changed();

 private:
  struct Provider;
  static const std::vector<Provider>& providers();
  const Provider& provider() const;
  bool isMissing(const Provider& provider) const;
  void look(const Provider& provider);

  AIProviders m_providers;
  SettingsStore& m_settings;
};

}  // namespace quilmora
