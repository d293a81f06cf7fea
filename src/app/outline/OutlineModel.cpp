#include "app/outline/OutlineModel.h"

#include <algorithm>
#include <ranges>

#include "app/companions/TopicText.h"
#include "canvas/view/PlainText.h"
#include "model/ArrayChanges.h"

namespace quilmora {

namespace {

// Any tree that a person makes has all its rows at once; only rows that multiply without bound are cut.
constexpr std::size_t firstPortion = 200'000;
constexpr std::size_t maxRows = 4'000'000;
// Beyond these numbers it is cheaper to rebuild the rows, or to report that all may have changed.
constexpr std::size_t maxPatches = 32;
constexpr std::size_t maxBlocks = 64;
constexpr qsizetype maxEmojiLength = 12;

bool looksTheSame(const Node& a, const Node& b) {
  return a.title == b.title && a.emoji == b.emoji && a.notes.isEmpty() == b.notes.isEmpty();
}

bool hasRepeated(std::vector<std::uint32_t> numbers) {
  std::ranges::sort(numbers);
  return std::ranges::adjacent_find(numbers) != numbers.end();
}

}  // namespace

OutlineModel::OutlineModel(MindMapViewModel& editor, QObject* parent) : QAbstractListModel(parent), m_editor(editor) {}

// --- Following the map ---

void OutlineModel::follow() {
  const bool isOtherDocument = m_document != m_editor.documentNumber();
  if (!isOtherDocument && m_generation == m_editor.treeGeneration()) return;
  m_document = m_editor.documentNumber();
  m_generation = m_editor.treeGeneration();
  const OutlineTree before = std::exchange(m_tree, OutlineTree(m_editor.treeInfo(), m_editor.mapIndex(), m_tree));
  const SharedArray<Node> nodesBefore = std::exchange(m_nodes, m_editor.mindMap().nodes);
  if (isOtherDocument) {
    m_folds.clear();
    reset();
  } else if (!followStructure(before)) {
    reset();
  } else {
    tellTexts(nodesBefore, before);
  }
}

void OutlineModel::reset() {
  beginResetModel();
  m_limit = std::max({m_limit, firstPortion, 2 * m_nodes.size()});
  OutlineWalk walk(m_tree, m_folds);
  m_rows = walk.rows(m_tree.roots(), 0, m_tree.roots().size(), m_limit);
  m_isCut = walk.wasCut();
  endResetModel();
}

bool OutlineModel::followStructure(const OutlineTree& before) {
  if (m_tree.sharesStructureWith(before)) return true;
  if (m_isCut || !m_tree.sharesNumbersWith(before)) return false;
  const std::vector<char> differs = m_tree.changesFrom(before);
  std::vector<int> changed;
  for (std::size_t row = 0; row < m_rows.size(); ++row)
    if (differs[m_rows[row].number]) changed.push_back(static_cast<int>(row));
  if (changed.size() > maxPatches) return false;
  // From the end, so that a patch does not move the rows still to be patched.
  for (const int row : std::views::reverse(changed)) {
    if (m_rows[static_cast<std::size_t>(row)].isExpanded && !patchBelow(row)) return false;
    rowChanged(row);
  }
  return std::ranges::equal(m_tree.roots(), before.roots()) || patchBelow(std::nullopt);
}

bool OutlineModel::patchBelow(std::optional<int> row) {
  const std::uint32_t depth = row ? this->row(*row).depth + 1 : 0;
  const int end = row ? endOfBranch(*row) : rowCount();
  std::vector<int> places;  // of the rows directly below
  std::vector<std::uint32_t> old;
  for (int below = row ? *row + 1 : 0; below < end; ++below)
    if (this->row(below).depth == depth) {
      places.push_back(below);
      old.push_back(this->row(below).number);
    }
  places.push_back(end);

  OutlineWalk walk(m_tree, m_folds);
  OutlineFolds::Place place = OutlineFolds::top;
  if (row) {
    std::vector<int> path = rowsAbove(*row);
    path.push_back(*row);
    enter(walk, path);
    place = findPlace(path);
  }
  const std::vector<std::uint32_t> now = walk.shown(row ? m_tree.children(this->row(*row).number) : m_tree.roots());
  const std::size_t shorter = std::min(old.size(), now.size());
  std::size_t head = 0;
  while (head < shorter && old[head] == now[head]) ++head;
  std::size_t tail = 0;
  // If a topic occurs twice here, each row is folded independently, and their order counts.
  const bool countsOrder = m_folds.hasPlacesBelow(place) && (hasRepeated(old) || hasRepeated(now));
  while (!countsOrder && tail < shorter - head && old[old.size() - 1 - tail] == now[now.size() - 1 - tail]) ++tail;

  std::vector<OutlineNodeRow> rows = walk.rows(now, head, now.size() - tail, m_limit);
  if (walk.wasCut()) return false;
  removeRowsAt(places[head], places[old.size() - tail]);
  insertRowsAt(places[head], std::move(rows));
  return true;
}

void OutlineModel::removeRowsAt(int first, int end) {
  if (first == end) return;
  beginRemoveRows({}, first, end - 1);
  m_rows.erase(m_rows.begin() + first, m_rows.begin() + end);
  endRemoveRows();
}

void OutlineModel::insertRowsAt(int first, std::vector<OutlineNodeRow> rows) {
  if (rows.empty()) return;
  beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
  m_rows.insert(m_rows.begin() + first, rows.begin(), rows.end());
  endInsertRows();
}

void OutlineModel::tellTexts(const SharedArray<Node>& before, const OutlineTree& treeBefore) {
  if (m_rows.empty() || m_nodes.sharesStorageWith(before)) return;
  const auto tellAll = [this] { Q_EMIT dataChanged(index(0), index(rowCount() - 1)); };
  const std::vector<ArrayChange> changes = ArrayComparison(before, m_nodes).changes();
  std::size_t count = 0;
  for (const ArrayChange& run : changes) count += run.endNewBlock - run.firstNewBlock;
  // If ids are repeated, another topic may represent them now, without a change of its own.
  if (count > maxBlocks || m_tree.hasRepeatedIds() || treeBefore.hasRepeatedIds()) return tellAll();

  std::vector<char> differs(m_tree.index().numberCount(), 0);
  bool anyDiffers = false;
  for (const ArrayChange& run : changes) {
    std::size_t ordinal = run.newStart;
    for (const Node* node : recordsIn(m_nodes, run.firstNewBlock, run.endNewBlock)) {
      const std::uint32_t number = m_tree.index().numberOfNode()[ordinal++];
      const std::uint32_t ordinalBefore = treeBefore.ordinal(number);
      if (ordinalBefore == MapIndex::npos || looksTheSame(*node, before[ordinalBefore])) continue;
      differs[number] = 1;
      anyDiffers = true;
    }
  }
  if (!anyDiffers) return;
  for (int row = 0; row < rowCount(); ++row)
    if (differs[this->row(row).number]) rowChanged(row);
}

void OutlineModel::rowChanged(int row) {
  Q_EMIT dataChanged(index(row), index(row));
}

// --- Rows ---

const Node* OutlineModel::topicOf(int row) const {
  const std::uint32_t ordinal = m_tree.ordinal(this->row(row).number);
  return ordinal == MapIndex::npos ? nullptr : &m_nodes[ordinal];
}

int OutlineModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QString OutlineModel::shownTitle(int row) const {
  const Node* node = topicOf(row);
  return node ? plain::line(quilmora::shownTitle(*node)) : QString();
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const int row = index.row();
  switch (role) {
    case idRole:
      return idOf(row);
    case depthRole:
      return static_cast<int>(this->row(row).depth);
    case hasChildrenRole:
      return isParent(row);
    case isExpandedRole:
      return this->row(row).isExpanded;
    default:
      break;
  }
  const Node* node = topicOf(row);
  if (node == nullptr) return {};
  switch (role) {
    case Qt::DisplayRole:
      return shownTitle(row);
    case Qt::EditRole:
      return node->title;
    case emojiRole:
      return plain::line(node->emoji.value_or(QString()), maxEmojiLength);
    case hasNotesRole:
      return !node->notes.isEmpty();
    default:
      return {};
  }
}

bool OutlineModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::EditRole) return false;
  // A copy: calls to the editor may add ids to the table.
  const QUuid id = idOf(index.row());
  const std::optional<Node> node = m_editor.nodeByID(id);
  if (!node || node->title == value.toString()) return false;
  m_editor.setNodeTitle(id, value.toString());
  return true;
}

