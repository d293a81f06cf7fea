#include "app/onboarding/OnboardingView.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QVariantAnimation>

#include "app/look/KeyboardScroll.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "app/onboarding/OnboardingPages.h"
#include "app/onboarding/OnboardingPieces.h"
#include "model/StarterMaps.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

constexpr int pageTitleText = 22;
constexpr int welcomeSymbol = 64;
constexpr int pageSymbol = 32;
constexpr int slideMilliseconds = 200;
constexpr int slideWay = 48;
constexpr std::size_t templatesInFirstRow = 3;

// Where the pages show: as high as requested, or less if the window has no room for that.
class Stage final : public QWidget {
 public:
  Stage(int height, QWidget* parent) : QWidget(parent), m_height(height) {}
  QSize sizeHint() const override { return {0, m_height}; }
  QSize minimumSizeHint() const override { return {0, 0}; }

 private:
  int m_height;
};

// Scrolls only by the keys of the sheet.
class PageArea final : public QScrollArea {
 public:
  PageArea(QWidget* page, QWidget* stage) : QScrollArea(stage) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The background of the panel, for the scroll bar too.
    viewport()->setBackgroundRole(QPalette::Base);
    setWidget(page);
    scrollToKeyboard(*this);
    page->setAutoFillBackground(false);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
};

TextLabel* newLabel(const Look& look, const QString& text, TokenColor color, const QFont& font, QWidget* parent) {
  auto* label = new TextLabel(look, text, color, font, TextLabel::Overflow::wraps, parent);
  label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  return label;
}

}  // namespace

OnboardingView::OnboardingView(const Look& look, SettingsStore& settings, NotificationCenter& notifications,
                               QWidget* window)
    : Sheet(look, window),
      m_settings(settings),
      m_notifications(notifications),
      m_dots(new PageDots(look, pageCount(), &panel())),
      m_skip(new QPushButton(tr("&Skip"), &panel())),
      m_next(new QPushButton(tr("&Next"), &panel())),
      m_slide(new QVariantAnimation(this)) {
  setAccessibleName(tr("Quilmora Quick Start"));
  const QMargins margins = content().contentsMargins();
  const int footer = std::max(m_next->sizeHint().height(), m_dots->height());
  m_stage = new Stage(panelSize.height() - margins.top() - margins.bottom() - content().spacing() - footer, &panel());
  m_stage->lower();
  m_stage->installEventFilter(this);
  content().addWidget(m_stage, 1);
  buildFooter();
  setMinPanelWidth(panelSize.width());
  m_slide->setDuration(slideMilliseconds);
  m_slide->setEasingCurve(QEasingCurve::InOutQuad);
  connect(m_slide, &QVariantAnimation::valueChanged, this, &OnboardingView::placePage);
  connect(this, &Sheet::cancelled, this, &OnboardingView::dismiss);
  showPage(0);
}

int OnboardingView::pageCount() {
  return static_cast<int>(onboardingPages().size());
}

void OnboardingView::open() {
  Sheet::open();
  m_next->setFocus(Qt::ShortcutFocusReason);
}

void OnboardingView::buildFooter() {
  m_next->setProperty("primary", true);
  for (QPushButton* button : {m_skip, m_next}) {
    button->setAutoDefault(false);
    // The dots stay in the middle when the buttons are hidden.
    QSizePolicy policy = button->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    button->setSizePolicy(policy);
    button->installEventFilter(this);
    button->setMinimumWidth(std::max(m_skip->sizeHint().width(), m_next->sizeHint().width()));
  }
  connect(m_skip, &QPushButton::clicked, this, &OnboardingView::dismiss);
  connect(m_next, &QPushButton::clicked, this, [this] { showPage(m_currentPage + 1); });
  connect(m_dots, &PageDots::pageChosen, this, &OnboardingView::showPage);
  auto* footer = new QHBoxLayout;
  footer->addWidget(m_skip);
  footer->addStretch();
  footer->addWidget(m_dots);
  footer->addStretch();
  footer->addWidget(m_next);
  content().addLayout(footer);
}

// --- Pages ---

QWidget* OnboardingView::buildPage(int number) {
  const OnboardingPage& told = onboardingPages().at(static_cast<std::size_t>(number));
  const bool isLast = number == pageCount() - 1;
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(2, 0, 2, 0);
  column->setSpacing(0);
  column->addStretch(1);
  if (!told.symbol.isEmpty()) {
    const int size = number == 0 ? welcomeSymbol : pageSymbol;
    column->addWidget(new SymbolLabel(look(), told.symbol, size, &Tokens::accent, page), 0, Qt::AlignHCenter);
    column->addSpacing(number == 0 ? metrics::gapHuge : metrics::gap);
  }
  column->addWidget(
      newLabel(look(), told.title, &Tokens::text, look().fontOfSize(pageTitleText, QFont::DemiBold), page));
  if (!told.text.isEmpty()) {
    column->addSpacing(number == 0 ? metrics::gapMedium : metrics::gapSmall);
    column->addWidget(newLabel(look(), told.text, &Tokens::secondary, look().font(), page));
  }
  column->addSpacing(metrics::gapLarge);
  if (!told.rows.empty()) column->addWidget(new OnboardingRows(look(), told.rows, page));
  if (isLast) {
    addTemplates(*column, page);
    addBeginnings(*column, page);
  }
  if (!told.note.isEmpty()) {
    column->addSpacing(metrics::gapMedium);
    const QFont font = look().fontOfSize(metrics::sectionHeaderText);
    column->addWidget(newLabel(look(), told.note, &Tokens::secondary, font, page));
  }
  column->addStretch(1);
  return page;
}

