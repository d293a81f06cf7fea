#include "app/look/Tokens.h"

#include "canvas/painting/CanvasColors.h"

namespace quilmora {

namespace {

Tokens makeLight() {
  Tokens tokens;
  tokens.window = QColor(0xF5, 0xF5, 0xF7);
  tokens.panel = QColor(0xFB, 0xFB, 0xFD);
  tokens.raised = QColor(0xFF, 0xFF, 0xFF);
  tokens.hairline = QColor(0xDE, 0xDE, 0xE3);
  tokens.text = QColor(0x1D, 0x1D, 0x1F);
  tokens.secondary = QColor(0x6A, 0x6A, 0x70);
  tokens.accent = QColor(accentOnLight);
  tokens.onAccent = QColor(0xFF, 0xFF, 0xFF);
  tokens.tint = withOpacity(tokens.accent, 0.12);
  tokens.danger = QColor(0xD7, 0x00, 0x15);
  tokens.warning = QColor(0xB2, 0x50, 0x00);
  tokens.success = QColor(0x1E, 0x7F, 0x37);
  tokens.shadow = withOpacity(Qt::black, 0.14);
  tokens.accentFill = tokens.accent;
  tokens.isDark = false;
  return tokens;
}

Tokens makeDark() {
  Tokens tokens;
  tokens.window = QColor(0x1C, 0x1C, 0x1E);
  tokens.panel = QColor(0x24, 0x24, 0x26);
  tokens.raised = QColor(0x2C, 0x2C, 0x2E);
  tokens.hairline = QColor(0x3A, 0x3A, 0x3C);
  tokens.text = QColor(0xF2, 0xF2, 0xF5);
  tokens.secondary = QColor(0xA5, 0xA5, 0xAB);
  tokens.accent = QColor(accentOnDark);
  tokens.onAccent = QColor(0xFF, 0xFF, 0xFF);
  tokens.tint = withOpacity(tokens.accent, 0.20);
  tokens.danger = QColor(0xFF, 0x69, 0x61);
  tokens.warning = QColor(0xFF, 0xB3, 0x40);
  tokens.success = QColor(0x4C, 0xD0, 0x7D);
  tokens.shadow = withOpacity(Qt::black, 0.45);
  // White text on the dark table's accent would be too faint, so backgrounds of text use the darker accent of the light
  // table.
  tokens.accentFill = lightTokens().accent;
  tokens.isDark = true;
  return tokens;
}

Tokens withDerived(Tokens tokens) {
  tokens.hover = withOpacity(tokens.accent, tokens.tint.alphaF() / 2);
  tokens.pressed = withOpacity(tokens.accent, tokens.tint.alphaF() * 1.5);
  tokens.disabledText = withOpacity(tokens.secondary, 0.55);
  tokens.groove = tokens.isDark ? QColor(0x48, 0x48, 0x4C) : QColor(0xD5, 0xD5, 0xDB);
  tokens.thumb = withOpacity(tokens.secondary, 0.45);
  return tokens;
}

}  // namespace

const Tokens& lightTokens() {
  static const Tokens tokens = withDerived(makeLight());
  return tokens;
}

const Tokens& darkTokens() {
  static const Tokens tokens = withDerived(makeDark());
  return tokens;
}

QColor blended(const QColor& above, const QColor& ground) {
  const float opacity = above.alphaF();
  const auto mix = [opacity](float a, float b) { return a * opacity + b * (1.0F - opacity); };
  return QColor::fromRgbF(mix(above.redF(), ground.redF()), mix(above.greenF(), ground.greenF()),
                          mix(above.blueF(), ground.blueF()));
}

}  // namespace quilmora
