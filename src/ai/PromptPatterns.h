#pragma once

#include <optional>

#include <QString>

namespace quilmora {

// What the offline generator looks for in a prompt: the first match of each pattern, as a Unicode regular expression
// would find it, in time linear in the text. The first four expect a lower-case text; the others ignore case.

struct PatternMatch {
  qsizetype start = 0;
  qsizetype end = 0;
  QString capture;
};

// \b(\d+)\s*(?:nodes?|topics?|branches?|items?)\b, else \bwith\s+(\d+)\b
std::optional<PatternMatch> findCount(const QString& text);

// \b(?:with\s+)?depth\s*(\d+)\b, else \b(\d+)\s*levels?\s*(?:deep)?\b
std::optional<PatternMatch> findDepth(const QString& text);

// \b(?:and\s+)?(?:color|colour|in)\s+(\w+)\b
std::optional<PatternMatch> findColorWords(const QString& text);

// \b(?:and\s+)?(?:style|theme|layout)\s+\w+\b, without a capture
std::optional<PatternMatch> findStyleWords(const QString& text);

// (?:about|of|for|on)\s+(?:the\s+)?(.+?)(?:\s*$), else
// (?:create|generate|build|make|brainstorm|outline)\s+(?:a\s+)?(?:map\s+)?(?:about\s+|of\s+|for\s+|on\s+)?(.+?)(?:\s*$)
// The capture, or nothing.
std::optional<QString> findTopic(const QString& text);

// expand\s+(?:the\s+)?["']?(.+?)["']?$, else
// add\s+\w+\s+to\s+["']?(.+?)["']?$, else
// break\s+down\s+["']?(.+?)["']?$
// The first capture that is not blank, trimmed, or nothing.
std::optional<QString> findExpansionTarget(const QString& text);

}  // namespace quilmora
