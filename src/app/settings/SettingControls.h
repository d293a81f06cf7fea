#pragma once

#include <vector>

#include <QCheckBox>
#include <QComboBox>

class QSlider;

namespace quilmora {

class Look;
class SettingsStore;

// Controls that show one setting and write it when the user changes it. They follow the setting wherever it is changed,
// and write nothing by themselves. Look and store must outlive them.

// A choice of texts. A stored text that is not among them is kept, and shows as no selection.
class SettingPicker final : public QComboBox {
  Q_OBJECT

 public:
  struct Row {
    QString text;
    QString value;
    bool isHeading = false;  // of the rows after it; cannot be chosen
  };

  SettingPicker(const Look& look, SettingsStore& settings, QString key, const std::vector<Row>& rows,
                QWidget* parent = nullptr);
  void setRows(const std::vector<Row>& rows);

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  void refresh();

  const Look& m_look;
  SettingsStore& m_settings;
  QString m_key;
};

// A flag: its text, which wraps, and a switch at the right edge.
class SettingToggle final : public QCheckBox {
  Q_OBJECT

 public:
  SettingToggle(const Look& look, const QString& text, SettingsStore& settings, QString key, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }

 private:
  void refresh();

  const Look& m_look;
  SettingsStore& m_settings;
  QString m_key;
};

// A real number within a range, in steps: a slider and the number. A stored number outside the range is kept.
class SettingSlider final : public QWidget {
  Q_OBJECT

 public:
  struct Range {
    double least;
    double most;
    int stepsInOne;  // 10 for steps of 0.1
    int decimals;    // that are shown
  };

  SettingSlider(const Look& look, const QString& name, SettingsStore& settings, QString key, Range range,
                QWidget* parent = nullptr);

  QString shownText() const;
  QSlider& slider() const { return *m_slider; }

 private:
  class Value;
  void refresh();
  int stepOf(double value) const;

  SettingsStore& m_settings;
  QString m_key;
  Range m_range;
  QSlider* m_slider;
  Value* m_value;
};

}  // namespace quilmora
