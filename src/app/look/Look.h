#pragma once

#include <memory>

#include <QFont>
#include <QIcon>
#include <QObject>
#include <QPalette>

#include "app/look/Tokens.h"

class QApplication;

namespace quilmora {

class DesktopAppearance;
class SettingsStore;

// The current look: light or dark by the setting `appearance`, else by the desktop. Every view takes its colours and
// fonts from here and repaints at changed().
class Look : public QObject {
  Q_OBJECT

 public:
  enum class TextStyle { base, baseSemibold, sectionHeader, panelTitle };

  // Reads the setting at once. Both must outlive the look.
  Look(const SettingsStore& settings, const DesktopAppearance& desktop);

  const Tokens& tokens() const { return *m_tokens; }
  bool isDark() const { return m_tokens->isDark; }
  // Whether animations are off, according to the desktop.
  bool isStill() const { return m_isStill; }
  // In the desktop's interface font, scaled with it.
  QFont font(TextStyle style = TextStyle::base) const;
  // For parts with their own text size; sizes are given for a base of 13.
  QFont fontOfSize(int size, QFont::Weight weight = QFont::Normal) const;
  QPalette palette() const;
  // A symbol that takes its colour when it is drawn: the text colour, the accent when on, fainter when disabled.
  QIcon icon(const QString& symbol) const;

  // Sets our style, palette and font on the application. Call before the first window is created.
  void install(QApplication& application) const;
  // Reads the setting again.
  void refresh();

 Q_SIGNALS:
  void changed();

 private:
  const SettingsStore& m_settings;
  const DesktopAppearance& m_desktop;
  QFont m_baseFont;
  // Shared with the style and the icons, which may outlive this object.
  std::shared_ptr<Tokens> m_tokens;
  bool m_isStill = false;
  mutable bool m_isInstalled = false;
};

// A palette whose standard roles all follow the tokens.
QPalette paletteFor(const Tokens& tokens);

}  // namespace quilmora
