#include "app/settings/ThemeBuilderView.h"

#include <algorithm>

#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/look/ColorWell.h"
#include "app/look/Look.h"
#include "app/look/ThemeSwatch.h"
#include "app/settings/SettingsForm.h"
#include "app/settings/ThemePreview.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int panelWidth = 432;
constexpr int swatchesInRow = 5;
constexpr int nameWidth = 220;

// Leaves Alt with a letter to the sheet's mnemonics; the toolkit would type the letter.
class NameField final : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->modifiers() == Qt::AltModifier)
      event->ignore();
    else
      QLineEdit::keyPressEvent(event);
  }
};

QString levelName(std::size_t index) {
  return index == 0 ? ThemeBuilderView::tr("Root Topic") : ThemeBuilderView::tr("Level %1").arg(index);
}

}  // namespace

ThemeBuilderView::ThemeBuilderView(const Look& look, OnSave onSave, QWidget* window)
    : Sheet(look, window), m_onSave(std::move(onSave)) {
  setAccessibleName(tr("Theme Builder"));
  content().setContentsMargins(0, metrics::gapLarge, 0, metrics::gapLarge);
  content().setSpacing(metrics::gapMedium);
  addHead();
  addForm();
  addButtons();
  setMinPanelWidth(panelWidth);
  connect(this, &Sheet::cancelled, this, qOverload<>(&Sheet::finish));
  setDraft(m_draft);
}

void ThemeBuilderView::addHead() {
  auto* title = new TextLabel(look(), tr("Theme Builder"), &Tokens::text, look().font(Look::TextStyle::panelTitle),
                              TextLabel::Overflow::elides, &panel());
  auto* head = new QHBoxLayout;
  head->setContentsMargins(metrics::gapHuge, 0, metrics::gapHuge, 0);
  head->addWidget(title);
  content().addLayout(head);
}

void ThemeBuilderView::addForm() {
  m_form = new FormPage(look(), &Tokens::raised, &panel());
  m_form->setAccessibleName(tr("Theme Builder"));
  content().addWidget(m_form, 1);

  m_name = new NameField(m_form->widget());
  m_name->setMinimumWidth(nameWidth);
  connect(m_name, &QLineEdit::textEdited, this, [this](const QString& name) { m_draft.name = name; });
  connect(m_name, &QLineEdit::returnPressed, this, &ThemeBuilderView::save);
  m_form->addSection(tr("Name"))->addRow(tr("Theme Name"), m_name);

  FormSection* canvas = m_form->addSection(tr("Canvas"));
  const auto addWell = [&](const QString& name, QColor ThemeDraft::*color) {
    auto* well = new ColorWell(look(), name, canvas);
    connect(well, &ColorWell::colorChanged, this, [this, color](const QColor& chosen) {
      m_draft.*color = chosen;
      draftChanged();
    });
    canvas->addRow(name, well);
    return well;
  };
  m_background = addWell(tr("Background"), &ThemeDraft::background);
  m_edgeColor = addWell(tr("Edge Color"), &ThemeDraft::edgeColor);

  m_levels = m_form->addSection(tr("Node Colors by Depth"));
  m_addLevel = new QPushButton(tr("&Add Level"), m_levels);
  m_addLevel->setIcon(look().icon(QStringLiteral("plus")));
  m_addLevel->setFlat(true);
  connect(m_addLevel, &QPushButton::clicked, this, &ThemeBuilderView::addLevel);
  m_levels->addRow(m_addLevel);

  FormSection* preview = m_form->addSection(tr("Preview"));
  m_preview = new ThemePreview(look(), preview);
  preview->addRow(m_preview);
  addStartingPoints();
}

void ThemeBuilderView::addStartingPoints() {
  FormSection* section = m_form->addSection(tr("Start from"));
  auto* swatches = new QWidget(section);
  auto* grid = new QGridLayout(swatches);
  grid->setContentsMargins(metrics::gapSmall, metrics::gapSmall, metrics::gapSmall, metrics::gapSmall);
  grid->setSpacing(metrics::gapSmall);
  int index = 0;
  for (const Theme& theme : allThemes()) {
    auto* swatch = new ThemeSwatch(look(), theme, swatches);
    connect(swatch, &ThemeSwatch::clicked, this, [this, &theme] { setDraft(ThemeDraft::from(theme)); });
    grid->addWidget(swatch, index / swatchesInRow, index % swatchesInRow, Qt::AlignCenter);
    ++index;
  }
  section->addRow(swatches);
}

