#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QObject>
#include <QRectF>
#include <QUuid>

#include "canvas/view/ViewAnimation.h"

namespace quilmora {

class IdTable;
class MindMapViewModel;
class Scheduler;

// Scrolls topics into view that a command has just created and selected: moves the view by as little as necessary for
// them to be on the canvas and below no card.
class TopicReveal {
 public:
  // Distances of a revealed topic from the edge of the view and from cards, in view pixels.
  static constexpr double edgeMargin = 24.0;
  static constexpr double cardMargin = 8.0;

  struct View {
    std::function<QSizeF()> size;
    // Of an existing topic, in canvas units.
    std::function<QRectF(const QUuid&)> topicBounds;
    // What is above the canvas, in view coordinates.
    std::function<std::vector<QRect>()> covers;
    // Whether the move may be animated.
    std::function<bool()> glides;
  };

  TopicReveal(MindMapViewModel& editor, Scheduler& scheduler, ViewAnimation& animation, View view);
  ~TopicReveal();

  // All of the topics if they fit, else the first.
  void reveal(const std::vector<QUuid>& ids);

 private:
  void mapChanged();
  void revealNewTopics();
  void moveTo(const QRectF& bounds);

  MindMapViewModel& m_editor;
  Scheduler& m_scheduler;
  ViewAnimation& m_animation;
  View m_view;
  Scheduler::Task m_task = 0;
  std::shared_ptr<IdTable> m_ids;
  std::uint32_t m_knownCount = 0;
  std::size_t m_nodeCount = 0;
  QObject m_connections;
};

}  // namespace quilmora
