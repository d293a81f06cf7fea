#pragma once

#include <QAbstractButton>
#include <QFont>
#include <QImage>

namespace quilmora {

class Look;

// One earlier version in a list: a small picture, its time and its number of topics. One row of a list is checked.
class VersionRow final : public QAbstractButton {
  Q_OBJECT

 public:
  static constexpr QSize pictureSize{96, 60};

  VersionRow(const Look& look, const QString& title, QString description, QWidget* parent = nullptr);

  const QString& description() const { return m_description; }
  void setPicture(const QImage& picture);
  bool hasPicture() const { return !m_picture.isNull(); }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void doubleClicked();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  int textHeight() const;

  const Look& m_look;
  QString m_description;
  QFont m_titleFont;
  QImage m_picture;
};

}  // namespace quilmora
