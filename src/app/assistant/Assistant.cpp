#include "app/assistant/Assistant.h"

#include <utility>

#include <QEvent>

#include "app/assistant/AIActivityCard.h"
#include "app/assistant/AIChatView.h"
#include "app/assistant/AIPromptView.h"
#include "app/assistant/SubmitField.h"
#include "app/companions/CanvasCompanions.h"
#include "app/look/Announcement.h"
#include "app/look/Look.h"
#include "canvas/view/CanvasView.h"
#include "canvas/view/PlainText.h"
#include "editor/AIWorkflows.h"
#include "platform/OnDeviceText.h"

namespace quilmora {

Assistant::Assistant(Machine& machine, AIWorkflows& workflows, ChatSession& chat, const Window& parts)
    : m_machine(machine),
      m_workflows(workflows),
      m_window(parts),
      m_provider(workflows.providers(), machine.settings),
      m_chatView(new AIChatView({machine.look, machine.alerts, workflows, chat, m_provider}, &parts.canvas)),
      m_card(new AIActivityCard(machine.look, workflows, &parts.canvas)) {
  m_window.companions.addCard(*m_card);
  addTopicEntries();
  m_chatView->hide();  // until the sidebar takes it
  connect(m_chatView, &AIChatView::left, &m_window.canvas,
          [this] { m_window.canvas.setFocus(Qt::ShortcutFocusReason); });
  connect(m_chatView, &AIChatView::settingsWanted, this, &Assistant::settingsWanted);
  connect(&workflows, &AIWorkflows::showAIPromptChanged, this, &Assistant::followSheet);
  for (const auto signal :
       {&AIWorkflows::aiIsGeneratingChanged, &AIWorkflows::aiProgressChanged, &AIWorkflows::aiErrorChanged})
    connect(&workflows, signal, this, &Assistant::tellProgress);
  m_window.window.installEventFilter(this);
}

Assistant::~Assistant() {
  delete m_sheet;
}

void Assistant::addTopicEntries() {
  const auto expand = [this](const QUuid& id) { m_workflows.expandNode(id); };
  const auto summarize = [this](const QUuid& id) { m_workflows.summarizeBranch(id); };
  m_window.canvas.setTopicEntries({{QStringLiteral("AI Expand"), expand}, {QStringLiteral("AI Summarize"), summarize}});
}

void Assistant::askForPrompt() {
  m_window.canvas.commitTitleEdit();
  m_workflows.setShowAIPrompt(true);
}

void Assistant::focusChat() {
  m_chatView->input().setFocus(Qt::ShortcutFocusReason);
}

void Assistant::followSheet() {
  if (m_workflows.showAIPrompt() == (m_sheet != nullptr)) return;
  if (m_sheet != nullptr) {
    std::exchange(m_sheet, nullptr)->finish();
    return;
  }
  m_sheet = new AIPromptView(m_machine.look, m_workflows, m_provider, m_machine.scheduler, &m_window.window);
  m_sheet->open();
}

void Assistant::tellProgress() {
  const QString error = onDeviceText(m_workflows.aiError().value_or(QString()));
  const QString text = plain::line(m_workflows.aiIsGenerating() ? m_workflows.aiProgress() : error);
  if (std::exchange(m_told, text) != text) announce(m_window.window, text);
}

// Settings may have been changed in another window.
bool Assistant::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowActivate) Q_EMIT m_provider.changed();
  return QObject::eventFilter(watched, event);
}

}  // namespace quilmora
