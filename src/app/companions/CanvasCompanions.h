#pragma once

#include <map>
#include <vector>

#include <QObject>

#include "app/companions/CardPlacement.h"

class QVariantAnimation;
class QWidget;

namespace quilmora {

class BranchModeBanner;
class BreadcrumbBar;
class Card;
class ExportOverlay;
class Look;
class MiniMapView;
class MindMapViewModel;
class NodeQuickLook;
class Scheduler;
class SearchBar;

// The cards above a canvas: makes them and keeps each in its place, also as the canvas changes its size. Mini-map and
// quick look stay in the corner into which the user drags them.
class CanvasCompanions : public QObject {
  Q_OBJECT

 public:
  // The cards become children of the canvas. Everything outlives this object but the canvas, which owns it.
  CanvasCompanions(const Look& look, MindMapViewModel& editor, Scheduler& scheduler, QWidget* canvas);

  MiniMapView& miniMap() const { return *m_miniMap; }
  BreadcrumbBar& breadcrumbs() const { return *m_breadcrumbs; }
  NodeQuickLook& quickLook() const { return *m_quickLook; }
  SearchBar& searchBar() const { return *m_searchBar; }
  BranchModeBanner& branchModeBanner() const { return *m_banner; }
  ExportOverlay& exportOverlay() const { return *m_exportOverlay; }

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
  QRectF lookedAtTopic() const;
  void chooseQuickLookCorner();

  MindMapViewModel& m_editor;
  QWidget* m_canvas;
  SearchBar* m_searchBar;
  MiniMapView* m_miniMap;
  BreadcrumbBar* m_breadcrumbs;
  NodeQuickLook* m_quickLook;
  BranchModeBanner* m_banner;
  ExportOverlay* m_exportOverlay;
  CardAnchor m_miniMapCorner = CardAnchor::bottomRight;
  CardAnchor m_quickLookHome = CardAnchor::topLeft;    // where the user wants it
  CardAnchor m_quickLookCorner = CardAnchor::topLeft;  // where it does not cover its topic
  Card* m_settling = nullptr;
  QVariantAnimation* m_animation;
};

}  // namespace quilmora
