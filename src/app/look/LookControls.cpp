#include <QMenu>
#include <QStyleOption>

#include "app/look/LookStyle.h"
#include "app/look/Paint.h"

namespace quilmora {

namespace {

// The option does not name its entry, but gives its place.
bool isDestructive(const QWidget* widget, const QRect& place) {
  const auto* menu = qobject_cast<const QMenu*>(widget);
  const QAction* entry = menu ? menu->actionAt(place.center()) : nullptr;
  return entry && entry->property("isDestructive").toBool();
}

QRectF progressTrack(const QStyleOption& option) {
  const QRectF rect = option.rect;
  return {rect.left(), rect.center().y() - 3, rect.width(), 6};
}

QPalette withRole(QPalette palette, QPalette::ColorRole role, const QColor& color) {
  palette.setColor(role, color);
  return palette;
}

// The button's icon in one colour.
QIcon tinted(const QStyleOptionButton& button, const QColor& color, qreal devicePixelRatio) {
  QPixmap picture = button.icon.pixmap(button.iconSize, devicePixelRatio);
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(picture.rect(), color);
  painter.end();
  return QIcon(picture);
}

}  // namespace

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  const Tokens& tokens = *m_tokens;
  switch (element) {
    case CE_PushButtonBevel:
      drawPushButtonPanel(*option, *painter, widget);
      return;
    case CE_PushButtonLabel:
      drawPushButtonLabel(*option, *painter, widget);
      return;
    case CE_MenuItem:
      drawMenuItem(*option, *painter, widget);
      return;
    case CE_MenuBarItem:
      drawMenuBarItem(*option, *painter, widget);
      return;
    case CE_MenuBarEmptyArea:
    case CE_ToolBar:
      painter->fillRect(option->rect, tokens.window);
      return;
    case CE_MenuEmptyArea:
    case CE_MenuHMargin:
    case CE_MenuVMargin:
    case CE_MenuTearoff:
    case CE_Splitter:
    case CE_SizeGrip:
      return;
    case CE_TabBarTabShape:
      drawTab(*option, *painter);
      return;
    case CE_TabBarTabLabel:
      if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
        QStyleOptionTab copy = *tab;
        const bool current = tab->state.testFlag(State_Selected);
        if (tab->state.testFlag(State_Enabled)) {
          copy.palette = withRole(copy.palette, QPalette::WindowText, current ? tokens.text : tokens.secondary);
        }
        copy.state.setFlag(State_HasFocus, false);
        QProxyStyle::drawControl(element, &copy, painter, widget);
      }
      return;
    case CE_ProgressBarGroove:
      paint::fillRounded(*painter, progressTrack(*option), 3, tokens.groove);
      return;
    case CE_ProgressBarContents:
      drawProgress(*option, *painter);
      return;
    case CE_ProgressBarLabel:
      return;
    case CE_HeaderSection:
      drawHeaderSection(*option, *painter);
      return;
    case CE_HeaderEmptyArea:
      painter->fillRect(option->rect, tokens.panel);
      return;
    case CE_RubberBand:
      paint::fillBordered(*painter, option->rect, 2, tokens.tint, tokens.accent);
      return;
    case CE_ItemViewItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option)) {
        // Rows are marked by a tint below them, so that their text keeps its colour.
        QStyleOptionViewItem copy = *item;
        copy.palette.setColor(QPalette::HighlightedText, item->palette.color(QPalette::Text));
        copy.showDecorationSelected = true;
        if (copy.state.testFlag(State_Selected)) copy.state.setFlag(State_HasFocus, false);
        QProxyStyle::drawControl(element, &copy, painter, widget);
      }
      return;
    default:
      QProxyStyle::drawControl(element, option, painter, widget);
  }
}

