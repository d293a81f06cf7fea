#pragma once

#include <QWidget>

#include "canvas/painting/TopicPictures.h"

namespace quilmora {

class Look;
class PanelButton;

// A topic's picture: the button that adds one, or a thumbnail with the buttons that replace and remove it.
class ImageSection final : public QWidget {
  Q_OBJECT

 public:
  ImageSection(const Look& look, QWidget* parent);

  void setImageData(const std::optional<QString>& imageData);

 Q_SIGNALS:
  void imageWanted();
  void removalWanted();

 private:
  class Thumbnail;

  Thumbnail* m_thumbnail;
  PanelButton* m_add;
  PanelButton* m_replace;
  PanelButton* m_remove;
};

}  // namespace quilmora
