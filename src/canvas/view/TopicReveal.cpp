#include "canvas/view/TopicReveal.h"

#include <algorithm>
#include <utility>

#include "canvas/geometry/Reveal.h"
#include "canvas/geometry/ViewTransform.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

namespace {

using namespace std::chrono_literals;

// The number of topics measured; more rarely fit on a screen.
constexpr std::size_t maxRevealed = 200;

}  // namespace

TopicReveal::TopicReveal(MindMapViewModel& editor, Scheduler& scheduler, ViewAnimation& animation, View view)
    : m_editor(editor), m_scheduler(scheduler), m_animation(animation), m_view(std::move(view)) {
  QObject::connect(&m_editor, &MindMapViewModel::mindMapChanged, &m_connections, [this] { mapChanged(); });
  m_nodeCount = m_editor.mindMap().nodes.size();
  m_ids = m_editor.mapIndex().ids();
  m_knownCount = m_editor.mapIndex().numberCount();
}

TopicReveal::~TopicReveal() {
  m_scheduler.cancel(m_task);
}

// The command has yet to select what it made, and the cards have yet to move.
void TopicReveal::mapChanged() {
  const std::size_t before = std::exchange(m_nodeCount, m_editor.mindMap().nodes.size());
  if (m_task || m_nodeCount <= before) return;
  m_task = m_scheduler.after(0ms, [this] {
    m_task = 0;
    revealNewTopics();
  });
}

// Ids are numbered as they appear, so new topics have the highest numbers.
void TopicReveal::revealNewTopics() {
  const MapIndex& index = m_editor.mapIndex();
  const auto ids = std::exchange(m_ids, index.ids());
  const std::uint32_t known = std::exchange(m_knownCount, index.numberCount());
  if (ids != m_ids || known == m_knownCount || m_editor.isPresentationMode()) return;
  std::vector<std::uint32_t> found;
  for (const QUuid& id : m_editor.selectedNodeIDs()) {
    const std::uint32_t ordinal = index.find(id);
    if (ordinal != MapIndex::npos && index.numberOfNode()[ordinal] >= known) found.push_back(ordinal);
  }
  std::ranges::sort(found);
  found.resize(std::min(found.size(), maxRevealed));
  std::vector<QUuid> topics;
  topics.reserve(found.size());
  for (const std::uint32_t ordinal : found) topics.push_back(m_editor.mindMap().nodes[ordinal].id);
  reveal(topics);
}

void TopicReveal::reveal(const std::vector<QUuid>& ids) {
  QRectF all;
  QRectF first;
  for (const QUuid& id : ids) {
    if (!m_editor.hasNode(id) || m_editor.isHidden(id)) continue;
    const QRectF bounds = m_view.topicBounds(id);
    if (first.isNull()) first = bounds;
    all |= bounds;
  }
  if (first.isNull()) return;
  const double zoom = m_animation.target().zoom;
  const QSizeF room = (m_view.size() - QSizeF(2 * edgeMargin, 2 * edgeMargin)) / zoom;
  moveTo(all.width() <= room.width() && all.height() <= room.height() ? all : first);
}

void TopicReveal::moveTo(const QRectF& bounds) {
  // Where a glide in progress will end.
  ViewAnimation::View view = m_animation.target();
  const QRectF target = ViewTransform{view.offset, view.zoom}.toView(bounds);
  const QRectF room = QRectF(QPointF(), m_view.size()).adjusted(edgeMargin, edgeMargin, -edgeMargin, -edgeMargin);
  std::vector<QRectF> covers;
  for (const QRect& cover : m_view.covers())
    covers.push_back(QRectF(cover).adjusted(-cardMargin, -cardMargin, cardMargin, cardMargin));
  const QPointF way = shortestReveal(target, room, covers);
  if (way.isNull()) return;
  view.offset += way;
  if (m_view.glides())
    m_animation.redirect(view);
  else
    m_animation.jump(view);
}

}  // namespace quilmora
