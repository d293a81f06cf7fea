#pragma once

#include <optional>

#include <QSslConfiguration>
#include <QString>

namespace quilmora {

// Where the vendors of models are reached, and how they must prove their identity.
struct Vendors {
  QString claudeHost;
  QString openAIHost;
  std::optional<QSslConfiguration> tls;  // absent: the desktop's certificates
};

// Of this program. Each program linked with main.cpp defines its own: the editor's are the public ones, and a program
// that tests start uses a server on this machine.
Vendors programVendors();

}  // namespace quilmora
