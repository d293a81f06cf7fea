#pragma once

#include <functional>
#include <vector>

#include "app/settings/SettingControls.h"

namespace quilmora {

class FormPage;

// The pages of the settings window that show only settings. Each is created when it is first shown.
FormPage* makeGeneralPage(const Look& look, SettingsStore& settings, QWidget* parent);
FormPage* makeAppearancePage(const Look& look, SettingsStore& settings, const std::function<void()>& makeTheme,
                             QWidget* parent);
FormPage* makeInteractionPage(const Look& look, SettingsStore& settings, QWidget* parent);

// Every theme under the title of its group.
std::vector<SettingPicker::Row> themeRows(const SettingsStore& settings);

}  // namespace quilmora
