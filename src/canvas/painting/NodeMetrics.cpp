#include "canvas/painting/NodeMetrics.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include <QGuiApplication>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include "canvas/geometry/Handles.h"

namespace quilmora {

namespace {

constexpr double stackSpacing = 4.0;
constexpr double rowSpacing = 6.0;
constexpr double imageMaxWidth = 200.0;
constexpr double imageMaxHeight = 400.0;
constexpr double editorMinWidth = 80.0;
constexpr double editorMinHeight = 20.0;
constexpr double aiMarkerSize = 8.0;
constexpr double badgeDiameter = 16.0;
constexpr double badgeOffset = 6.0;
constexpr double toggleDiameter = 16.0;
constexpr double cornerMarkerSize = 8.0;
constexpr double cornerMarkerGap = 3.0;
constexpr QPointF cornerMarkerInset(5.0, 3.0);
constexpr QPointF aiMarkerOffset(4.0, -4.0);

constexpr int keptTextCost = 12000;
// A grapheme may consist of any number of combining marks.
constexpr qsizetype maxTitleUnits = 8000;

double within(double value, double low, double high, double fallback) {
  return std::isfinite(value) ? std::clamp(value, low, high) : fallback;
}

int shapedPixelSize(double fontSize) {
  constexpr int smallest = 8;
  return std::max(smallest, static_cast<int>(std::lround(fontSize)));
}

QString shortened(const QString& title) {
  if (title.size() <= NodeMeasurer::maxTitleLength) return title;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, title.constData(), std::min(title.size(), maxTitleUnits));
  qsizetype end = 0;
  for (int count = 0; count < NodeMeasurer::maxTitleLength; ++count) {
    const qsizetype next = finder.toNextBoundary();
    if (next < 0) break;
    end = next;
  }
  return end < title.size() ? title.left(end) + QChar(0x2026) : title;
}

// The text between line breaks of any kind.
QStringList paragraphsOf(QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  for (QChar& character : text)
    if (character == QLatin1Char('\r') || character == QChar::ParagraphSeparator || character == QChar::LineSeparator)
      character = QLatin1Char('\n');
  return text.split(QLatin1Char('\n'));
}

// Breaks the text into lines of at most `width`, the first of them at `top`, and returns the size of the result.
QSizeF breakLines(QTextLayout& layout, double width, double top) {
  double height = 0.0;
  double widest = 0.0;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    line.setPosition(QPointF(0, top + height));
    height += line.height();
    widest = std::max(widest, line.naturalTextWidth());
  }
  layout.endLayout();
  return QSizeF(std::min(std::ceil(widest), width), height);
}

}  // namespace

