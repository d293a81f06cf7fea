#include <QAbstractScrollArea>
#include <QPushButton>
#include <QStyleOption>
#include <QVariant>

#include "app/look/LookStyle.h"
#include "app/look/Paint.h"

namespace quilmora {

namespace {

QColor textColor(const QStyleOption& option, const Tokens& tokens) {
  return option.state.testFlag(QStyle::State_Enabled) ? tokens.text : tokens.disabledText;
}

}  // namespace

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  const Tokens& tokens = *m_tokens;
  switch (element) {
    case PE_PanelButtonCommand:
      drawPushButtonPanel(*option, *painter, widget);
      return;
    case PE_PanelButtonTool:
      drawToolButtonPanel(*option, *painter);
      return;
    case PE_PanelLineEdit:
      if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option); frame && frame->lineWidth > 0) {
        drawField(*option, *painter);
      }
      return;
    case PE_FrameLineEdit:
      return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
      drawCheckIndicator(*option, *painter, false);
      return;
    case PE_IndicatorRadioButton:
      drawCheckIndicator(*option, *painter, true);
      return;
    case PE_Frame:
      if (qobject_cast<const QAbstractScrollArea*>(widget)) {
        paint::fillRounded(*painter, option->rect, metrics::controlRadius, *scrollGround(widget));
      }
      paint::drawBorder(*painter, option->rect, metrics::controlRadius, tokens.hairline);
      return;
    case PE_FrameTabWidget:
      paint::drawHairline(*painter, option->rect, Qt::TopEdge, tokens.hairline);
      return;
    case PE_FrameGroupBox:
    case PE_FrameStatusBarItem:
    case PE_FrameTabBarBase:
    case PE_FrameDefaultButton:
    case PE_FrameButtonTool:
    case PE_FrameButtonBevel:
    case PE_FrameMenu:
    case PE_PanelScrollAreaCorner:
      return;
    case PE_PanelMenuBar:
    case PE_PanelStatusBar:
      painter->fillRect(option->rect, tokens.window);
      return;
    case PE_PanelMenu:
    case PE_PanelTipLabel:
      painter->fillRect(option->rect, tokens.raised);
      paint::drawBorder(*painter, option->rect, metrics::controlRadius, tokens.hairline);
      return;
    case PE_FrameFocusRect:
      if (option->state.testFlag(State_KeyboardFocusChange)) {
        paint::drawBorder(*painter, option->rect, metrics::gapSmall, tokens.accent, metrics::focusRingWidth);
      }
      return;
    case PE_PanelItemViewRow:
      return;
    case PE_PanelItemViewItem:
      drawRow(*option, *painter);
      return;
    case PE_IndicatorArrowDown:
    case PE_IndicatorSpinDown:
      paint::drawChevron(*painter, option->rect, Qt::DownArrow, textColor(*option, tokens));
      return;
    case PE_IndicatorArrowUp:
    case PE_IndicatorSpinUp:
      paint::drawChevron(*painter, option->rect, Qt::UpArrow, textColor(*option, tokens));
      return;
    case PE_IndicatorArrowLeft:
      paint::drawChevron(*painter, option->rect, Qt::LeftArrow, textColor(*option, tokens));
      return;
    case PE_IndicatorArrowRight:
      paint::drawChevron(*painter, option->rect, Qt::RightArrow, textColor(*option, tokens));
      return;
    case PE_IndicatorHeaderArrow: {
      const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
      const bool up = header != nullptr && header->sortIndicator == QStyleOptionHeader::SortUp;
      paint::drawChevron(*painter, option->rect, up ? Qt::UpArrow : Qt::DownArrow, tokens.secondary, 7);
      return;
    }
    case PE_IndicatorBranch:
      if (option->state.testFlag(State_Children)) {
        const bool open = option->state.testFlag(State_Open);
        paint::drawChevron(*painter, option->rect, open ? Qt::DownArrow : Qt::RightArrow, tokens.secondary, 7);
      }
      return;
    case PE_IndicatorToolBarSeparator:
      paint::drawHairline(*painter, option->rect, Qt::LeftEdge, tokens.hairline);
      return;
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void LookStyle::drawPushButtonPanel(const QStyleOption& option, QPainter& painter, const QWidget* widget) const {
  const Tokens& tokens = *m_tokens;
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  const bool enabled = option.state.testFlag(State_Enabled);
  const bool down = option.state.testAnyFlags(State_Sunken | State_On);
  const bool primary = enabled && button != nullptr && isPrimary(*button, widget);
  const bool flat = button != nullptr && button->features.testFlag(QStyleOptionButton::Flat);
  const bool destructive = widget != nullptr && widget->property("destructive").toBool();
  const QColor accent = destructive ? tokens.danger : tokens.accentFill;

  QRectF rect = option.rect;
  const bool focused = showsKeyboardFocus(option);
  if (primary) {
    // A ring in the button's own colour is visible only with a gap.
    if (focused) {
      paint::drawBorder(painter, rect, metrics::controlRadius, tokens.accent, metrics::focusRingWidth);
      rect.adjust(3, 3, -3, -3);
    }
    QColor fill = accent;
    if (down)
      fill = fill.darker(118);
    else if (isHovered(option))
      fill = fill.darker(107);
    paint::fillRounded(painter, rect, focused ? metrics::controlRadius - 3 : metrics::controlRadius, fill);
    return;
  }
  if (!flat) {
    paint::fillBordered(painter, rect, metrics::controlRadius, enabled ? tokens.raised : tokens.panel, tokens.hairline);
  }
  if (enabled && down)
    paint::fillRounded(painter, rect, metrics::controlRadius, tokens.pressed);
  else if (isHovered(option))
    paint::fillRounded(painter, rect, metrics::controlRadius, tokens.hover);
  if (focused) paint::drawBorder(painter, rect, metrics::controlRadius, tokens.accent, metrics::focusRingWidth);
}

