#include "app/versions/RecoveryCard.h"

#include <algorithm>

#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>

#include "app/look/Announcement.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

RecoveryCard::RecoveryCard(const Look& look, MindMapViewModel& editor, QWidget* canvas)
    : Card(look, canvas),
      m_editor(editor),
      m_text(new TextLabel(look, {}, &Tokens::text, look.font(), TextLabel::Overflow::elides, this)),
      m_undo(new QPushButton(tr("Undo"), this)),
      m_close(new IconButton(look, QStringLiteral("xmark"), tr("Close"), this)) {
  m_undo->setToolTip(tr("Goes back to the map as it was saved"));
  m_undo->setFocusPolicy(Qt::TabFocus);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(metrics::gapLarge, metrics::gap, metrics::gap, metrics::gap);
  row->setSpacing(metrics::gapMedium);
  row->addWidget(m_text, 1);
  row->addWidget(m_undo);
  row->addWidget(m_close);
  connect(m_undo, &QPushButton::clicked, &editor, [&editor] { editor.undo(); });
  connect(m_close, &QAbstractButton::clicked, this, [this] { setShown(false); });
  connect(&editor, &MindMapViewModel::historyChanged, this, [this] {
    if (isShown() && !m_undo->isHidden()) setShown(false);
  });
  connect(this, &Card::placementWanted, this, &RecoveryCard::place);
  canvas->installEventFilter(this);
  setShown(false);
}

void RecoveryCard::tellRecovered() {
  tell(tr("Changes that were not saved last time are back."), true);
}

void RecoveryCard::tellSetAside() {
  if (isShown()) return;
  tell(tr("Unsaved changes of the last time belong to another version of this map and were set aside."), false);
}

void RecoveryCard::tell(const QString& text, bool offersUndo) {
  m_text->setPlainText(text);
  m_undo->setVisible(offersUndo);
  setShown(true);
  bringToFront();
  place();
  announce(*this, text);
}

QString RecoveryCard::text() const {
  return m_text->text();
}

QSize RecoveryCard::wantedSize(QSize room) {
  layout()->activate();
  const QSize wanted = layout()->sizeHint();
  return {std::min(wanted.width(), room.width()), wanted.height()};
}

void RecoveryCard::place() {
  const QWidget* canvas = parentWidget();
  const QSize size = wantedSize(canvas->size() - QSize(2 * metrics::gapLarge, 0));
  setGeometry(QRect(QPoint((canvas->width() - size.width()) / 2, metrics::gapLarge), size));
}

bool RecoveryCard::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize && isShown()) place();
  return Card::eventFilter(watched, event);
}

}  // namespace quilmora
