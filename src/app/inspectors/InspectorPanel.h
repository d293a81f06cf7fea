#pragma once

#include <array>

#include "app/inspectors/Inspector.h"
#include "app/inspectors/SelectedEdges.h"
#include "app/look/Widgets.h"

class QScrollArea;

namespace quilmora {

// The right panel: the inspector that suits the selection. Each is built when it is first shown.
class InspectorPanel : public Ground {
  Q_OBJECT

 public:
  InspectorPanel(const InspectorContext& context, QWidget* parent);

  // The visible one; nullptr before the panel was first shown.
  Inspector* inspector() const { return m_shown; }
  const InspectorSubject& subject() const { return m_subject; }
  // Puts typed text into the map at once. Call before anything that replaces the map.
  void commitTyping();
  // The text of an open field, if it is not in the map yet.
  std::optional<OpenText> openText() const { return m_shown ? m_shown->openText() : std::nullopt; }

 Q_SIGNALS:
  // openText() has changed.
  void openTextChanged();
  void imageWanted(const QUuid& nodeID);
  // The panel has no more use for the keyboard.
  void keyboardReleased();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  InspectorSubject findSubject();
  void refreshSoon();
  void refresh();
  Inspector& built(InspectorSubject::Kind kind);
  void showOnly(Inspector& inspector);

  InspectorContext m_context;
  QScrollArea* m_scroll;
  QWidget* m_holder;
  std::array<Inspector*, 5> m_built{};  // by kind
  Inspector* m_shown = nullptr;
  InspectorSubject m_subject;
  SelectedEdges m_edges;
  bool m_isRefreshPending = false;
};

}  // namespace quilmora
