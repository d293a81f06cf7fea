#pragma once

#include <optional>

#include <QFont>
#include <QObject>
#include <QtDBus/QDBusVariant>

namespace quilmora {

// What the desktop says about its own look.
class DesktopAppearance : public QObject {
  Q_OBJECT

 public:
  virtual bool prefersDark() const = 0;
  // Whether the user wants no animations.
  virtual bool prefersStillness() const = 0;
  // The interface font set in the user's desktop, or nothing.
  virtual std::optional<QFont> interfaceFont() const = 0;

 Q_SIGNALS:
  void changed();
};

// Asks the session's settings portal, and uses the toolkit's own palette if there is none. Must be created before the
// application's palette or font is set.
class SystemDesktopAppearance final : public DesktopAppearance {
  Q_OBJECT

 public:
  SystemDesktopAppearance();

  bool prefersDark() const override { return m_portalPrefersDark.value_or(m_paletteIsDark); }
  bool prefersStillness() const override { return m_prefersStillness; }
  std::optional<QFont> interfaceFont() const override { return m_interfaceFont; }

 private Q_SLOTS:
  void portalSettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  std::optional<QFont> m_interfaceFont;
  bool m_paletteIsDark = false;
  std::optional<bool> m_portalPrefersDark;
  bool m_prefersStillness = false;
};

// Returns what it is given.
class FixedDesktopAppearance final : public DesktopAppearance {
  Q_OBJECT

 public:
  bool prefersDark() const override { return m_prefersDark; }
  bool prefersStillness() const override { return m_prefersStillness; }
  std::optional<QFont> interfaceFont() const override { return m_interfaceFont; }
  void setPrefersStillness(bool still) {
    m_prefersStillness = still;
    Q_EMIT changed();
  }
  void setPrefersDark(bool dark) {
    m_prefersDark = dark;
    Q_EMIT changed();
  }
  void setInterfaceFont(const QFont& font) { m_interfaceFont = font; }

 private:
  bool m_prefersDark = false;
  bool m_prefersStillness = false;
  std::optional<QFont> m_interfaceFont;
};

}  // namespace quilmora
