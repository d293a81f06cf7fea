#include "app/look/Look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QToolTip>

#include "app/look/DesktopAppearance.h"
#include "app/look/LookStyle.h"
#include "app/look/SymbolIcon.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

const Tokens& tokensFor(const SettingsStore& settings, const DesktopAppearance& desktop) {
  const QString appearance =
      settings.text(settings::appearance).value_or(settings::settingDefault(settings::appearance).toString());
  if (appearance == QLatin1String("light")) return lightTokens();
  if (appearance == QLatin1String("dark")) return darkTokens();
  return desktop.prefersDark() ? darkTokens() : lightTokens();
}

QFont baseFontFor(const DesktopAppearance& desktop) {
  if (const auto font = desktop.interfaceFont()) return *font;
  QFont font = QGuiApplication::font();
  if (QFontDatabase::hasFamily(QStringLiteral("Inter"))) font.setFamily(QStringLiteral("Inter"));
  font.setPixelSize(metrics::baseText);
  return font;
}

}  // namespace

Look::Look(const SettingsStore& settings, const DesktopAppearance& desktop)
    : m_settings(settings),
      m_desktop(desktop),
      m_baseFont(baseFontFor(desktop)),
      m_tokens(std::make_shared<Tokens>(tokensFor(settings, desktop))),
      m_isStill(desktop.prefersStillness()) {
  connect(&desktop, &DesktopAppearance::changed, this, &Look::refresh);
}

QFont Look::font(TextStyle style) const {
  QFont font = m_baseFont;
  switch (style) {
    case TextStyle::base:
      break;
    case TextStyle::baseSemibold:
      font.setWeight(QFont::DemiBold);
      break;
    case TextStyle::sectionHeader:
      return fontOfSize(metrics::sectionHeaderText, QFont::DemiBold);
    case TextStyle::panelTitle:
      return fontOfSize(metrics::panelTitleText, QFont::DemiBold);
  }
  return font;
}

QFont Look::fontOfSize(int size, QFont::Weight weight) const {
  QFont font = m_baseFont;
  font.setPixelSize(qRound(size * QFontInfo(m_baseFont).pixelSize() / static_cast<double>(metrics::baseText)));
  font.setWeight(weight);
  return font;
}

QPalette paletteFor(const Tokens& tokens) {
  QPalette palette;
  const auto set = [&palette](QPalette::ColorRole role, const QColor& color, const QColor& disabled) {
    palette.setColor(QPalette::Active, role, color);
    palette.setColor(QPalette::Inactive, role, color);
    palette.setColor(QPalette::Disabled, role, disabled);
  };
  set(QPalette::Window, tokens.window, tokens.window);
  set(QPalette::WindowText, tokens.text, tokens.disabledText);
  set(QPalette::Base, tokens.raised, tokens.panel);
  set(QPalette::AlternateBase, tokens.panel, tokens.panel);
  set(QPalette::Text, tokens.text, tokens.disabledText);
  set(QPalette::PlaceholderText, tokens.secondary, tokens.disabledText);
  set(QPalette::Button, tokens.raised, tokens.panel);
  set(QPalette::ButtonText, tokens.text, tokens.disabledText);
  set(QPalette::BrightText, tokens.danger, tokens.disabledText);
  set(QPalette::Highlight, tokens.accentFill, tokens.hairline);
  set(QPalette::HighlightedText, tokens.onAccent, tokens.disabledText);
  set(QPalette::Link, tokens.accent, tokens.disabledText);
  set(QPalette::LinkVisited, tokens.accent, tokens.disabledText);
  set(QPalette::ToolTipBase, tokens.raised, tokens.raised);
  set(QPalette::ToolTipText, tokens.text, tokens.text);
  set(QPalette::Light, tokens.raised, tokens.raised);
  set(QPalette::Midlight, tokens.panel, tokens.panel);
  set(QPalette::Mid, tokens.hairline, tokens.hairline);
  set(QPalette::Dark, tokens.secondary, tokens.secondary);
  set(QPalette::Shadow, tokens.hairline, tokens.hairline);
  return palette;
}

QPalette Look::palette() const {
  return paletteFor(*m_tokens);
}

QIcon Look::icon(const QString& symbol) const {
  return symbolIcon(m_tokens, symbol);
}

void Look::install(QApplication& application) const {
  m_isInstalled = true;
  application.setStyle(new LookStyle(m_tokens));
  application.setFont(m_baseFont);
  application.setPalette(palette());
  QToolTip::setPalette(palette());
  QToolTip::setFont(m_baseFont);
}

void Look::refresh() {
  const Tokens& tokens = tokensFor(m_settings, m_desktop);
  const bool isOther = tokens.isDark != m_tokens->isDark;
  if (!isOther && m_isStill == m_desktop.prefersStillness()) return;
  m_isStill = m_desktop.prefersStillness();
  *m_tokens = tokens;
  if (isOther && m_isInstalled) {
    QApplication::setPalette(palette());
    QToolTip::setPalette(palette());
  }
  Q_EMIT changed();
}

}  // namespace quilmora
