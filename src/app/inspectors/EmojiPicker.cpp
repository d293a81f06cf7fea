#include "app/inspectors/EmojiPicker.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QStyleOption>
#include <QTextBoundaryFinder>

#include "app/inspectors/ChoiceGrid.h"
#include "app/inspectors/Inspector.h"
#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "app/look/Widgets.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int columns = 8;
constexpr int cellSize = 32;
constexpr int emojiSize = 18;
constexpr int fieldWidth = 44;
constexpr int fieldMargins = 14;
constexpr int maxPasteLength = 200;

// A text below this consists of letters, digits and marks, which are typed one by one.
constexpr char32_t firstPicture = 0x2100;

bool isPicture(const QString& character) {
  for (const char32_t point : character.toUcs4())
    if (point >= firstPicture) return true;
  return false;
}

class EmojiButton final : public QAbstractButton {
 public:
  EmojiButton(const Look& look, const QString& emoji, QWidget* parent) : QAbstractButton(parent), m_look(look) {
    plain::setText(*this, emoji);
    setAccessibleName(emoji);
    setFont(emojiFont(look));
    setCheckable(true);
    setAttribute(Qt::WA_Hover);
    setFixedSize(cellSize, cellSize);
  }
  QSize sizeHint() const override { return {cellSize, cellSize}; }

 protected:
  void nextCheckState() override {}
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const Tokens& tokens = m_look.tokens();
    if (isDown() || isChecked())
      paint::fillRounded(painter, rect(), metrics::controlRadius, isDown() ? tokens.pressed : tokens.tint);
    else if (underMouse())
      paint::fillRounded(painter, rect(), metrics::controlRadius, tokens.hover);
    QStyleOption option;
    option.initFrom(this);
    if (showsKeyboardFocus(option))
      paint::drawBorder(painter, rect(), metrics::controlRadius, tokens.accent, metrics::focusRingWidth);
    painter.setPen(tokens.text);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, accessibleName());
  }

 private:
  const Look& m_look;
};

}  // namespace

QFont emojiFont(const Look& look) {
  QFont font = look.font();
  font.setFamilies(QStringList{QStringLiteral("Noto Color Emoji")} + font.families());
  font.setPixelSize(emojiSize);
  return font;
}

QString firstCharacter(const QString& text) {
  const QString trimmed = text.left(maxPasteLength).trimmed();
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, trimmed);
  const qsizetype end = finder.toNextBoundary();
  return end > 0 ? trimmed.left(end) : QString();
}

const QStringList& EmojiPicker::emojis() {
  using namespace Qt::StringLiterals;
  static const QStringList emojis = {
      u"🎯"_s, u"💡"_s,    u"⚡"_s,       u"🔥"_s, u"✅"_s, u"⭐"_s,      u"📌"_s, u"🚀"_s,      u"💰"_s, u"🎨"_s,    u"📊"_s,
      u"🔑"_s, u"💎"_s,    u"🏆"_s,       u"📝"_s, u"🔔"_s, u"❤️"_s, u"👍"_s, u"⚠️"_s, u"❌"_s, u"🔄"_s,    u"📁"_s,
      u"🌍"_s, u"🧩"_s, u"🛠️"_s, u"📱"_s, u"💻"_s, u"🎓"_s,      u"🏠"_s, u"🔒"_s,      u"📈"_s, u"🤖"_s,
  };
  return emojis;
}

EmojiPicker::EmojiPicker(const Look& look, const QString& emoji, QWidget* parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_look(look),
      m_grid(new ChoiceGrid(ChoiceGrid::Cells::natural, columns, this)),
      m_field(new QLineEdit(this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setAccessibleName(tr("Pick an emoji"));
  const QString prompt = QStringLiteral("paste");
  m_field->setFont(smallFont(look));
  m_field->setPlaceholderText(prompt);
  m_field->setFixedWidth(std::max(fieldWidth, QFontMetrics(m_field->font()).horizontalAdvance(prompt) + fieldMargins));
  m_field->setAccessibleName(tr("Another emoji"));
  m_field->setMaxLength(maxPasteLength);
  connect(m_field, &QLineEdit::textEdited, this, &EmojiPicker::textWasTyped);
  connect(m_field, &QLineEdit::returnPressed, this, [this] {
    if (const QString character = firstCharacter(m_field->text()); !character.isEmpty()) choose(character);
  });

  for (const QString& each : emojis()) {
    auto* button = new EmojiButton(look, each, m_grid);
    button->setChecked(each == emoji);
    connect(button, &QAbstractButton::clicked, this, [this, each] { choose(each); });
    m_grid->add(button);
    if (each == emoji) m_grid->setEntry(button);
  }

  auto* head = new QHBoxLayout;
  head->setSpacing(metrics::gap);
  head->addWidget(new TextLabel(look, QStringLiteral("Pick an emoji"), &Tokens::secondary,
                                look.font(Look::TextStyle::sectionHeader), TextLabel::Overflow::elides, this),
                  1);
  if (!emoji.isEmpty()) {
    auto* none = new IconButton(look, QStringLiteral("trash"), tr("No Emoji"), this);
    none->setFixedSize(metrics::controlHeight, metrics::controlHeight);
    none->setIconSize({metrics::rowIcon, metrics::rowIcon});
    connect(none, &QToolButton::clicked, this, [this] { choose({}); });
    head->addWidget(none);
  }
  head->addWidget(m_field);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(metrics::gapMedium, metrics::gapMedium, metrics::gapMedium, metrics::gapMedium);
  column->setSpacing(metrics::gap);
  column->addLayout(head);
  column->addWidget(m_grid);
  m_grid->setFixedWidth(columns * cellSize + (columns - 1) * metrics::gapSmall);
}

void EmojiPicker::openAt(const QWidget& widget) {
  adjustSize();
  resize(width(), layout()->totalHeightForWidth(width()));
  const QRect screen = widget.screen()->availableGeometry();
  QPoint corner = widget.mapToGlobal(QPoint(widget.width() - width(), widget.height() + metrics::gapSmall));
  if (corner.y() + height() > screen.bottom())
    corner.setY(widget.mapToGlobal(QPoint(0, 0)).y() - metrics::gapSmall - height());
  corner.setX(std::clamp(corner.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
  corner.setY(std::max(corner.y(), screen.top()));
  move(corner);
  show();
  for (QAbstractButton* button : m_grid->buttons())
    if (button->focusPolicy() != Qt::NoFocus) button->setFocus(Qt::PopupFocusReason);
}

void EmojiPicker::choose(const QString& emoji) {
  Q_EMIT selected(emoji);
  close();
}

// A text that is pasted, or comes complete from an input method, is used as it is; letters may be only the beginning.
void EmojiPicker::textWasTyped(const QString& text) {
  if (const QString character = firstCharacter(text); isPicture(character)) choose(character);
}

void EmojiPicker::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  painter.fillRect(rect(), tokens.raised);
  paint::drawBorder(painter, rect(), metrics::cardRadius, tokens.hairline);
}

void EmojiPicker::resizeEvent(QResizeEvent*) {
  // Less round than the border, whose soft edge it would clip.
  constexpr int radius = metrics::cardRadius - 2;
  QPainterPath path;
  path.addRoundedRect(QRectF(rect()), radius, radius);
  setMask(QRegion(path.toFillPolygon().toPolygon()));
}

void EmojiPicker::keyPressEvent(QKeyEvent* event) {
  event->accept();
  if (event->key() == Qt::Key_Escape) close();
}

}  // namespace quilmora
