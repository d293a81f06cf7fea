#include "app/assistant/AIPromptView.h"

#include <algorithm>

#include <QButtonGroup>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollArea>
#include <QVBoxLayout>

#include "app/assistant/Chip.h"
#include "app/assistant/ProviderState.h"
#include "app/assistant/SubmitField.h"
#include "app/look/BusySign.h"
#include "app/look/FlowLayout.h"
#include "app/look/KeyboardScroll.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "canvas/view/PlainText.h"
#include "editor/AIWorkflows.h"
#include "platform/OnDeviceText.h"

namespace quilmora {

namespace {

constexpr int panelWidth = 520;
constexpr int headSymbol = 28;
constexpr int stateSymbol = 16;
constexpr int minMiddleHeight = 80;
constexpr int promptLines = 3;
constexpr int maxPromptLines = 8;
constexpr std::chrono::milliseconds firstLook{500};
constexpr std::chrono::milliseconds nextLook{300};

}  // namespace

// Between head and buttons: as high as its parts need, within the window; beyond that it scrolls.
class AIPromptView::Middle final : public QScrollArea {
 public:
  explicit Middle(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(new QWidget);
    viewport()->setAutoFillBackground(false);
    viewport()->setBackgroundRole(QPalette::Base);  // the background of the scroll bar
    widget()->setAutoFillBackground(false);
    scrollToKeyboard(*this);
  }

  QSize sizeHint() const override {
    const int width = std::max(1, viewport()->width());
    return {panelWidth - 2 * metrics::gapHuge, widget()->layout()->heightForWidth(width)};
  }
  QSize minimumSizeHint() const override { return {panelWidth / 2, minMiddleHeight}; }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QScrollArea::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) updateGeometry();
  }
  // The parts tell only their layout that they want another size, so this must listen.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
  }
};

AIPromptView::AIPromptView(const Look& look, AIWorkflows& workflows, ProviderState& provider, Scheduler& scheduler,
                           QWidget* window)
    : Sheet(look, window),
      m_workflows(workflows),
      m_provider(provider),
      m_scheduler(scheduler),
      m_mode(&promptModes().front()) {
  setAccessibleName(tr("Quilmora AI"));
  addHead();
  addMiddle();
  addModes();
  addPrompt();
  addExamples();
  addState();
  addButtons();
  setMinPanelWidth(panelWidth);
  select(*m_mode);
  const auto leave = [this] { m_workflows.setShowAIPrompt(false); };
  connect(this, &Sheet::cancelled, this, leave);
  connect(m_prompt, &SubmitField::left, this, leave);
  connect(m_cancel, &QPushButton::clicked, this, leave);
  connect(m_prompt, &SubmitField::submitted, this, &AIPromptView::submit);
  connect(m_generate, &QPushButton::clicked, this, &AIPromptView::submit);
  connect(m_prompt, &QPlainTextEdit::textChanged, this, [this] { setWaiting(m_closeTask != 0); });
  for (const auto signal :
       {&AIWorkflows::aiIsGeneratingChanged, &AIWorkflows::aiProgressChanged, &AIWorkflows::aiErrorChanged})
    connect(&workflows, signal, this, &AIPromptView::followWorkflows);
  connect(&provider, &ProviderState::changed, this, &AIPromptView::followProvider);
  setWaiting(false);
  followWorkflows();
  followProvider();
}

AIPromptView::~AIPromptView() {
  m_scheduler.cancel(m_closeTask);
}

void AIPromptView::addHead() {
  auto* title = new TextLabel(look(), tr("Quilmora AI"), &Tokens::text, look().font(Look::TextStyle::panelTitle),
                              TextLabel::Overflow::wraps, &panel());
  m_destination =
      new TextLabel(look(), QString(), &Tokens::secondary, look().font(), TextLabel::Overflow::wraps, &panel());
  auto* words = new QVBoxLayout;
  words->setSpacing(metrics::gapSmall);
  words->addWidget(title);
  words->addWidget(m_destination);
  auto* head = new QHBoxLayout;
  head->setSpacing(metrics::gapMedium);
  head->addWidget(new SymbolLabel(look(), QStringLiteral("sparkles"), headSymbol, &Tokens::accent, &panel()), 0,
                  Qt::AlignVCenter);
  head->addLayout(words, 1);
  content().addLayout(head);
}

void AIPromptView::addMiddle() {
  m_middle = new Middle(&panel());
  m_middleColumn = new QVBoxLayout(m_middle->widget());
  m_middleColumn->setContentsMargins(0, 0, 0, 0);
  m_middleColumn->setSpacing(metrics::gapLarge);
  content().addWidget(m_middle);
}

void AIPromptView::addModes() {
  auto* group = new QButtonGroup(this);
  auto* row = new FlowLayout(metrics::gap);
  for (const PromptMode& mode : promptModes()) {
    auto* button = new Chip(look(), mode.symbol, mode.label, m_middle->widget());
    button->setCheckable(true);
    button->setChecked(&mode == m_mode);
    group->addButton(button);
    connect(button, &Chip::toggled, this, [this, &mode](bool isOn) {
      if (isOn) select(mode);
    });
    m_modeButtons.push_back(button);
    row->addWidget(button);
  }
  m_middleColumn->addLayout(row);
}

void AIPromptView::addPrompt() {
  auto* heading =
      new TextLabel(look(), tr("Describe your map"), &Tokens::secondary, look().font(Look::TextStyle::sectionHeader),
                    TextLabel::Overflow::elides, m_middle->widget());
  m_prompt = new SubmitField(promptLines, maxPromptLines, m_middle->widget());
  m_prompt->setAccessibleName(heading->text());
  auto* column = new QVBoxLayout;
  column->setSpacing(metrics::labelGap);
  column->addWidget(heading);
  column->addWidget(m_prompt);
  m_middleColumn->addLayout(column);
}

