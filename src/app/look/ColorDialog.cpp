#include "app/look/ColorDialog.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QVBoxLayout>

#include "app/look/KeyboardScroll.h"
#include "app/look/Tokens.h"

namespace quilmora {

namespace {

// Reserved for the desktop's window frame: its title and edges, before their size is known.
constexpr QSize frameRoom(16, 48);
constexpr int numberWidth = 60;

// Embedded as a page of another dialog, to which it leaves Escape and Return.
class ColorPage final : public QColorDialog {
 protected:
  void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
};

class PageScroll final : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;

  QSize sizeHint() const override {
    return widget()->sizeHint() + QSize(2 * frameWidth() + verticalScrollBar()->sizeHint().width(), 2 * frameWidth());
  }
};

}  // namespace

ColorDialog::ColorDialog(const QString& title, const QColor& color, bool hasOpacity, QWidget* parent)
    : QDialog(parent), m_colors(new ColorPage) {
  setWindowTitle(title);
  m_colors->setWindowFlags(Qt::Widget);
  m_colors->setOptions(QColorDialog::NoButtons | QColorDialog::DontUseNativeDialog);
  m_colors->setOption(QColorDialog::ShowAlphaChannel, hasOpacity);
  m_colors->setCurrentColor(color);
  // Our arrows take more space than those that its page was laid out for.
  for (QSpinBox* number : m_colors->findChildren<QSpinBox*>()) number->setMinimumWidth(numberWidth);
  connect(m_colors, &QColorDialog::currentColorChanged, this, &ColorDialog::colorChanged);

  auto* scroll = new PageScroll(this);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(m_colors);
  scrollToKeyboard(*scroll);
  m_colors->show();
  auto* buttons = new QDialogButtonBox(this);
  // The mnemonics use letters that the page of colours leaves free.
  auto* choose = buttons->addButton(tr("Ch&oose"), QDialogButtonBox::AcceptRole);
  choose->setDefault(true);
  buttons->addButton(tr("Ca&ncel"), QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(metrics::gap, metrics::gap, metrics::gap, metrics::gapLarge);
  column->addWidget(scroll, 1);
  column->addWidget(buttons);
}

QColor ColorDialog::color() const {
  return m_colors->currentColor();
}

void ColorDialog::setColor(const QColor& color) {
  m_colors->setCurrentColor(color);
}

void ColorDialog::showEvent(QShowEvent* event) {
  resize(sizeHint().boundedTo(screen()->availableSize() - frameRoom));
  QDialog::showEvent(event);
}

}  // namespace quilmora
