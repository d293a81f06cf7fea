// The editor itself, except that the vendors are a server on this machine: LOOPBACK_VENDOR has its host and port,
// LOOPBACK_CERTIFICATE the file of the only certificate that is trusted.
#include <QFile>
#include <QSslCertificate>

#include "app/Vendors.h"

namespace quilmora {

Vendors programVendors() {
  const QString host = qEnvironmentVariable("LOOPBACK_VENDOR");
  QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
  tls.setCaCertificates(QSslCertificate::fromPath(qEnvironmentVariable("LOOPBACK_CERTIFICATE")));
  return {host, host, tls};
}

}  // namespace quilmora
