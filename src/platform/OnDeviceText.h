#pragma once

#include <QString>

namespace quilmora {

// Rewords a text of the product's data about the model on this machine for the user: the data name another system's
// model and settings, and here it is a model server. Any other text stays as it is.
QString onDeviceText(const QString& text);

}  // namespace quilmora
