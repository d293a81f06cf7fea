#include "app/settings/CustomThemeList.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionToolButton>
#include <QVBoxLayout>

#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "app/look/Widgets.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr int dotSize = 14;
constexpr int trashSize = 11;
constexpr int themeRowHeight = 36;
// The number of rows created at once; a button adds more of a longer list.
constexpr std::size_t rowsAtOnce = 100;

class Dot final : public QWidget {
 public:
  Dot(const Look& look, const QColor& color, QWidget* parent) : QWidget(parent), m_look(look), m_color(color) {
    setFixedSize(dotSize, dotSize);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paint::fillBordered(painter, rect(), dotSize / 2.0, m_color, m_look.tokens().hairline);
  }

 private:
  const Look& m_look;
  QColor m_color;
};

// A small red symbol in a button of the usual size.
class TrashButton final : public IconButton {
 public:
  TrashButton(const Look& look, const QString& name, QWidget* parent)
      : IconButton(look, QStringLiteral("trash"), name, parent), m_look(look) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter, this);
    QRectF place(0, 0, trashSize, trashSize);
    place.moveCenter(QRectF(rect()).center());
    paintSymbol(painter, QStringLiteral("trash"), place, m_look.tokens().danger);
  }

 private:
  const Look& m_look;
};

}  // namespace

CustomThemeList::CustomThemeList(const Look& look, SettingsStore& settings, QWidget* parent)
    : QWidget(parent),
      m_look(look),
      m_settings(settings),
      m_count(new TextLabel(look, {}, &Tokens::secondary, look.font(), TextLabel::Overflow::elides, this)),
      m_newTheme(nullptr),
      m_column(new QVBoxLayout(this)),
      m_shownCount(rowsAtOnce) {
  setAccessibleName(tr("Custom themes"));
  auto* button = new QPushButton(tr("&New Custom Theme"), this);
  m_newTheme = button;
  connect(button, &QPushButton::clicked, this, &CustomThemeList::newThemeWanted);
  auto* head = new QHBoxLayout;
  head->addWidget(m_count, 1);
  head->addWidget(button);
  m_column->setContentsMargins(metrics::gapMedium, metrics::labelGap, metrics::gapMedium, metrics::labelGap);
  m_column->setSpacing(0);
  m_column->addLayout(head);
  connect(&settings.changes(), &SettingsChanges::changed, this, [this](const QString& key) {
    if (key == settings::customThemes) refresh();
  });
  refresh();
}

void CustomThemeList::refresh() {
  m_themes = loadCustomThemes(m_settings);
  m_count->setPlainText(tr("%1 custom").arg(m_themes.size()));
  for (QWidget* row : std::exchange(m_rows, {})) {
    row->hide();
    row->deleteLater();
  }
  for (std::size_t index = 0; index < std::min(m_shownCount, m_themes.size()); ++index) addRow(m_themes[index]);
  if (m_themes.size() <= m_shownCount) return;
  auto* more = new QPushButton(tr("Show &More"), this);
  connect(more, &QPushButton::clicked, this, [this] {
    m_shownCount += rowsAtOnce;
    refresh();
  });
  m_column->addWidget(more);
  more->show();
  m_rows.push_back(more);
}

void CustomThemeList::addRow(const CustomTheme& theme) {
  const QString name = plain::line(theme.name);
  auto* row = new QWidget(this);
  row->setMinimumHeight(themeRowHeight);
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(metrics::gap);
  line->addWidget(new Dot(m_look, colorFromHex(toTheme(theme).nodeColors.front().fill), row));
  line->addWidget(new TextLabel(m_look, name, &Tokens::text, m_look.font(), TextLabel::Overflow::elides, row), 1);
  auto* trash = new TrashButton(m_look, tr("Delete %1").arg(name), row);
  connect(
      trash, &TrashButton::clicked, this, [this, id = theme.id] { remove(id); }, Qt::QueuedConnection);
  line->addWidget(trash);
  m_column->addWidget(row);
  row->show();
  m_rows.push_back(row);
}

void CustomThemeList::remove(const QString& id) {
  std::vector<CustomTheme> left = loadCustomThemes(m_settings);
  const auto first = std::ranges::find(left, id, &CustomTheme::id);
  const auto at = static_cast<std::size_t>(first - left.begin());
  std::erase_if(left, [&](const CustomTheme& theme) { return theme.id == id; });
  saveCustomThemes(m_settings, left);
  focusAfterRemoval(static_cast<int>(at));
}

// Moves the keyboard to the theme that took the removed row's place.
void CustomThemeList::focusAfterRemoval(int row) {
  QWidget* next = m_newTheme;
  if (!m_themes.empty()) {
    const auto at = std::min<std::size_t>(static_cast<std::size_t>(row), m_themes.size() - 1);
    if (at < m_rows.size())
      if (auto* trash = m_rows[at]->findChild<QToolButton*>()) next = trash;
  }
  next->setFocus(Qt::OtherFocusReason);
}

void CustomThemeList::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  for (const QWidget* row : m_rows)
    paint::drawHairline(painter, QRectF(metrics::gapMedium, row->y(), width() - metrics::gapMedium, 1), Qt::TopEdge,
                        m_look.tokens().hairline);
}

}  // namespace quilmora
