#include "app/assistant/AIActivityCard.h"

#include <algorithm>

#include <QHBoxLayout>

#include "app/look/BusySign.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "canvas/view/PlainText.h"
#include "editor/AIWorkflows.h"
#include "platform/OnDeviceText.h"

namespace quilmora {

namespace {

constexpr int widest = 420;
constexpr QSize closeSize(24, 24);
constexpr QSize closeIcon(12, 12);

}  // namespace

AIActivityCard::AIActivityCard(const Look& look, AIWorkflows& workflows, QWidget* canvas)
    : Card(look, canvas),
      m_workflows(workflows),
      m_busy(new BusySign(look, this)),
      m_sign(new SymbolLabel(look, QStringLiteral("exclamationmark.triangle.fill"), metrics::rowIcon, &Tokens::danger,
                             this)),
      m_text(new TextLabel(look, QString(), &Tokens::text, look.font(), TextLabel::Overflow::wraps, this)),
      m_close(new IconButton(look, QStringLiteral("xmark"), tr("Dismiss"), this)) {
  m_close->setFixedSize(closeSize);
  m_close->setIconSize(closeIcon);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(metrics::gapLarge, metrics::gapMedium, metrics::gapLarge, metrics::gapMedium);
  row->setSpacing(metrics::gapMedium);
  row->addWidget(m_busy);
  row->addWidget(m_sign);
  row->addWidget(m_text, 1);
  row->addWidget(m_close);
  connect(m_close, &QToolButton::clicked, this, [this] { setShown(false); });
  for (const auto signal :
       {&AIWorkflows::aiIsGeneratingChanged, &AIWorkflows::aiProgressChanged, &AIWorkflows::aiErrorChanged})
    connect(&workflows, signal, this, &AIActivityCard::follow);
  follow();
}

QString AIActivityCard::text() const {
  return m_text->text();
}

void AIActivityCard::follow() {
  const bool isBusy = m_workflows.aiIsGenerating();
  const bool isNews = m_workflows.aiError().has_value() && !isBusy && !m_workflows.showAIPrompt();
  if (isBusy || !m_workflows.aiError()) m_isError = false;
  if (isNews) m_isError = true;
  if (isBusy) m_text->setPlainText(plain::line(m_workflows.aiProgress()));
  if (m_isError) m_text->setPlainText(plain::line(onDeviceText(m_workflows.aiError().value_or(QString()))));
  setAccessibleName(m_text->text());
  m_busy->setVisible(!m_isError);
  m_sign->setVisible(m_isError);
  m_close->setVisible(m_isError);
  setShown(isBusy || m_isError);
  bringToFront();
  Q_EMIT placementWanted();
}

QSize AIActivityCard::wantedSize(QSize room) {
  const int width = std::min({sizeHint().width(), widest, room.width()});
  return QSize(width, layout()->totalHeightForWidth(width)).boundedTo(room);
}

}  // namespace quilmora
