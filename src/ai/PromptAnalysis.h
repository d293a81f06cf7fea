#pragma once

#include <cstdint>
#include <optional>

#include <QString>

namespace quilmora {

// What the offline generator reads from a prompt.
struct ParsedPrompt {
  enum class Kind { swot, comparison, timeline, prosCons, fiveWhys, decision };

  QString title;                      // never empty
  std::optional<std::int64_t> count;  // requested branches
  std::optional<std::int64_t> depth;  // requested levels
  std::optional<Kind> kind;           // absent for a map of topics

  bool operator==(const ParsedPrompt&) const = default;
};

QString rawValue(ParsedPrompt::Kind kind);  // "proscons"

ParsedPrompt analyzePrompt(const QString& prompt);

// Each word with its first character in upper case and the rest unchanged, joined by single spaces.
QString withCapitalWords(const QString& text);

}  // namespace quilmora
