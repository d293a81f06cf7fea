#pragma once

#include <span>
#include <vector>

#include <QString>
#include <QStringList>

namespace quilmora {

// A subject that the offline generator knows, and the branches of a map about it. A branch whose title is, in lower
// case, another key nests that row.
struct TopicRow {
  QString key;  // one or two words in lower case
  QStringList titles;
};

// All rows. Made at the first call, which any thread may make.
const std::vector<TopicRow>& topicTable();

// The row with exactly this key, or nullptr.
const TopicRow* topicRow(const QString& key);

// The row that shares most words with the title, where a word counts wherever its letters stand in the title; nullptr
// where none shares any. Of equals it is the one whose words stand as words of the title, then the longer one.
const TopicRow* closestTopicRow(const QString& title);

// The rows as they are written down: titles with ", " between them.
struct WrittenTopicRow {
  const char16_t* key;
  const char16_t* titles;
};
std::span<const WrittenTopicRow> businessTopics();
std::span<const WrittenTopicRow> technologyTopics();
std::span<const WrittenTopicRow> knowledgeTopics();
std::span<const WrittenTopicRow> placeTopics();
std::span<const WrittenTopicRow> leisureTopics();
std::span<const WrittenTopicRow> homeTopics();

}  // namespace quilmora
