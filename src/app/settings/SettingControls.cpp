#include "app/settings/SettingControls.h"

#include <algorithm>
#include <cmath>

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QPainter>
#include <QSlider>
#include <QStandardItemModel>
#include <QStyleOption>
#include <QWheelEvent>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/NumberText.h"
#include "app/look/Paint.h"
#include "app/look/Widgets.h"
#include "canvas/view/PlainText.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

constexpr int pickerLetters = 14;
constexpr int toggleHeight = 40;
constexpr QSize switchSize(34, 20);
constexpr int knobInset = 2;
constexpr int sliderWidth = 170;
constexpr int numberWidth = 40;

template <class Control>
void follow(const SettingsStore& settings, const QString& key, Control* control, void (Control::*refresh)()) {
  QObject::connect(&settings.changes(), &SettingsChanges::changed, control,
                   [key, control, refresh](const QString& changed) {
                     if (changed == key) (control->*refresh)();
                   });
}

}  // namespace

// --- SettingPicker ---

SettingPicker::SettingPicker(const Look& look, SettingsStore& settings, QString key, const std::vector<Row>& rows,
                             QWidget* parent)
    : QComboBox(parent), m_look(look), m_settings(settings), m_key(std::move(key)) {
  setFocusPolicy(Qt::StrongFocus);
  // However many and long the entries are.
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(pickerLetters);
  view()->setTextElideMode(Qt::ElideRight);
  setRows(rows);
  connect(this, &QComboBox::activated, this,
          [this](int index) { m_settings.setText(m_key, itemData(index).toString()); });
  follow(settings, m_key, this, &SettingPicker::refresh);
}

void SettingPicker::setRows(const std::vector<Row>& rows) {
  auto* model = new QStandardItemModel(this);
  for (const Row& row : rows) {
    auto* item = new QStandardItem(plain::line(row.text));
    if (row.isHeading) {
      item->setFlags(Qt::NoItemFlags);
      item->setFont(m_look.font(Look::TextStyle::sectionHeader));
    } else {
      item->setData(row.value, Qt::UserRole);
    }
    model->appendRow(item);
  }
  setModel(model);
  refresh();
}

void SettingPicker::refresh() {
  const QString value = m_settings.text(m_key).value_or(settings::settingDefault(m_key).toString());
  setCurrentIndex(findData(value, Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive));
}

// Scrolling the page must not change the choice in passing.
void SettingPicker::wheelEvent(QWheelEvent* event) {
  if (hasFocus())
    QComboBox::wheelEvent(event);
  else
    event->ignore();
}

// --- SettingToggle ---

SettingToggle::SettingToggle(const Look& look, const QString& text, SettingsStore& settings, QString key,
                             QWidget* parent)
    : QCheckBox(text, parent), m_look(look), m_settings(settings), m_key(std::move(key)) {
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(text);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  connect(this, &QCheckBox::clicked, this, [this](bool isOn) { m_settings.setFlag(m_key, isOn); });
  connect(&look, &Look::changed, this, [this] { update(); });
  follow(settings, m_key, this, &SettingToggle::refresh);
  refresh();
}

void SettingToggle::refresh() {
  setChecked(m_settings.flag(m_key).value_or(settings::settingDefault(m_key).toBool()));
}

QSize SettingToggle::sizeHint() const {
  const int width = fontMetrics().horizontalAdvance(text()) + switchSize.width() + 3 * metrics::gapMedium + 1;
  return {width, heightForWidth(width)};
}

QSize SettingToggle::minimumSizeHint() const {
  return {switchSize.width() + 3 * metrics::gapMedium + fontMetrics().averageCharWidth() * 8, toggleHeight};
}

