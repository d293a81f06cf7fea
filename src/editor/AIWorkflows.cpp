#include "editor/AIWorkflows.h"

#include <algorithm>

#include "ai/AITreeConverter.h"
#include "ai/MapOutline.h"
#include "platform/Futures.h"

namespace quilmora {

namespace {

constexpr double contentMargin = 200.0;
constexpr double viewMargin = 160.0;
constexpr double minZoom = 0.2;
constexpr double maxZoom = 1.0;

const QString otherDocument = QStringLiteral("Another document was opened before the answer came.");

struct View {
  double zoom = 1.0;
  QPointF offset;
};

// The whole of a map with at least one topic on a canvas of this size.
View viewOf(const SharedArray<Node>& nodes, QSizeF size) {
  QPointF low = (*nodes.begin()).position;
  QPointF high = low;
  for (const Node& node : nodes) {
    low = QPointF(std::min(low.x(), node.position.x()), std::min(low.y(), node.position.y()));
    high = QPointF(std::max(high.x(), node.position.x()), std::max(high.y(), node.position.y()));
  }
  const double width = std::max(high.x() - low.x() + contentMargin, size.width() / 2);
  const double height = std::max(high.y() - low.y() + contentMargin, size.height() / 2);
  const double wanted = std::min((size.width() - viewMargin) / width, (size.height() - viewMargin) / height);
  const double zoom = std::clamp(wanted, minZoom, maxZoom);
  const QPointF middle = (low + high) / 2;
  return {zoom, QPointF(size.width() / 2 - middle.x() * zoom, size.height() / 2 - middle.y() * zoom)};
}

}  // namespace

AIWorkflows::AIWorkflows(MindMapViewModel& editor, EditorServices services, AIProviders providers)
    : m_editor(editor), m_services(services), m_providers(std::move(providers)) {}

AIWorkflows::~AIWorkflows() {
  m_goingAway.cancel();
}

void AIWorkflows::refreshProvider() {
  auto provider = chosenProvider(m_providers);
  if (m_service) {
    m_service->setProvider(std::move(provider));
  } else {
    m_service = std::make_unique<AIService>(std::move(provider), m_services.settings, m_services.clock);
  }
}

void AIWorkflows::generateMap(const QString& prompt, MindMap::Layout layout) {
  refreshProvider();
  const QSizeF size = canvasSize();
  m_editor.captureSnapshot(false);
  begin(QStringLiteral("Generating map..."));
  start([=, this, document = m_editor.documentNumber()] {
    const std::optional<QString> theme = themeId();
    const auto install = [this, size, document](const MindMap& map) {
      if (!isStillOpen(document)) return;
      installGenerated(map, size);
      end(std::nullopt);
    };
    // A provider's failure is not reported: the offline generator replaces it.
    const auto generateOffline = [=, this](const std::exception&) {
      const auto offline = std::make_shared<AIService>(m_providers.offline(), m_services.settings, m_services.clock);
      whenFinished(
          offline->generateMap(prompt, layout, size, theme, m_goingAway), this,
          [install, offline](const MindMap& map) { install(map); },
          [this, offline](const std::exception& error) { end(errorDescription(error)); });
    };
    whenFinished(m_service->generateMap(prompt, layout, size, theme, m_goingAway), this, install, generateOffline);
  });
}

void AIWorkflows::expandNode(const std::optional<QUuid>& nodeID) {
  refreshProvider();
  const std::optional<QUuid> id = nodeID ? nodeID : m_editor.firstSelectedNode();
  const std::optional<Node> node = id ? m_editor.nodeByID(*id) : std::nullopt;
  if (!node) return;
  m_editor.captureSnapshot(false);
  const QString path = pathTo(*node);
  const int depth = m_editor.treeInfo().depth(node->id).value_or(0);
  begin(QStringLiteral("Expanding ") + node->title + QStringLiteral("..."));
  start([this, id = node->id, title = node->title, path, depth, document = m_editor.documentNumber()] {
    const auto install = [this, id, depth, document](const std::vector<AITreeNode>& children) {
      if (!isStillOpen(document)) return;
      installChildren(children, id, depth);
      end(std::nullopt);
    };
    whenFinished(m_service->expandNode(title, path, m_goingAway), this, install,
                 [this](const std::exception& error) { end(errorDescription(error)); });
  });
}

void AIWorkflows::summarizeBranch(const QUuid& nodeID) {
  refreshProvider();
  if (!m_editor.hasNode(nodeID)) return;
  QStringList titles;
  QStringList contents;
  const TreeInfo& tree = m_editor.treeInfo();
  std::vector<char> visited(tree.numberCount(), 0);
  std::vector<std::uint32_t> open{tree.number(nodeID)};
  while (!open.empty()) {
    const std::uint32_t number = open.back();
    open.pop_back();
    if (std::exchange(visited[number], 1)) continue;
    if (const auto node = m_editor.nodeByID(tree.idOf(number))) {
      titles.append(node->title);
      contents.append(node->notes);
    }
    const auto children = tree.childNumbers(number);
    open.insert(open.end(), children.rbegin(), children.rend());
  }
  begin(QStringLiteral("Summarizing..."));
  start([this, nodeID, titles, contents, document = m_editor.documentNumber()] {
    const auto install = [this, nodeID, document](const QString& summary) {
      if (!isStillOpen(document)) return;
      m_editor.captureSnapshot(false);
      MindMap map = m_editor.mindMap();
      if (const std::uint32_t ordinal = m_editor.mapIndex().find(nodeID); ordinal != MapIndex::npos) {
        map.nodes.update(ordinal, [&](Node& node) { node.notes = summary; });
        map.updatedAt = m_services.clock.now();
      }
      m_editor.setMindMap(std::move(map));
      m_editor.markDirty();
      end(std::nullopt);
    };
    whenFinished(m_service->summarizeBranch(titles, contents, m_goingAway), this, install,
                 [this](const std::exception& error) { end(errorDescription(error)); });
  });
}

QString AIWorkflows::mapContext() {
  return mapOutline(m_editor.mindMap(), m_editor.mapIndex(), m_editor.treeInfo());
}

void AIWorkflows::installGenerated(MindMap map, QSizeF sizeWhereNoneIsKnown) {
  if (!map.nodes.empty()) {
    const View view = viewOf(map.nodes, m_editor.lastKnownCanvasSize().value_or(sizeWhereNoneIsKnown));
    m_editor.setCanvasZoom(view.zoom);
    m_editor.setCanvasOffset(view.offset);
  }
  m_editor.setMindMap(std::move(map));
  m_editor.markDirty();
}

void AIWorkflows::installRadial(const AITreeNode& tree) {
  const QSizeF size = canvasSize();
  const AITreeConverter converter{size, MindMap::Layout::radial, themeId()};
  installGenerated(converter.convert(tree, m_services.settings, m_services.clock), size);
}

void AIWorkflows::installChildren(const std::vector<AITreeNode>& children, const QUuid& nodeID, int depth) {
  MindMap map = m_editor.mindMap();
  const AITreeConverter converter{canvasSize(), MindMap::Layout::tree, themeId()};
  converter.addChildren(children, map, nodeID, depth, m_services.settings, m_services.clock);
  m_editor.setMindMap(std::move(map));
  m_editor.markDirty();
}

void AIWorkflows::begin(const QString& progress) {
  m_aiIsGenerating = true;
  m_aiProgress = progress;
  m_aiError.reset();
  Q_EMIT aiIsGeneratingChanged();
  Q_EMIT aiProgressChanged();
  Q_EMIT aiErrorChanged();
}

void AIWorkflows::end(const std::optional<QString>& error) {
  if (error) {
    m_aiError = error;
    Q_EMIT aiErrorChanged();
  }
  m_aiIsGenerating = false;
  m_aiProgress.clear();
  Q_EMIT aiIsGeneratingChanged();
  Q_EMIT aiProgressChanged();
}

void AIWorkflows::start(std::function<void()> task) {
  QMetaObject::invokeMethod(this, std::move(task), Qt::QueuedConnection);
}

bool AIWorkflows::isStillOpen(quint64 documentNumber) {
  if (documentNumber == m_editor.documentNumber()) return true;
  end(otherDocument);
  return false;
}

std::optional<QString> AIWorkflows::themeId() const {
  return m_editor.mindMap().canvas.themeId;
}

QString AIWorkflows::pathTo(const Node& node) {
  const TreeInfo& tree = m_editor.treeInfo();
  QStringList titles{node.title};
  IdSet visited{node.id};
  for (auto above = tree.parent(node.id); above && !visited.contains(*above); above = tree.parent(*above)) {
    visited.insert(*above);
    const auto ancestor = m_editor.nodeByID(*above);
    if (!ancestor) break;
    titles.prepend(ancestor->title);
  }
  return titles.join(QStringLiteral(" > "));
}

void AIWorkflows::setShowAIPrompt(bool shows) {
  m_showAIPrompt = shows;
  Q_EMIT showAIPromptChanged();
}

void AIWorkflows::setShowAIChat(bool shows) {
  m_showAIChat = shows;
  Q_EMIT showAIChatChanged();
}

}  // namespace quilmora
