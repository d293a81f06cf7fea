#include "app/dialogs/AlertDialog.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/dialogs/Alerts.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"

namespace quilmora {

namespace {

constexpr int messageWidth = 360;
constexpr int symbolSize = 28;

struct KindLook {
  QString symbol;
  TokenColor color;
};

KindLook lookOf(AlertDialog::Kind kind) {
  switch (kind) {
    case AlertDialog::Kind::error:
      return {QStringLiteral("exclamationmark.triangle.fill"), &Tokens::danger};
    case AlertDialog::Kind::warning:
      return {QStringLiteral("exclamationmark.triangle.fill"), &Tokens::warning};
    case AlertDialog::Kind::information:
      return {QStringLiteral("info.circle"), &Tokens::accent};
  }
  Q_UNREACHABLE();
}

}  // namespace

AlertDialog::AlertDialog(const Look& look, Kind kind, const QString& title, const QString& message, QWidget* parent)
    : QDialog(parent), m_buttons(new QHBoxLayout), m_close(new QPushButton(tr("OK"), this)) {
  setWindowTitle(QGuiApplication::applicationDisplayName());
  setWindowModality(Qt::WindowModal);

  const KindLook shown = lookOf(kind);
  auto* symbol = new SymbolLabel(look, shown.symbol, symbolSize, shown.color, this);

  auto* heading = new QLabel(title, this);
  heading->setFont(look.font(Look::TextStyle::panelTitle));
  heading->setWordWrap(true);
  auto* text = new QLabel(this);
  text->setTextFormat(Qt::PlainText);
  text->setText(message);
  text->setWordWrap(true);
  text->setFixedWidth(messageWidth);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);

  m_close->setDefault(true);
  connect(m_close, &QPushButton::clicked, this, &QDialog::reject);

  auto* words = new QVBoxLayout;
  words->setSpacing(metrics::gap);
  words->addWidget(heading);
  words->addWidget(text);
  auto* row = new QHBoxLayout;
  row->setSpacing(metrics::gapLarge);
  row->addWidget(symbol, 0, Qt::AlignTop);
  row->addLayout(words, 1);
  m_buttons->setSpacing(metrics::gap);
  m_buttons->addStretch();
  m_buttons->addWidget(m_close);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(metrics::gapHuge, metrics::gapHuge, metrics::gapHuge, metrics::gapLarge);
  column->setSpacing(metrics::gapLarge);
  column->addLayout(row);
  column->addLayout(m_buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
  m_close->setFocus();
}

void AlertDialog::addAction(const QString& text, bool isDestructive) {
  auto* button = new QPushButton(text, this);
  button->setProperty("destructive", isDestructive);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, &QDialog::accept);
  m_buttons->insertWidget(1, button);
  m_close->setText(tr("Cancel"));
}

bool askToProceed(const Look& look, const QString& title, const QString& message, const QString& action,
                  QWidget* parent) {
  AlertDialog dialog(look, AlertDialog::Kind::warning, title, message, parent);
  dialog.addAction(action, true);
  return dialog.exec() == QDialog::Accepted;
}

AlertDialog* makeAboutDialog(const Look& look, QWidget* parent) {
  const QString message =
      QCoreApplication::translate("About", "Version %1\n\nMind maps on a free canvas, kept in plain files.")
          .arg(QStringLiteral(QUILMORA_VERSION));
  return new AlertDialog(look, AlertDialog::Kind::information, QStringLiteral("Quilmora"), message, parent);
}

void DialogAlerts::showError(QWidget* parent, const QString& message) {
  auto* dialog = new AlertDialog(m_look, AlertDialog::Kind::error, QStringLiteral("Error"), message, parent);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

}  // namespace quilmora