void LookStyle::drawPushButtonLabel(const QStyleOption& option, QPainter& painter, const QWidget* widget) const {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  if (button == nullptr) return;
  const Tokens& tokens = *m_tokens;
  const bool enabled = option.state.testFlag(State_Enabled);
  const bool primary = enabled && isPrimary(*button, widget);
  const bool destructive = enabled && widget != nullptr && widget->property("destructive").toBool();
  QStyleOptionButton copy = *button;
  if (primary) {
    // In the dark table, danger is a light colour, on which dark text is readable.
    const QColor text = destructive && tokens.isDark ? tokens.window : tokens.onAccent;
    copy.palette = withRole(copy.palette, QPalette::ButtonText, text);
  } else if (destructive) {
    copy.palette = withRole(copy.palette, QPalette::ButtonText, tokens.danger);
  }
  copy.state.setFlag(State_Sunken, false);
  if (primary && !copy.icon.isNull())
    copy.icon = tinted(copy, copy.palette.color(QPalette::ButtonText), painter.device()->devicePixelRatioF());
  QProxyStyle::drawControl(CE_PushButtonLabel, &copy, &painter, widget);
}

void LookStyle::drawMenuSeparator(const QStyleOption& option, QPainter& painter) const {
  const auto& item = static_cast<const QStyleOptionMenuItem&>(option);
  if (item.text.isEmpty()) {
    const QRectF line(option.rect.left() + metrics::gap, option.rect.center().y(),
                      option.rect.width() - 2 * metrics::gap, 1);
    paint::drawHairline(painter, line, Qt::TopEdge, m_tokens->hairline);
    return;
  }
  painter.save();
  QFont font = item.font;
  font.setPixelSize(QFontInfo(font).pixelSize() * metrics::sectionHeaderText / metrics::baseText);
  font.setWeight(QFont::DemiBold);
  painter.setFont(font);
  painter.setPen(m_tokens->secondary);
  const QRect rect = option.rect.adjusted(menus::itemPadding, metrics::gapSmall, -menus::itemPadding, 0);
  painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, item.text);
  painter.restore();
}

