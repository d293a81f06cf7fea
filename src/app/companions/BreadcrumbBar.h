#pragma once

#include <memory>
#include <vector>

#include <QUuid>

#include "app/companions/Card.h"

class QAbstractButton;

namespace quilmora {

class CrumbStrip;
class EditorNavigation;

// The path from the root to the selected topic. A click on a topic selects and centres it. A presentation shows its
// step beside the path.
class BreadcrumbBar : public Card {
  Q_OBJECT

 public:
  BreadcrumbBar(const Look& look, EditorNavigation& editor, QWidget* canvas);

  // From the root down; empty without a selected topic.
  const std::vector<QUuid>& path() const { return m_path; }
  // "3/12" in a presentation, else empty.
  const QString& stepText() const { return m_stepText; }
  // The button of a topic in the path, created when asked for; nullptr if the path has no such place.
  QAbstractButton* button(std::size_t index);
  CrumbStrip& strip() const { return *m_strip; }

  QSize wantedSize(QSize room) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void refreshSoon();
  void refresh();
  void choose(const QUuid& id);
  QSize pillSize() const;
  // The width of the step, including its distance from the path.
  int besidePath() const;

  EditorNavigation& m_editor;
  CrumbStrip* m_strip;
  std::vector<QUuid> m_path;
  QString m_stepText;
  bool m_isRefreshPending = false;
};

// The topics from the root down to this one, by their parents; stops at the first repetition. Ids that name no topic
// are left out.
std::vector<QUuid> pathToTopic(EditorNavigation& editor, const QUuid& id);

}  // namespace quilmora
