#include "app/companions/BreadcrumbBar.h"

#include <algorithm>

#include <QPainter>

#include "app/companions/CrumbStrip.h"
#include "app/companions/TopicText.h"
#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "editor/EditorNavigation.h"

namespace quilmora {

namespace {

constexpr int horizontalPadding = 12;
constexpr int verticalPadding = 4;
constexpr QSize pillPadding(6, 2);
constexpr int pillText = 10;

QFont pillFont(const Look& look) {
  QFont font = look.font(Look::TextStyle::sectionHeader);
  font.setPixelSize(font.pixelSize() * pillText / metrics::sectionHeaderText);
  font.setWeight(QFont::Normal);
  return font;
}

}  // namespace

std::vector<QUuid> pathToTopic(EditorNavigation& editor, const QUuid& id) {
  const TreeInfo& tree = editor.treeInfo();
  const auto& nodeOfNumber = editor.mapIndex().nodeOfNumber();
  std::vector<QUuid> path;
  std::vector<char> visited(tree.numberCount(), 0);
  std::uint32_t number = tree.number(id);
  while (number < visited.size() && !std::exchange(visited[number], 1)) {
    if (nodeOfNumber[number] != MapIndex::npos) path.push_back(tree.idOf(number));
    number = tree.parentNumber(number);
  }
  std::ranges::reverse(path);
  return path;
}

BreadcrumbBar::BreadcrumbBar(const Look& look, EditorNavigation& editor, QWidget* canvas)
    : Card(look, canvas), m_editor(editor), m_strip(new CrumbStrip(look, this)) {
  setAccessibleName(tr("Path"));
  setMovable(Grip::none);
  connect(m_strip, &CrumbStrip::chosen, this, [this](std::size_t index) {
    if (index < m_path.size()) choose(m_path[index]);
  });
  connect(&editor, &EditorNavigation::selectedNodeIDsChanged, this, &BreadcrumbBar::refreshSoon);
  connect(&editor, &EditorNavigation::mindMapChanged, this, &BreadcrumbBar::refreshSoon);
  connect(&editor, &EditorNavigation::isPresentationModeChanged, this, &BreadcrumbBar::refreshSoon);
  connect(&editor, &EditorNavigation::presentationNodeIndexChanged, this, &BreadcrumbBar::refreshSoon);
  refreshSoon();
}

void BreadcrumbBar::refreshSoon() {
  runSoon(m_isRefreshPending, [this] { refresh(); });
}

void BreadcrumbBar::refresh() {
  const auto selected = m_editor.firstSelectedNode();
  m_path = selected ? pathToTopic(m_editor, *selected) : std::vector<QUuid>();
  m_stepText =
      m_editor.isPresentationMode()
          ? QStringLiteral("%1/%2").arg(m_editor.presentationNodeIndex() + 1).arg(m_editor.mindMap().nodes.size())
          : QString();
  m_strip->setPath(m_path.size(), [this](std::size_t index) {
    const auto node = m_editor.nodeByID(m_path[index]);
    return node ? shownTitle(*node) : QString();
  });
  const bool shown = !m_path.empty() || !m_stepText.isEmpty();
  if (shown && isShown()) Q_EMIT placementWanted();
  setShown(shown);
  update();
}

// The rest happens in refresh(), which follows every change of the selection.
void BreadcrumbBar::choose(const QUuid& id) {
  m_editor.selectNode(id, false);
  m_editor.centerOn(id, 0.0, 0.0, true);
}

QAbstractButton* BreadcrumbBar::button(std::size_t index) {
  return m_strip->button(index);
}

QSize BreadcrumbBar::pillSize() const {
  if (m_stepText.isEmpty()) return {0, 0};
  const QFontMetrics metrics(pillFont(look()));
  return QSize(metrics.horizontalAdvance(m_stepText), metrics.height()) + 2 * pillPadding;
}

int BreadcrumbBar::besidePath() const {
  if (m_stepText.isEmpty()) return 0;
  return pillSize().width() + (m_path.empty() ? 0 : metrics::gap);
}

QSize BreadcrumbBar::wantedSize(QSize room) {
  const int around = 2 * horizontalPadding + besidePath();
  const int height = std::max(m_strip->wantedHeight(), pillSize().height());
  return {m_strip->wantedWidth(std::max(0, room.width() - around)) + around, height + 2 * verticalPadding};
}

void BreadcrumbBar::resizeEvent(QResizeEvent* event) {
  m_strip->setGeometry(horizontalPadding, verticalPadding, std::max(0, width() - 2 * horizontalPadding - besidePath()),
                       height() - 2 * verticalPadding);
  Card::resizeEvent(event);
}

void BreadcrumbBar::paintEvent(QPaintEvent* event) {
  Card::paintEvent(event);
  if (m_stepText.isEmpty()) return;
  QPainter painter(this);
  const QSize size = pillSize();
  const QRect pill(QPoint(width() - horizontalPadding - size.width(), (height() - size.height()) / 2), size);
  QColor ground(0x8E, 0x8E, 0x93);
  ground.setAlphaF(0.15F);
  paint::fillRounded(painter, pill, size.height() / 2.0, ground);
  painter.setFont(pillFont(look()));
  painter.setPen(look().tokens().text);
  painter.drawText(pill, Qt::AlignCenter, m_stepText);
}

}  // namespace quilmora
