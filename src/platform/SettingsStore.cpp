#include "platform/SettingsStore.h"

#include <cmath>

#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace quilmora {

namespace {

// The settings file is a JSON object. Texts, flags and numbers are themselves; bytes and lists of bytes, which JSON
// does not know, are objects with one of these keys. So each value comes back as the kind that was written.
const QString bytesKey = QStringLiteral("bytes");
const QString bytesListKey = QStringLiteral("bytesList");

std::optional<QByteArray> fromBase64(const QJsonValue& value) {
  if (!value.isString()) return std::nullopt;
  const auto decoded =
      QByteArray::fromBase64Encoding(value.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
  if (!decoded) return std::nullopt;
  return decoded.decoded;
}

QJsonValue toBase64(const QByteArray& bytes) {
  return QString::fromLatin1(bytes.toBase64());
}

std::optional<QList<QByteArray>> asBytesList(const QVariant& value) {
  if (value.typeId() != QMetaType::QVariantList) return std::nullopt;
  QList<QByteArray> list;
  for (const QVariant& entry : value.toList()) {
    if (entry.typeId() != QMetaType::QByteArray) return std::nullopt;
    list.append(entry.toByteArray());
  }
  return list;
}

QJsonValue toJson(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QString:
      return value.toString();
    case QMetaType::Bool:
      return value.toBool();
    case QMetaType::Double:
      return value.toDouble();
    case QMetaType::QByteArray:
      return QJsonObject{{bytesKey, toBase64(value.toByteArray())}};
    default:
      break;
  }
  const auto list = asBytesList(value);
  if (!list) return QJsonValue::Undefined;
  QJsonArray array;
  for (const QByteArray& bytes : *list) array.append(toBase64(bytes));
  return QJsonObject{{bytesListKey, array}};
}

// Invalid for what this program did not write.
QVariant fromJson(const QJsonValue& value) {
  if (value.isString()) return value.toString();
  if (value.isBool()) return value.toBool();
  if (value.isDouble()) return value.toDouble();
  const QJsonObject object = value.toObject();
  if (const auto bytes = fromBase64(object.value(bytesKey))) return *bytes;
  const QJsonValue array = object.value(bytesListKey);
  if (!array.isArray()) return {};
  QVariantList list;
  for (const QJsonValue& entry : array.toArray()) {
    const auto bytes = fromBase64(entry);
    if (!bytes) return {};
    list.append(*bytes);
  }
  return list;
}

bool readSettings(QIODevice& device, QSettings::SettingsMap& map) {
  const QJsonDocument document = QJsonDocument::fromJson(device.readAll());
  if (!document.isObject()) return false;
  const QJsonObject object = document.object();
  for (auto entry = object.begin(); entry != object.end(); ++entry) {
    const QVariant value = fromJson(entry.value());
    if (value.isValid()) map.insert(entry.key(), value);
  }
  return true;
}

bool writeSettings(QIODevice& device, const QSettings::SettingsMap& map) {
  QJsonObject object;
  for (auto entry = map.begin(); entry != map.end(); ++entry) object.insert(entry.key(), toJson(entry.value()));
  const QByteArray text = QJsonDocument(object).toJson();
  return device.write(text) == text.size();
}

QSettings::Format settingsFormat() {
  static const QSettings::Format format =
      QSettings::registerFormat(QStringLiteral("json"), readSettings, writeSettings, Qt::CaseSensitive);
  return format;
}

}  // namespace

std::optional<QString> SettingsStore::text(const QString& key) const {
  const QVariant value = read(key);
  if (value.typeId() != QMetaType::QString) return std::nullopt;
  return value.toString();
}

std::optional<bool> SettingsStore::flag(const QString& key) const {
  const QVariant value = read(key);
  if (value.typeId() != QMetaType::Bool) return std::nullopt;
  return value.toBool();
}

std::optional<double> SettingsStore::real(const QString& key) const {
  const QVariant value = read(key);
  if (value.typeId() != QMetaType::Double) return std::nullopt;
  return value.toDouble();
}

std::optional<QByteArray> SettingsStore::bytes(const QString& key) const {
  const QVariant value = read(key);
  if (value.typeId() != QMetaType::QByteArray) return std::nullopt;
  return value.toByteArray();
}

std::optional<QList<QByteArray>> SettingsStore::bytesList(const QString& key) const {
  return asBytesList(read(key));
}

void SettingsStore::setText(const QString& key, const QString& value) {
  // A null text is an empty one; the file knows no difference.
  write(key, value.isNull() ? QVariant(QStringLiteral("")) : QVariant(value));
}

void SettingsStore::setFlag(const QString& key, bool value) {
  write(key, value);
}

void SettingsStore::setReal(const QString& key, double value) {
  if (std::isfinite(value)) {
    write(key, value);
  } else {
    remove(key);
  }
}

void SettingsStore::setBytes(const QString& key, const QByteArray& value) {
  write(key, value);
}

void SettingsStore::setBytesList(const QString& key, const QList<QByteArray>& value) {
  QVariantList list;
  for (const QByteArray& entry : value) list.append(entry);
  write(key, list);
}

QVariant MemorySettingsStore::read(const QString& key) const {
  const auto found = m_values.find(key);
  return found == m_values.end() ? QVariant() : found->second;
}

DesktopSettingsStore::DesktopSettingsStore()
    : m_settings(settingsFormat(), QSettings::UserScope, QStringLiteral("Quilmora"), QStringLiteral("Quilmora")) {
  m_settings.setFallbacksEnabled(false);
}

DesktopSettingsStore::DesktopSettingsStore(const QString& path) : m_settings(path, settingsFormat()) {
  m_settings.setFallbacksEnabled(false);
}

void DesktopSettingsStore::remove(const QString& key) {
  m_settings.remove(key);
}

QVariant DesktopSettingsStore::read(const QString& key) const {
  return m_settings.value(key);
}

void DesktopSettingsStore::write(const QString& key, const QVariant& value) {
  m_settings.setValue(key, value);
}

}  // namespace quilmora
