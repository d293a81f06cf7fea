#pragma once

#include <QLineEdit>

#include "app/AppFixture.h"
#include "app/look/CardShadow.h"
#include "app/palette/CommandList.h"
#include "app/palette/CommandPalette.h"
#include "app/palette/PaletteOpener.h"
#include "support/Lines.h"
#include "support/QtPrinters.h"

namespace quilmora {

using test::lines;

class CommandPaletteTest : public AppTest {
 protected:
  // Presses the key where a user's key would arrive, with the menus' keys before it.
  void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* owner = QApplication::focusWidget();
    ASSERT_NE(owner, nullptr);
    QTest::keyClick(owner, static_cast<Qt::Key>(key), modifiers);
  }
  void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text)); }
  void open() {
    startActive();
    press(Qt::Key_K, Qt::ControlModifier);
    ASSERT_NE(palette(), nullptr);
  }
  CommandPalette* palette() { return window().paletteOpener().palette(); }
  CommandList& list() { return palette()->list(); }
  QRect panelPlace() { return palette()->geometry().marginsRemoved(cardShadowMargins()); }
  QStringList titles() {
    QStringList titles;
    for (const CommandItem& item : list().items()) titles.append(item.title);
    return titles;
  }
  QString highlighted() { return titles().value(list().highlightedIndex()); }
  QPoint middleOf(int row) { return list().visualRect(list().model()->index(row, 0)).center(); }
  // Moves the pointer onto the row and rests there.
  void hover(int row) {
    for (const QPoint step : {QPoint(-3, 0), QPoint(0, 0)}) QTest::mouseMove(list().viewport(), middleOf(row) + step);
  }
  bool canvasHasKeyboard() { return QApplication::focusWidget() == &window().canvas(); }
};

}  // namespace quilmora
