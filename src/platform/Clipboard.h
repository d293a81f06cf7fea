#pragma once

#include <optional>
#include <utility>

#include <QString>

namespace quilmora {

// The desktop's clipboard, for what the editor itself reads; text fields handle their own pasting.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  // The text on the clipboard, or nothing. Other contents with a text form, such as the names of copied files, do not
  // count.
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
