#pragma once

#include <vector>

#include <QWidget>

#include "themes/CustomThemes.h"

class QVBoxLayout;

namespace quilmora {

class Look;
class SettingsStore;
class TextLabel;

// The custom themes in the settings: their number, a button for a new one, and a row for each with a button that
// deletes it.
class CustomThemeList final : public QWidget {
  Q_OBJECT

 public:
  CustomThemeList(const Look& look, SettingsStore& settings, QWidget* parent = nullptr);

 Q_SIGNALS:
  void newThemeWanted();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void refresh();
  void addRow(const CustomTheme& theme);
  void remove(const QString& id);
  void focusAfterRemoval(int row);

  const Look& m_look;
  SettingsStore& m_settings;
  TextLabel* m_count;
  QWidget* m_newTheme;
  QVBoxLayout* m_column;
  std::vector<CustomTheme> m_themes;
  std::size_t m_shownCount;  // maximum number of rows
  std::vector<QWidget*> m_rows;
};

}  // namespace quilmora
