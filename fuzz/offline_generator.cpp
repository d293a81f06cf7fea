#include <cstdint>
#include <cstdlib>

#include "ai/MockProvider.h"
#include "ai/OfflineTrees.h"
#include "ai/PromptAnalysis.h"
#include "ai/Prompts.h"

// Any prompt gets an answer: a tree with a title and at most eight branches.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quilmora;
  const QString prompt = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const AITreeNode tree = generateTree(prompt);
  if (tree.title.isEmpty() || !tree.children || tree.children->size() > 8) std::abort();
  if (analyzePrompt(prompt).title.isEmpty()) std::abort();
  if (!(decodeTree(encodeTree(tree)) == tree)) std::abort();
  if (expandTree(prompt).children->size() < 4) std::abort();
  if (suggestTree(prompt, {prompt}).children->size() > 5) std::abort();
  if (offlineChat({ChatMessage::create(ChatRole::user, prompt, TimePoint())}, prompt).isEmpty()) std::abort();
  if (!userPrompt(GenerateMapRequest{prompt}).contains(prompt)) std::abort();
  return 0;
}