void LookStyle::drawMenuItem(const QStyleOption& option, QPainter& painter, const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(&option);
  if (item == nullptr) return;
  if (item->menuItemType == QStyleOptionMenuItem::Separator) {
    drawMenuSeparator(option, painter);
    return;
  }
  const Tokens& tokens = *m_tokens;
  const bool enabled = option.state.testFlag(State_Enabled);
  if (enabled && option.state.testFlag(State_Selected)) {
    paint::fillRounded(painter, option.rect, metrics::gapSmall, tokens.tint);
  }

  const bool rightToLeft = option.direction == Qt::RightToLeft;
  const auto placed = [&](const QRect& rect) { return visualRect(option.direction, option.rect, rect); };
  QRect rest = option.rect.adjusted(menus::itemPadding, 0, -menus::itemPadding, 0);
  if (item->menuHasCheckableItems) {
    if (item->checked) {
      const QRect box(rest.left() - 3, rest.center().y() - 7, 16, 16);
      paint::drawCheckMark(painter, placed(box), enabled ? tokens.accent : tokens.disabledText);
    }
    rest.setLeft(rest.left() + menus::checkColumn);
  }
  if (item->maxIconWidth > 0) {
    if (!item->icon.isNull()) {
      const int extent = metrics::rowIcon;
      const QRect box(rest.left(), rest.center().y() - extent / 2 + 1, extent, extent);
      item->icon.paint(&painter, placed(box), Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
    }
    rest.setLeft(rest.left() + item->maxIconWidth + metrics::gapSmall);
  }

  painter.save();
  painter.setFont(item->font);
  const qsizetype tab = item->text.indexOf(QLatin1Char('\t'));
  const int flags =
      Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip |
      (styleHint(SH_UnderlineShortcut, item, widget, nullptr) ? Qt::TextShowMnemonic : Qt::TextHideMnemonic);
  const QColor color = isDestructive(widget, option.rect) ? tokens.danger : tokens.text;
  painter.setPen(enabled ? color : tokens.disabledText);
  painter.drawText(placed(rest), flags | (rightToLeft ? Qt::AlignRight : Qt::AlignLeft), item->text.left(tab));
  if (tab >= 0) {
    painter.setPen(enabled ? tokens.secondary : tokens.disabledText);
    painter.drawText(placed(rest), flags | (rightToLeft ? Qt::AlignLeft : Qt::AlignRight), item->text.mid(tab + 1));
  }
  painter.restore();
  if (item->menuItemType == QStyleOptionMenuItem::SubMenu) {
    const QRect box(rest.right() - 8, rest.top(), 8, rest.height());
    paint::drawChevron(painter, placed(box), rightToLeft ? Qt::LeftArrow : Qt::RightArrow,
                       enabled ? tokens.secondary : tokens.disabledText, 8);
  }
}

void LookStyle::drawMenuBarItem(const QStyleOption& option, QPainter& painter, const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(&option);
  if (item == nullptr) return;
  const Tokens& tokens = *m_tokens;
  painter.fillRect(option.rect, tokens.window);
  const bool enabled = option.state.testFlag(State_Enabled);
  if (enabled && option.state.testFlag(State_Sunken)) {
    paint::fillRounded(painter, option.rect, metrics::controlRadius, tokens.tint);
  } else if (enabled && option.state.testFlag(State_Selected)) {
    paint::fillRounded(painter, option.rect, metrics::controlRadius, tokens.hover);
  }
  const int mnemonic =
      styleHint(SH_UnderlineShortcut, item, widget, nullptr) ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
  drawItemText(&painter, option.rect, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip | mnemonic, item->palette,
               enabled, item->text, QPalette::ButtonText);
}

void LookStyle::drawTab(const QStyleOption& option, QPainter& painter) const {
  const Tokens& tokens = *m_tokens;
  const QRectF rect = option.rect;
  paint::drawHairline(painter, rect, Qt::BottomEdge, tokens.hairline);
  if (option.state.testFlag(State_Selected)) {
    paint::fillRounded(painter, QRectF(rect.left() + metrics::gapMedium, rect.bottom() - 2, rect.width() - 24, 2), 1,
                       tokens.accent);
  } else if (option.state.testFlag(State_MouseOver) && option.state.testFlag(State_Enabled)) {
    paint::fillRounded(painter, rect.adjusted(2, 4, -2, -4), metrics::controlRadius, tokens.hover);
  }
  if (showsKeyboardFocus(option)) {
    paint::drawBorder(painter, rect.adjusted(2, 4, -2, -4), metrics::controlRadius, tokens.accent,
                      metrics::focusRingWidth);
  }
}

void LookStyle::drawProgress(const QStyleOption& option, QPainter& painter) const {
  const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(&option);
  if (bar == nullptr) return;
  const qint64 span = qint64(bar->maximum) - bar->minimum;
  const double share = span > 0 ? (qint64(bar->progress) - bar->minimum) / static_cast<double>(span) : 1.0;
  QRectF rect = progressTrack(option);
  rect.setWidth(rect.width() * qBound(0.0, share, 1.0));
  if (rect.width() > 0) paint::fillRounded(painter, rect, 3, m_tokens->accent);
}

void LookStyle::drawHeaderSection(const QStyleOption& option, QPainter& painter) const {
  painter.fillRect(option.rect, m_tokens->panel);
  paint::drawHairline(painter, option.rect, Qt::BottomEdge, m_tokens->hairline);
  const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(&option);
  if (header != nullptr && header->position != QStyleOptionHeader::End &&
      header->position != QStyleOptionHeader::OnlyOneSection) {
    paint::drawHairline(painter, QRectF(option.rect).adjusted(0, 6, 0, -6), Qt::RightEdge, m_tokens->hairline);
  }
}

}  // namespace quilmora
