#include "app/companions/SearchBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "canvas/view/PlainText.h"
#include "editor/EditorNavigation.h"

namespace quilmora {

namespace {

constexpr int barWidth = 340;
constexpr int searchSymbolSize = 14;
constexpr int countMinWidth = 40;
constexpr QSize buttonSize(26, 26);
constexpr QSize buttonIcon(12, 12);

IconButton* stepButton(const Look& look, const QString& symbol, const QString& name, const QString& key,
                       QWidget* parent) {
  auto* button = new IconButton(look, symbol, name, parent);
  plain::setToolTip(*button, QStringLiteral("%1 (%2)").arg(name, key));
  button->setFixedSize(buttonSize);
  button->setIconSize(buttonIcon);
  return button;
}

}  // namespace

SearchBar::SearchBar(const Look& look, EditorNavigation& editor, QWidget* canvas)
    : Card(look, canvas),
      m_editor(editor),
      m_field(new QLineEdit(this)),
      m_count(new TextLabel(look, QString(), &Tokens::secondary, look.font(), TextLabel::Overflow::elides, this)),
      m_previous(
          stepButton(look, QStringLiteral("chevron.up"), tr("Previous Result"), QStringLiteral("Shift+Return"), this)),
      m_next(stepButton(look, QStringLiteral("chevron.down"), tr("Next Result"), QStringLiteral("Return"), this)) {
  setMovable(Grip::none);
  for (QWidget* part :
       {static_cast<QWidget*>(m_count), static_cast<QWidget*>(m_previous), static_cast<QWidget*>(m_next)})
    part->setCursor(Qt::ArrowCursor);
  m_field->setPlaceholderText(QStringLiteral("Search nodes..."));
  setAccessibleName(tr("Search"));
  m_field->setAccessibleName(tr("Search"));
  m_field->setFrame(false);
  // Clicks beside the field leave the keyboard there.
  setFocusPolicy(Qt::ClickFocus);
  setFocusProxy(m_field);
  m_field->setClearButtonEnabled(true);
  // Opaque, so that a blinking cursor does not repaint the canvas below it.
  m_field->setBackgroundRole(QPalette::Base);
  m_field->setAutoFillBackground(true);
  m_count->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_count->setMinimumWidth(countMinWidth);

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(metrics::gapMedium, metrics::labelGap, metrics::labelGap, metrics::labelGap);
  row->setSpacing(metrics::gapSmall);
  row->addWidget(new SymbolLabel(look, QStringLiteral("magnifyingglass"), searchSymbolSize, &Tokens::secondary, this));
  row->addWidget(m_field, 1);
  row->addWidget(m_count);
  row->addSpacing(metrics::gapSmall);
  row->addWidget(m_previous);
  row->addWidget(m_next);
  row->setSpacing(metrics::gapSmall);

  connect(m_field, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (text == m_editor.searchQuery()) return;
    m_editor.setSearchQuery(text);
    m_editor.runSearch();
  });
  connect(m_previous, &QToolButton::clicked, this, [this] { m_editor.previousSearchResult(); });
  connect(m_next, &QToolButton::clicked, this, [this] { m_editor.nextSearchResult(); });
  connect(&editor, &EditorNavigation::isSearchingChanged, this, &SearchBar::followSearching);
  connect(&editor, &EditorNavigation::searchQueryChanged, this, &SearchBar::followQuery);
  connect(&editor, &EditorNavigation::searchResultIDsChanged, this, &SearchBar::followResults);
  connect(&editor, &EditorNavigation::searchResultIndexChanged, this, &SearchBar::followResults);
  followResults();
  followSearching();
}

QSize SearchBar::wantedSize(QSize room) {
  return QSize(barWidth, sizeHint().height()).boundedTo(room);
}

QString SearchBar::countText() const {
  return m_count->text();
}

void SearchBar::followSearching() {
  const bool isSearching = m_editor.isSearching();
  if (isSearching == isShown()) return;
  if (isSearching) {
    m_before = window()->focusWidget();
    setShown(true);
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
    return;
  }
  // Before the bar is hidden: otherwise the toolkit would give the keyboard to whatever comes next.
  const QWidget* owner = window()->focusWidget();
  const bool isBeforeThere = m_before && m_before->isVisible() && m_before->isEnabled() &&
                             m_before->focusPolicy() != Qt::NoFocus && !isAncestorOf(m_before);
  if (owner == nullptr || isAncestorOf(owner))
    (isBeforeThere ? m_before.data() : parentWidget())->setFocus(Qt::OtherFocusReason);
  setShown(false);
}

void SearchBar::followQuery() {
  if (m_field->text() != m_editor.searchQuery()) plain::setText(*m_field, m_editor.searchQuery());
}

void SearchBar::followResults() {
  const std::size_t count = m_editor.searchResultIDs().size();
  if (count > 0)
    m_count->setPlainText(QStringLiteral("%1/%2").arg(m_editor.searchResultIndex() + 1).arg(count));
  else
    m_count->setPlainText(m_editor.searchQuery().isEmpty() ? QString() : tr("No results"));
  m_previous->setEnabled(count > 0);
  m_next->setEnabled(count > 0);
}

// Keys that no part of the bar used. None of them is for the canvas below.
void SearchBar::keyPressEvent(QKeyEvent* event) {
  event->accept();
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (event->modifiers().testFlag(Qt::ShiftModifier))
        m_editor.previousSearchResult();
      else
        m_editor.nextSearchResult();
      break;
    case Qt::Key_Escape:
      m_editor.escape();
      break;
    default:
      break;
  }
}

}  // namespace quilmora
