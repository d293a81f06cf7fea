#pragma once

#include <vector>

#include <QByteArray>
#include <QString>

#include "themes/Theme.h"

namespace quilmora {

class SettingsStore;

// A theme made by the user: no category, no gradients.
struct CustomTheme {
  struct NodeColor {
    QString fill;
    QString stroke;
    QString textColor;

    bool operator==(const NodeColor&) const = default;
  };

  QString id;  // a UUID in upper case
  QString name;
  QString background;
  QString edgeColor;
  std::vector<NodeColor> nodeColors;  // by depth

  bool operator==(const CustomTheme&) const = default;
};

// The themes in the settings, in stored order; none if the data cannot be read completely.
std::vector<CustomTheme> loadCustomThemes(const SettingsStore& settings);
void saveCustomThemes(SettingsStore& settings, const std::vector<CustomTheme>& themes);

// Compact JSON, and back; damaged JSON gives no themes.
QByteArray encodeCustomThemes(const std::vector<CustomTheme>& themes);
std::vector<CustomTheme> decodeCustomThemes(const QByteArray& json);

// As pickers and maps know it, with the id "custom_" and its own.
Theme toTheme(const CustomTheme& theme);

// The built-in themes followed by the custom ones, as they are now.
std::vector<Theme> allThemesIncludingCustom(const SettingsStore& settings);

}  // namespace quilmora
