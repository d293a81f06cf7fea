#pragma once

#include <QString>

namespace quilmora {

// A part of a text that is small enough to be laid out at each key; what is before and after it is only kept. A text of
// usual length is its own part.
class TextPart {
 public:
  // Longer texts are laid out in part. All numbers here are UTF-16 units.
  static constexpr qsizetype longest = 2000;
  // The length of the part around the text cursor.
  static constexpr qsizetype length = 1000;
  // When the text cursor comes closer than this to the end of a part, the part moves on.
  static constexpr qsizetype margin = 100;

  // Chooses and returns the part of `whole` around `cursor`. Never splits a user-perceived character.
  QString choose(const QString& whole, qsizetype cursor);
  // The whole text when the part reads `part`.
  QString whole(const QString& part) const { return m_before + part + m_behind; }
  // Where the part begins in the whole text.
  qsizetype start() const { return m_before.size(); }
  bool isWhole() const { return m_before.isEmpty() && m_behind.isEmpty(); }
  // Whether another part should be chosen, for a part of this size with the text cursor at `cursor` in it.
  bool isOutgrown(qsizetype size, qsizetype cursor) const;

 private:
  QString m_before;
  QString m_behind;
};

}  // namespace quilmora
