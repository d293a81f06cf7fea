#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "ai/AITreeConverter.h"
#include "ai/OfflineTrees.h"
#include "ai/ReplyParsing.h"
#include "model/TreeInfo.h"

namespace quilmora {
namespace {

// The reply that a model would give for the map.
QString benchReply(int topics) {
  const MindMap map = benchMap(topics);
  const MapIndex index(map.nodes, map.edges);
  const TreeInfo tree(index);
  const auto topicOf = [&](std::uint32_t number) {
    const Node& node = map.nodes[index.nodeOfNumber()[number]];
    AITreeNode topic(node.title);
    if (!node.notes.isEmpty()) topic.notes = node.notes;
    return topic;
  };
  const std::uint32_t rootNumber = tree.number(tree.roots().front());
  AITreeNode root = topicOf(rootNumber);
  std::vector<std::pair<std::uint32_t, AITreeNode*>> pending{{rootNumber, &root}};
  while (!pending.empty()) {
    const auto [number, topic] = pending.back();
    pending.pop_back();
    const auto children = tree.childNumbers(number);
    if (children.empty()) continue;
    topic->children.emplace();
    for (const std::uint32_t child : children) topic->children->push_back(topicOf(child));
    for (std::size_t i = 0; i < children.size(); ++i) pending.emplace_back(children[i], &(*topic->children)[i]);
  }
  return QString::fromUtf8(encodeTree(root));
}

void parseAndConvert(benchmark::State& state, MindMap::Layout layout) {
  const QString reply = benchReply(static_cast<int>(state.range(0)));
  const MemorySettingsStore settings;
  const ManualClock clock;
  const AITreeConverter converter{QSizeF(1200, 800), layout, std::nullopt};
  for (auto _ : state) {
    MindMap map = converter.convert(parseTreeReply(reply, ReplyVariant::openAI), settings, clock);
    if (map.nodes.size() != static_cast<std::size_t>(state.range(0))) return state.SkipWithError("topics are missing");
    benchmark::DoNotOptimize(map);
    state.PauseTiming();
    map = MindMap();
    state.ResumeTiming();
  }
}

// The size is the length of the prompt in characters.
void generateOffline(benchmark::State& state) {
  const QString prompt = QStringLiteral("create a map about ") + QString(static_cast<int>(state.range(0)), u' ') + u'x';
  for (auto _ : state) benchmark::DoNotOptimize(generateTree(prompt));
}

const bool isRegistered = [] {
  const auto add = [](const char* name, auto run) {
    benchmark::RegisterBenchmark(name, run)->Arg(1000)->Arg(10'000)->Arg(100'000)->UseRealTime();
  };
  add("import a reply, tree", [](benchmark::State& state) { parseAndConvert(state, MindMap::Layout::tree); });
  add("import a reply, radial", [](benchmark::State& state) { parseAndConvert(state, MindMap::Layout::radial); });
  add("offline map of a prompt of blanks", generateOffline);
  return true;
}();

}  // namespace
}  // namespace quilmora
