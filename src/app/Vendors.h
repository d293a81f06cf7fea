#pragma once

#include <optional>

#include <QSslConfiguration>
#include <QString>

namespace quilmora {

// Where the vendors of models are asked, and whom they must prove to be.
struct Vendors {
  QString claudeHost;
  QString openAIHost;
  std::optional<QSslConfiguration> tls;  // nothing: the desktop's certificates
};

// Of this program. Each program that is linked with main.cpp has its own: the editor's are the public ones, and one
// that tests start asks a server on this machine.
Vendors programVendors();

}  // namespace quilmora
