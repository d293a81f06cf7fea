#include "app/settings/SettingsForm.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/look/KeyboardScroll.h"
#include "app/look/Look.h"
#include "app/look/Paint.h"

namespace quilmora {

namespace {

constexpr int formRowHeight = 40;
// Marks a row that belongs to the one above it.
constexpr char continuesRow[] = "continuesRow";

}  // namespace

class FormSection::Card final : public QWidget {
 public:
  Card(const Look& look, QWidget* parent) : QWidget(parent), m_look(look) {
    connect(&look, &Look::changed, this, [this] { update(); });
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const Tokens& tokens = m_look.tokens();
    paint::fillBordered(painter, rect(), metrics::cardRadius, tokens.raised, tokens.hairline);
    for (const QObject* child : children()) {
      const auto* row = qobject_cast<const QWidget*>(child);
      if (row == nullptr || row->isHidden() || row->y() <= 1 || row->property(continuesRow).toBool()) continue;
      const QRectF line(metrics::gapMedium, row->y(), width() - metrics::gapMedium, 1);
      paint::drawHairline(painter, line, Qt::TopEdge, tokens.hairline);
    }
  }

 private:
  const Look& m_look;
};

FormSection::FormSection(const Look& look, const QString& title, QWidget* parent)
    : QWidget(parent), m_look(look), m_card(new Card(look, this)), m_rows(new QVBoxLayout(m_card)) {
  setAccessibleName(title);
  m_rows->setContentsMargins(0, 0, 0, 0);
  m_rows->setSpacing(0);
  auto* header = new TextLabel(look, title, &Tokens::secondary, look.font(Look::TextStyle::sectionHeader),
                               TextLabel::Overflow::elides, this);
  auto* headerRow = new QHBoxLayout;
  headerRow->setContentsMargins(metrics::gapMedium, 0, metrics::gapMedium, 0);
  headerRow->addWidget(header);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(metrics::labelGap);
  column->addLayout(headerRow);
  column->addWidget(m_card);
}

void FormSection::addRow(QWidget* row) {
  insertRow(rowCount(), row);
}

void FormSection::insertRow(int index, QWidget* row) {
  m_rows->insertWidget(index, row);
  // The layout would show it on a later turn, too late for the keyboard.
  row->show();
}

int FormSection::rowCount() const {
  return m_rows->count();
}

void FormSection::addRow(const QString& label, QWidget* control) {
  auto* row = new QWidget(m_card);
  row->setMinimumHeight(formRowHeight);
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(metrics::gapMedium, metrics::labelGap, metrics::gapMedium, metrics::labelGap);
  line->setSpacing(metrics::gapMedium);
  line->addWidget(new TextLabel(m_look, label, &Tokens::text, m_look.font(), TextLabel::Overflow::elides, row), 1);
  line->addWidget(control);
  if (control->accessibleName().isEmpty()) control->setAccessibleName(label);
  addRow(row);
}

TextLabel* FormSection::addNote(const QString& text, TokenColor color) {
  auto* row = new QWidget(m_card);
  row->setProperty(continuesRow, true);
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(metrics::gapMedium, rowCount() == 0 ? metrics::gap : 2, metrics::gapMedium, metrics::gap);
  auto* note = new TextLabel(m_look, {}, color, m_look.font(), TextLabel::Overflow::wraps, row);
  line->addWidget(note);
  addRow(row);
  setNote(*note, text);
  return note;
}

void FormSection::setNote(TextLabel& note, const QString& text) {
  note.setPlainText(text);
  note.parentWidget()->setVisible(!text.isEmpty());
}

FormPage::FormPage(const Look& look, TokenColor ground, QWidget* parent)
    : QScrollArea(parent), m_look(look), m_column(nullptr) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidgetResizable(true);
  auto* page = new Ground(look, ground, {});
  page->setFocusPolicy(Qt::NoFocus);
  m_column = new QVBoxLayout(page);
  m_column->setContentsMargins(metrics::panelPadding, metrics::panelPadding, metrics::panelPadding,
                               metrics::panelPadding);
  m_column->setSpacing(metrics::sectionGap);
  m_column->addStretch();
  setWidget(page);
  scrollToKeyboard(*this);
}

FormSection* FormPage::addSection(const QString& title, int index) {
  auto* section = new FormSection(m_look, title, widget());
  const int last = m_column->count() - 1;
  m_column->insertWidget(index < 0 ? last : std::min(index, last), section);
  section->show();
  return section;
}

QSize FormPage::sizeHint() const {
  const QSize page = widget()->sizeHint();
  return {page.width() + verticalScrollBar()->sizeHint().width(), page.height()};
}

}  // namespace quilmora
