#pragma once

#include <QObject>
#include <QPointer>

#include "commands/PaletteCommands.h"

class QWidget;

namespace quilmora {

class CommandPalette;
class Look;

// Opens the palette over a window and runs the chosen command. The palette exists only while it is open.
class PaletteOpener final : public QObject {
  Q_OBJECT

 public:
  // All must outlive it; the window is its parent. The canvas gets the keyboard if nothing had it.
  PaletteOpener(const Look& look, CommandTargets targets, QWidget& canvas, QWidget* window);
  ~PaletteOpener() override;

  // Opens the palette, or closes the open one.
  void toggle();
  // nullptr while it is closed. It counts as open until the chosen command has run.
  CommandPalette* palette() const;

 private:
  void open();
  void close();

  const Look& m_look;
  CommandTargets m_targets;
  QWidget& m_canvas;
  QWidget* m_window;
  QPointer<CommandPalette> m_palette;
};

}  // namespace quilmora