void AIPromptView::addExamples() {
  auto* heading =
      new TextLabel(look(), tr("Or try an example"), &Tokens::secondary, look().font(Look::TextStyle::sectionHeader),
                    TextLabel::Overflow::elides, m_middle->widget());
  auto* flow = new FlowLayout(metrics::gap);
  // NOLINTNEXTLINE(modernize-loop-convert): the mode may be another one when the button is clicked
  for (qsizetype index = 0; index < m_mode->examples.size(); ++index) {
    auto* button = new Chip(look(), QString(), QString(), m_middle->widget());
    connect(button, &Chip::clicked, this, [this, index] {
      m_prompt->setPlainText(m_mode->examples.at(index));
      submit();
    });
    m_examples.push_back(button);
    flow->addWidget(button);
  }
  auto* column = new QVBoxLayout;
  column->setSpacing(metrics::labelGap);
  column->addWidget(heading);
  column->addLayout(flow);
  m_middleColumn->addLayout(column);
}

void AIPromptView::addState() {
  const auto newRow = [this](QWidget* sign, TextLabel* text, QWidget* row) {
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(metrics::gap);
    sign->setParent(row);
    text->setParent(row);
    layout->addWidget(sign, 0, Qt::AlignTop);
    layout->addWidget(text, 1);
    content().addWidget(row);
  };
  m_errorRow = new QWidget(&panel());
  m_error = new TextLabel(look(), QString(), &Tokens::danger, look().font(), TextLabel::Overflow::wraps);
  newRow(new SymbolLabel(look(), QStringLiteral("exclamationmark.triangle.fill"), stateSymbol, &Tokens::danger),
         m_error, m_errorRow);
  m_progressRow = new QWidget(&panel());
  m_progress = new TextLabel(look(), QString(), &Tokens::secondary, look().font(), TextLabel::Overflow::elides);
  newRow(new BusySign(look()), m_progress, m_progressRow);
}

void AIPromptView::addButtons() {
  m_cancel = new QPushButton(tr("&Cancel"), &panel());
  m_generate = new QPushButton(tr("&Generate"), &panel());
  m_generate->setProperty("primary", true);
  for (QPushButton* button : {m_cancel, m_generate}) button->setAutoDefault(false);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(metrics::gap);
  buttons->addStretch();
  buttons->addWidget(m_cancel);
  buttons->addWidget(m_generate);
  content().addLayout(buttons);
}

void AIPromptView::open() {
  Sheet::open();
  m_prompt->setFocus(Qt::ShortcutFocusReason);
  m_provider.check();
}

void AIPromptView::select(const PromptMode& mode) {
  m_mode = &mode;
  m_prompt->setPlaceholderText(mode.placeholder);
  for (std::size_t index = 0; index < m_examples.size(); ++index) {
    const QString example = mode.examples.value(static_cast<qsizetype>(index));
    plain::setOwnText(*m_examples[index], example);
    m_examples[index]->setAccessibleName(example);
    m_examples[index]->updateGeometry();
  }
}

void AIPromptView::submit() {
  const QString words = m_prompt->toPlainText();
  if (words.isEmpty() || m_closeTask != 0) return;
  const QString text = m_mode->prefix + words;
  m_workflows.generateMap(text, layoutForPrompt(text, m_mode->layout));
  closeWhenDone(firstLook);
}

void AIPromptView::closeWhenDone(std::chrono::milliseconds delay) {
  m_closeTask = m_scheduler.after(delay, [this] {
    m_closeTask = 0;
    if (m_workflows.aiIsGenerating()) return closeWhenDone(nextLook);
    setWaiting(false);
    if (!m_workflows.aiError()) m_workflows.setShowAIPrompt(false);
  });
  setWaiting(true);
}

// One map at a time; the text stays readable.
void AIPromptView::setWaiting(bool waiting) {
  QWidget* owner = window()->focusWidget();
  m_prompt->setReadOnly(waiting);
  m_generate->setEnabled(!waiting && !m_prompt->toPlainText().isEmpty());
  for (Chip* chip : m_examples) chip->setEnabled(!waiting);
  for (Chip* chip : m_modeButtons) chip->setEnabled(!waiting);
  // A disabled widget loses the keyboard to whatever comes next.
  if (isOpen() && owner != nullptr && !owner->isEnabled()) m_prompt->setFocus(Qt::OtherFocusReason);
}

void AIPromptView::followWorkflows() {
  const auto& error = m_workflows.aiError();
  m_error->setPlainText(error ? plain::text(onDeviceText(*error)) : QString());
  m_errorRow->setVisible(error.has_value());
  m_progress->setPlainText(plain::line(m_workflows.aiProgress()));
  m_progressRow->setVisible(m_workflows.aiIsGenerating());
}

void AIPromptView::followProvider() {
  const QString label =
      m_provider.warning().isEmpty() ? m_provider.label() : m_provider.label() + QStringLiteral(" (Offline)");
  m_destination->setPlainText(QStringLiteral("%1 · %2").arg(label, m_provider.destination()));
}

QString AIPromptView::errorText() const {
  return m_errorRow->isVisibleTo(this) ? m_error->text() : QString();
}

QString AIPromptView::progressText() const {
  return m_progressRow->isVisibleTo(this) ? m_progress->text() : QString();
}

QString AIPromptView::destinationText() const {
  return m_destination->text();
}

}  // namespace quilmora
