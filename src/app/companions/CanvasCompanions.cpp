#include "app/companions/CanvasCompanions.h"

#include <array>

#include <QEvent>
#include <QVariantAnimation>
#include <QWidget>

#include "app/companions/BranchModeBanner.h"
#include "app/companions/BreadcrumbBar.h"
#include "app/companions/MiniMapView.h"
#include "app/companions/NodeQuickLook.h"
#include "app/companions/ProgressOverlay.h"
#include "app/companions/SearchBar.h"
#include "app/look/Look.h"
#include "editor/EditorNavigation.h"

namespace quilmora {

namespace {

constexpr int settleMilliseconds = 200;
// Longer than the pauses between two steps of a moving view.
constexpr int restMilliseconds = 200;
// Most topics are within this box around their position at zoom 1.
constexpr QSizeF usualTopic(220, 60);
// Below this the path takes the whole width and other cards move away.
constexpr int minPathWidth = 120;

}  // namespace

CanvasCompanions::CanvasCompanions(const Look& look, EditorNavigation& editor, Scheduler& scheduler, QWidget* canvas)
    : QObject(canvas),
      m_look(look),
      m_editor(editor),
      m_scheduler(scheduler),
      m_canvas(canvas),
      m_searchBar(new SearchBar(look, editor, canvas)),
      m_miniMap(new MiniMapView(look, editor, scheduler, canvas)),
      m_breadcrumbs(new BreadcrumbBar(look, editor, canvas)),
      m_quickLook(new NodeQuickLook(look, editor, canvas)),
      m_banner(new BranchModeBanner(look, editor, canvas)),
      m_progressOverlay(new ProgressOverlay(look, canvas)),
      m_animation(new QVariantAnimation(this)) {
  for (Card* card :
       std::initializer_list<Card*>{m_searchBar, m_miniMap, m_breadcrumbs, m_quickLook, m_banner, m_progressOverlay})
    observe(*card);
  m_animation->setDuration(settleMilliseconds);
  m_animation->setEasingCurve(QEasingCurve::InOutQuad);
  connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& position) {
    if (m_settling != nullptr) m_settling->move(position.toPoint());
  });
  connect(m_animation, &QVariantAnimation::finished, this, [this] {
    m_settling = nullptr;
    place();
  });
  connect(m_breadcrumbs, &Card::placementWanted, this, &CanvasCompanions::choosePathCorner);
  // The card itself was notified first and has its new content.
  connect(&editor, &EditorNavigation::quickLookNodeIDChanged, this, &CanvasCompanions::chooseQuickLookCorner);
  for (const auto signal : {&EditorNavigation::selectedNodeIDsChanged, &EditorNavigation::canvasOffsetChanged,
                            &EditorNavigation::canvasZoomChanged})
    connect(&editor, signal, this, &CanvasCompanions::chooseMiniMapCornerSoon);
  connect(&editor, &EditorNavigation::isPresentationModeChanged, this, &CanvasCompanions::followPresentation);
  canvas->installEventFilter(this);
  m_miniMap->installEventFilter(this);
  m_miniMap->setShown(true);
  place();
}

CanvasCompanions::~CanvasCompanions() {
  m_scheduler.cancel(m_miniMapTask);
}

void CanvasCompanions::addCard(Card& card) {
  m_furtherCards.push_back(&card);
  observe(card);
  place();
}

void CanvasCompanions::observe(Card& card) {
  connect(&card, &Card::placementWanted, this, &CanvasCompanions::place);
  connect(&card, &Card::dropped, this, [this, &card] { settle(card); });
}

bool CanvasCompanions::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_canvas && event->type() == QEvent::Resize) place();
  if (watched == m_miniMap && event->type() == QEvent::Leave) chooseMiniMapCornerSoon();
  return QObject::eventFilter(watched, event);
}

std::vector<CanvasCompanions::Place> CanvasCompanions::places() const {
  const QSize canvas = m_canvas->size();
  const QSize room = canvas - 2 * QSize(cardMargin, cardMargin);
  const bool isMiniMapLow = m_miniMapCorner == CardAnchor::bottomLeft || m_miniMapCorner == CardAnchor::bottomRight;
  const int beside = room.width() - m_miniMap->wantedSize(room).width() - cardGap;
  const QSize pathRoom(isMiniMapLow && beside >= minPathWidth ? beside : room.width(), room.height());

  std::vector<Place> places;
  std::vector<CardRequest> requests;
  const auto add = [&](Card* card, CardAnchor anchor, QSize cardRoom) {
    if (!card->isShown()) return;
    requests.push_back({anchor, card->wantedSize(cardRoom)});
    places.push_back({card, QRect()});
  };
  add(m_searchBar, m_searchCorner, room);
  add(m_miniMap, m_miniMapCorner, room);
  add(m_breadcrumbs, m_pathCorner, pathRoom);
  add(m_quickLook, m_quickLookCorner, room);
  add(m_banner, CardAnchor::top, room);
  add(m_progressOverlay, CardAnchor::top, room);
  for (Card* card : m_furtherCards) add(card, CardAnchor::top, room);
  const std::vector<QRect> rects = placeCards(canvas, requests);
  for (std::size_t i = 0; i < places.size(); ++i) places[i].rect = rects[i];
  return places;
}