void OnboardingView::addTemplates(QVBoxLayout& column, QWidget* page) {
  QHBoxLayout* row = nullptr;
  for (std::size_t i = 0; i < templates().size(); ++i) {
    if (i == 0 || i == templatesInFirstRow) {
      row = new QHBoxLayout;
      row->setSpacing(metrics::gap);
      column.addLayout(row);
      column.addSpacing(metrics::gap);
    }
    const StarterMap& starter = templates()[i];
    auto* button = new TemplateButton(look(), starter, page);
    connect(button, &QAbstractButton::clicked, this,
            [this, name = starter.name] { dismissAndPost(Notification::newFromTemplate, name); });
    row->addWidget(button);
  }
}

void OnboardingView::addBeginnings(QVBoxLayout& column, QWidget* page) {
  auto* generate = new QPushButton(tr("&Generate with AI"), page);
  generate->setProperty("primary", true);
  generate->setIcon(look().icon(QStringLiteral("sparkles")));
  auto* blank = new QPushButton(tr("Start &Blank"), page);
  connect(generate, &QPushButton::clicked, this, [this] { dismissAndPost(Notification::aiGenerate); });
  connect(blank, &QPushButton::clicked, this, &OnboardingView::dismiss);
  auto* row = new QHBoxLayout;
  row->setSpacing(metrics::gap);
  row->addStretch();
  for (QPushButton* button : {generate, blank}) {
    button->setAutoDefault(false);
    row->addWidget(button);
  }
  row->addStretch();
  column.addSpacing(metrics::gap);
  column.addLayout(row);
}

void OnboardingView::showPage(int number) {
  if (number < 0 || number >= pageCount() || (m_page != nullptr && number == m_currentPage)) return;
  const int direction = m_page == nullptr ? 0 : number - m_currentPage;
  const bool hadKeyboard = isOpen() && isAncestorOf(window()->focusWidget());
  if (m_page != nullptr) {
    m_page->hide();
    m_page->deleteLater();
  }
  m_currentPage = number;
  m_page = new PageArea(buildPage(number), m_stage);
  m_page->show();
  m_dots->setCurrent(number);
  const bool isLast = number == pageCount() - 1;
  m_skip->setVisible(!isLast);
  m_next->setVisible(!isLast);
  slideIn(direction);
  if (!hadKeyboard) return;
  if (isLast)
    stepFocus(0, Qt::OtherFocusReason);
  else if (!m_skip->hasFocus())
    m_next->setFocus(Qt::OtherFocusReason);
}

void OnboardingView::slideIn(int direction) {
  m_slide->stop();
  if (direction != 0 && isOpen() && !look().isStill()) {
    m_slide->setStartValue(direction > 0 ? slideWay : -slideWay);
    m_slide->setEndValue(0);
    m_slide->start();
  }
  placePage();
}

void OnboardingView::placePage() {
  const bool slides = m_slide->state() == QAbstractAnimation::Running;
  m_page->setGeometry(m_stage->rect().translated(slides ? m_slide->currentValue().toInt() : 0, 0));
}

// The buttons would use the arrows to move between them.
bool OnboardingView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_stage && event->type() == QEvent::Resize) placePage();
  if ((watched == m_skip || watched == m_next) && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
      showPage(m_currentPage + (key == Qt::Key_Right ? 1 : -1));
      return true;
    }
  }
  return Sheet::eventFilter(watched, event);
}

// --- Closing ---

void OnboardingView::dismiss() {
  m_settings.setFlag(settings::onboardingShown, true);
  finish();
}

void OnboardingView::dismissAndPost(Notification notification, const QString& object) {
  dismiss();
  m_notifications.post(notification, object.isNull() ? QVariant() : QVariant(object));
}

// A page that is higher than its area scrolls with these keys first.
void OnboardingView::turn(int direction) {
  QScrollBar* bar = m_page->verticalScrollBar();
  const int before = bar->value();
  bar->setValue(before + direction * bar->pageStep());
  if (bar->value() == before) showPage(m_currentPage + direction);
}

void OnboardingView::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_PageDown && event->key() != Qt::Key_PageUp) return Sheet::keyPressEvent(event);
  turn(event->key() == Qt::Key_PageDown ? 1 : -1);
  event->accept();
}

}  // namespace quilmora
