#pragma once

#include <QString>

namespace quilmora {

// A part of a text that is small enough to be laid out at each key; what lies before and behind it is only kept. A text
// of usual length is its own part.
class TextPart {
 public:
  // Longer texts are laid out in part. In UTF-16 units, as all numbers here.
  static constexpr qsizetype longest = 2000;
  // So much is laid out of them around the text cursor.
  static constexpr qsizetype length = 1000;
  // Where the text cursor comes closer to the end of a part, the part moves on.
  static constexpr qsizetype margin = 100;

  // Chooses the part of `whole` around `cursor`, and gives it. Never separates what makes up one character.
  QString choose(const QString& whole, qsizetype cursor);
  // The whole text when the part reads `part`.
  QString whole(const QString& part) const { return m_before + part + m_behind; }
  // Where in the whole text the part begins.
  qsizetype start() const { return m_before.size(); }
  bool isWhole() const { return m_before.isEmpty() && m_behind.isEmpty(); }
  // Whether another part should be chosen, for a part of this size with the text cursor at `cursor` in it.
  bool isOutgrown(qsizetype size, qsizetype cursor) const;

 private:
  QString m_before;
  QString m_behind;
};

}  // namespace quilmora
