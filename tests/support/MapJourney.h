#pragma once

#include <chrono>

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include "canvas/painting/MapPainter.h"
#include "exchange/ImageExport.h"
#include "exchange/PictureScene.h"
#include "exchange/TextExports.h"
#include "platform/FileWriter.h"
#include "support/EditorRig.h"

namespace quilmora::test {

// What a session does with a map, without a window: everything that draws, measures, arranges or writes it. No finite
// number and no text may make any of it unbounded. Calls `tell(name)` after each step.
template <class Tell>
class MapJourney {
 public:
  MapJourney(const MindMap& map, Tell tell) : m_rig(map), m_tell(std::move(tell)) {}

  void run() {
    paintViews();
    search();
    present();
    exportTexts();
    exportPicture();
    arrange();
  }

 private:
  static constexpr QSize viewSize{320, 240};

  MindMapViewModel& editor() { return m_rig.editor; }

  void paint(const char* name, PaintOptions options = {}) {
    MapScene scene;
    scene.map = editor().mindMap();
    scene.index = editor().mapIndex();
    scene.tree = editor().treeInfo();
    scene.selectedNodeIDs = editor().selectedNodeIDs();
    scene.selectedEdgeIDs = editor().selectedEdgeIDs();
    scene.collapsedNodeIDs = editor().collapsedNodeIDs();
    scene.view = {editor().canvasOffset(), editor().canvasZoom()};
    scene.exposed = QRectF(QPointF(0, 0), viewSize);
    QImage image(viewSize, QImage::Format_RGB32);
    QPainter onImage(&image);
    m_painter.paint(onImage, scene, options);
    for (const QPointF& point : {QPointF(160, 120), QPointF(20, 20), QPointF(300, 10)}) {
      const QPointF onCanvas = scene.view.toCanvas(point);
      m_painter.nodeAt(scene, onCanvas, options);
      m_painter.edgeAt(scene, onCanvas, options);
      m_painter.relationshipAt(scene, onCanvas);
    }
    m_tell(name);
  }

  void look(QPointF at, double zoom) {
    editor().setCanvasZoom(zoom);
    editor().setCanvasOffset(QPointF(viewSize.width() / 2.0, viewSize.height() / 2.0) - at * zoom);
  }

  void paintViews() {
    paint("first view");
    editor().fitToContent(viewSize.width(), viewSize.height(), MindMapViewModel::fitPadding);
    paint("fit");
    editor().selectAll();
    paint("fit with everything selected");
    const auto& nodes = editor().mindMap().nodes;
    for (const double zoom : {0.2, 1.0, 5.0}) {
      for (std::size_t index = 0; index < nodes.size() && index < 3; ++index) {
        look(QPointF(nodes[index].position), zoom);
        paint("a topic");
      }
    }
    if (nodes.size() > 1) {
      look((QPointF(nodes[0].position) + QPointF(nodes[1].position)) / 2.0, 0.7);
      paint("between two topics");
    }
    editor().clearSelection();
  }

  void search() {
    editor().toggleSearch();
    for (const char* query : {"x", "o", "\xE7\xA0\x94", "nowhere"}) {
      editor().setSearchQuery(QString::fromUtf8(query));
      editor().runSearch();
      editor().nextSearchResult();
    }
    paint("search");
    editor().toggleSearch();
  }

  void present() {
    editor().togglePresentation();
    for (int step = 0; step < 5; ++step) editor().nextPresentationStep();
    paint("presentation");
    editor().setIsPresentationMode(false);
  }

  void exportTexts() {
    const MindMap& map = editor().mindMap();
    exportJSON(map);
    exportOPML(map);
    exportSVG(map);
    try {
      exportMarkdown(map);
    } catch (const ExportError&) {
      // Too deep to be indented, so it is refused.
    }
    m_tell("texts");
  }

  void exportPicture() {
    const auto size = pictureSize(pictureBounds(editor().mindMap(), 80.0));
    if (!size || size->width * size->height > 2'000'000) return;
    quilmora::exportPicture(editor().mindMap(), ExportFormat::png, m_folder.filePath(QStringLiteral("out.png")),
                            m_writer);
    m_tell("picture");
  }

  void arrange() {
    using enum MindMap::Layout;
    for (const auto layout : {tree, radial, verticalTree, leftRightTree, orgChart}) {
      editor().applyLayout(layout, QSizeF(1200, 800));
      editor().fitToContent(viewSize.width(), viewSize.height(), MindMapViewModel::fitPadding);
      paint("layout");
    }
  }

  EditorRig m_rig;
  MapPainter m_painter;
  Tell m_tell;
  QTemporaryDir m_folder;
  DiskFileWriter m_writer;
};

}  // namespace quilmora::test
