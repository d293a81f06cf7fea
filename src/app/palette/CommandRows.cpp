#include "app/palette/CommandRows.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>

#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"
#include "platform/PlatformText.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr int rowSymbolSize = 14;
constexpr int symbolFrame = 20;
constexpr int pillRadius = 4;
constexpr int pillText = 10;
constexpr int rowPadding = 6;
constexpr double faintOnAccent = 0.7;
constexpr double pillOnAccent = 0.2;
constexpr double pillOpacity = 0.15;

QColor mixed(const QColor& from, const QColor& to, double share) {
  if (share <= 0) return from;
  if (share >= 1) return to;
  const auto mix = [share](float a, float b) { return static_cast<float>(a + (b - a) * share); };
  return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()), mix(from.blueF(), to.blueF()),
                          mix(from.alphaF(), to.alphaF()));
}

}  // namespace

// --- The model ---

void CommandRows::setItems(std::vector<CommandItem> items) {
  beginResetModel();
  m_items = std::move(items);
  endResetModel();
}

int CommandRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant CommandRows::data(const QModelIndex& index, int role) const {
  const CommandItem& item = m_items.at(static_cast<std::size_t>(index.row()));
  if (role == Qt::DisplayRole) return plain::line(item.title);
  if (role != Qt::AccessibleTextRole) return {};
  QStringList parts{plain::line(item.title), item.subtitle};
  if (!item.shortcut.isEmpty()) parts.append(platformText(item.shortcut));
  return parts.join(QStringLiteral(", "));
}

// --- The row ---

CommandRow::CommandRow(const Look& look, const CommandRows& rows, Highlight highlight, QObject* parent)
    : QStyledItemDelegate(parent),
      m_look(look),
      m_rows(rows),
      m_highlight(std::move(highlight)),
      m_titleFont(look.font()),
      m_subtitleFont(look.fontOfSize(metrics::sectionHeaderText)),
      m_pillFont(look.fontOfSize(pillText)) {}

int CommandRow::height() const {
  return 2 * rowPadding + QFontMetrics(m_titleFont).height() + QFontMetrics(m_subtitleFont).height();
}

QSize CommandRow::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
  return {0, height()};
}

CommandRow::Places CommandRow::placesIn(const QRect& row, const QString& key) const {
  const QRect inner = row.adjusted(metrics::gap, rowPadding, -metrics::gap, -rowPadding);
  Places places;
  places.symbol = QRect(inner.left(), inner.top(), symbolFrame, inner.height());
  int right = inner.right() + 1;
  if (!key.isEmpty()) {
    const QFontMetrics pill(m_pillFont);
    const QSize size(pill.horizontalAdvance(key) + 2 * metrics::labelGap, pill.height() + metrics::gapSmall);
    places.pill = QRect(QPoint(right - size.width(), inner.center().y() - size.height() / 2 + 1), size);
    right = places.pill.left() - metrics::gap;
  }
  const int left = inner.left() + symbolFrame + metrics::gap;
  const int titleHeight = QFontMetrics(m_titleFont).height();
  places.title = QRect(left, inner.top(), right - left, titleHeight);
  places.subtitle = QRect(left, inner.top() + titleHeight, right - left, inner.height() - titleHeight);
  return places;
}

void CommandRow::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const CommandItem& item = m_rows.items().at(static_cast<std::size_t>(index.row()));
  const Tokens& tokens = m_look.tokens();
  const double share = m_highlight(index.row());
  const QString key = platformText(item.shortcut);
  const Places places = placesIn(option.rect, key);

  painter->save();
  if (share > 0)
    paint::fillRounded(*painter, option.rect, metrics::controlRadius, withOpacity(tokens.accentFill, share));
  QRectF symbol(0, 0, rowSymbolSize, rowSymbolSize);
  symbol.moveCenter(QRectF(places.symbol).center());
  paintSymbol(*painter, item.icon, symbol, mixed(tokens.accent, tokens.onAccent, share));

  const auto write = [&](const QFont& font, const QRect& place, const QString& text, const QColor& color,
                         Qt::Alignment alignment) {
    painter->setFont(font);
    painter->setPen(color);
    painter->drawText(place, int(alignment) | Qt::TextSingleLine,
                      QFontMetrics(font).elidedText(text, Qt::ElideRight, place.width()));
  };
  const Qt::Alignment start = Qt::AlignLeft | Qt::AlignVCenter;
  write(m_titleFont, places.title, plain::line(item.title), mixed(tokens.text, tokens.onAccent, share), start);
  write(m_subtitleFont, places.subtitle, item.subtitle,
        mixed(tokens.secondary, withOpacity(tokens.onAccent, faintOnAccent), share), start);
  if (!places.pill.isEmpty()) {
    const QColor ground = mixed(withOpacity(Qt::gray, pillOpacity), withOpacity(tokens.onAccent, pillOnAccent), share);
    paint::fillRounded(*painter, places.pill, pillRadius, ground);
    write(m_pillFont, places.pill, key, mixed(tokens.secondary, tokens.onAccent, share), Qt::AlignCenter);
  }
  painter->restore();
}

bool CommandRow::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                           const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip || !index.isValid()) return false;
  const CommandItem& item = m_rows.items().at(static_cast<std::size_t>(index.row()));
  const QString title = plain::line(item.title);
  const Places places = placesIn(option.rect, platformText(item.shortcut));
  const bool isCut = QFontMetrics(m_titleFont).horizontalAdvance(title) > places.title.width();
  plain::showToolTip(event->globalPos(), isCut ? title : QString(), view->viewport(), option.rect);
  return true;
}

}  // namespace quilmora
