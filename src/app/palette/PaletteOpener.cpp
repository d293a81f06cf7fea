#include "app/palette/PaletteOpener.h"

#include "app/palette/CommandPalette.h"

namespace quilmora {

PaletteOpener::PaletteOpener(const Look& look, CommandTargets targets, QWidget& canvas, QWidget* window)
    : QObject(window), m_look(look), m_targets(targets), m_canvas(canvas), m_window(window) {}

PaletteOpener::~PaletteOpener() {
  delete m_palette;
}

CommandPalette* PaletteOpener::palette() const {
  return m_palette;
}

void PaletteOpener::toggle() {
  if (m_palette == nullptr)
    open();
  else
    close();
}

void PaletteOpener::open() {
  m_palette = new CommandPalette(m_look, m_targets.settings, m_canvas, m_window);
  connect(m_palette, &CommandPalette::left, this, &PaletteOpener::close);
  connect(m_palette, &CommandPalette::commandChosen, this, [this](const QString& actionKey) {
    // A command may destroy the window.
    const QPointer guard(this);
    runCommand(actionKey, m_targets);
    if (guard) close();
  });
  m_palette->open();
}

void PaletteOpener::close() {
  if (m_palette == nullptr) return;
  CommandPalette* palette = m_palette;
  m_palette.clear();
  palette->leave();
  palette->deleteLater();
}

}  // namespace quilmora