Qt::ItemFlags OutlineModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemNeverHasChildren;
}

bool OutlineModel::canFetchMore(const QModelIndex& parent) const {
  return !parent.isValid() && m_isCut && m_rows.size() < maxRows;
}

void OutlineModel::fetchMore(const QModelIndex& parent) {
  if (!canFetchMore(parent)) return;
  m_limit = std::max(m_limit, m_rows.size()) * 2;
  OutlineWalk walk(m_tree, m_folds);
  std::vector<OutlineNodeRow> rows = walk.rows(m_tree.roots(), 0, m_tree.roots().size(), m_limit);
  m_isCut = walk.wasCut();
  rows.erase(rows.begin(), rows.begin() + rowCount());
  insertRowsAt(rowCount(), std::move(rows));
}

std::vector<int> OutlineModel::rowsAbove(int row) const {
  std::vector<int> above;
  for (std::uint32_t depth = this->row(row).depth; depth > 0;) {
    --row;
    if (this->row(row).depth >= depth) continue;
    depth = this->row(row).depth;
    above.push_back(row);
  }
  std::ranges::reverse(above);
  return above;
}

std::optional<int> OutlineModel::parentRow(int row) const {
  const std::uint32_t depth = this->row(row).depth;
  while (depth > 0 && --row >= 0)
    if (this->row(row).depth < depth) return row;
  return std::nullopt;
}

int OutlineModel::endOfBranch(int row) const {
  const std::uint32_t depth = this->row(row).depth;
  const auto end = std::find_if(m_rows.begin() + row + 1, m_rows.end(),
                                [depth](const OutlineNodeRow& below) { return below.depth <= depth; });
  return static_cast<int>(end - m_rows.begin());
}

