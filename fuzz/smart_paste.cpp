#include <cstdint>
#include <cstdlib>

#include "editor/MindMapViewModel.h"
#include "model/MindMapDocument.h"
#include "platform/Bookmarks.h"
#include "platform/Log.h"
#include "platform/SettingsStore.h"

// Any text pasted in any mode adds as many topics as it has lines, or one, and one undo takes it back. The first byte
// chooses the mode and the anchor; the rest is UTF-16, so that halves of pairs occur too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quilmora;
  if (size == 0) return 0;
  const auto mode = static_cast<SmartPasteMode>(data[0] % 3);
  const QString text = QString::fromUtf16(
      reinterpret_cast<const char16_t*>(
          QByteArray(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>((size - 1) / 2 * 2)).constData()),
      static_cast<qsizetype>((size - 1) / 2));

  const ManualClock clock;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  MindMapViewModel editor(MindMap::blankMap(clock), {clock, settings, bookmarks, log});
  if (data[0] & 4) editor.selectAll();
  const MindMap before = editor.mindMap();
  const qsizetype lines = smartPasteLineCount(text);
  suitsSmartPaste(text);
  smartPasteHasIndent(text);
  editor.smartPaste(text, mode, data[0] & 8 ? std::optional(QUuid()) : std::nullopt);

  const qsizetype added = lines == 0 ? 0 : mode == SmartPasteMode::singleNode ? 1 : lines;
  if (static_cast<qsizetype>(editor.mindMap().nodes.size() - before.nodes.size()) != added) std::abort();
  if (static_cast<qsizetype>(editor.selectedNodeIDs().size()) != (added > 0 ? added : data[0] & 4 ? 1 : 0))
    std::abort();
  editor.treeInfo();
  decodeDocument(encodeDocument(editor.mindMap()));
  editor.undo();
  if (!(editor.mindMap() == before)) std::abort();
  return 0;
}
