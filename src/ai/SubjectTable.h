#pragma once

#include <span>
#include <vector>

#include <QString>
#include <QStringList>

namespace quilmora {

// A subject that the offline generator knows, with the branches of a map about it. A branch whose lower-case title is
// another key nests that row.
struct Subject {
  QString key;  // one or two words in lower case
  QStringList titles;
};

// All rows. Built at the first call, on any thread.
const std::vector<Subject>& subjectTable();

// The row with exactly this key, or nullptr.
const Subject* subjectOf(const QString& key);

// The row that shares most words with the title, counting words that occur inside others; nullptr if none does. Among
// equals, the row with more whole words of the title wins, then the longer one.
const Subject* closestSubject(const QString& title);

// The rows in source form: titles separated by ", ".
struct WrittenSubject {
  const char16_t* key;
  const char16_t* titles;
};
std::span<const WrittenSubject> businessSubjects();
std::span<const WrittenSubject> technologySubjects();
std::span<const WrittenSubject> knowledgeSubjects();
std::span<const WrittenSubject> placeSubjects();
std::span<const WrittenSubject> leisureSubjects();
std::span<const WrittenSubject> homeSubjects();

}  // namespace quilmora
