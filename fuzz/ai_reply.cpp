#include <cstdint>
#include <cstdlib>

#include "ai/AIProviderError.h"
#include "ai/AITreeConverter.h"
#include "ai/ReplyParsing.h"
#include "model/MindMapDocument.h"

namespace {

using namespace quilmora;

// Whatever was read can be written, read again, and turned into a map.
void use(const AITreeNode& tree) {
  if (!(decodeTree(encodeTree(tree)) == tree)) std::abort();
  const AITreeConverter converter{QSizeF(1200, 800), MindMap::Layout::radial, std::nullopt};
  MindMap map = converter.convert(tree, MemorySettingsStore(), ManualClock());
  if (map.edges.size() + 1 != map.nodes.size()) std::abort();
  if (tree.children)
    converter.addChildren(*tree.children, map, map.nodes.front().id, 0, MemorySettingsStore(), ManualClock());
  if (!(decodeDocument(encodeDocument(map)) == map)) std::abort();
}

}  // namespace

// Any reply gives a tree or an error, in every variant.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString reply = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  for (const ReplyVariant variant : {ReplyVariant::claude, ReplyVariant::openAI, ReplyVariant::onDevice}) {
    try {
      use(parseTreeReply(reply, variant));
    } catch (const AITreeError&) {
      if (variant == ReplyVariant::claude) std::abort();
    } catch (const AIProviderError&) {
    }
  }
  if (const auto action = detectChatAction(reply)) use(*action);
  return 0;
}