void CanvasCompanions::place() {
  m_miniMap->setCanvasSize(m_canvas->size());
  for (const Place& entry : places()) {
    const bool isElsewhere = entry.card->isDragged() || entry.card == m_settling;
    entry.card->setGeometry(isElsewhere ? QRect(entry.card->pos(), entry.rect.size()) : entry.rect);
  }
}

void CanvasCompanions::followPresentation() {
  const bool isOver = !m_editor.isPresentationMode();
  m_miniMap->setShown(isOver);
  m_searchBar->setShown(isOver && m_editor.isSearching());
  m_quickLook->setShown(isOver && m_editor.quickLookNodeID().has_value());
}

void CanvasCompanions::settle(Card& card) {
  const CardAnchor corner = nearestCorner(m_canvas->size(), card.geometry().center());
  if (&card == m_miniMap) m_miniMapHome = m_miniMapCorner = corner;
  if (&card == m_quickLook) m_quickLookHome = m_quickLookCorner = corner;
  if (&card == m_searchBar) m_searchCorner = corner;
  if (&card == m_breadcrumbs) m_pathHome = corner;
  m_pathCorner = pathHome();
  glide(card);
}

// To the card's current place.
void CanvasCompanions::glide(Card& card) {
  m_animation->stop();
  m_settling = nullptr;
  if (m_look.isStill()) return place();
  m_settling = &card;
  for (const Place& entry : places()) {
    if (entry.card != &card) continue;
    m_animation->setStartValue(card.pos());
    m_animation->setEndValue(entry.rect.topLeft());
  }
  m_animation->start();
  place();
}

std::vector<QRect> CanvasCompanions::coveredAreas() const {
  std::vector<QRect> areas;
  for (const Place& entry : places()) areas.push_back(entry.card->isDragged() ? entry.card->geometry() : entry.rect);
  return areas;
}

QRectF CanvasCompanions::shownArea(const std::optional<QUuid>& id) const {
  const auto node = id ? m_editor.nodeByID(*id) : std::nullopt;
  if (!node) return {};
  QRectF topic(QPointF(), usualTopic * m_editor.canvasZoom());
  topic.moveCenter(node->position * m_editor.canvasZoom() + m_editor.canvasOffset());
  return topic;
}

CardAnchor CanvasCompanions::cornerBeside(const QRectF& topic, const Card* card, CardAnchor& corner,
                                          std::initializer_list<CardAnchor> corners) const {
  for (const CardAnchor candidate : corners) {
    corner = candidate;
    for (const Place& entry : places())
      if (entry.card == card && !topic.intersects(entry.rect)) return candidate;
  }
  return *corners.begin();
}

// The corner that the user chose, unless the card would cover the topic it describes.
void CanvasCompanions::chooseQuickLookCorner() {
  m_quickLookCorner = m_quickLookHome;
  if (!m_quickLook->isShown()) return;
  m_quickLookCorner = cornerBeside(
      shownArea(m_editor.quickLookNodeID()), m_quickLook, m_quickLookCorner,
      {m_quickLookHome, CardAnchor::topLeft, CardAnchor::topRight, CardAnchor::bottomLeft, CardAnchor::bottomRight});
  place();
}

// Away from the mini-map, so that neither jumps when the other appears or disappears.
CardAnchor CanvasCompanions::pathHome() const {
  if (m_pathHome) return *m_pathHome;
  return m_miniMapCorner == CardAnchor::bottomLeft ? CardAnchor::bottomRight : CardAnchor::bottomLeft;
}

// The path appears when a topic is selected, and must not cover that topic.
void CanvasCompanions::choosePathCorner() {
  m_pathCorner = pathHome();
  if (!m_breadcrumbs->isShown()) return;
  m_pathCorner = cornerBeside(
      shownArea(m_editor.firstSelectedNode()), m_breadcrumbs, m_pathCorner,
      {pathHome(), CardAnchor::bottomLeft, CardAnchor::bottomRight, CardAnchor::topLeft, CardAnchor::topRight});
  place();
}

// The view may first move to show the topic.
void CanvasCompanions::chooseMiniMapCornerSoon() {
  m_scheduler.cancel(std::exchange(m_miniMapTask, 0));
  if (m_editor.selectedNodeIDs().empty() && m_miniMapCorner == m_miniMapHome) return;
  m_miniMapTask = m_scheduler.after(std::chrono::milliseconds(restMilliseconds), [this] {
    m_miniMapTask = 0;
    chooseMiniMapCorner();
  });
}

// Stays where it is if it covers nothing there, but returns home when nothing is selected. Never moves away from under
// the pointer.
void CanvasCompanions::chooseMiniMapCorner() {
  if (!m_miniMap->isShown() || m_miniMap->isDragged() || m_miniMap->underMouse() || m_settling == m_miniMap) return;
  const CardAnchor before = m_miniMapCorner;
  const bool isOne = m_editor.selectedNodeIDs().size() == 1;
  const QRectF topic = isOne ? shownArea(m_editor.firstSelectedNode()) : QRectF();
  const CardAnchor first = topic.isEmpty() ? m_miniMapHome : before;
  m_miniMapCorner = cornerBeside(topic, m_miniMap, m_miniMapCorner,
                                 {first, m_miniMapHome, CardAnchor::bottomRight, CardAnchor::bottomLeft,
                                  CardAnchor::topRight, CardAnchor::topLeft});
  if (m_miniMapCorner == before) return;
  m_pathCorner = pathHome();
  glide(*m_miniMap);
}

}  // namespace quilmora
