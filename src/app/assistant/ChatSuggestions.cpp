#include "app/assistant/ChatSuggestions.h"

#include <algorithm>

#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/assistant/Chip.h"
#include "app/look/FlowLayout.h"
#include "app/look/KeyboardScroll.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;

constexpr int headSymbol = 28;

struct Suggestion {
  QString chip;
  QString prompt;
};

struct Group {
  QString title;
  std::vector<Suggestion> suggestions;
};

const std::vector<Group>& groups() {
  static const std::vector<Group> table = {
      {u"Try a demo"_s,
       {{u"World Capitals"_s, u"Map capitals of the countries"_s},
        {u"Solar System"_s, u"Create a map about space"_s},
        {u"Cuisines"_s, u"Generate a map about cuisines"_s},
        {u"SWOT Analysis"_s, u"Build a SWOT analysis for a startup"_s}}},
      {u"Business"_s,
       {{u"Project Plan"_s, u"Create a project plan"_s},
        {u"Marketing"_s, u"Map out a marketing strategy"_s},
        {u"Startup"_s, u"Generate a startup roadmap"_s}}},
      {u"Learning"_s,
       {{u"Science"_s, u"Create a map about science"_s},
        {u"History"_s, u"Generate a map about history"_s},
        {u"Psychology"_s, u"Map out psychology"_s}}},
      {u"Lifestyle"_s,
       {{u"Fitness"_s, u"Create a fitness plan"_s},
        {u"Travel"_s, u"Plan a trip"_s},
        {u"Cooking"_s, u"Map cooking techniques"_s}}},
      {u"Your map"_s,
       {{u"What's missing?"_s, u"What's missing from my map?"_s},
        {u"Improvements"_s, u"Suggest improvements"_s},
        {u"Summary"_s, u"Summarize the main topics"_s}}},
  };
  return table;
}

}  // namespace

ChatSuggestions::ChatSuggestions(const Look& look, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidgetResizable(true);
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(metrics::panelPadding, metrics::gapLarge, metrics::gapMedium, metrics::gapLarge);
  column->setSpacing(0);
  column->addWidget(new SymbolLabel(look, QStringLiteral("sparkles"), headSymbol, &Tokens::secondary, page), 0,
                    Qt::AlignHCenter);
  column->addSpacing(metrics::gap);
  auto* heading = new TextLabel(look, tr("Ask or Generate"), &Tokens::text, look.font(Look::TextStyle::baseSemibold),
                                TextLabel::Overflow::elides, page);
  heading->setAlignment(Qt::AlignCenter);
  column->addWidget(heading);
  for (const Group& group : groups()) {
    column->addSpacing(metrics::sectionGap);
    column->addWidget(new TextLabel(look, group.title, &Tokens::secondary, look.font(Look::TextStyle::sectionHeader),
                                    TextLabel::Overflow::elides, page));
    column->addSpacing(metrics::labelGap);
    auto* row = new FlowLayout(metrics::labelGap);
    for (const Suggestion& suggestion : group.suggestions) {
      auto* chip = new Chip(look, QString(), suggestion.chip, page);
      connect(chip, &Chip::clicked, this, [this, &suggestion] { Q_EMIT chosen(suggestion.prompt); });
      row->addWidget(chip);
      m_chips.push_back(chip);
    }
    column->addLayout(row);
  }
  column->addStretch();
  setWidget(page);
  scrollToKeyboard(*this);
  viewport()->setAutoFillBackground(false);
  viewport()->setBackgroundRole(QPalette::AlternateBase);  // the background of the scroll bar
  page->setAutoFillBackground(false);
}

void ChatSuggestions::keyPressEvent(QKeyEvent* event) {
  const bool isForward = event->key() == Qt::Key_Right || event->key() == Qt::Key_Down;
  const bool isBackward = event->key() == Qt::Key_Left || event->key() == Qt::Key_Up;
  const auto found = std::ranges::find_if(m_chips, [](const Chip* chip) { return chip->hasFocus(); });
  if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && found != m_chips.end()) {
    (*found)->click();
  } else if ((isForward || isBackward) && found != m_chips.end()) {
    const auto last = static_cast<std::ptrdiff_t>(m_chips.size()) - 1;
    const std::ptrdiff_t index = std::clamp<std::ptrdiff_t>((found - m_chips.begin()) + (isForward ? 1 : -1), 0, last);
    m_chips[static_cast<std::size_t>(index)]->setFocus(Qt::TabFocusReason);
  } else {
    QScrollArea::keyPressEvent(event);
  }
}

}  // namespace quilmora
