#include "app/companions/NodeQuickLook.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QWheelEvent>

#include "app/companions/TopicText.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "canvas/painting/BadgeLook.h"
#include "editor/EditorNavigation.h"

namespace quilmora {

namespace {

constexpr int maxWidth = 350;
constexpr int minWidth = 220;
constexpr int padding = 12;
constexpr int spacing = 8;
constexpr double shadowOpacity = 0.1;
constexpr int badgeSymbol = 10;
constexpr int badgePadding = 3;
constexpr int metricSymbol = 12;
constexpr int notesMaxHeight = 220;
// Longer texts fill the space for notes however they wrap.
constexpr int measuredNotes = 4'000;
// More than a quick look can show; a paragraph of a million letters would take minutes to lay out.
constexpr int maxNotesLength = 10'000;
// Words beyond this may be broken.
constexpr int maxWordLength = 24;

QString shownNotes(const Node& node) {
  if (node.notes.size() <= maxNotesLength) return node.notes;
  return node.notes.left(maxNotesLength) + QChar(0x2026);
}

QString withBreaks(const QString& text) {
  QString broken;
  int wordLength = 0;
  for (const QChar letter : text) {
    wordLength = letter.isSpace() ? 0 : wordLength + 1;
    broken.append(letter);
    if (wordLength % maxWordLength == maxWordLength - 1 && !letter.isSurrogate()) broken.append(QChar(0x200B));
  }
  return broken;
}

QFont smallFont(const Look& look) {
  QFont font = look.font(Look::TextStyle::sectionHeader);
  font.setWeight(QFont::Normal);
  return font;
}

}  // namespace

// A white symbol on a disc.
class NodeQuickLook::BadgeMark final : public QWidget {
 public:
  explicit BadgeMark(QWidget* parent) : QWidget(parent) {
    const int side = badgeSymbol + 2 * badgePadding;
    setFixedSize(side, side);
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }
  void setBadge(std::optional<Badge> badge) {
    m_badge = badge;
    setVisible(badge.has_value());
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    if (!m_badge) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBadge(painter, *m_badge, rect());
  }

 private:
  std::optional<Badge> m_badge;
};

NodeQuickLook::NodeQuickLook(const Look& look, EditorNavigation& editor, QWidget* canvas)
    : Card(look, canvas),
      m_editor(editor),
      m_badge(new BadgeMark(this)),
      m_title(new TextLabel(look, QString(), &Tokens::text, look.font(Look::TextStyle::panelTitle),
                            TextLabel::Overflow::wraps, this)),
      m_notes(new QPlainTextEdit(this)),
      m_children(
          new TextLabel(look, QString(), &Tokens::secondary, smallFont(look), TextLabel::Overflow::elides, this)),
      m_depth(new TextLabel(look, QString(), &Tokens::secondary, smallFont(look), TextLabel::Overflow::elides, this)) {
  setAccessibleName(tr("Quick look"));
  setMovable();
  QColor shadow = Qt::black;
  shadow.setAlphaF(static_cast<float>(shadowOpacity));
  setShadowColor(shadow);

  m_notes->setReadOnly(true);
  m_notes->setFrameShape(QFrame::NoFrame);
  m_notes->setFocusPolicy(Qt::TabFocus);
  m_notes->setAccessibleName(tr("Notes"));
  m_notes->document()->setDocumentMargin(0);
  m_notes->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_notes->viewport()->setAutoFillBackground(false);

  auto* head = new QHBoxLayout;
  head->setSpacing(spacing);
  head->addWidget(m_title, 1);
  head->addWidget(m_badge, 0, Qt::AlignTop);
  auto* metricsRow = new QHBoxLayout;
  metricsRow->setSpacing(metrics::labelGap);
  const auto symbol = [&](const char* name) {
    return new SymbolLabel(look, QLatin1String(name), metricSymbol, &Tokens::secondary, this);
  };
  metricsRow->addWidget(symbol("arrow.triangle.branch"));
  metricsRow->addWidget(m_children);
  metricsRow->addSpacing(metrics::gapMedium);
  metricsRow->addWidget(symbol("chart.bar"));
  metricsRow->addWidget(m_depth);
  metricsRow->addStretch(1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(padding, padding, padding, padding);
  column->setSpacing(spacing);
  column->addLayout(head);
  column->addWidget(m_notes);
  column->addLayout(metricsRow);

  connect(&editor, &EditorNavigation::quickLookNodeIDChanged, this, &NodeQuickLook::refresh);
  connect(&editor, &EditorNavigation::mindMapChanged, this, &NodeQuickLook::refreshSoon);
  refresh();
}

void NodeQuickLook::refreshSoon() {
  if (!m_editor.quickLookNodeID()) return;
  runSoon(m_isRefreshPending, [this] { refresh(); });
}

void NodeQuickLook::refresh() {
  const auto id = m_editor.quickLookNodeID();
  m_node = id ? m_editor.nodeByID(*id) : std::nullopt;
  if (m_node) {
    m_title->setPlainText(withBreaks(shownTitle(*m_node)));
    m_badge->setBadge(m_node->badge);
    if (const QString notes = shownNotes(*m_node); m_notes->toPlainText() != notes) m_notes->setPlainText(notes);
    m_notes->setVisible(!m_node->notes.isEmpty());
    m_children->setPlainText(QStringLiteral("%1 children").arg(m_editor.treeInfo().childCount(*id)));
    m_depth->setPlainText(QStringLiteral("Depth %1").arg(m_editor.treeInfo().depth(*id).value_or(0)));
    layout()->invalidate();
    if (isShown()) Q_EMIT placementWanted();
  }
  // The keyboard may be in the notes.
  if (!m_node && isAncestorOf(window()->focusWidget())) parentWidget()->setFocus(Qt::OtherFocusReason);
  setShown(m_node.has_value());
}

QString NodeQuickLook::titleText() const {
  return m_title->text();
}

QString NodeQuickLook::notesText() const {
  return m_node ? m_notes->toPlainText() : QString();
}

QString NodeQuickLook::childrenText() const {
  return m_children->text();
}

QString NodeQuickLook::depthText() const {
  return m_depth->text();
}

int NodeQuickLook::notesHeight(int width, int maxHeight) const {
  if (m_node->notes.size() > measuredNotes) return maxHeight;
  const QFontMetrics metrics(m_notes->font());
  const QRect text =
      metrics.boundingRect(QRect(0, 0, width, 100'000), Qt::TextWordWrap | Qt::TextExpandTabs, m_node->notes);
  return std::min(maxHeight, text.height() + metrics.height() / 2);
}

QSize NodeQuickLook::wantedSize(QSize room) {
  if (!m_node) return {minWidth, 0};
  const int badge = m_node->badge ? m_badge->width() + spacing : 0;
  const int natural = m_node->notes.isEmpty() ? m_title->sizeHint().width() + badge + 2 * padding : maxWidth;
  const int width = std::min(std::clamp(natural, minWidth, maxWidth), room.width());
  m_notes->setFixedHeight(notesHeight(width - 2 * padding, std::min(notesMaxHeight, room.height() / 2)));
  return QSize(width, layout()->totalHeightForWidth(width)).boundedTo(room);
}

// Keys that the notes did not use. Some of them would change the map.
void NodeQuickLook::keyPressEvent(QKeyEvent* event) {
  event->accept();
  if (event->key() == Qt::Key_Escape) m_editor.escape();
}

// The canvas does not scroll when the notes reach their end.
void NodeQuickLook::wheelEvent(QWheelEvent* event) {
  event->accept();
}

}  // namespace quilmora
