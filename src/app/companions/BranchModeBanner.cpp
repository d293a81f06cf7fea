#include "app/companions/BranchModeBanner.h"

#include <QHBoxLayout>

#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "editor/EditorState.h"

namespace quilmora {

BranchModeBanner::BranchModeBanner(const Look& look, EditorState& editor, QWidget* canvas) : Card(look, canvas) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  const QString text = QStringLiteral("Branch Mode: click a topic to connect");
  setAccessibleName(text);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(metrics::gapMedium, metrics::gap, metrics::gapMedium, metrics::gap);
  row->setSpacing(metrics::gap);
  row->addWidget(
      new SymbolLabel(look, QStringLiteral("arrow.triangle.branch"), metrics::rowIcon, &Tokens::accent, this));
  row->addWidget(new TextLabel(look, text, &Tokens::text, look.font(Look::TextStyle::baseSemibold),
                               TextLabel::Overflow::elides, this),
                 1);
  const auto refresh = [this, &editor] { setShown(editor.isEdgeCreationMode()); };
  connect(&editor, &EditorState::isEdgeCreationModeChanged, this, refresh);
  refresh();
}

QSize BranchModeBanner::wantedSize(QSize room) {
  return sizeHint().boundedTo(room);
}

}  // namespace quilmora
