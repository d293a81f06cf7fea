#include "app/assistant/PanelGround.h"

#include <QAbstractScrollArea>

#include "app/look/Look.h"

namespace quilmora {

void standOnPanel(const Look& look, QAbstractScrollArea& area) {
  const auto follow = [&look, viewport = area.viewport()] {
    QPalette palette = viewport->palette();
    palette.setColor(viewport->backgroundRole(), look.tokens().panel);
    viewport->setPalette(palette);
  };
  QObject::connect(&look, &Look::changed, area.viewport(), follow);
  follow();
}

}  // namespace quilmora
