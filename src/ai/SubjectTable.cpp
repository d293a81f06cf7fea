#include "ai/SubjectTable.h"

#include <tuple>

#include <QHash>

#include "ai/TextClasses.h"

namespace quilmora {

namespace {

std::vector<Subject> readTable() {
  std::vector<Subject> rows;
  for (const auto& chapter : {businessSubjects(), technologySubjects(), knowledgeSubjects(), placeSubjects(),
                              leisureSubjects(), homeSubjects()})
    for (const WrittenSubject& row : chapter)
      rows.push_back({QString::fromUtf16(row.key),
                      QString::fromUtf16(row.titles).split(QStringLiteral(", "), Qt::KeepEmptyParts)});
  return rows;
}

bool hasWholeWord(const QString& text, const QString& word) {
  for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1))
    if (isWordBoundary(text, at) && isWordBoundary(text, at + word.size())) return true;
  return false;
}

}  // namespace

const std::vector<Subject>& subjectTable() {
  static const std::vector<Subject> table = readTable();
  return table;
}

const Subject* subjectOf(const QString& key) {
  static const QHash<QString, const Subject*> rows = [] {
    QHash<QString, const Subject*> byKey;
    for (const Subject& row : subjectTable()) byKey.insert(row.key, &row);
    return byKey;
  }();
  return rows.value(key);
}

const Subject* closestSubject(const QString& title) {
  const QString lower = title.toLower();
  const Subject* best = nullptr;
  std::tuple<int, int, qsizetype> bestScore;  // words found, whole words of the title, letters
  for (const Subject& row : subjectTable()) {
    std::tuple<int, int, qsizetype> score;
    for (const QString& word : row.key.split(u' ')) {
      if (!lower.contains(word)) continue;
      ++std::get<0>(score);
      std::get<1>(score) += hasWholeWord(lower, word) ? 1 : 0;
      std::get<2>(score) += word.size();
    }
    if (std::get<0>(score) == 0 || (best && score <= bestScore)) continue;
    best = &row;
    bestScore = score;
  }
  return best;
}

}  // namespace quilmora
