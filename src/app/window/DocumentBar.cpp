#include "app/window/DocumentBar.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "app/look/Announcement.h"
#include "app/look/Look.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

// The text's minimum width beside the buttons; with less, they go below it.
constexpr int textMinWidth = 280;

}  // namespace

DocumentBar::DocumentBar(const Look& look, QWidget* parent)
    : Ground(look, &Tokens::raised, Qt::BottomEdge, parent),
      m_text(new TextLabel(look, QString(), &Tokens::text, look.font(), TextLabel::Overflow::wraps, this)),
      m_buttons(new QWidget(this)),
      m_reload(new QPushButton(tr("Reload"), m_buttons)),
      m_keepMine(new QPushButton(tr("Keep Mine"), m_buttons)),
      m_saveCopy(new QPushButton(tr("Save a Copy…"), m_buttons)),
      m_rows(new QBoxLayout(QBoxLayout::LeftToRight, this)) {
  setAccessibleName(tr("About the file"));
  plain::setToolTip(*m_reload, tr("Show the file as it is now; Undo brings this map back"));
  plain::setToolTip(*m_keepMine, tr("Write this map into the file; the other version stays as a copy"));
  plain::setToolTip(*m_saveCopy, tr("Save this map at another place and go on there"));

  auto* words = new QWidget(this);
  auto* wordsRow = new QHBoxLayout(words);
  wordsRow->setContentsMargins(0, 0, 0, 0);
  wordsRow->setSpacing(metrics::gap);
  wordsRow->addWidget(
      new SymbolLabel(look, QStringLiteral("exclamationmark.triangle"), metrics::rowIcon, &Tokens::warning, words));
  m_text->setParent(words);
  wordsRow->addWidget(m_text, 1);

  auto* buttonsRow = new QHBoxLayout(m_buttons);
  buttonsRow->setContentsMargins(0, 0, 0, 0);
  buttonsRow->setSpacing(metrics::gap);
  for (QPushButton* button : {m_reload, m_keepMine, m_saveCopy}) buttonsRow->addWidget(button);
  connect(m_reload, &QPushButton::clicked, this, &DocumentBar::reloadWanted);
  connect(m_keepMine, &QPushButton::clicked, this, &DocumentBar::keepMineWanted);
  connect(m_saveCopy, &QPushButton::clicked, this, &DocumentBar::saveCopyWanted);

  m_rows->setContentsMargins(metrics::gapMedium, metrics::labelGap, metrics::gapMedium, metrics::labelGap);
  m_rows->setSpacing(metrics::gap);
  m_rows->addWidget(words, 1);
  m_rows->addWidget(m_buttons, 0, Qt::AlignRight);
  hide();
}

void DocumentBar::setProblem(const DocumentProblem& problem) {
  m_problem = problem;
  if (isWanted() && problem.text != text()) announce(*this, problem.text);
  if (isWanted()) m_text->setPlainText(problem.text);
  m_reload->setVisible(problem.canReload);
  m_keepMine->setVisible(problem.canKeepMine);
  Q_EMIT changed();
}

bool DocumentBar::isNarrow(int width) const {
  return width < textMinWidth + m_buttons->sizeHint().width();
}

int DocumentBar::heightForWidth(int width) const {
  const QMargins margins = m_rows->contentsMargins();
  const int room = width - margins.left() - margins.right();
  const int buttonsWidth = m_buttons->sizeHint().width();
  const int buttonsHeight = m_buttons->sizeHint().height();
  const bool narrow = isNarrow(width);
  const int taken = metrics::rowIcon + metrics::gap + (narrow ? 0 : buttonsWidth + metrics::gap);
  const int textHeight = std::max(m_text->heightForWidth(std::max(room - taken, 1)), metrics::rowIcon);
  const int content = narrow ? textHeight + metrics::gap + buttonsHeight : std::max(textHeight, buttonsHeight);
  return content + margins.top() + margins.bottom();
}

void DocumentBar::resizeEvent(QResizeEvent* event) {
  Ground::resizeEvent(event);
  m_rows->setDirection(isNarrow(width()) ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

}  // namespace quilmora
