#pragma once

#include <optional>
#include <utility>

#include <QString>

namespace quilmora {

// The desktop's clipboard, as far as the editor reads it by itself; text fields see to their own pasting.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  // The text on the clipboard, or nothing where it holds none. What other things can be told as text, such as files by
  // their names, is no text.
  virtual std::optional<QString> text() const = 0;
};

// Holds what a test or a script puts there; empty at first.
class MemoryClipboard final : public Clipboard {
 public:
  std::optional<QString> text() const override { return m_text; }
  void setText(std::optional<QString> text) { m_text = std::move(text); }

 private:
  std::optional<QString> m_text;
};

}  // namespace quilmora
