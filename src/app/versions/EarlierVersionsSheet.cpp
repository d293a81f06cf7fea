#include "app/versions/EarlierVersionsSheet.h"

#include <algorithm>

#include <QDateTime>
#include <QLocale>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "app/look/KeyboardScroll.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "app/versions/VersionRow.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int panelWidth = 460;
constexpr int listHeight = 340;
constexpr int headSymbol = 28;

QString description(const versions::Version& version) {
  const QString count =
      version.topicCount == 1
          ? EarlierVersionsSheet::tr("1 topic")
          : EarlierVersionsSheet::tr("%1 topics").arg(QLocale().toString(qulonglong(version.topicCount)));
  const QString title = plain::line(version.title.simplified());
  return title.isEmpty() ? count : count + QStringLiteral(" · ") + title;
}

}  // namespace

QString versionTime(const QDateTime& time, const QDateTime& now) {
  const QString clock = time.time().toString(QStringLiteral("HH:mm"));
  const qint64 days = time.date().daysTo(now.date());
  if (days == 0) return EarlierVersionsSheet::tr("Today, %1").arg(clock);
  if (days == 1) return EarlierVersionsSheet::tr("Yesterday, %1").arg(clock);
  return QLocale::c().toString(time.date(), QStringLiteral("dddd, d MMMM yyyy")) + QStringLiteral(", ") + clock;
}

EarlierVersionsSheet::EarlierVersionsSheet(const Look& look, const QString& documentName, QWidget* window)
    : Sheet(look, window), m_scroll(new QScrollArea(&panel())) {
  setAccessibleName(tr("Earlier Versions"));
  addHead(documentName);
  auto* page = new QWidget;
  m_list = new QVBoxLayout(page);
  m_list->setContentsMargins(0, 0, metrics::gap, 0);
  m_list->setSpacing(metrics::gapSmall);
  m_empty = new EmptyState(look, QStringLiteral("clock"),
                           tr("What a save replaces is kept here. There is nothing yet."), page);
  m_empty->hide();
  m_list->addWidget(m_empty, 1);
  m_scroll->setWidget(page);
  m_scroll->setWidgetResizable(true);
  m_scroll->setFrameShape(QFrame::NoFrame);
  m_scroll->setFocusPolicy(Qt::NoFocus);
  m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_scroll->setMinimumHeight(120);
  m_scroll->viewport()->setAutoFillBackground(false);
  page->setAutoFillBackground(false);
  const int room = window->height() - 240;
  m_scroll->setFixedHeight(std::clamp(room, 120, listHeight));
  scrollToKeyboard(*m_scroll);
  content().addWidget(m_scroll);
  addButtons();
  setMinPanelWidth(panelWidth);
  refresh();
}

void EarlierVersionsSheet::addHead(const QString& documentName) {
  auto* title = new TextLabel(look(), tr("Earlier Versions"), &Tokens::text, look().font(Look::TextStyle::panelTitle),
                              TextLabel::Overflow::wraps, &panel());
  auto* name =
      new TextLabel(look(), documentName, &Tokens::secondary, look().font(), TextLabel::Overflow::elides, &panel());
  auto* words = new QVBoxLayout;
  words->setSpacing(metrics::gapSmall);
  words->addWidget(title);
  words->addWidget(name);
  auto* head = new QHBoxLayout;
  head->setSpacing(metrics::gapMedium);
  head->addWidget(new SymbolLabel(look(), QStringLiteral("clock"), headSymbol, &Tokens::accent, &panel()), 0,
                  Qt::AlignVCenter);
  head->addLayout(words, 1);
  content().addLayout(head);
}

void EarlierVersionsSheet::addButtons() {
  m_beside = new QPushButton(tr("Open &Beside"), &panel());
  m_beside->setToolTip(tr("Opens it as a document of its own"));
  m_inPlace = new QPushButton(tr("Open in &Place"), &panel());
  m_inPlace->setToolTip(tr("Puts it in the place of the open map; Undo goes back"));
  m_inPlace->setProperty("primary", true);
  m_close = new QPushButton(tr("&Cancel"), &panel());
  for (QPushButton* button : {m_beside, m_inPlace, m_close}) button->setAutoDefault(false);
  connect(m_beside, &QPushButton::clicked, this, [this] {
    if (const auto number = chosen()) Q_EMIT besideWanted(*number);
  });
  connect(m_inPlace, &QPushButton::clicked, this, [this] {
    if (const auto number = chosen()) Q_EMIT inPlaceWanted(*number);
  });
  connect(m_close, &QPushButton::clicked, this, &Sheet::cancelled);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(metrics::gap);
  buttons->addWidget(m_close);
  buttons->addStretch();
  buttons->addWidget(m_beside);
  buttons->addWidget(m_inPlace);
  content().addLayout(buttons);
}

void EarlierVersionsSheet::setVersions(const std::vector<versions::Version>& versions, const QDateTime& now) {
  for (const versions::Version& version : versions) {
    const auto since = std::chrono::floor<std::chrono::milliseconds>(version.time).time_since_epoch().count();
    auto* row = new VersionRow(look(), versionTime(QDateTime::fromMSecsSinceEpoch(since), now), description(version));
    m_list->addWidget(row);
    connect(row, &QAbstractButton::toggled, this, &EarlierVersionsSheet::refresh);
    connect(row, &VersionRow::doubleClicked, m_inPlace, &QPushButton::click);
    m_rows.push_back(row);
    m_numbers.push_back(version.number);
  }
  m_empty->setVisible(m_rows.empty());
  if (!m_rows.empty()) {
    m_list->addStretch();
    m_rows.front()->setChecked(true);
    m_rows.front()->setFocus(Qt::OtherFocusReason);
  }
  refresh();
}

void EarlierVersionsSheet::setPicture(std::uint64_t number, const QImage& picture) {
  for (std::size_t i = 0; i < m_rows.size(); ++i)
    if (m_numbers[i] == number) m_rows[i]->setPicture(picture);
}

std::optional<std::uint64_t> EarlierVersionsSheet::chosen() const {
  for (std::size_t i = 0; i < m_rows.size(); ++i)
    if (m_rows[i]->isChecked()) return m_numbers[i];
  return std::nullopt;
}

void EarlierVersionsSheet::refresh() {
  const bool isChosen = chosen().has_value();
  m_beside->setEnabled(isChosen);
  m_inPlace->setEnabled(isChosen);
  for (VersionRow* row : m_rows)
    if (row->isChecked()) m_scroll->ensureWidgetVisible(row, 0, 0);
}

}  // namespace quilmora
