#pragma once

#include <cstdint>
#include <optional>

#include <QString>

namespace quilmora {

// What the offline generator understands of a prompt.
struct ParsedPrompt {
  enum class Kind { swot, comparison, timeline, prosCons, fiveWhys, decision };

  QString title;                      // never empty
  std::optional<std::int64_t> count;  // wanted branches
  std::optional<std::int64_t> depth;  // wanted levels
  std::optional<Kind> kind;           // absent: a map of topics

  bool operator==(const ParsedPrompt&) const = default;
};

QString rawValue(ParsedPrompt::Kind kind);  // "proscons"

ParsedPrompt analyzePrompt(const QString& prompt);

// Each word between blanks with its first character in upper case and the rest as it is, joined by one blank.
QString withCapitalWords(const QString& text);

}  // namespace quilmora
