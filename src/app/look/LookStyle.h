#pragma once

#include <memory>
#include <optional>

#include <QProxyStyle>
#include <QStyleOptionButton>

#include "app/look/Tokens.h"

namespace quilmora {

class HeldAlt;

// What is told to measure and to paint alike.
namespace menus {
inline constexpr int itemPadding = 12;
inline constexpr int checkColumn = 20;
}  // namespace menus

// Draws every standard control from the tokens, on top of the toolkit's Fusion style, whose geometry it keeps unless it
// defines its own. A dynamic property "destructive" set to true colours a push button as destructive.
class LookStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  explicit LookStyle(std::shared_ptr<const Tokens> tokens);

  void polish(QWidget* widget) override;
  using QProxyStyle::polish;

  // Metrics (LookStyle.cpp)
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;

  // Drawing (LookPrimitives.cpp, LookControls.cpp, LookComplexControls.cpp)
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;

 private:
  struct ButtonColors;

  void drawPushButtonPanel(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;
  void drawToolButtonPanel(const QStyleOption& option, QPainter& painter) const;
  void drawField(const QStyleOption& option, QPainter& painter) const;
  void drawCheckIndicator(const QStyleOption& option, QPainter& painter, bool round) const;
  void drawRow(const QStyleOption& option, QPainter& painter) const;

  void drawPushButtonLabel(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;
  void drawMenuItem(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;
  void drawMenuSeparator(const QStyleOption& option, QPainter& painter) const;
  void drawMenuBarItem(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;
  void drawTab(const QStyleOption& option, QPainter& painter) const;
  void drawProgress(const QStyleOption& option, QPainter& painter) const;
  void drawHeaderSection(const QStyleOption& option, QPainter& painter) const;

  void drawScrollBar(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
  void drawSlider(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
  void drawComboBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
  void drawSpinBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
  void drawGroupBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;

  std::shared_ptr<const Tokens> m_tokens;
  HeldAlt* m_alt;
};

// The background of a scrolling widget: of its viewport if it is a scroll area or part of one, else nothing.
std::optional<QColor> scrollGround(const QWidget* widget);

// Whether the focus came by the keyboard and should therefore be visible.
bool showsKeyboardFocus(const QStyleOption& option);
// Whether the pointer is over an enabled control.
bool isHovered(const QStyleOption& option);
// Whether the button is the primary one: the default of its dialog, or one with the property "primary".
bool isPrimary(const QStyleOptionButton& option, const QWidget* button);

}  // namespace quilmora
