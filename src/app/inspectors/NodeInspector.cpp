#include "app/inspectors/NodeInspector.h"

#include <QDesktopServices>
#include <QPainter>
#include <QUrl>

#include "app/inspectors/CopyFields.h"
#include "app/inspectors/EmojiPicker.h"
#include "app/inspectors/ImageSection.h"
#include "app/inspectors/PanelControls.h"
#include "app/inspectors/StyleSamplerRow.h"
#include "app/look/ColorWell.h"
#include "app/look/Look.h"
#include "canvas/painting/BadgeLook.h"
#include "canvas/view/PlainText.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr int notesLines = 6;
constexpr int maxScale = 3;

// In the order of NodeStyle::Shape.
QStringList shapeNames() {
  return {QStringLiteral("Rounded Rectangle"), QStringLiteral("Circle"), QStringLiteral("Rectangle"),
          QStringLiteral("Ellipse")};
}

// After "No Badge", in the order of Badge.
QStringList badgeNames() {
  return {QStringLiteral("No Badge"),    QStringLiteral("P1 - Critical"), QStringLiteral("P2 - High"),
          QStringLiteral("P3 - Medium"), QStringLiteral("Done"),          QStringLiteral("In Progress"),
          QStringLiteral("Blocked")};
}

QIcon badgeIcon(Badge badge) {
  QPixmap picture(metrics::rowIcon * maxScale, metrics::rowIcon * maxScale);
  picture.setDevicePixelRatio(maxScale);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  paintBadge(painter, badge, QRectF(0, 0, metrics::rowIcon, metrics::rowIcon));
  painter.end();
  return QIcon(picture);
}

TopicColors colorsOf(const NodeStyle& style) {
  return {style.fill, style.stroke, style.textColor};
}

std::optional<QUrl> webAddress(const QString& text) {
  const QUrl url(text.trimmed());
  const bool isOfTheWeb = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
  if (!url.isValid() || !isOfTheWeb || url.host().isEmpty()) return std::nullopt;
  return url;
}

}  // namespace

NodeInspector::NodeInspector(const InspectorContext& context, QWidget* parent) : Inspector(context, parent) {
  addTitle();
  addStyle();
  addBadge();
  addQuickStyle();
  addLink();
  addImage();
  addNotes();
  addColors();
  addSection();
  auto* remove = new PanelButton(QStringLiteral("Delete Topic"), PanelButton::Kind::destructive, this);
  connect(remove, &QPushButton::clicked, this, [this] {
    commitTyping();
    if (const auto node = present()) editor().deleteNode(node->id);
  });
  addPart(remove);
}

void NodeInspector::addTitle() {
  addSection(QStringLiteral("Title"));
  m_title = new CopyField(tr("Title"), QStringLiteral("Node title"), this);
  connect(m_title, &CopyField::written, this, [this](const QString& text) {
    if (const auto node = present()) editor().setNodeTitle(node->id, text);
  });
  connect(m_title, &QLineEdit::textChanged, this, &NodeInspector::openTextChanged);
  addPart(m_title);
}

void NodeInspector::addStyle() {
  addSection(QStringLiteral("Style"));
  m_shape = new PanelPicker(tr("Shape"), shapeNames(), this);
  connect(m_shape, &PanelPicker::chosen, this, [this](int index) {
    changeStyle([index](NodeStyle& style) { style.shape = static_cast<NodeStyle::Shape>(index); });
  });
  addRow(tr("Shape"), m_shape, Place::overRest);
  m_emoji = new PanelButton(QString(), PanelButton::Kind::plain, this);
  m_emoji->setFont(emojiFont(look()));
  connect(m_emoji, &QPushButton::clicked, this, &NodeInspector::pickEmoji);
  addRow(tr("Emoji"), m_emoji, Place::atEdge);
}

void NodeInspector::addBadge() {
  addSection();
  m_badge = new PanelPicker(tr("Badge"), badgeNames(), this);
  for (int index = 1; index < m_badge->count(); ++index)
    m_badge->setItemIcon(index, badgeIcon(static_cast<Badge>(index - 1)));
  connect(m_badge, &PanelPicker::chosen, this, [this](int index) {
    const auto badge = index > 0 ? std::optional(static_cast<Badge>(index - 1)) : std::nullopt;
    if (const auto node = present()) editor().setNodeBadge(node->id, badge);
  });
  addRow(tr("Badge"), m_badge, Place::overRest);
}

void NodeInspector::addQuickStyle() {
  addSection(QStringLiteral("Quick Style"));
  m_samples = new StyleSamplerRow(look(), this);
  connect(m_samples, &StyleSamples::picked, this, [this](const TopicColors& colors) {
    changeStyle([&](NodeStyle& style) {
      style.fill = colors.fill;
      style.stroke = colors.stroke;
      style.textColor = colors.textColor;
    });
  });
  addPart(m_samples);
}

void NodeInspector::addLink() {
  addSection();
  m_url = new CopyField(tr("Link"), QStringLiteral("https://..."), this);
  connect(m_url, &QLineEdit::textChanged, this, &NodeInspector::followUrl);
  connect(m_url, &QLineEdit::textChanged, this, &NodeInspector::openTextChanged);
  connect(m_url, &CopyField::written, this, [this](const QString& text) {
    if (const auto node = present()) editor().setNodeUrl(node->id, text.isEmpty() ? std::nullopt : std::optional(text));
  });
  addRow(tr("Link"), m_url, Place::overRest);
  m_openUrl = new PanelButton(QStringLiteral("Open URL"), PanelButton::Kind::plain, this);
  connect(m_openUrl, &QPushButton::clicked, this, &NodeInspector::openUrl);
  addPart(m_openUrl);
}

