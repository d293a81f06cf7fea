#pragma once

#include <vector>

#include <QString>

namespace quilmora {

// A key and its description for the user.
struct ShortcutRow {
  QString keys;  // in the notation of the product's data, such as "⇧⌘O"
  QString meaning;
};

// The keys worth knowing, in display order. The keys of commands come from the table.
const std::vector<ShortcutRow>& shortcutsReference();

}  // namespace quilmora
