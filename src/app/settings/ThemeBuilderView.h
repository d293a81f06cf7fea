#pragma once

#include <functional>

#include "app/dialogs/Sheet.h"
#include "themes/ThemeDraft.h"

class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace quilmora {

class ColorWell;
class FormPage;
class FormSection;
class ThemePreview;

// Makes a custom theme: name, colours of the canvas and by depth, a live preview, and the built-in themes to start
// from. Saving passes the theme to `onSave` and closes the sheet.
class ThemeBuilderView final : public Sheet {
  Q_OBJECT

 public:
  using OnSave = std::function<void(const CustomTheme& theme)>;

  ThemeBuilderView(const Look& look, OnSave onSave, QWidget* window);

  const ThemeDraft& draft() const { return m_draft; }
  void setDraft(ThemeDraft draft);

  void open() override;

 private:
  void addHead();
  void addForm();
  void addStartingPoints();
  void addButtons();
  void refreshLevels();
  QWidget* makeLevelRow(std::size_t index);
  QWidget* makeWell(const QString& caption, const QString& level, QColor ThemeDraft::LevelColors::*color,
                    const QUuid& id);
  void addLevel();
  void removeLevel(const QUuid& id);
  void draftChanged();
  void save();

  OnSave m_onSave;
  ThemeDraft m_draft = ThemeDraft::initial();
  FormPage* m_form = nullptr;
  QLineEdit* m_name = nullptr;
  ColorWell* m_background = nullptr;
  ColorWell* m_edgeColor = nullptr;
  FormSection* m_levels = nullptr;
  std::vector<QWidget*> m_levelRows;
  QPushButton* m_addLevel = nullptr;
  ThemePreview* m_preview = nullptr;
};

}  // namespace quilmora