void ThemeBuilderView::addButtons() {
  auto* cancel = new QPushButton(tr("&Cancel"), &panel());
  auto* saving = new QPushButton(tr("&Save"), &panel());
  saving->setProperty("primary", true);
  connect(cancel, &QPushButton::clicked, this, qOverload<>(&Sheet::finish));
  connect(saving, &QPushButton::clicked, this, &ThemeBuilderView::save);
  auto* buttons = new QHBoxLayout;
  buttons->setContentsMargins(metrics::gapHuge, 0, metrics::gapHuge, 0);
  buttons->setSpacing(metrics::gap);
  buttons->addStretch();
  buttons->addWidget(cancel);
  buttons->addWidget(saving);
  content().addLayout(buttons);
}

void ThemeBuilderView::open() {
  Sheet::open();
  m_name->setFocus(Qt::ShortcutFocusReason);
  m_name->selectAll();
}

void ThemeBuilderView::setDraft(ThemeDraft draft) {
  m_draft = std::move(draft);
  plain::setText(*m_name, m_draft.name);
  m_background->setColor(m_draft.background);
  m_edgeColor->setColor(m_draft.edgeColor);
  refreshLevels();
  draftChanged();
}

void ThemeBuilderView::refreshLevels() {
  for (QWidget* row : std::exchange(m_levelRows, {})) {
    row->hide();
    row->deleteLater();
  }
  for (std::size_t index = 0; index < m_draft.levels.size(); ++index) {
    QWidget* row = makeLevelRow(index);
    m_levels->insertRow(static_cast<int>(index), row);
    m_levelRows.push_back(row);
  }
  // Tab follows the order of creation.
  m_addLevel->raise();
  // The sheet gets the form's new height.
  m_form->widget()->layout()->activate();
  m_form->updateGeometry();
}

QWidget* ThemeBuilderView::makeLevelRow(std::size_t index) {
  const ThemeDraft::LevelColors& level = m_draft.levels[index];
  const QString name = levelName(index);
  auto* row = new QWidget(m_levels);
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(metrics::gapMedium, metrics::labelGap, metrics::gap, metrics::labelGap);
  line->setSpacing(metrics::gap);
  auto* label = new TextLabel(look(), name, &Tokens::text, look().font(), TextLabel::Overflow::elides, row);
  label->setMinimumHeight(metrics::toolbarButton);
  line->addWidget(label, 1);
  line->addWidget(makeWell(tr("Fill"), name, &ThemeDraft::LevelColors::fill, level.id));
  line->addWidget(makeWell(tr("Border"), name, &ThemeDraft::LevelColors::stroke, level.id));
  line->addWidget(makeWell(tr("Text"), name, &ThemeDraft::LevelColors::text, level.id));
  if (m_draft.levels.size() > 1) {
    auto* remove = new IconButton(look(), QStringLiteral("minus.circle"), tr("Remove %1").arg(name), row);
    connect(remove, &IconButton::clicked, this, [this, id = level.id] { removeLevel(id); });
    line->addWidget(remove);
  }
  return row;
}

// The captions are above the wells, whose names include the level.
QWidget* ThemeBuilderView::makeWell(const QString& caption, const QString& level,
                                    QColor ThemeDraft::LevelColors::*color, const QUuid& id) {
  const auto find = [this, id] { return std::ranges::find(m_draft.levels, id, &ThemeDraft::LevelColors::id); };
  auto* both = new QWidget(m_levels);
  auto* column = new QVBoxLayout(both);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* label = new TextLabel(look(), caption, &Tokens::secondary, look().font(Look::TextStyle::sectionHeader),
                              TextLabel::Overflow::elides, both);
  label->setAlignment(Qt::AlignCenter);
  auto* well = new ColorWell(look(), tr("%1: %2").arg(level, caption), both);
  well->setColor((*find()).*color);
  connect(well, &ColorWell::colorChanged, this, [this, find, color](const QColor& chosen) {
    if (const auto found = find(); found != m_draft.levels.end()) (*found).*color = chosen;
    draftChanged();
  });
  column->addWidget(label);
  column->addWidget(well, 0, Qt::AlignHCenter);
  return both;
}

void ThemeBuilderView::addLevel() {
  m_draft.addLevel();
  refreshLevels();
  draftChanged();
  m_form->ensureWidgetVisible(m_addLevel);
}

void ThemeBuilderView::removeLevel(const QUuid& id) {
  m_draft.removeLevel(id);
  refreshLevels();
  draftChanged();
  m_addLevel->setFocus(Qt::OtherFocusReason);
}

void ThemeBuilderView::draftChanged() {
  m_preview->setTheme(toTheme(m_draft.toCustomTheme()));
}

void ThemeBuilderView::save() {
  m_onSave(m_draft.toCustomTheme());
  finish();
}

}  // namespace quilmora
