#include "app/inspectors/ImageSection.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>

#include "app/inspectors/PanelControls.h"
#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "canvas/painting/Symbols.h"

namespace quilmora {

namespace {

constexpr int thumbnailSize = 72;
constexpr int keptKilobytes = 4 * 1024;
constexpr int missingSymbol = 20;

}  // namespace

class ImageSection::Thumbnail final : public QWidget {
 public:
  Thumbnail(const Look& look, QWidget* parent) : QWidget(parent), m_look(look) {
    setFixedSize(thumbnailSize, thumbnailSize);
    setAccessibleName(ImageSection::tr("Image"));
    m_pictures.setKeptSize(keptKilobytes);
    m_pictures.decodeInBackground([this] { update(); });
    connect(&look, &Look::changed, this, [this] { update(); });
  }

  void setImageData(const QString& imageData) {
    if (m_imageData == imageData) return;
    m_imageData = imageData;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const Tokens& tokens = m_look.tokens();
    const QRectF frame = rect();
    paint::fillRounded(painter, frame, metrics::controlRadius, tokens.raised);
    const double pixels = width() * devicePixelRatioF();
    if (ShownImage* picture = m_pictures.image(m_imageData, pixels); picture != nullptr) {
      QPainterPath round;
      round.addRoundedRect(frame, metrics::controlRadius, metrics::controlRadius);
      painter.setClipPath(round);
      QRectF place(QPointF(), QSizeF(picture->size).scaled(frame.size(), Qt::KeepAspectRatio));
      place.moveCenter(frame.center());
      painter.drawImage(place, picture->forWidth(place.width() * devicePixelRatioF()));
      painter.setClipping(false);
    } else {
      QRectF symbol(0, 0, missingSymbol, missingSymbol);
      symbol.moveCenter(frame.center());
      paintSymbol(painter, QStringLiteral("photo"), symbol, tokens.secondary);
    }
    paint::drawBorder(painter, frame, metrics::controlRadius, tokens.hairline);
  }

 private:
  const Look& m_look;
  QString m_imageData;
  TopicPictures m_pictures;
};

ImageSection::ImageSection(const Look& look, QWidget* parent)
    : QWidget(parent),
      m_thumbnail(new Thumbnail(look, this)),
      m_add(new PanelButton(QStringLiteral("Add Image..."), PanelButton::Kind::plain, this)),
      m_replace(new PanelButton(QStringLiteral("Replace Image..."), PanelButton::Kind::plain, this)),
      m_remove(new PanelButton(QStringLiteral("Remove"), PanelButton::Kind::destructive, this)) {
  auto* buttons = new QVBoxLayout;
  buttons->setSpacing(metrics::gap);
  buttons->addWidget(m_add);
  buttons->addWidget(m_replace);
  buttons->addWidget(m_remove);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(metrics::gapMedium);
  row->addWidget(m_thumbnail, 0, Qt::AlignVCenter);
  row->addLayout(buttons, 1);
  connect(m_add, &QPushButton::clicked, this, &ImageSection::imageWanted);
  connect(m_replace, &QPushButton::clicked, this, &ImageSection::imageWanted);
  connect(m_remove, &QPushButton::clicked, this, &ImageSection::removalWanted);
  setImageData(std::nullopt);
}

void ImageSection::setImageData(const std::optional<QString>& imageData) {
  m_thumbnail->setImageData(imageData.value_or(QString()));
  m_thumbnail->setVisible(imageData.has_value());
  m_replace->setVisible(imageData.has_value());
  m_remove->setVisible(imageData.has_value());
  m_add->setVisible(!imageData.has_value());
}

}  // namespace quilmora
