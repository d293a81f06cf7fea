#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace quilmora {

class Look;

// What the program must tell the user. Never waits for an answer.
class Alerts {
 public:
  virtual ~Alerts() = default;
  // The alert titled "Error".
  virtual void showError(QWidget* parent, const QString& message) = 0;
};

class DialogAlerts final : public Alerts {
 public:
  explicit DialogAlerts(const Look& look) : m_look(look) {}
  void showError(QWidget* parent, const QString& message) override;

 private:
  const Look& m_look;
};

// Keeps the messages.
class RecordedAlerts final : public Alerts {
 public:
  void showError(QWidget*, const QString& message) override { messages.append(message); }
  QStringList messages;
};

}  // namespace quilmora