void LookStyle::drawToolButtonPanel(const QStyleOption& option, QPainter& painter) const {
  const Tokens& tokens = *m_tokens;
  const bool enabled = option.state.testFlag(State_Enabled);
  if (enabled && option.state.testFlag(State_Sunken)) {
    paint::fillRounded(painter, option.rect, metrics::controlRadius, tokens.pressed);
  } else if (isHovered(option)) {
    paint::fillRounded(painter, option.rect, metrics::controlRadius, tokens.hover);
  }
  if (showsKeyboardFocus(option)) {
    paint::drawBorder(painter, option.rect, metrics::controlRadius, tokens.accent, metrics::focusRingWidth);
  }
}

void LookStyle::drawField(const QStyleOption& option, QPainter& painter) const {
  const Tokens& tokens = *m_tokens;
  const bool enabled = option.state.testFlag(State_Enabled);
  const bool focused = option.state.testFlag(State_HasFocus);
  const QColor fill = enabled ? tokens.raised : tokens.panel;
  const QColor border = focused ? tokens.accent : isHovered(option) ? tokens.groove : tokens.hairline;
  // A caret already shows that a field has the focus; the wide ring is for keyboard users.
  const double width = showsKeyboardFocus(option) ? metrics::focusRingWidth : 0;
  paint::fillBordered(painter, option.rect, metrics::controlRadius, fill, border, width);
}

void LookStyle::drawCheckIndicator(const QStyleOption& option, QPainter& painter, bool round) const {
  const Tokens& tokens = *m_tokens;
  const bool enabled = option.state.testFlag(State_Enabled);
  const bool on = option.state.testFlag(State_On);
  const bool partly = option.state.testFlag(State_NoChange);
  const QRectF rect = option.rect;
  const double radius = round ? rect.height() / 2 : 4;
  if (on || partly) {
    paint::fillRounded(painter, rect, radius, enabled ? tokens.accentFill : tokens.groove);
    const QColor mark = enabled ? tokens.onAccent : tokens.disabledText;
    if (round)
      paint::fillRounded(painter, rect.adjusted(5, 5, -5, -5), 3, mark);
    else if (partly)
      paint::fillRounded(painter, rect.adjusted(4, 7, -4, -7), 1, mark);
    else
      paint::drawCheckMark(painter, rect, mark);
  } else {
    const QColor border = isHovered(option) ? tokens.accent : tokens.secondary;
    paint::fillBordered(painter, rect, radius, enabled ? tokens.raised : tokens.panel,
                        enabled ? border : tokens.hairline);
  }
  if (showsKeyboardFocus(option)) {
    paint::drawBorder(painter, rect.adjusted(-1, -1, 1, 1), radius + 1, tokens.accent, metrics::focusRingWidth);
  }
}

void LookStyle::drawRow(const QStyleOption& option, QPainter& painter) const {
  const bool selected = option.state.testFlag(State_Selected);
  if (!selected && !isHovered(option)) return;
  const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(&option);
  const auto position = item != nullptr ? item->viewItemPosition : QStyleOptionViewItem::OnlyOne;
  const bool rightToLeft = option.direction == Qt::RightToLeft;
  const bool begins = position != QStyleOptionViewItem::Middle && position != QStyleOptionViewItem::End;
  const bool ends = position != QStyleOptionViewItem::Middle && position != QStyleOptionViewItem::Beginning;
  // The cells of one row form one shape: an inner end extends out of its cell and is clipped there.
  const int beyond = metrics::controlRadius;
  QRectF rect = QRectF(option.rect).adjusted(0, 1, 0, -1);
  const bool isLeftEnd = rightToLeft ? ends : begins;
  const bool isRightEnd = rightToLeft ? begins : ends;
  rect.adjust(isLeftEnd ? 2 : -beyond, 0, isRightEnd ? -2 : beyond, 0);
  painter.save();
  painter.setClipRect(option.rect, Qt::IntersectClip);
  paint::fillRounded(painter, rect, metrics::controlRadius, selected ? m_tokens->tint : m_tokens->hover);
  painter.restore();
}

}  // namespace quilmora
