#include "app/inspectors/PanelControls.h"

#include <QSignalBlocker>
#include <QStyleOption>
#include <QStylePainter>
#include <QWheelEvent>

#include "app/look/Tokens.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

// Room for a letter or two and the ellipsis.
constexpr int minTextWidth = 40;
constexpr int minLetters = 6;

void tellWhatIsCut(QWidget& control, const QString& whole, const QString& shown) {
  plain::setToolTip(control, whole == shown ? QString() : whole);
}

QString elided(const QWidget& control, const QString& text, int room) {
  return control.fontMetrics().elidedText(text, Qt::ElideRight, std::max(0, room));
}

QString elidedLabel(const QPushButton& button) {
  const int icon = button.icon().isNull() ? 0 : button.iconSize().width() + metrics::gapSmall;
  return elided(button, button.text(), button.width() - 2 * metrics::gap - icon);
}

}  // namespace

PanelButton::PanelButton(const QString& text, Kind kind, QWidget* parent) : QPushButton(parent) {
  plain::setText(*this, text);
  setAccessibleName(text);
  setFocusPolicy(Qt::TabFocus);
  if (kind == Kind::destructive) setProperty("destructive", true);
}

QSize PanelButton::minimumSizeHint() const {
  return {2 * metrics::gap + minTextWidth, sizeHint().height()};
}

void PanelButton::resizeEvent(QResizeEvent* event) {
  QPushButton::resizeEvent(event);
  tellWhatIsCut(*this, text(), elidedLabel(*this));
}

void PanelButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  option.text = elidedLabel(*this);
  painter.drawControl(QStyle::CE_PushButton, option);
}

PanelToggle::PanelToggle(const QString& text, QWidget* parent) : QCheckBox(parent) {
  plain::setText(*this, text);
  setAccessibleName(text);
  setFocusPolicy(Qt::TabFocus);
}

void PanelToggle::setOn(bool on) {
  const QSignalBlocker blocker(this);
  setChecked(on);
}

QSize PanelToggle::minimumSizeHint() const {
  return {minTextWidth, sizeHint().height()};
}

QString PanelToggle::shownText() const {
  const int box = style()->pixelMetric(QStyle::PM_IndicatorWidth) + metrics::gap;
  return elided(*this, text(), width() - box);
}

void PanelToggle::resizeEvent(QResizeEvent* event) {
  QCheckBox::resizeEvent(event);
  tellWhatIsCut(*this, text(), shownText());
}

void PanelToggle::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  option.text = shownText();
  painter.drawControl(QStyle::CE_CheckBox, option);
}

PanelPicker::PanelPicker(const QString& name, const QStringList& entries, QWidget* parent) : QComboBox(parent) {
  setAccessibleName(name);
  addItems(entries);
  setFocusPolicy(Qt::TabFocus);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(minLetters);
  connect(this, &QComboBox::activated, this, [this](int index) {
    if (std::exchange(m_chosen, index) != index) Q_EMIT chosen(index);
  });
}

void PanelPicker::setChosen(int index) {
  if (m_chosen == index && currentIndex() == index) return;
  const QSignalBlocker blocker(this);
  m_chosen = index;
  setCurrentIndex(index);
}

void PanelPicker::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionComboBox option;
  initStyleOption(&option);
  const int icon = option.currentIcon.isNull() ? 0 : option.iconSize.width() + metrics::gap;
  const QRect room = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
  const QString whole = option.currentText;
  option.currentText = elided(*this, whole, room.width() - icon - 2);
  tellWhatIsCut(*this, whole, option.currentText);
  painter.drawComplexControl(QStyle::CC_ComboBox, option);
  painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void PanelPicker::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace quilmora
