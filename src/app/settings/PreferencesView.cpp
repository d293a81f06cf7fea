#include "app/settings/PreferencesView.h"

#include <algorithm>

#include <QCloseEvent>
#include <QFontInfo>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "app/look/Look.h"
#include "app/settings/AIPage.h"
#include "app/settings/SettingsForm.h"
#include "app/settings/SettingsPages.h"
#include "app/settings/ThemeBuilderView.h"
#include "app/window/Machine.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;

constexpr QSize windowSize(480, 500);
constexpr QSize minWindowSize(380, 240);
// Reserved for the desktop's window frame.
constexpr QSize frameRoom(16, 48);
// From this ratio to the usual size on, fonts make the window larger.
constexpr double largeFont = 1.2;

// By tab.
const std::array<QString, 4>& tabSymbols() {
  static const std::array<QString, 4> symbols = {u"gearshape"_s, u"paintbrush"_s, u"hand.tap"_s, u"sparkles"_s};
  return symbols;
}

}  // namespace

PreferencesView::PreferencesView(Machine& machine, QWidget* mainWindow)
    : Ground(machine.look, &Tokens::panel, {}, mainWindow),
      m_machine(machine),
      m_tabs(new QTabBar(this)),
      m_pages(new QStackedWidget(this)) {
  setWindowFlags(Qt::Dialog);
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(tr("Settings"));
  setAccessibleName(tr("Settings"));
  setMinimumSize(minWindowSize);
  m_tabs->setAccessibleName(tr("Settings"));
  m_tabs->setDrawBase(false);
  m_tabs->setExpanding(false);
  m_tabs->setUsesScrollButtons(false);
  m_tabs->setElideMode(Qt::ElideRight);
  m_tabs->setFocusPolicy(Qt::TabFocus);
  m_tabs->addTab(tr("General"));
  m_tabs->addTab(tr("Appearance"));
  m_tabs->addTab(tr("Interaction"));
  m_tabs->addTab(tr("AI"));
  for (int tab = 0; tab < m_tabs->count(); ++tab)
    m_tabs->setTabIcon(tab, machine.look.icon(tabSymbols()[static_cast<std::size_t>(tab)]));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_tabs);
  column->addWidget(m_pages, 1);
  connect(m_tabs, &QTabBar::currentChanged, this, &PreferencesView::showTab);
  connect(new QShortcut(Qt::CTRL | Qt::Key_Tab, this), &QShortcut::activated, this, [this] { stepTab(1); });
  connect(new QShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, this), &QShortcut::activated, this,
          [this] { stepTab(-1); });
  connect(&machine.settings.changes(), &SettingsChanges::changed, this, [this](const QString& key) {
    if (key == settings::appearance) m_machine.look.refresh();
  });
  showTab(0);
}

void PreferencesView::openFor(Machine& machine, QWidget& mainWindow) {
  for (PreferencesView* window : mainWindow.findChildren<PreferencesView*>(Qt::FindDirectChildrenOnly))
    if (window->isVisible()) return window->open();
  (new PreferencesView(machine, &mainWindow))->open();
}

QSize PreferencesView::sizeHint() const {
  const double unit = QFontInfo(m_machine.look.font()).pixelSize() / static_cast<double>(metrics::baseText);
  const QSize wanted = unit >= largeFont ? windowSize * unit : windowSize;
  return wanted.boundedTo(screen()->availableSize() - frameRoom);
}

void PreferencesView::open() {
  if (!isVisible()) {
    resize(sizeHint());
    m_tabs->setFocus(Qt::ShortcutFocusReason);
  }
  show();
  raise();
  activateWindow();
}

PreferencesView::Tab PreferencesView::tab() const {
  return static_cast<Tab>(m_tabs->currentIndex());
}

void PreferencesView::setTab(Tab tab) {
  m_tabs->setCurrentIndex(static_cast<int>(tab));
}

void PreferencesView::stepTab(int step) {
  m_tabs->setCurrentIndex((m_tabs->currentIndex() + step + m_tabs->count()) % m_tabs->count());
}

void PreferencesView::showTab(int index) {
  QWidget*& page = m_made[static_cast<std::size_t>(index)];
  if (page == nullptr) {
    page = makePage(static_cast<Tab>(index));
    m_pages->addWidget(page);
  }
  const bool hadKeyboard = m_pages->isAncestorOf(focusWidget());
  m_pages->setCurrentWidget(page);
  if (hadKeyboard) m_tabs->setFocus(Qt::ShortcutFocusReason);
}

QWidget* PreferencesView::makePage(Tab tab) {
  const Look& look = m_machine.look;
  switch (tab) {
    case Tab::general:
      return makeGeneralPage(look, m_machine.settings, m_pages);
    case Tab::appearance:
      return makeAppearancePage(
          look, m_machine.settings, [this] { openThemeBuilder(); }, m_pages);
    case Tab::interaction:
      return makeInteractionPage(look, m_machine.settings, m_pages);
    case Tab::ai:
      return makeAIPage(m_machine, m_pages);
  }
  Q_UNREACHABLE();
}

ThemeBuilderView* PreferencesView::themeBuilder() const {
  for (ThemeBuilderView* sheet : findChildren<ThemeBuilderView*>(Qt::FindDirectChildrenOnly))
    if (sheet->isOpen()) return sheet;
  return nullptr;
}

void PreferencesView::openThemeBuilder() {
  const auto keep = [this](const CustomTheme& theme) {
    std::vector<CustomTheme> themes = loadCustomThemes(m_machine.settings);
    themes.push_back(theme);
    saveCustomThemes(m_machine.settings, themes);
  };
  (new ThemeBuilderView(m_machine.look, keep, this))->open();
}

void PreferencesView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    close();
  else
    Ground::keyPressEvent(event);
}

void PreferencesView::closeEvent(QCloseEvent* event) {
  event->accept();
  parentWidget()->activateWindow();
}

}  // namespace quilmora
