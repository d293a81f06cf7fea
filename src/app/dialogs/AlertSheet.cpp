#include "app/dialogs/AlertSheet.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/look/AccessibleRole.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int messageWidth = 360;
constexpr int headSymbolSize = 28;
constexpr qsizetype maxMessageLength = 600;
constexpr qsizetype messagesInWords = 3;

struct KindLook {
  QString symbol;
  TokenColor color;
};

KindLook lookOf(AlertSheet::Kind kind) {
  switch (kind) {
    case AlertSheet::Kind::error:
      return {QStringLiteral("exclamationmark.triangle.fill"), &Tokens::danger};
    case AlertSheet::Kind::warning:
      return {QStringLiteral("exclamationmark.triangle.fill"), &Tokens::warning};
    case AlertSheet::Kind::information:
      return {QStringLiteral("info.circle"), &Tokens::accent};
  }
  Q_UNREACHABLE();
}

QLabel* newLabel(QWidget* parent) {
  QLabel* label = plain::newLabel({}, parent);
  label->setWordWrap(true);
  label->setFixedWidth(messageWidth);
  return label;
}

}  // namespace

AlertSheet::AlertSheet(const Look& look, Kind kind, const QString& title, const QString& message, QWidget* window)
    : Sheet(look, window),
      m_kind(kind),
      m_title(newLabel(&panel())),
      m_text(newLabel(&panel())),
      m_buttons(new QHBoxLayout),
      m_close(new QPushButton(tr("&OK"), &panel())),
      m_first(m_close) {
  setAccessibleRole(*this, QAccessible::AlertMessage);
  setAccessibleName(title);
  m_title->setFont(look.font(Look::TextStyle::panelTitle));
  plain::setText(*m_title, title);
  m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  addMessage(message);
  m_close->setProperty("primary", true);
  m_close->setAutoDefault(false);
  connect(m_close, &QPushButton::clicked, this, [this] { settle({}); });
  connect(this, &Sheet::cancelled, this, [this] { settle({}); });

  auto* words = new QVBoxLayout;
  words->setSpacing(metrics::gap);
  words->addWidget(m_title);
  words->addWidget(m_text);
  auto* head = new QHBoxLayout;
  head->setSpacing(metrics::gapLarge);
  const KindLook shown = lookOf(kind);
  head->addWidget(new SymbolLabel(look, shown.symbol, headSymbolSize, shown.color, &panel()), 0, Qt::AlignTop);
  head->addLayout(words, 1);
  m_buttons->setSpacing(metrics::gap);
  m_buttons->addStretch();
  m_buttons->addWidget(m_close);
  content().addLayout(head);
  content().addLayout(m_buttons);
}

QString AlertSheet::title() const {
  return plain::shownText(*m_title);
}

QString AlertSheet::message() const {
  return plain::shownText(*m_text);
}

void AlertSheet::addMessage(const QString& message) {
  if (m_heard.contains(message)) return;
  m_heard.insert(message);
  m_messages.append(message.size() > maxMessageLength ? message.left(maxMessageLength) + QChar(0x2026) : message);
  if (m_messages.size() > messagesInWords) m_messages.removeFirst();
  QStringList shown = m_messages;
  const qsizetype hidden = m_heard.size() - shown.size();
  if (hidden > 0) shown.prepend(tr("%1 more, and last:").arg(hidden));
  plain::setText(*m_text, shown.join(QStringLiteral("\n\n")));
  setAccessibleDescription(this->message());
}

void AlertSheet::addAnswer(const Question::Answer& answer) {
  using Weight = Question::Answer::Weight;
  auto* button = new QPushButton(&panel());
  plain::setOwnText(*button, answer.text);
  button->setAutoDefault(false);
  button->setProperty("destructive", answer.weight == Weight::destructive);
  button->setProperty("primary", answer.weight == Weight::primary);
  if (answer.weight == Weight::primary) {
    m_close->setProperty("primary", false);
    m_first = button;
  }
  connect(button, &QPushButton::clicked, this, [this, chosen = answer.chosen] { settle(chosen); });
  m_buttons->insertWidget(m_buttons->count() - 1, button);
  // Tab follows the order of creation.
  m_close->raise();
  m_close->setText(tr("&Cancel"));
}

void AlertSheet::open() {
  Sheet::open();
  m_first->setFocus(Qt::ShortcutFocusReason);
}

// The answer runs last: it may ask the next question, or quit the program.
void AlertSheet::settle(const std::function<void()>& chosen) {
  const std::function<void()> answer = chosen;
  finish();
  Q_EMIT closed();
  if (answer) answer();
}

AlertSheet* makeAboutSheet(const Look& look, QWidget* window) {
  const QString message =
      QCoreApplication::translate("About", "Version %1\n\nMind maps on a free canvas, kept in plain files.")
          .arg(QStringLiteral(QUILMORA_VERSION));
  return new AlertSheet(look, AlertSheet::Kind::information, QStringLiteral("Quilmora"), message, window);
}

}  // namespace quilmora
