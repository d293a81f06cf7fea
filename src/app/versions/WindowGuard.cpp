#include "app/versions/WindowGuard.h"

#include "app/inspectors/InspectorPanel.h"
#include "app/versions/RecoveryCard.h"
#include "app/window/Machine.h"
#include "canvas/view/CanvasView.h"

namespace quilmora {

WindowGuard::WindowGuard(Machine& machine, NotificationCenter& notifications, MindMapViewModel& editor,
                         DocumentSession& session, CanvasView& canvas, InspectorPanel& inspector, QWidget& window)
    : m_keeping(editor, session, machine.clock, machine.scheduler, machine.log, machine.stateFolder),
      m_flow({machine.look, editor, session, m_keeping.versions(), machine.writer, machine.clock}, &window),
      m_card(new RecoveryCard(machine.look, editor, &canvas)),
      m_atEnd(
          notifications.observe(Notification::autoSaveBeforeQuit, [this](const QVariant&) { m_keeping.settle(); })) {
  m_keeping.setOpenText([&canvas, &inspector] {
    const std::optional<OpenText> title = canvas.openText();
    return title ? title : inspector.openText();
  });
  connect(&canvas, &CanvasView::openTextChanged, &m_keeping, &DocumentGuard::openTextChanged);
  connect(&inspector, &InspectorPanel::openTextChanged, &m_keeping, &DocumentGuard::openTextChanged);
  connect(&m_keeping, &DocumentGuard::changesRecovered, m_card, &RecoveryCard::tellRecovered);
  connect(&m_keeping, &DocumentGuard::journalSetAside, m_card, &RecoveryCard::tellSetAside);
  connect(&m_flow, &EarlierVersionsFlow::errorRaised, this, &WindowGuard::errorRaised);
}

// The canvas, which has the card, may already be destroyed.
WindowGuard::~WindowGuard() {
  delete m_card;
}

}  // namespace quilmora
