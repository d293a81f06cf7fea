#include "commands/ShortcutsReference.h"

#include "commands/CommandTable.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;

QString keyOf(const QString& commandId) {
  return findCommand(commandId)->key;
}

// "⌘[/]" for "⌘[" and "⌘]".
QString pairOf(const QString& commandId, const QString& otherId) {
  return keyOf(commandId) + u'/' + keyOf(otherId).back();
}

}  // namespace

const std::vector<ShortcutRow>& shortcutsReference() {
  static const std::vector<ShortcutRow> rows = {
      {keyOf(u"createNode"_s), u"New sibling / topic"_s},
      {u"Tab"_s, u"New child topic"_s},
      {keyOf(u"createEdge"_s), u"Toggle branch creation"_s},
      {keyOf(u"duplicateSelection"_s), u"Duplicate selection"_s},
      {keyOf(u"toggleCommandPalette"_s), u"Command palette"_s},
      {keyOf(u"toggleSearch"_s), u"Search topics"_s},
      {keyOf(u"toggleOutline"_s), u"Toggle outline"_s},
      {keyOf(u"toggleAIChat"_s), u"Toggle AI chat"_s},
      {keyOf(u"togglePresentation"_s), u"Presentation mode"_s},
      {keyOf(u"aiGenerate"_s), u"AI generate"_s},
      {keyOf(u"zoomToFit"_s), u"Zoom to fit"_s},
      {pairOf(u"collapseNode"_s, u"expandNode"_s), u"Collapse/expand"_s},
      {u"Arrow keys"_s, u"Navigate tree"_s},
      {u"Space"_s, u"Quick-look topic"_s},
      {u"⌘+drag"_s, u"Reparent topic"_s},
      {u"Shift+drag handle"_s, u"Cross-link"_s},
      {u"Esc"_s, u"Cancel / exit mode"_s},
  };
  return rows;
}

}  // namespace quilmora
