#include "app/outline/OutlineRowDelegate.h"

#include <limits>

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "app/outline/OutlineModel.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr double indentStep = 14.0;
constexpr int evenLevels = 6;
// Shared by all deeper levels.
constexpr double indentBeyond = 42.0;
constexpr int chevronWidth = 16;
constexpr int chevronSize = 7;
constexpr int notesSize = 13;
constexpr int minRowHeight = 26;

QRect mirrored(const QStyleOptionViewItem& option, const QRect& rect) {
  return QStyle::visualRect(option.direction, option.rect, rect);
}

// As on the canvas: in colour, where the text font has only an outline version.
QFont emojiFont(QFont font) {
  font.setFamilies(QStringList{QStringLiteral("Noto Color Emoji")} + font.families());
  return font;
}

bool isUntitled(const QModelIndex& index) {
  return index.data(Qt::EditRole).toString().left(4 * OutlineRowDelegate::maxShownTitleLength).simplified().isEmpty();
}

}  // namespace

double outlineIndent(int depth) {
  if (depth <= evenLevels) return indentStep * depth;
  const double beyond = depth - evenLevels;
  return indentStep * evenLevels + indentBeyond * beyond / (beyond + indentBeyond / indentStep);
}

OutlineRowDelegate::OutlineRowDelegate(const Look& look, QObject* parent) : QStyledItemDelegate(parent), m_look(look) {}

OutlineRowParts OutlineRowDelegate::parts(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QRect& row = option.rect;
  int left = row.left() + metrics::gap + static_cast<int>(outlineIndent(index.data(OutlineModel::depthRole).toInt()));
  int right = row.right() + 1 - metrics::gap;
  OutlineRowParts parts;
  parts.chevron = QRect(left, row.top(), chevronWidth, row.height());
  left += chevronWidth + metrics::gapSmall;
  const QString emoji = index.data(OutlineModel::emojiRole).toString();
  if (!emoji.isEmpty()) {
    const int width = std::min(QFontMetrics(emojiFont(m_look.font())).horizontalAdvance(emoji) + 1, (right - left) / 2);
    parts.emoji = QRect(left, row.top(), width, row.height());
    left += width + metrics::labelGap;
  }
  if (index.data(OutlineModel::hasNotesRole).toBool()) {
    parts.notes = QRect(right - notesSize, row.top() + (row.height() - notesSize) / 2, notesSize, notesSize);
    right -= notesSize + metrics::labelGap;
  }
  parts.title = QRect(left, row.top(), std::max(0, right - left), row.height());
  for (QRect* part : {&parts.chevron, &parts.emoji, &parts.title, &parts.notes})
    if (part->isValid()) *part = mirrored(option, *part);
  return parts;
}

void OutlineRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const paint::Scope scope(painter);
  const Tokens& tokens = m_look.tokens();
  const OutlineRowParts parts = this->parts(option, index);
  const QStyle* style = option.widget->style();
  style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
  if (showsKeyboardFocus(option)) {
    const QRectF ring = QRectF(option.rect).adjusted(2, 1, -2, -1);
    paint::drawBorder(*painter, ring, metrics::controlRadius, tokens.accent, metrics::focusRingWidth);
  }
  if (index.data(OutlineModel::hasChildrenRole).toBool()) {
    const bool isExpanded = index.data(OutlineModel::isExpandedRole).toBool();
    const QString symbol = isExpanded                            ? QStringLiteral("chevron.down")
                           : option.direction == Qt::RightToLeft ? QStringLiteral("chevron.left")
                                                                 : QStringLiteral("chevron.right");
    QRectF square(0, 0, chevronSize + 3, chevronSize + 3);
    square.moveCenter(QRectF(parts.chevron).center());
    paintSymbol(*painter, symbol, square, tokens.secondary);
  }
  const int flags =
      int(Qt::AlignVCenter | QStyle::visualAlignment(option.direction, Qt::AlignLeft)) | Qt::TextSingleLine;
  painter->setPen(tokens.text);
  if (parts.emoji.isValid()) {
    const QFont font = emojiFont(m_look.font());
    painter->setFont(font);
    const QString emoji = index.data(OutlineModel::emojiRole).toString();
    painter->drawText(parts.emoji, flags, QFontMetrics(font).elidedText(emoji, Qt::ElideRight, parts.emoji.width()));
  }
  painter->setFont(m_look.font());
  if (isUntitled(index)) painter->setPen(tokens.secondary);
  const QString title = index.data(Qt::DisplayRole).toString();
  painter->drawText(parts.title, flags,
                    QFontMetrics(m_look.font()).elidedText(title, Qt::ElideRight, parts.title.width()));
  if (parts.notes.isValid()) paintSymbol(*painter, QStringLiteral("note.text"), parts.notes, tokens.secondary);
}

QSize OutlineRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
  return {metrics::sidebarWidth, std::max(minRowHeight, QFontMetrics(m_look.font()).height() + metrics::gap)};
}

bool OutlineRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  const QString title = index.data(Qt::DisplayRole).toString();
  const bool isCut = QFontMetrics(m_look.font()).horizontalAdvance(title) > parts(option, index).title.width();
  plain::showToolTip(event->globalPos(), isCut ? title : QString(), view, option.rect);
  return true;
}

QWidget* OutlineRowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                          const QModelIndex& index) const {
  if (index.data(Qt::EditRole).toString().size() > maxShownTitleLength) return nullptr;
  m_field = new QLineEdit(parent);
  m_field->setMaxLength(std::numeric_limits<int>::max());
  m_field->setAccessibleName(tr("Title"));
  return m_field;
}

void OutlineRowDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* field = qobject_cast<QLineEdit*>(editor);
  // Text that the user has already typed stays when the topic changes.
  if (field == nullptr || field->isModified()) return;
  plain::setText(*field, index.data(Qt::EditRole).toString());
  field->selectAll();
}

void OutlineRowDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
  const auto* field = qobject_cast<QLineEdit*>(editor);
  if (field != nullptr && field->isModified()) model->setData(index, field->text(), Qt::EditRole);
}

void OutlineRowDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                              const QModelIndex& index) const {
  const QRect title = parts(option, index).title;
  // Its text is where the title is.
  editor->setGeometry(title.adjusted(-metrics::labelGap, 0, metrics::gapSmall, 0));
}

}  // namespace quilmora