QFont interfaceFont() {
  const QString family = QGuiApplication::font().family();
  // Qt's fallback if no desktop sets a font.
  const bool isUnset = family.isEmpty() || family.compare(QLatin1String("Sans Serif"), Qt::CaseInsensitive) == 0 ||
                       family.compare(QLatin1String("Sans"), Qt::CaseInsensitive) == 0;
  QFont font;
  font.setFamilies({isUnset ? QStringLiteral("Inter") : family, QStringLiteral("Noto Color Emoji"),
                    QStringLiteral("Noto Sans CJK SC")});
  // Unhinted glyphs keep their widths at every zoom.
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

NodeSizing::NodeSizing(const NodeStyle& style, std::optional<double> depthFraction, const HierarchicalConfig* config) {
  italic = style.italic;
  if (depthFraction && config && config->nodeSizing) {
    const double f = *depthFraction;
    const auto between = [f](double root, double leaf) { return root + (leaf - root) * f; };
    fontSize = within(between(config->rootFontSize, config->leafFontSize), 1.0, 512.0, fontSize);
    emojiSize = within(fontSize + 2.0, 1.0, 512.0, emojiSize);
    horizontalPadding = within(between(config->rootPadding, config->leafPadding), 0.0, 1000.0, horizontalPadding);
    verticalPadding =
        within(between(config->rootPadding * 0.6, config->leafPadding * 0.6), 0.0, 1000.0, verticalPadding);
    weight = f < 0.25 ? QFont::Bold : f < 0.5 ? QFont::DemiBold : QFont::Medium;
  }
  if (style.bold) weight = QFont::Bold;
}

QFont NodeSizing::titleFont() const {
  QFont font = interfaceFont();
  font.setPixelSize(shapedPixelSize(fontSize));
  font.setWeight(weight);
  font.setItalic(italic);
  return font;
}

double NodeMetrics::titleWidthLimit(double fontSize) {
  return titleMaxWidth * std::clamp(fontSize / NodeSizing().fontSize, 1.0, 20.0);
}

QRectF NodeMetrics::bounds() const {
  return box.united(aiMarker).united(badge).united(collapseToggle).united(connectionHandle);
}

void ShapedText::draw(QPainter& painter, QPointF position) const {
  if (scale == 1.0) {
    for (const QGlyphRun& run : runs) painter.drawGlyphRun(position, run);
    return;
  }
  painter.save();
  painter.translate(position);
  painter.scale(scale, scale);
  for (const QGlyphRun& run : runs) painter.drawGlyphRun(QPointF(0, 0), run);
  painter.restore();
}

NodeMeasurer::NodeMeasurer() : m_texts(keptTextCost) {}

template <class MakeFont>
const ShapedText& NodeMeasurer::shaped(const QString& text, double fontSize, double widthLimit, int style,
                                       MakeFont&& makeFont) {
  const TextKey key{text, fontSize, style};
  if (const ShapedText* kept = m_texts.object(key)) return *kept;
  const QFont font = makeFont();
  auto made = std::make_unique<ShapedText>();
  made->scale = fontSize / font.pixelSize();
  const double maxWidth = widthLimit / made->scale;
  struct Paragraph {
    std::unique_ptr<QTextLayout> layout;
    double top;
  };
  std::vector<Paragraph> paragraphs;
  QSizeF size(0.0, 0.0);
  for (const QString& paragraph : paragraphsOf(shortened(text))) {
    auto layout = std::make_unique<QTextLayout>(paragraph, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    // The layout does not align right-to-left text by itself.
    if (paragraph.isRightToLeft()) option.setAlignment(Qt::AlignRight);
    layout->setTextOption(option);
    const QSizeF taken = breakLines(*layout, maxWidth, size.height());
    paragraphs.push_back({std::move(layout), size.height()});
    size = QSizeF(std::max(size.width(), taken.width()), size.height() + taken.height());
  }
  for (const auto& [layout, top] : paragraphs) {
    // Right-to-left lines are aligned to the right end of the available width.
    if (layout->text().isRightToLeft() && size.width() < maxWidth) {
      layout->clearLayout();
      breakLines(*layout, size.width(), top);
    }
    made->runs += layout->glyphRuns();
  }
  made->size = size * made->scale;
  ShapedText* result = made.release();
  m_texts.insert(key, result, static_cast<int>(std::min<qsizetype>(1 + text.size() / 64, 100)));
  return *result;
}

const ShapedText& NodeMeasurer::shapedTitle(const QString& title, const NodeSizing& sizing) {
  const int style = static_cast<int>(sizing.weight) * 2 + (sizing.italic ? 1 : 0);
  return shaped(title, sizing.fontSize, NodeMetrics::titleWidthLimit(sizing.fontSize), style,
                [&] { return sizing.titleFont(); });
}

const ShapedText& NodeMeasurer::shapedEmoji(const QString& emoji, const NodeSizing& sizing) {
  return shaped(emoji, sizing.emojiSize, NodeMetrics::titleWidthLimit(sizing.fontSize), -1, [&] {
    QFont font = interfaceFont();
    font.setFamilies(QStringList{QStringLiteral("Noto Color Emoji")} + font.families());
    font.setPixelSize(shapedPixelSize(sizing.emojiSize));
    return font;
  });
}

QSizeF NodeMeasurer::shownImageSize(QSize pixels) {
  const QSizeF size(pixels);
  const double scale = std::min({1.0, imageMaxWidth / size.width(), imageMaxHeight / size.height()});
  return size * scale;
}

namespace {

// Places the parts of the title row, which is as high as the highest of them, at `top`.
void placeRow(NodeMetrics& metrics, QSizeF emoji, QSizeF icon, QSizeF title, double left, double top, double height) {
  double x = left;
  const auto place = [&](QSizeF size) {
    const QRectF rect(QPointF(x, top + (height - size.height()) / 2), size);
    x += size.width() + rowSpacing;
    return rect;
  };
  if (!emoji.isEmpty()) metrics.emoji = place(emoji);
  if (!icon.isEmpty()) metrics.icon = place(icon);
  metrics.title = place(title);
}

}  // namespace

void NodeMetrics::placeMarkers(const Node& node) {
  NodeMetrics& metrics = *this;
  if (node.aiGenerated.value_or(false))
    metrics.aiMarker =
        QRectF(box.right() - aiMarkerSize, box.top(), aiMarkerSize, aiMarkerSize).translated(aiMarkerOffset);
  if (node.badge)
    metrics.badge = QRectF(box.left() - badgeOffset, box.top() - badgeOffset, badgeDiameter, badgeDiameter);
  metrics.collapseToggle = QRectF(box.left() - toggleDiameter / 2, -toggleDiameter / 2, toggleDiameter, toggleDiameter);
  double right = box.right() - cornerMarkerInset.x();
  const auto placeMarker = [&]() {
    const QRectF rect(right - cornerMarkerSize, box.bottom() - cornerMarkerInset.y() - cornerMarkerSize,
                      cornerMarkerSize, cornerMarkerSize);
    right -= cornerMarkerSize + cornerMarkerGap;
    return rect;
  };
  // Placed from the right end, so the last one comes first.
  if (!node.notes.isEmpty()) metrics.noteMarker = placeMarker();
  if (node.url && !node.url->isEmpty()) metrics.linkMarker = placeMarker();
  const double handle = HandleMetrics::connectionHandleDiameter;
  metrics.connectionHandle =
      QRectF(box.right() + HandleMetrics::connectionHandleGap - handle / 2, -handle / 2, handle, handle);
}

NodeMetrics NodeMeasurer::measure(const Node& node, std::optional<double> depthFraction,
                                  const HierarchicalConfig* config, const std::optional<QString>& editedTitle) {
  NodeMetrics metrics;
  metrics.sizing = NodeSizing(node.style, depthFraction, config);

  QSizeF title = shapedTitle(editedTitle ? *editedTitle : node.title, metrics.sizing).size;
  if (editedTitle)
    title = QSizeF(std::clamp(title.width(), editorMinWidth, NodeMetrics::titleWidthLimit(metrics.sizing.fontSize)),
                   std::max(title.height(), editorMinHeight));
  const QSizeF emoji =
      node.emoji && !node.emoji->isEmpty() ? shapedEmoji(*node.emoji, metrics.sizing).size : QSizeF(0, 0);
  const QSizeF icon = node.icon ? QSizeF(metrics.sizing.fontSize, metrics.sizing.fontSize) : QSizeF(0, 0);
  const ShownImage* picture = node.imageData ? m_pictures.image(*node.imageData, 0.0) : nullptr;
  const QSizeF shown = picture ? shownImageSize(picture->size) : QSizeF(0, 0);

  double rowWidth = title.width();
  if (!emoji.isEmpty()) rowWidth += emoji.width() + rowSpacing;
  if (!icon.isEmpty()) rowWidth += icon.width() + rowSpacing;
  const double rowHeight = std::max({title.height(), emoji.height(), icon.height()});
  const QSizeF content(std::max(rowWidth, shown.width()), rowHeight + (picture ? shown.height() + stackSpacing : 0.0));
  // In steps that single precision can represent, because sizes are stored in it.
  const auto stepped = [](double side) { return std::ceil(side * 32.0) / 32.0; };
  const QSizeF size(stepped(content.width() + 2 * metrics.sizing.horizontalPadding),
                    stepped(content.height() + 2 * metrics.sizing.verticalPadding));
  metrics.box = QRectF(QPointF(-size.width() / 2, -size.height() / 2), size);

  double top = metrics.box.top() + metrics.sizing.verticalPadding;
  if (picture) {
    metrics.image = QRectF(QPointF(-shown.width() / 2, top), shown);
    top += shown.height() + stackSpacing;
  }
  placeRow(metrics, emoji, icon, title, -rowWidth / 2, top, rowHeight);
  metrics.placeMarkers(node);
  return metrics;
}

}  // namespace quilmora
