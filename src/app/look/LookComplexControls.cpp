#include <QAbstractSpinBox>
#include <QStyleOption>

#include "app/look/LookStyle.h"
#include "app/look/Paint.h"

namespace quilmora {

namespace {

constexpr int comboArrowColumn = 24;
constexpr int spinColumn = 20;

}  // namespace

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
  switch (control) {
    case CC_ScrollBar:
      drawScrollBar(*option, *painter, widget);
      return;
    case CC_Slider:
      drawSlider(*option, *painter, widget);
      return;
    case CC_ComboBox:
      drawComboBox(*option, *painter, widget);
      return;
    case CC_SpinBox:
      drawSpinBox(*option, *painter, widget);
      return;
    case CC_GroupBox:
      drawGroupBox(*option, *painter, widget);
      return;
    case CC_ToolButton:
      if (const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option)) {
        // The panel shows the focus itself, and an icon needs no corner arrow for its menu.
        QStyleOptionToolButton copy = *button;
        proxy()->drawPrimitive(PE_PanelButtonTool, &copy, painter, widget);
        copy.state.setFlag(State_Sunken, false);
        copy.rect = button->rect.adjusted(2, 2, -2, -2);
        proxy()->drawControl(CE_ToolButtonLabel, &copy, painter, widget);
      }
      return;
    default:
      QProxyStyle::drawComplexControl(control, option, painter, widget);
  }
}

QRect LookStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
  const QRect rect = option->rect;
  const auto placed = [&](const QRect& logical) { return visualRect(option->direction, rect, logical); };
  if (control == CC_ScrollBar) {
    // Only a thumb in its track: no arrow buttons.
    if (part == SC_ScrollBarAddLine || part == SC_ScrollBarSubLine) return {};
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (bar == nullptr) return rect;
    const bool horizontal = bar->orientation == Qt::Horizontal;
    const int length = horizontal ? rect.width() : rect.height();
    const qint64 range = qint64(bar->maximum) - bar->minimum;
    int thumb = length;
    if (range > 0) {
      const qint64 total = range + bar->pageStep;
      thumb = static_cast<int>(qint64(length) * bar->pageStep / qMax<qint64>(total, 1));
      const int smallest = qMin(length, pixelMetric(PM_ScrollBarSliderMin, option, widget));
      thumb = qBound(smallest, thumb, length);
    }
    const int start =
        sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - thumb, bar->upsideDown);
    const auto along = [&](int from, int size) {
      return horizontal ? placed(QRect(rect.left() + from, rect.top(), size, rect.height()))
                        : QRect(rect.left(), rect.top() + from, rect.width(), size);
    };
    switch (part) {
      case SC_ScrollBarSlider:
        return along(start, thumb);
      case SC_ScrollBarSubPage:
        return along(0, start);
      case SC_ScrollBarAddPage:
        return along(start + thumb, length - start - thumb);
      default:
        return rect;
    }
  }
  if (control == CC_ComboBox) {
    if (part == SC_ComboBoxArrow) {
      return placed(QRect(rect.right() - comboArrowColumn + 1, rect.top(), comboArrowColumn, rect.height()));
    }
    if (part == SC_ComboBoxEditField) {
      const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
      // A field inside has its own margin.
      const int margin = combo != nullptr && combo->editable ? 2 : metrics::gap;
      return placed(rect.adjusted(margin, 1, -comboArrowColumn, -1));
    }
    if (part == SC_ComboBoxListBoxPopup) return rect;
  }
  if (control == CC_SpinBox) {
    const int half = rect.height() / 2;
    const int left = rect.right() - spinColumn;
    const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
    const bool bare = spin != nullptr && spin->buttonSymbols == QAbstractSpinBox::NoButtons;
    if (part == SC_SpinBoxUp) return bare ? QRect() : placed(QRect(left, rect.top() + 2, spinColumn, half - 2));
    if (part == SC_SpinBoxDown) return bare ? QRect() : placed(QRect(left, rect.top() + half, spinColumn, half - 2));
    if (part == SC_SpinBoxEditField) return placed(rect.adjusted(2, 1, bare ? -2 : -spinColumn - 2, -1));
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

void LookStyle::drawScrollBar(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
  const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(&option);
  if (bar == nullptr) return;
  if (const auto ground = scrollGround(widget)) painter.fillRect(option.rect, *ground);
  if (bar->maximum <= bar->minimum) return;
  const bool active = option.state.testFlag(State_Sunken) || isHovered(option);
  QColor color = m_tokens->thumb;
  if (active) color.setAlphaF(option.state.testFlag(State_Sunken) ? 0.9F : 0.7F);
  QRectF thumb = subControlRect(CC_ScrollBar, &option, SC_ScrollBarSlider, widget);
  const double inset = active ? 2 : 3;
  thumb.adjust(inset, inset, -inset, -inset);
  paint::fillRounded(painter, thumb, qMin(thumb.width(), thumb.height()) / 2, color);
}

void LookStyle::drawSlider(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
  const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(&option);
  if (slider == nullptr) return;
  const Tokens& tokens = *m_tokens;
  const bool enabled = option.state.testFlag(State_Enabled);
  const bool horizontal = slider->orientation == Qt::Horizontal;
  const QRectF rect = option.rect;
  const QRectF handle = QProxyStyle::subControlRect(CC_Slider, &option, SC_SliderHandle, widget);
  const QRectF track = horizontal ? QRectF(rect.left() + 2, rect.center().y() - 2, rect.width() - 4, 4)
                                  : QRectF(rect.center().x() - 2, rect.top() + 2, 4, rect.height() - 4);
  QRectF done = track;
  if (horizontal) {
    if (slider->upsideDown)
      done.setLeft(handle.center().x());
    else
      done.setRight(handle.center().x());
  } else {
    if (slider->upsideDown)
      done.setTop(handle.center().y());
    else
      done.setBottom(handle.center().y());
  }
  paint::fillRounded(painter, track, 2, tokens.groove);
  paint::fillRounded(painter, done, 2, enabled ? tokens.accent : tokens.disabledText);
  QRectF knob(0, 0, 16, 16);
  knob.moveCenter(handle.center());
  const QColor fill = enabled ? QColor(Qt::white) : tokens.groove;
  const bool held = slider->activeSubControls.testFlag(SC_SliderHandle) && option.state.testFlag(State_Sunken);
  const QColor border = held || isHovered(option) ? tokens.accent : tokens.isDark ? tokens.window : tokens.groove;
  paint::fillBordered(painter, knob, 8, fill, border);
  if (showsKeyboardFocus(option)) {
    paint::drawBorder(painter, knob.adjusted(-1, -1, 1, 1), 9, tokens.accent, metrics::focusRingWidth);
  }
}

void LookStyle::drawComboBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
  const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(&option);
  if (combo == nullptr) return;
  const Tokens& tokens = *m_tokens;
  if (combo->frame) {
    QStyleOption field = option;
    if (!combo->editable) field.state.setFlag(State_HasFocus, showsKeyboardFocus(option));
    drawField(field, painter);
    if (!combo->editable && isHovered(option)) {
      paint::fillRounded(painter, option.rect, metrics::controlRadius, tokens.hover);
    }
  }
  const QRect arrow = subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, widget);
  const QColor color = option.state.testFlag(State_Enabled) ? tokens.secondary : tokens.disabledText;
  paint::drawChevron(painter, arrow, Qt::DownArrow, color, 8);
}

