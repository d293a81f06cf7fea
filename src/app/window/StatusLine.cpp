#include "app/window/StatusLine.h"

#include <QHBoxLayout>

#include "app/look/Look.h"
#include "editor/EditorState.h"

namespace quilmora {

StatusLine::StatusLine(const Look& look, const EditorState& editor, QWidget* parent)
    : Ground(look, &Tokens::window, Qt::TopEdge, parent),
      m_editor(editor),
      m_count(new TextLabel(look, QString(), &Tokens::secondary, look.font(), TextLabel::Overflow::elides, this)) {
  setFixedHeight(metrics::statusLineHeight);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(metrics::gapMedium, 0, metrics::gapMedium, 0);
  row->addWidget(m_count, 1);
  connect(&editor, &EditorState::mindMapChanged, this, &StatusLine::refresh);
  refresh();
}

void StatusLine::refresh() {
  const std::size_t count = m_editor.mindMap().nodes.size();
  m_count->setPlainText(count == 1 ? QStringLiteral("1 topic") : QStringLiteral("%1 topics").arg(count));
}

}  // namespace quilmora