int SettingToggle::heightForWidth(int width) const {
  const int room = std::max(1, width - switchSize.width() - 3 * metrics::gapMedium);
  const int words = fontMetrics().boundingRect(QRect(0, 0, room, 10'000), Qt::TextWordWrap, text()).height();
  return std::max(toggleHeight, words + 2 * metrics::gap);
}

void SettingToggle::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  const int switchLeft = width() - metrics::gapMedium - switchSize.width();
  painter.setPen(isEnabled() ? tokens.text : tokens.disabledText);
  painter.drawText(QRect(metrics::gapMedium, 0, switchLeft - 2 * metrics::gapMedium, height()),
                   Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, text());

  const QRectF track(switchLeft, (height() - switchSize.height()) / 2.0, switchSize.width(), switchSize.height());
  const double radius = track.height() / 2;
  const QColor off = underMouse() ? tokens.secondary : tokens.groove;
  paint::fillRounded(painter, track, radius, isChecked() ? tokens.accentFill : off);
  QRectF knob(0, 0, track.height() - 2 * knobInset, track.height() - 2 * knobInset);
  knob.moveCenter(track.center());
  if (isChecked())
    knob.moveRight(track.right() - knobInset);
  else
    knob.moveLeft(track.left() + knobInset);
  paint::fillRounded(painter, knob, knob.height() / 2, isDown() ? QColor(0xE5, 0xE5, 0xEA) : QColor(Qt::white));
  QStyleOption option;
  option.initFrom(this);
  if (showsKeyboardFocus(option))
    paint::drawBorder(painter, track.adjusted(-4, -4, 4, 4), radius + 4, tokens.accent, metrics::focusRingWidth);
}

// --- SettingSlider ---

namespace {

class PatientSlider final : public QSlider {
 public:
  using QSlider::QSlider;

 protected:
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus())
      QSlider::wheelEvent(event);
    else
      event->ignore();
  }
};

}  // namespace

// The number at the right end of a slider.
class SettingSlider::Value final : public TextLabel {
 public:
  Value(const Look& look, QWidget* parent)
      : TextLabel(look, {}, &Tokens::secondary, look.font(), Overflow::elides, parent) {
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setFixedWidth(std::max(numberWidth, fontMetrics().horizontalAdvance(QStringLiteral("20.0")) + 1));
  }
};

SettingSlider::SettingSlider(const Look& look, const QString& name, SettingsStore& settings, QString key, Range range,
                             QWidget* parent)
    : QWidget(parent),
      m_settings(settings),
      m_key(std::move(key)),
      m_range(range),
      m_slider(new PatientSlider(Qt::Horizontal, this)),
      m_value(new Value(look, this)) {
  setAccessibleName(name);
  m_slider->setAccessibleName(name);
  m_slider->setFocusPolicy(Qt::StrongFocus);
  m_slider->setRange(stepOf(range.least), stepOf(range.most));
  m_slider->setPageStep(std::max(1, (m_slider->maximum() - m_slider->minimum()) / 5));
  m_slider->setMinimumWidth(sliderWidth * 4 / 5);
  m_slider->setMaximumWidth(sliderWidth);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(metrics::gap);
  line->addWidget(m_slider, 1);
  line->addWidget(m_value);
  refresh();
  // When the handle moves only to follow the setting, its step is already stored.
  connect(m_slider, &QSlider::valueChanged, this, [this](int step) {
    const double stored = m_settings.real(m_key).value_or(settings::settingDefault(m_key).toReal());
    const int shown = std::clamp(stepOf(stored), m_slider->minimum(), m_slider->maximum());
    if (step != shown) m_settings.setReal(m_key, static_cast<double>(step) / m_range.stepsInOne);
  });
  follow(settings, m_key, this, &SettingSlider::refresh);
}

int SettingSlider::stepOf(double value) const {
  return static_cast<int>(std::lround(std::clamp(value, m_range.least, m_range.most) * m_range.stepsInOne));
}

QString SettingSlider::shownText() const {
  return m_value->text();
}

void SettingSlider::refresh() {
  const double value = m_settings.real(m_key).value_or(settings::settingDefault(m_key).toReal());
  m_slider->setValue(stepOf(value));
  const QString text = fixedText(value, m_range.decimals);
  m_value->setPlainText(text);
  m_slider->setAccessibleDescription(text);
}

}  // namespace quilmora
