#pragma once

#include <utility>
#include <vector>

#include <QWidget>

#include "editor/MindMapViewModel.h"

class QVBoxLayout;

namespace quilmora {

class ColorWell;
class Look;
class NotificationCenter;
class Scheduler;
class SettingsStore;
class TextLabel;

// What the inspectors are made from and act on. All outlive them.
struct InspectorContext {
  const Look& look;
  MindMapViewModel& editor;
  NotificationCenter& notifications;
  Scheduler& scheduler;
  const SettingsStore& settings;
};

// What the panel is about: the canvas, one topic or connector, or several.
struct InspectorSubject {
  enum class Kind { canvas, node, edge, nodes, edges };

  Kind kind = Kind::canvas;
  QUuid id;               // of the one
  IdSet ids;              // of the several
  std::size_t count = 0;  // those of them that are in the map
};

// A form of the panel: sections of controls over what is selected, with local copies of its values.
class Inspector : public QWidget {
  Q_OBJECT

 public:
  // Brings the controls up to the map. Another subject has its local copies loaded afresh.
  virtual void refresh(const InspectorSubject& subject) = 0;
  // Hands over what was typed and is not in the map yet, to the subject that it was typed for.
  virtual void commitTyping() {}

 Q_SIGNALS:
  // The user wants a picture for the topic.
  void imageWanted(const QUuid& nodeID);

 protected:
  Inspector(const InspectorContext& context, QWidget* parent);

  const Look& look() const { return m_context.look; }
  MindMapViewModel& editor() const { return m_context.editor; }
  const InspectorContext& context() const { return m_context; }

  // The parts, from the top to the bottom. A heading is a title with a note below it.
  TextLabel* addHeading(const QString& title, const QString& note);
  // Without a name there is no header above it.
  void addSection(const QString& name = {});
  // All of these stand in the last section.
  void addPart(QWidget* part);
  // The name on the left, the control at the right edge or over the whole rest.
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

// Takes the colour over, unless the user is choosing one.
void showColor(ColorWell& well, const QString& hex);
QFont smallFont(const Look& look);

}  // namespace quilmora
