#pragma once

#include <span>
#include <vector>

#include <QString>
#include <QStringList>

namespace quilmora {

// A subject that the offline generator knows, with the branches of a map about it. A branch whose lower-case title is
// another key nests that row.
struct TopicRow {
  QString key;  // one or two words in lower case
  QStringList titles;
};

// All rows. Built at the first call, on any thread.
const std::vector<TopicRow>& topicTable();

// The row with exactly this key, or nullptr.
const TopicRow* topicRow(const QString& key);

// The row that shares most words with the title, counting words that occur inside others; nullptr if none does. Among
// equals, the row with more whole words of the title wins, then the longer one.
const TopicRow* closestTopicRow(const QString& title);

// The rows in source form: titles separated by ", ".
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