std::uint32_t OutlineModel::repetitionOf(int row) const {
  const OutlineNodeRow& own = this->row(row);
  std::uint32_t repetition = 0;
  for (int above = row - 1; above >= 0 && this->row(above).depth >= own.depth; --above)
    repetition += this->row(above).depth == own.depth && this->row(above).number == own.number ? 1 : 0;
  return repetition;
}

template <class Step>
OutlineFolds::Place OutlineModel::placeAt(const std::vector<int>& path, Step step) const {
  OutlineFolds::Place place = OutlineFolds::top;
  for (const int row : path) place = step(place, row);
  return place;
}

OutlineFolds::Place OutlineModel::findPlace(const std::vector<int>& path) const {
  return placeAt(path, [this](OutlineFolds::Place above, int row) {
    if (!m_folds.hasPlacesBelow(above)) return OutlineFolds::none;
    return m_folds.find(above, idOf(row), repetitionOf(row));
  });
}

void OutlineModel::enter(OutlineWalk& walk, const std::vector<int>& path) const {
  std::vector<std::uint32_t> numbers;
  numbers.reserve(path.size());
  for (const int row : path) numbers.push_back(this->row(row).number);
  walk.setPath(numbers, findPlace(path));
}

void OutlineModel::toggle(int row) {
  if (!isParent(row)) return;
  std::vector<int> path = rowsAbove(row);
  path.push_back(row);
  const OutlineFolds::Place place = placeAt(path, [this](OutlineFolds::Place above, int step) {
    return m_folds.insert(above, idOf(step), repetitionOf(step));
  });
  OutlineNodeRow& toggled = m_rows[static_cast<std::size_t>(row)];
  m_folds.setFolded(place, toggled.isExpanded);
  toggled.isExpanded = !toggled.isExpanded;
  if (toggled.isExpanded) {
    OutlineWalk walk(m_tree, m_folds);
    enter(walk, path);
    const auto children = m_tree.children(toggled.number);
    std::vector<OutlineNodeRow> rows = walk.rows(children, 0, children.size(), m_limit);
    // If rows were cut, nothing may follow them.
    if (walk.wasCut()) removeRowsAt(row + 1, rowCount());
    m_isCut |= walk.wasCut();
    insertRowsAt(row + 1, std::move(rows));
  } else {
    removeRowsAt(row + 1, endOfBranch(row));
  }
  rowChanged(row);
}

template <class Wanted>
std::optional<int> OutlineModel::findRowThat(Wanted wanted, int start) const {
  const auto from = m_rows.begin() + std::clamp(start, 0, rowCount());
  auto found = std::find_if(from, m_rows.end(), wanted);
  if (found == m_rows.end()) {
    found = std::find_if(m_rows.begin(), from, wanted);
    if (found == from) return std::nullopt;
  }
  return static_cast<int>(found - m_rows.begin());
}

std::optional<int> OutlineModel::findRow(const QUuid& id, int start) const {
  const std::uint32_t number = m_tree.tree().number(id);
  if (number == TreeInfo::npos) return std::nullopt;
  return findRowThat([number](const OutlineNodeRow& row) { return row.number == number; }, start);
}

// The titles in their order in memory, then the rows.
std::optional<int> OutlineModel::findTitle(const QString& letters, int start) const {
  std::vector<char> begins(m_tree.index().numberCount(), 0);
  std::size_t ordinal = 0;
  for (const Node& node : m_nodes) {
    const bool matches = QStringView(node.title).trimmed().startsWith(letters, Qt::CaseInsensitive);
    begins[m_tree.index().numberOfNode()[ordinal++]] = matches;
  }
  return findRowThat([&begins](const OutlineNodeRow& row) { return begins[row.number] != 0; }, start);
}

std::optional<int> OutlineModel::revealRow(const QUuid& id) {
  if (const auto row = findRow(id)) return row;
  const TreeInfo& tree = m_tree.tree();
  std::vector<std::uint32_t> path;
  std::vector<char> isOnPath(tree.numberCount(), 0);
  for (std::uint32_t number = tree.number(id); number < tree.numberCount(); number = tree.parentNumber(number)) {
    if (std::exchange(isOnPath[number], 1)) return std::nullopt;
    path.push_back(number);
  }
  // Forward only, so that a path as deep as the map takes one walk over the rows.
  int row = 0;
  for (auto number = path.rbegin(); number != path.rend(); ++number) {
    const auto depth = static_cast<std::uint32_t>(number - path.rbegin());
    const auto isIt = [&] { return this->row(row).depth == depth && this->row(row).number == *number; };
    while (row < rowCount() && this->row(row).depth >= depth && !isIt()) ++row;
    if (row >= rowCount() || !isIt()) return std::nullopt;
    if (number + 1 == path.rend()) return row;
    if (!this->row(row).isExpanded) toggle(row);
    ++row;
  }
  return std::nullopt;
}

}  // namespace quilmora
