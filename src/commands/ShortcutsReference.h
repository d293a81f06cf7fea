#pragma once

#include <vector>

#include <QString>

namespace quilmora {

// What a key does, told to a person.
struct ShortcutRow {
  QString keys;  // as the product's data tells keys, such as "⇧⌘O"
  QString meaning;
};

// The keys worth knowing, in the order in which they are shown. Those of commands are the ones of the table.
const std::vector<ShortcutRow>& shortcutsReference();

}  // namespace quilmora
