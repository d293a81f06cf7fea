#pragma once

#include <QWidget>

namespace quilmora {

class Look;
class SliderRow;
class TextLabel;

// The two widths of a connector, or the note that they depend on its depth.
class TaperSliders final : public QWidget {
  Q_OBJECT

 public:
  TaperSliders(const Look& look, QWidget* parent);

  SliderRow& start() const { return *m_start; }
  SliderRow& end() const { return *m_end; }
  void setControlledByDepth(bool controlled);

 private:
  SliderRow* m_start;
  SliderRow* m_end;
  TextLabel* m_note;
};

}  // namespace quilmora
