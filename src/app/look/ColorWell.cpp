#include "app/look/ColorWell.h"

#include <QAccessibleWidget>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

#include "app/look/ColorDialog.h"
#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr QSize swatchSize(36, 22);
// Around the swatch, for the focus ring.
constexpr int ringRoom = 3;
constexpr double disabledOpacity = 0.4;

// The background behind a translucent colour.
void fillCheckered(QPainter& painter, const QRectF& rect) {
  constexpr double cell = 5.5;
  painter.fillRect(rect, Qt::white);
  for (int row = 0; row * cell < rect.height(); ++row)
    for (int column = row % 2; column * cell < rect.width(); column += 2)
      painter.fillRect(QRectF(rect.left() + column * cell, rect.top() + row * cell, cell, cell),
                       QColor(0xCC, 0xCC, 0xCC));
}

// A button with a value.
class ColorWellInterface final : public QAccessibleWidget {
 public:
  explicit ColorWellInterface(ColorWell* well) : QAccessibleWidget(well, QAccessible::Button) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? well().value() : QAccessibleWidget::text(kind);
  }
  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& action) override {
    if (action == pressAction() && well().isEnabled()) well().click();
  }

 private:
  ColorWell& well() const { return *static_cast<ColorWell*>(widget()); }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  auto* well = qobject_cast<ColorWell*>(object);
  return well == nullptr ? nullptr : new ColorWellInterface(well);
}

}  // namespace

ColorWell::ColorWell(const Look& look, const QString& name, QWidget* parent, Opacity opacity)
    : QAbstractButton(parent), m_look(look), m_opacity(opacity) {
  static const bool isInstalled = [] {
    QAccessible::installFactory(makeInterface);
    return true;
  }();
  Q_UNUSED(isInstalled)
  setAccessibleName(name);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(this, &QAbstractButton::clicked, this, &ColorWell::startChoosing);
  connect(&look, &Look::changed, this, [this] { update(); });
}

// The dialog belongs to the window: destroying a well must not destroy the dialog in the middle of its own event.
ColorWell::~ColorWell() {
  if (m_dialog == nullptr) return;
  m_dialog->disconnect(this);
  m_dialog->reject();
}

void ColorWell::setColor(const QColor& color) {
  if (m_color == color) return;
  m_color = color;
  plain::setToolTip(*this, value());
  QAccessibleValueChangeEvent event(this, value());
  QAccessible::updateAccessibility(&event);
  update();
}

QString ColorWell::value() const {
  if (!m_color.isValid()) return {};
  const QString value = m_color.name(QColor::HexRgb).toUpper();
  if (m_color.alpha() == 255) return value;
  return QStringLiteral("%1, %2%").arg(value).arg(qRound(m_color.alphaF() * 100));
}

bool ColorWell::isChoosing() const {
  return m_dialog != nullptr;
}

ColorDialog* ColorWell::dialog() const {
  return m_dialog;
}

void ColorWell::startChoosing() {
  if (m_dialog != nullptr) return m_dialog->raise();
  m_before = m_color;
  m_dialog = new ColorDialog(accessibleName(), m_color, m_opacity == Opacity::chosen, window());
  connect(m_dialog, &ColorDialog::colorChanged, this, &ColorWell::tryColor);
  connect(m_dialog, &QDialog::finished, this, &ColorWell::choosingEnded);
  connect(m_dialog, &QDialog::finished, m_dialog, &QObject::deleteLater);
  Q_EMIT choosingBegan();
  m_dialog->open();
}

void ColorWell::cancelChoosing() {
  if (m_dialog != nullptr) m_dialog->reject();
}

void ColorWell::tryColor(const QColor& color) {
  setColor(color);
  Q_EMIT colorChanged(color);
}

void ColorWell::choosingEnded(int result) {
  const ColorDialog* dialog = m_dialog;
  m_dialog = nullptr;
  setFocus(Qt::PopupFocusReason);
  if (result == QDialog::Accepted) {
    setColor(dialog->color());
    Q_EMIT colorChosen(m_color);
    return;
  }
  if (m_color != m_before) tryColor(m_before);
  Q_EMIT choosingCancelled();
}

QSize ColorWell::sizeHint() const {
  return swatchSize.grownBy({ringRoom, ringRoom, ringRoom, ringRoom});
}

void ColorWell::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Tokens& tokens = m_look.tokens();
  QRectF swatch(QPointF(0, 0), swatchSize);
  swatch.moveCenter(QRectF(rect()).center());
  if (!isEnabled()) painter.setOpacity(disabledOpacity);
  if (m_color.isValid() && m_color.alpha() < 255) {
    QPainterPath shape;
    shape.addRoundedRect(swatch, metrics::controlRadius, metrics::controlRadius);
    painter.save();
    painter.setClipPath(shape);
    fillCheckered(painter, swatch);
    painter.restore();
  }
  paint::fillRounded(painter, swatch, metrics::controlRadius, m_color.isValid() ? m_color : tokens.panel);
  if (isDown()) paint::fillRounded(painter, swatch, metrics::controlRadius, withOpacity(Qt::black, 0.12));
  const bool isActive = isEnabled() && (underMouse() || isChoosing());
  paint::drawBorder(painter, swatch, metrics::controlRadius, isActive ? tokens.accent : tokens.hairline);
  QStyleOption option;
  option.initFrom(this);
  if (showsKeyboardFocus(option))
    paint::drawBorder(painter, swatch.adjusted(-ringRoom, -ringRoom, ringRoom, ringRoom),
                      metrics::controlRadius + ringRoom, tokens.accent, metrics::focusRingWidth);
}

}  // namespace quilmora
