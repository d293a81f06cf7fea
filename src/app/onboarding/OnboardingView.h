#pragma once

#include "app/dialogs/Sheet.h"
#include "platform/Notifications.h"

class QPushButton;
class QScrollArea;
class QVariantAnimation;

namespace quilmora {

class PageDots;
class SettingsStore;

// Five pages that introduce the program; the last one leads to a first map. However it is closed, the settings remember
// that it was seen.
class OnboardingView final : public Sheet {
  Q_OBJECT

 public:
  static constexpr QSize panelSize{520, 420};

  // All must outlive it.
  OnboardingView(const Look& look, SettingsStore& settings, NotificationCenter& notifications, QWidget* window);

  void open() override;
  int currentPage() const { return m_currentPage; }
  static int pageCount();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildFooter();
  QWidget* buildPage(int page);
  void addTemplates(QVBoxLayout& column, QWidget* page);
  void addBeginnings(QVBoxLayout& column, QWidget* page);
  // Pages are created when they are first shown.
  void showPage(int page);
  void placePage();
  void slideIn(int direction);
  void turn(int direction);
  void dismiss();
  void dismissAndPost(Notification notification, const QString& object = {});

  SettingsStore& m_settings;
  NotificationCenter& m_notifications;
  QWidget* m_stage = nullptr;  // holds the page
  QScrollArea* m_page = nullptr;
  PageDots* m_dots;
  QPushButton* m_skip;
  QPushButton* m_next;
  QVariantAnimation* m_slide;
  int m_currentPage = 0;
};

}  // namespace quilmora
