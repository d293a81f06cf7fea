#pragma once

#include <vector>

#include <QObject>
#include <QString>

#include "ai/ProviderChoice.h"

namespace quilmora {

// What people are told of the chosen back end: its name, whether the offline generator serves in its place and why, and
// where the text goes. It knows what key store and model server last said, and asks them when it is told to.
class ProviderState : public QObject {
  Q_OBJECT

 public:
  struct Row {
    QString id;    // a value of the setting
    QString text;  // with what is missing
    QString symbol;

    bool operator==(const Row&) const = default;
  };

  // Both outlive it.
  ProviderState(AIBackEnds backEnds, SettingsStore& settings);

  // The value of the setting, with what stands for a value that nobody knows.
  QString chosen() const;
  QString label() const;  // "Claude"
  QString symbol() const;
  // Why the offline generator serves instead, or an empty text.
  QString warning() const;
  QString destination() const;
  // One for each choice, in their order.
  std::vector<Row> rows() const;

  // Stores the choice.
  void choose(const QString& id);
  // Asks the key store or the model server of the choice anew; changed() follows where the answer is another.
  void look();
  // The same for every choice.
  void lookAtAll();

 Q_SIGNALS:
  void changed();

 private:
  struct Provider;
  static const std::vector<Provider>& providers();
  const Provider& provider() const;
  bool isMissing(const Provider& provider) const;
  void look(const Provider& provider);

  AIBackEnds m_backEnds;
  SettingsStore& m_settings;
};

}  // namespace quilmora
