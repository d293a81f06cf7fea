#include "app/assistant/ChatHeader.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int warningSignSize = 14;

}  // namespace

ChatHeader::ChatHeader(const Look& look, ProviderState& provider, QWidget* parent)
    : QWidget(parent),
      m_look(look),
      m_state(provider),
      m_settings(new QPushButton(tr("Settings"), this)),
      m_clear(new IconButton(look, QStringLiteral("trash"), tr("Clear chat"), this)),
      m_provider(new QToolButton(this)),
      m_warningSign(new SymbolLabel(look, QStringLiteral("exclamationmark.triangle.fill"), warningSignSize,
                                    &Tokens::warning, this)),
      m_warning(new TextLabel(look, QString(), &Tokens::warning, look.font(), TextLabel::Overflow::wraps, this)),
      m_destination(
          new TextLabel(look, QString(), &Tokens::secondary, look.font(), TextLabel::Overflow::elides, this)) {
  m_provider->setAutoRaise(true);
  m_provider->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  m_provider->setPopupMode(QToolButton::InstantPopup);
  m_provider->setFocusPolicy(Qt::TabFocus);
  m_provider->setIconSize({metrics::rowIcon, metrics::rowIcon});
  plain::setToolTip(*m_provider, tr("Switch AI provider"));
  auto* menu = new QMenu(m_provider);
  m_provider->setMenu(menu);
  connect(menu, &QMenu::aboutToShow, this, [this] {
    m_state.lookAtAll();
    fillMenu();
  });
  m_settings->setFlat(true);
  m_settings->setAutoDefault(false);
  m_settings->setFocusPolicy(Qt::TabFocus);
  connect(m_settings, &QPushButton::clicked, this, &ChatHeader::settingsWanted);
  connect(m_clear, &QToolButton::clicked, this, &ChatHeader::clearWanted);

  auto* title = new TextLabel(look, tr("AI Chat"), &Tokens::text, look.font(Look::TextStyle::panelTitle),
                              TextLabel::Overflow::elides, this);
  auto* first = new QHBoxLayout;
  first->setContentsMargins(metrics::panelPadding, 0, metrics::gap, 0);
  first->addWidget(title, 1);
  first->addWidget(m_settings);
  first->addWidget(m_clear);
  auto* second = new QHBoxLayout;
  // The button's symbol is aligned with the text above and below it.
  second->setContentsMargins(metrics::gapMedium, 0, metrics::gap, 0);
  second->setSpacing(metrics::gapSmall);
  second->addWidget(m_provider);
  second->addWidget(m_warningSign);
  second->addStretch();
  auto* lines = new QVBoxLayout;
  lines->setContentsMargins(metrics::panelPadding, metrics::gapSmall, metrics::panelPadding, metrics::gap);
  lines->setSpacing(metrics::gapSmall);
  lines->addWidget(m_warning);
  lines->addWidget(m_destination);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, metrics::gap, 0, 0);
  column->setSpacing(0);
  column->addLayout(first);
  column->addLayout(second);
  column->addLayout(lines);
  connect(&provider, &ProviderState::changed, this, &ChatHeader::follow);
  connect(&look, &Look::changed, this, &ChatHeader::follow);
  follow();
}

QString ChatHeader::warningText() const {
  return m_warning->text();
}

QString ChatHeader::destinationText() const {
  return m_destination->text();
}

// Queued, because the chosen entry may be replaced by one with another text.
void ChatHeader::fillMenu() {
  QMenu* menu = m_provider->menu();
  if (const auto rows = m_state.rows(); rows != m_rows) {
    m_rows = rows;
    menu->clear();
    for (const ProviderState::Row& row : m_rows) {
      QAction* entry = plain::addAction(*menu, row.text);
      entry->setCheckable(true);
      const auto choose = [this, id = row.id] {
        m_state.choose(id);
        Q_EMIT providerChosen();
      };
      connect(entry, &QAction::triggered, this, choose, Qt::QueuedConnection);
    }
  }
  for (std::size_t index = 0; index < m_rows.size(); ++index)
    menu->actions().at(static_cast<qsizetype>(index))->setChecked(m_rows[index].id == m_state.chosen());
}

void ChatHeader::follow() {
  const QString warning = m_state.warning();
  const QString label = warning.isEmpty() ? m_state.label() : m_state.label() + QStringLiteral(" (Offline)");
  plain::setText(*m_provider, label + QStringLiteral(" ▾"));
  m_provider->setIcon(m_look.icon(m_state.symbol()));
  m_provider->setAccessibleName(tr("AI provider: %1").arg(label));
  m_warning->setPlainText(warning);
  m_warningSign->setAccessibleName(warning);
  plain::setToolTip(*m_warningSign, warning);
  for (QWidget* part :
       {static_cast<QWidget*>(m_warningSign), static_cast<QWidget*>(m_settings), static_cast<QWidget*>(m_warning)})
    part->setVisible(!warning.isEmpty());
  m_destination->setPlainText(m_state.destination());
  if (!m_rows.empty()) fillMenu();
}

}  // namespace quilmora
