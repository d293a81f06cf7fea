#pragma once

#include <QAbstractButton>
#include <QWidget>

#include "app/onboarding/OnboardingPages.h"

class QVBoxLayout;

namespace quilmora {

class Look;
struct StarterMap;

// The rows of a page on a background of their own: symbol, description, and the keys in a pill at the end.
class OnboardingRows final : public QWidget {
  Q_OBJECT

 public:
  OnboardingRows(const Look& look, const std::vector<OnboardingRow>& rows, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Look& m_look;
  std::vector<QWidget*> m_rows;
};

// A starter map: its symbol above its name.
class TemplateButton final : public QAbstractButton {
  Q_OBJECT

 public:
  TemplateButton(const Look& look, const StarterMap& starter, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Look& m_look;
  QString m_symbol;
};

// A dot for each page, the current one in the accent colour. A click on a dot opens its page.
class PageDots final : public QWidget {
  Q_OBJECT

 public:
  PageDots(const Look& look, int count, QWidget* parent);

  void setCurrent(int page);
  QRect dotPlace(int page) const;
  QSize sizeHint() const override;

 Q_SIGNALS:
  void pageChosen(int page);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  const Look& m_look;
  int m_count;
  int m_current = 0;
};

}  // namespace quilmora
