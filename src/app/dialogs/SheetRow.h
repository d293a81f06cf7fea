#pragma once

#include <QAbstractButton>
#include <QFont>

namespace quilmora {

class Look;

// One choice of a sheet: a symbol, a title with a description below, and a chevron at its end. The texts wrap if they
// do not fit on one line.
class SheetRow final : public QAbstractButton {
  Q_OBJECT

 public:
  // `title` may contain a mnemonic.
  SheetRow(const Look& look, QString symbol, const QString& title, QString description, QWidget* parent = nullptr);

  QString title() const;
  const QString& description() const { return m_description; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Texts {
    QRect title;
    QRect description;
  };
  Texts textsFor(int width) const;

  const Look& m_look;
  QString m_symbol;
  QString m_description;
  QFont m_titleFont;
};

}  // namespace quilmora