void LookStyle::drawSpinBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
  const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(&option);
  if (spin == nullptr) return;
  const Tokens& tokens = *m_tokens;
  if (spin->frame) drawField(option, painter);
  if (spin->buttonSymbols == QAbstractSpinBox::NoButtons) return;
  const auto step = [&](SubControl part, QAbstractSpinBox::StepEnabledFlag flag, Qt::ArrowType direction) {
    const QRect rect = subControlRect(CC_SpinBox, &option, part, widget);
    const bool enabled = option.state.testFlag(State_Enabled) && spin->stepEnabled.testFlag(flag);
    const bool active = enabled && spin->activeSubControls.testFlag(part) && isHovered(option);
    paint::drawChevron(painter, rect, direction,
                       !enabled ? tokens.disabledText
                       : active ? tokens.accent
                                : tokens.secondary,
                       7);
  };
  step(SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled, Qt::UpArrow);
  step(SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled, Qt::DownArrow);
}

void LookStyle::drawGroupBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
  const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(&option);
  if (group == nullptr) return;
  if (group->subControls.testFlag(SC_GroupBoxLabel)) {
    painter.save();
    QFont font = painter.font();
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(option.state.testFlag(State_Enabled) ? m_tokens->secondary : m_tokens->disabledText);
    painter.drawText(QProxyStyle::subControlRect(CC_GroupBox, &option, SC_GroupBoxLabel, widget),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextHideMnemonic | Qt::TextDontClip,
                     group->text);
    painter.restore();
  }
  if (group->subControls.testFlag(SC_GroupBoxCheckBox)) {
    QStyleOptionButton box;
    box.QStyleOption::operator=(option);
    box.rect = QProxyStyle::subControlRect(CC_GroupBox, &option, SC_GroupBoxCheckBox, widget);
    proxy()->drawPrimitive(PE_IndicatorCheckBox, &box, &painter, widget);
  }
}

}  // namespace quilmora