void NodeInspector::addImage() {
  addSection(QStringLiteral("Image"));
  m_image = new ImageSection(look(), this);
  connect(m_image, &ImageSection::imageWanted, this, [this] {
    if (m_node) Q_EMIT imageWanted(m_node->id);
  });
  connect(m_image, &ImageSection::removalWanted, this, [this] {
    if (const auto node = present()) editor().clearNodeImage(node->id);
  });
  addPart(m_image);
  addHint(QStringLiteral("Or drag & drop an image onto the topic"));
}

void NodeInspector::addNotes() {
  addSection(QStringLiteral("Notes"));
  m_notes = new CopyNotes(tr("Notes"), context().scheduler, this);
  m_notes->setFixedHeight(notesLines * m_notes->fontMetrics().lineSpacing() + metrics::gapLarge);
  connect(m_notes, &CopyNotes::written, this, [this](const QString& text) {
    if (const auto node = present()) editor().setNodeNotes(node->id, text);
  });
  connect(m_notes, &CopyNotes::typed, this, &NodeInspector::openTextChanged);
  addPart(m_notes);
  addHint(QStringLiteral("Markdown supported"));
}

void NodeInspector::addColors() {
  addSection(QStringLiteral("Colors"));
  m_fill = colorWell(QStringLiteral("Fill"), &NodeStyle::fill);
  m_stroke = colorWell(QStringLiteral("Border"), &NodeStyle::stroke);
  m_text = colorWell(QStringLiteral("Text"), &NodeStyle::textColor);
  addWells({{QStringLiteral("Fill"), m_fill}, {QStringLiteral("Border"), m_stroke}, {QStringLiteral("Text"), m_text}});
}

ColorWell* NodeInspector::colorWell(const QString& name, QString NodeStyle::*color) {
  auto* well = new ColorWell(look(), name, this);
  connect(well, &ColorWell::colorChosen, this, [this, color](const QColor& chosen) {
    const auto node = present();
    // A text that is not a plain colour stays as it is until another colour is chosen.
    if (node && colorFromHex(node->style.*color) != chosen)
      changeStyle([&](NodeStyle& style) { style.*color = hexFromColor(chosen); });
  });
  return well;
}

std::optional<Node> NodeInspector::present() const {
  return m_node ? editor().nodeByID(m_node->id) : std::nullopt;
}

void NodeInspector::changeStyle(const std::function<void(NodeStyle&)>& change) {
  const auto node = present();
  if (!node) return;
  NodeStyle style = node->style;
  change(style);
  editor().setNodeStyle(node->id, style);
}

void NodeInspector::refresh(const InspectorSubject& subject) {
  const bool isOther = !m_node || m_node->id != subject.id;
  if (isOther) commitTyping();
  const std::optional<Node> node = editor().nodeByID(subject.id);
  if (!node) return;
  m_node = node;
  showNode(*node, isOther);
}

void NodeInspector::showNode(const Node& node, bool isOther) {
  if (isOther) {
    if (m_emojiPicker) m_emojiPicker->close();
    for (ColorWell* well : {m_fill, m_stroke, m_text}) well->cancelChoosing();
    m_title->load(node.title);
    m_url->load(node.url.value_or(QString()));
    m_notes->load(node.notes);
  } else {
    m_title->follow(node.title);
    m_url->follow(node.url.value_or(QString()));
    m_notes->follow(node.notes);
  }
  followUrl();
  m_shape->setChosen(static_cast<int>(node.style.shape));
  m_badge->setChosen(node.badge ? static_cast<int>(*node.badge) + 1 : 0);
  const QString emoji = firstCharacter(node.emoji.value_or(QString()));
  plain::setText(*m_emoji, emoji);
  if (emoji.isEmpty() == m_emoji->icon().isNull())
    m_emoji->setIcon(emoji.isEmpty() ? look().icon(QStringLiteral("face.smiling")) : QIcon());
  m_emoji->setAccessibleName(emoji.isEmpty() ? tr("Emoji: none") : tr("Emoji: %1").arg(emoji));
  m_samples->setMatching(colorsOf(node.style));
  m_image->setImageData(node.imageData);
  showColor(*m_fill, node.style.fill);
  showColor(*m_stroke, node.style.stroke);
  showColor(*m_text, node.style.textColor);
}

void NodeInspector::commitTyping() {
  m_title->commit();
  m_url->commit();
  m_notes->commit();
}

// Only one field has the keyboard at a time, and the others have passed on their text when they lost it.
std::optional<OpenText> NodeInspector::openText() const {
  const auto node = present();
  if (!node) return std::nullopt;
  using enum OpenText::Field;
  if (m_title->isWaiting()) return OpenText{topicTitle, node->id, m_title->text()};
  if (m_url->isWaiting()) return OpenText{topicUrl, node->id, m_url->text()};
  if (m_notes->isWaiting()) return OpenText{topicNotes, node->id, m_notes->text()};
  return std::nullopt;
}

EmojiPicker* NodeInspector::emojiPicker() const {
  return m_emojiPicker;
}

void NodeInspector::pickEmoji() {
  const auto node = present();
  if (!node || m_emojiPicker) return;
  m_emojiPicker = new EmojiPicker(look(), node->emoji.value_or(QString()), this);
  connect(m_emojiPicker, &EmojiPicker::selected, this, [this, id = node->id](const QString& emoji) {
    editor().setNodeEmoji(id, emoji.isEmpty() ? std::nullopt : std::optional(emoji));
  });
  m_emojiPicker->openAt(*m_emoji);
}

void NodeInspector::followUrl() {
  m_openUrl->setVisible(m_url->text().startsWith(QLatin1String("http")));
}

void NodeInspector::openUrl() {
  m_url->commit();
  if (const auto address = webAddress(m_url->text())) QDesktopServices::openUrl(*address);
}

}  // namespace quilmora
