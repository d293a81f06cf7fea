#include "app/look/DesktopAppearance.h"

#include <QGuiApplication>
#include <QPalette>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

namespace quilmora {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString interfaceGroup = QStringLiteral("org.gnome.desktop.interface");
const QString animationsKey = QStringLiteral("enable-animations");

// The portal is part of every running desktop; one that must first be started is not worth the wait.
constexpr int portalTimeoutMilliseconds = 150;

QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

// The portal says 1 for dark and 2 for light; anything else is no preference.
std::optional<bool> darknessOf(const QVariant& value) {
  switch (value.toUInt()) {
    case 1:
      return true;
    case 2:
      return false;
    default:
      return std::nullopt;
  }
}

bool isStill(const QVariant& animations) {
  return animations.isValid() && !animations.toBool();
}

// Invalid if there is no such setting, or no portal.
QVariant askPortal(const QString& group, const QString& key) {
  QDBusMessage call =
      QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, QStringLiteral("Read"));
  call << group << key;
  const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, portalTimeoutMilliseconds);
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return {};
  return unwrapped(reply.arguments().constFirst());
}

}  // namespace

SystemDesktopAppearance::SystemDesktopAppearance() {
  const QPalette palette = QGuiApplication::palette();
  m_paletteIsDark = palette.color(QPalette::Window).lightnessF() < palette.color(QPalette::WindowText).lightnessF();
  // The toolkit's default for a desktop without a font of its own.
  const QFont font = QGuiApplication::font();
  if (font.family() != QLatin1String("Sans Serif") && font.family() != QLatin1String("Sans")) m_interfaceFont = font;

  // Without an address the bus library would start a bus of its own.
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return;
  const QVariant scheme = askPortal(appearanceGroup, colorSchemeKey);
  m_portalPrefersDark = darknessOf(scheme);
  // A portal that did not answer is not asked again.
  if (scheme.isValid()) m_prefersStillness = isStill(askPortal(interfaceGroup, animationsKey));
  QDBusConnection::sessionBus().connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"),
                                        this, SLOT(portalSettingChanged(QString, QString, QDBusVariant)));
}

void SystemDesktopAppearance::portalSettingChanged(const QString& group, const QString& key,
                                                   const QDBusVariant& value) {
  if (group == appearanceGroup && key == colorSchemeKey)
    m_portalPrefersDark = darknessOf(unwrapped(value.variant()));
  else if (group == interfaceGroup && key == animationsKey)
    m_prefersStillness = isStill(unwrapped(value.variant()));
  else
    return;
  Q_EMIT changed();
}

}  // namespace quilmora
