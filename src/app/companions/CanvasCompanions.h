#pragma once

#include <map>
#include <optional>
#include <vector>

#include <QObject>
#include <QUuid>

#include "app/companions/CardPlacement.h"
#include "platform/Scheduler.h"

class QVariantAnimation;
class QWidget;

namespace quilmora {

class BranchModeBanner;
class BreadcrumbBar;
class Card;
class ProgressOverlay;
class Look;
class MiniMapView;
class EditorNavigation;
class NodeQuickLook;
class SearchBar;

// The cards above a canvas: creates them and keeps each in its place when the canvas is resized. Mini-map, quick look,
// path and search bar stay in the corner to which the user drags them. Path and quick look also move away from the
// topic they describe, and the mini-map from the selected topic, once the view rests.
class CanvasCompanions : public QObject {
  Q_OBJECT

 public:
  // The cards become children of the canvas. Everything must outlive this object except the canvas, which owns it.
  CanvasCompanions(const Look& look, EditorNavigation& editor, Scheduler& scheduler, QWidget* canvas);
  ~CanvasCompanions() override;

  MiniMapView& miniMap() const { return *m_miniMap; }
  BreadcrumbBar& breadcrumbs() const { return *m_breadcrumbs; }
  NodeQuickLook& quickLook() const { return *m_quickLook; }
  SearchBar& searchBar() const { return *m_searchBar; }
  BranchModeBanner& branchModeBanner() const { return *m_banner; }
  ProgressOverlay& progressOverlay() const { return *m_progressOverlay; }

  // Keeps another card, a child of the canvas, in its place at the top.
  void addCard(Card& card);
  // Where cards are on the canvas, or will be once they have settled.
  std::vector<QRect> coveredAreas() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Place {
    Card* card;
    QRect rect;
  };

  void observe(Card& card);
  std::vector<Place> places() const;
  void place();
  void settle(Card& card);
  // A presentation starts with no cards but the path, which shows its steps; afterwards the others return.
  void followPresentation();
  // The area that a topic takes on the canvas, roughly; empty without one.
  QRectF shownArea(const std::optional<QUuid>& id) const;
  void chooseQuickLookCorner();
  void choosePathCorner();
  void chooseMiniMapCornerSoon();
  void chooseMiniMapCorner();
  void glide(Card& card);
  // The first of the corners where the card does not cover the topic, or the first of all if it always would.
  CardAnchor cornerBeside(const QRectF& topic, const Card* card, CardAnchor& corner,
                          std::initializer_list<CardAnchor> corners) const;
  CardAnchor pathHome() const;

  const Look& m_look;
  EditorNavigation& m_editor;
  Scheduler& m_scheduler;
  QWidget* m_canvas;
  SearchBar* m_searchBar;
  MiniMapView* m_miniMap;
  BreadcrumbBar* m_breadcrumbs;
  NodeQuickLook* m_quickLook;
  BranchModeBanner* m_banner;
  ProgressOverlay* m_progressOverlay;
  std::vector<Card*> m_furtherCards;
  CardAnchor m_miniMapHome = CardAnchor::bottomRight;    // where the user wants it
  CardAnchor m_miniMapCorner = CardAnchor::bottomRight;  // where it does not cover the selected topic
  CardAnchor m_searchCorner = CardAnchor::topRight;
  std::optional<CardAnchor> m_pathHome;  // where the user wants it, if anywhere in particular
  CardAnchor m_pathCorner = CardAnchor::bottomLeft;
  CardAnchor m_quickLookHome = CardAnchor::topLeft;    // where the user wants it
  CardAnchor m_quickLookCorner = CardAnchor::topLeft;  // where it does not cover its topic
  Card* m_settling = nullptr;
  QVariantAnimation* m_animation;
  Scheduler::Task m_miniMapTask = 0;
};

}  // namespace quilmora
