#include "app/AlertDialog.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/Alerts.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"

namespace quilmora {

namespace {

constexpr int messageWidth = 360;
constexpr int symbolSize = 28;

}  // namespace

AlertDialog::AlertDialog(const Look& look, Kind kind, const QString& title, const QString& message, QWidget* parent)
    : QDialog(parent) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(title);
  setWindowModality(Qt::WindowModal);

  const bool isError = kind == Kind::error;
  auto* symbol = new SymbolLabel(
      look, isError ? QStringLiteral("exclamationmark.triangle.fill") : QStringLiteral("info.circle"), symbolSize,
      isError ? &Tokens::danger : &Tokens::accent, this);

  auto* heading = new QLabel(title, this);
  heading->setFont(look.font(Look::TextStyle::panelTitle));
  auto* text = new QLabel(this);
  text->setTextFormat(Qt::PlainText);
  text->setText(message);
  text->setWordWrap(true);
  text->setFixedWidth(messageWidth);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);

  auto* button = new QPushButton(tr("OK"), this);
  button->setDefault(true);
  connect(button, &QPushButton::clicked, this, &QDialog::accept);

  auto* words = new QVBoxLayout;
  words->setSpacing(metrics::gap);
  words->addWidget(heading);
  words->addWidget(text);
  auto* row = new QHBoxLayout;
  row->setSpacing(metrics::gapLarge);
  row->addWidget(symbol, 0, Qt::AlignTop);
  row->addLayout(words, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(button);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(metrics::gapHuge, metrics::gapHuge, metrics::gapHuge, metrics::gapLarge);
  column->setSpacing(metrics::gapLarge);
  column->addLayout(row);
  column->addLayout(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
  button->setFocus();
}

AlertDialog* makeAboutDialog(const Look& look, QWidget* parent) {
  const QString message =
      QCoreApplication::translate("About", "Version %1\n\nMind maps on a free canvas, kept in plain files.")
          .arg(QStringLiteral(QUILMORA_VERSION));
  return new AlertDialog(look, AlertDialog::Kind::information, QStringLiteral("Quilmora"), message, parent);
}

void DialogAlerts::showError(QWidget* parent, const QString& message) {
  auto* dialog = new AlertDialog(m_look, AlertDialog::Kind::error, QStringLiteral("Error"), message, parent);
  dialog->open();
}

}  // namespace quilmora
