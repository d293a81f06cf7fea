#include "canvas/painting/Symbols.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <mutex>
#include <unordered_map>

#include <QCache>
#include <QFile>
#include <QHash>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QSvgRenderer>

// The resources are in a static library, whose initialiser the linker would otherwise leave out. The macro must be
// outside any namespace.
static void initSymbolResources() {
  Q_INIT_RESOURCE(symbols);
}

namespace quilmora {

namespace {

constexpr double symbolSide = 16.0;
constexpr int keptPixmapCount = 400;

// Collects the outlines of everything that is painted, so that an icon's file becomes a path that can be filled in any
// colour and at any scale.
class OutlineEngine final : public QPaintEngine {
 public:
  OutlineEngine() : QPaintEngine(AllFeatures) {}

  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  Type type() const override { return User; }
  void updateState(const QPaintEngineState&) override {}
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
    if (mode != PolylineMode) path.closeSubpath();
    drawPath(path);
  }
  void drawPath(const QPainterPath& path) override {
    if (painter()->brush().style() != Qt::NoBrush) add(path);
    const QPen pen = painter()->pen();
    if (pen.style() != Qt::NoPen) add(QPainterPathStroker(pen).createStroke(path));
  }

  const QPainterPath& outline() const { return m_outline; }

 private:
  void add(const QPainterPath& path) {
    if (m_outline.isEmpty()) m_outline.setFillRule(path.fillRule());
    m_outline.addPath(painter()->combinedTransform().map(path));
  }

  QPainterPath m_outline;
};

class OutlineDevice final : public QPaintDevice {
 public:
  QPaintEngine* paintEngine() const override { return &m_engine; }
  const QPainterPath& outline() const { return m_engine.outline(); }

 protected:
  int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmWidth:
      case PdmHeight:
        return static_cast<int>(symbolSide);
      case PdmDepth:
        return 32;
      case PdmNumColors:
        return 0;
      case PdmDevicePixelRatio:
        return 1;
      case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
      default:
        return 72;
    }
  }

 private:
  mutable OutlineEngine m_engine;
};

QPainterPath placeholderPath() {
  QPainterPath outer;
  outer.addRoundedRect(QRectF(2, 2, 12, 12), 3, 3);
  QPainterPath inner;
  inner.addRoundedRect(QRectF(3.2, 3.2, 9.6, 9.6), 2, 2);
  return outer.subtracted(inner);
}

QPainterPath readOutline(const QString& file) {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  QSvgRenderer renderer(file);
  if (!renderer.isValid()) return placeholderPath();
  OutlineDevice device;
  QPainter painter(&device);
  renderer.render(&painter, QRectF(0, 0, symbolSide, symbolSide));
  painter.end();
  return device.outline();
}

class SymbolTable {
 public:
  SymbolTable() : m_placeholder(placeholderPath()) {
    initSymbolResources();
    QFile file(QStringLiteral(":/symbols/symbols.txt"));
    if (!file.open(QIODevice::ReadOnly)) return;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
      if (line.startsWith(QLatin1Char('#'))) continue;
      const QString text = line.simplified();
      const auto gap = text.indexOf(QLatin1Char(' '));
      if (gap > 0) m_icons.insert(text.left(gap), text.mid(gap + 1));
    }
  }

  bool contains(const QString& name) const { return m_icons.contains(name); }

  const QPainterPath& path(const QString& name) {
    const auto icon = m_icons.constFind(name);
    if (icon == m_icons.constEnd()) return m_placeholder;
    std::unique_ptr<QPainterPath>& path = m_paths[name];
    if (!path) path = std::make_unique<QPainterPath>(readOutline(QStringLiteral(":/symbols/%1.svg").arg(*icon)));
    return *path;
  }

 private:
  QPainterPath m_placeholder;
  QHash<QString, QString> m_icons;
  std::unordered_map<QString, std::unique_ptr<QPainterPath>> m_paths;
};

// A path caches data when it is painted, without locking even if it is constant: no two threads may share one.
SymbolTable& symbolTable() {
  thread_local SymbolTable table;
  return table;
}

}  // namespace

bool hasSymbol(const QString& name) {
  return symbolTable().contains(name);
}

const QPainterPath& symbolPath(const QString& name) {
  return symbolTable().path(name);
}

void paintSymbol(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color, double boldness) {
  const double side = std::min(rect.width(), rect.height());
  if (!(side > 0.0) || !std::isfinite(side)) return;
  const QPainterPath& path = symbolPath(name);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(rect.center() - QPointF(side / 2, side / 2));
  painter.scale(side / symbolSide, side / symbolSide);
  if (boldness > 0.0)
    painter.setPen(QPen(color, boldness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  else
    painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawPath(path);
  painter.restore();
}

QPixmap symbolPixmap(const QString& name, QSizeF size, const QColor& color, qreal devicePixelRatio) {
  // Never destroyed, because pictures must not be destroyed after the application object.
  static auto& cache = *new QCache<QString, QPixmap>(keptPixmapCount);
  constexpr double maxSide = 4096.0;
  const double ratio = devicePixelRatio > 0.0 && std::isfinite(devicePixelRatio) ? devicePixelRatio : 1.0;
  const int width = static_cast<int>(std::clamp(std::ceil(size.width() * ratio), 1.0, maxSide));
  const int height = static_cast<int>(std::clamp(std::ceil(size.height() * ratio), 1.0, maxSide));
  const QString key = QStringLiteral("%1/%2x%3@%4/%5")
                          .arg(hasSymbol(name) ? name : QString())
                          .arg(width)
                          .arg(height)
                          .arg(ratio)
                          .arg(color.rgba(), 8, 16, QLatin1Char('0'));
  if (const QPixmap* kept = cache.object(key)) return *kept;
  QPixmap pixmap(width, height);
  pixmap.fill(Qt::transparent);
  pixmap.setDevicePixelRatio(ratio);
  QPainter painter(&pixmap);
  paintSymbol(painter, name, QRectF(QPointF(0, 0), size), color);
  painter.end();
  cache.insert(key, new QPixmap(pixmap));
  return pixmap;
}

}  // namespace quilmora
