#include "app/inspectors/Inspector.h"

#include <QVBoxLayout>

#include "app/look/ColorWell.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "themes/Color.h"

namespace quilmora {

QFont smallFont(const Look& look) {
  QFont font = look.font(Look::TextStyle::sectionHeader);
  font.setWeight(QFont::Normal);
  return font;
}

void showColor(ColorWell& well, const QString& hex) {
  if (!well.isChoosing()) well.setColor(colorFromHex(hex));
}

Inspector::Inspector(const InspectorContext& context, QWidget* parent)
    : QWidget(parent), m_context(context), m_column(new QVBoxLayout(this)) {
  m_column->setContentsMargins(0, 0, 0, 0);
  m_column->setSpacing(metrics::sectionGap);
}

TextLabel* Inspector::addHeading(const QString& title, const QString& note) {
  addSection();
  m_section->setSpacing(metrics::gapSmall);
  auto* label = new TextLabel(look(), title, &Tokens::text, look().font(Look::TextStyle::baseSemibold),
                              TextLabel::Overflow::elides, this);
  m_section->addWidget(label);
  addHint(note);
  return label;
}

void Inspector::addSection(const QString& name) {
  m_section = new QVBoxLayout;
  m_section->setSpacing(metrics::gap);
  m_column->addLayout(m_section);
  if (name.isEmpty()) return;
  m_section->addWidget(new TextLabel(look(), name, &Tokens::secondary, look().font(Look::TextStyle::sectionHeader),
                                     TextLabel::Overflow::elides, this));
}

void Inspector::addPart(QWidget* part) {
  m_section->addWidget(part);
}

void Inspector::addRow(const QString& name, QWidget* control, Place place) {
  auto* row = new QHBoxLayout;
  row->setSpacing(metrics::gapMedium);
  row->addWidget(new TextLabel(look(), name, &Tokens::secondary, look().font(), TextLabel::Overflow::elides, this), 2);
  row->addWidget(control, place == Place::overRest ? 3 : 0);
  m_section->addLayout(row);
}

TextLabel* Inspector::addHint(const QString& text) {
  auto* hint = new TextLabel(look(), text, &Tokens::secondary, smallFont(look()), TextLabel::Overflow::wraps, this);
  m_section->addWidget(hint);
  return hint;
}

void Inspector::addWells(const std::vector<std::pair<QString, ColorWell*>>& wells) {
  for (const auto& [name, well] : wells) addRow(name, well, Place::atEdge);
}

}  // namespace quilmora
