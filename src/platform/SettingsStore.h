#pragma once

#include <functional>
#include <map>
#include <optional>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariant>

namespace quilmora {

// Announces that a setting has a new value.
class SettingsChanges final : public QObject {
  Q_OBJECT

 Q_SIGNALS:
  void changed(const QString& key);
};

// The user's settings: text, flag, real, bytes or a list of bytes by key. A value of another kind reads as absent; each
// reader applies its own default.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  std::optional<QString> text(const QString& key) const;
  std::optional<bool> flag(const QString& key) const;
  std::optional<double> real(const QString& key) const;
  std::optional<QByteArray> bytes(const QString& key) const;
  std::optional<QList<QByteArray>> bytesList(const QString& key) const;

  void setText(const QString& key, const QString& value);
  void setFlag(const QString& key, bool value);
  // A value that is not finite cannot be stored: the key becomes absent.
  void setReal(const QString& key, double value);
  void setBytes(const QString& key, const QByteArray& value);
  void setBytesList(const QString& key, const QList<QByteArray>& value);
  void remove(const QString& key) { change(key, {}); }

  // Emits at once, on the main thread, after a key got another value or was removed.
  const SettingsChanges& changes() const { return m_changes; }

 protected:
  virtual QVariant read(const QString& key) const = 0;  // invalid when absent
  // Called only with a value that differs from the current one; an invalid one removes the key.
  virtual void write(const QString& key, const QVariant& value) = 0;

 private:
  void change(const QString& key, const QVariant& value);

  SettingsChanges m_changes;
};

// In memory, empty at first.
class MemorySettingsStore final : public SettingsStore {
 public:
  bool isEmpty() const { return m_values.empty(); }

 protected:
  QVariant read(const QString& key) const override;
  void write(const QString& key, const QVariant& value) override;

 private:
  std::map<QString, QVariant> m_values;
};

// The user's settings file, a JSON text: Quilmora/Quilmora.json in the user's configuration folder. It is read once;
// changes are written at the next turn of the main loop, or when the store is destroyed. Only one process writes it at
// a time: see SingleInstance.
class DesktopSettingsStore final : public SettingsStore {
 public:
  DesktopSettingsStore();
  // For a given file instead of the user's.
  explicit DesktopSettingsStore(QString path);
  ~DesktopSettingsStore() override;
  const QString& path() const { return m_path; }
  // Why changes cannot be stored, as a text to show, or empty; writes nothing.
  QString obstacle() const;
  // Called once, with the reason, when the file cannot be written.
  void setFailureReceiver(std::function<void(const QString& reason)> receiver) { m_onFailure = std::move(receiver); }

 protected:
  QVariant read(const QString& key) const override;
  void write(const QString& key, const QVariant& value) override;

 private:
  void writeSoon();
  void writeNow();

  QString m_path;
  std::map<QString, QVariant> m_values;
  QTimer m_writeTimer;
  bool m_isChanged = false;
  std::function<void(const QString& reason)> m_onFailure;
};

}  // namespace quilmora
