#pragma once

#include <optional>
#include <utility>
#include <vector>

#include <QWidget>

#include "editor/MindMapViewModel.h"
#include "editor/journal/OpenText.h"

class QVBoxLayout;

namespace quilmora {

class ColorWell;
class Look;
class NotificationCenter;
class Scheduler;
class SettingsStore;
class TextLabel;

// What the inspectors depend on and act on. All must outlive them.
struct InspectorContext {
  const Look& look;
  MindMapViewModel& editor;
  NotificationCenter& notifications;
  Scheduler& scheduler;
  const SettingsStore& settings;
};

// What the panel shows: the canvas, one topic or connector, or several.
struct InspectorSubject {
  enum class Kind { canvas, node, edge, nodes, edges };

  Kind kind = Kind::canvas;
  QUuid id;               // if it is one
  IdSet ids;              // if they are several
  std::size_t count = 0;  // how many of them are in the map
};

// A form of the panel: sections of controls for the selection, with local copies of its values.
class Inspector : public QWidget {
  Q_OBJECT

 public:
  // Updates the controls to the map. For another subject, the local copies are loaded afresh.
  virtual void refresh(const InspectorSubject& subject) = 0;
  // Passes on typed text that is not in the map yet, to the subject that it was typed for.
  virtual void commitTyping() {}
  // What commitTyping() would pass on, and the subject that it was typed for.
  virtual std::optional<OpenText> openText() const { return std::nullopt; }

 Q_SIGNALS:
  // openText() has changed.
  void openTextChanged();
  // The user wants a picture for the topic.
  void imageWanted(const QUuid& nodeID);

 protected:
  Inspector(const InspectorContext& context, QWidget* parent);

  const Look& look() const { return m_context.look; }
  MindMapViewModel& editor() const { return m_context.editor; }
  const InspectorContext& context() const { return m_context; }

  // The parts, from top to bottom. A heading is a title with a note below it.
  TextLabel* addHeading(const QString& title, const QString& note);
  // Without a name the section has no header.
  void addSection(const QString& name = {});
  // All of these go into the last section.
  void addPart(QWidget* part);
  // The name on the left, the control at the right edge or over the rest of the width.
  enum class Place { atEdge, overRest };
  void addRow(const QString& name, QWidget* control, Place place);
  TextLabel* addHint(const QString& text);
  // Wells in one row, each with its name before it.
  void addWells(const std::vector<std::pair<QString, ColorWell*>>& wells);

 private:
  InspectorContext m_context;
  QVBoxLayout* m_column;
  QVBoxLayout* m_section = nullptr;
};

// Shows the colour, unless the user is choosing one.
void showColor(ColorWell& well, const QString& hex);
QFont smallFont(const Look& look);

}  // namespace quilmora
