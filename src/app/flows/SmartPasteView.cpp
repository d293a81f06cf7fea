#include "app/flows/SmartPasteView.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "app/dialogs/SheetRow.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

namespace {

constexpr int panelWidth = 400;
constexpr int headSymbol = 28;

}  // namespace

SmartPasteView::SmartPasteView(const Look& look, MindMapViewModel& editor, QWidget* window)
    : Sheet(look, window), m_editor(editor), m_text(editor.smartPasteText()) {
  setAccessibleName(tr("Smart Paste"));
  const qsizetype count = smartPasteLineCount(m_text);
  addHead(count);
  addRows(count);
  addCancel();
  setMinPanelWidth(panelWidth);
  connect(this, &Sheet::cancelled, this, [this] { m_editor.setShowSmartPaste(false); });
}

void SmartPasteView::addHead(qsizetype count) {
  auto* title = new TextLabel(look(), tr("Smart Paste"), &Tokens::text, look().font(Look::TextStyle::panelTitle),
                              TextLabel::Overflow::wraps, &panel());
  auto* lines = new TextLabel(look(), tr("%1 lines detected").arg(count), &Tokens::secondary, look().font(),
                              TextLabel::Overflow::wraps, &panel());
  auto* words = new QVBoxLayout;
  words->setSpacing(metrics::gapSmall);
  words->addWidget(title);
  words->addWidget(lines);
  auto* head = new QHBoxLayout;
  head->setSpacing(metrics::gapMedium);
  head->addWidget(new SymbolLabel(look(), QStringLiteral("doc.on.clipboard"), headSymbol, &Tokens::accent, &panel()), 0,
                  Qt::AlignVCenter);
  head->addLayout(words, 1);
  content().addLayout(head);
}

void SmartPasteView::addRows(qsizetype count) {
  auto* rows = new QVBoxLayout;
  rows->setSpacing(metrics::gap);
  const auto add = [&](const QString& symbol, const QString& title, const QString& description, SmartPasteMode mode) {
    auto* row = new SheetRow(look(), symbol, title, description, &panel());
    connect(row, &QAbstractButton::clicked, this, [this, mode] { choose(mode); });
    rows->addWidget(row);
  };
  add(QStringLiteral("text.alignleft"), tr("&Single Node"), tr("Paste all text as one node's title"),
      SmartPasteMode::singleNode);
  if (count >= 2)
    add(QStringLiteral("list.bullet"), tr("&Multiple Nodes"), tr("One node per line (%1 nodes)").arg(count),
        SmartPasteMode::multipleNodes);
  if (count >= 2 && smartPasteHasIndent(m_text))
    add(QStringLiteral("list.bullet.indent"), tr("&Nested Outline"), tr("Preserve indentation as hierarchy"),
        SmartPasteMode::nestedOutline);
  content().addLayout(rows);
}

void SmartPasteView::addCancel() {
  auto* cancel = new QPushButton(tr("&Cancel"), &panel());
  connect(cancel, &QPushButton::clicked, this, [this] { m_editor.setShowSmartPaste(false); });
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cancel);
  content().addLayout(buttons);
}

void SmartPasteView::choose(SmartPasteMode mode) {
  m_editor.smartPaste(m_text, mode, std::nullopt);
  m_editor.setShowSmartPaste(false);
}

}  // namespace quilmora
