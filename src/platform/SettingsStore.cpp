#include "platform/SettingsStore.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <system_error>
#include <utility>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/FileWriter.h"
#include "platform/RegularFile.h"

namespace quilmora {

namespace {

// The settings file is a JSON object. Texts, flags and numbers are stored as such; bytes and lists of bytes, which JSON
// does not have, are objects with one of these keys. So each value is read back as the kind that was written.
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

// Invalid for anything this program did not write.
QVariant fromJson(const QJsonValue& value) {
  if (value.isString()) return value.toString();
  if (value.isBool()) return value.toBool();
  if (value.isDouble()) return value.toDouble();
  const QJsonObject object = value.toObject();
  if (const auto bytes = fromBase64(object.value(bytesKey))) return *bytes;
  const QJsonValue array = object.value(bytesListKey);
  if (!array.isArray()) return {};
  QVariantList list;
  for (const auto& entry : array.toArray()) {
    const auto bytes = fromBase64(entry);
    if (!bytes) return {};
    list.append(*bytes);
  }
  return list;
}

using Values = std::map<QString, QVariant>;

void put(Values& values, const QString& key, const QVariant& value) {
  if (value.isValid())
    values[key] = value;
  else
    values.erase(key);
}

constexpr qsizetype maxFileBytes = qsizetype{16} << 20;

// A damaged file, or anything other than a file, reads as empty.
Values readSettings(const QString& path) {
  Values values;
  try {
    const QJsonObject object = QJsonDocument::fromJson(readWholeFile(path, maxFileBytes)).object();
    for (auto entry = object.begin(); entry != object.end(); ++entry)
      if (const QVariant value = fromJson(entry.value()); value.isValid()) values[entry.key()] = value;
  } catch (const FileReadError&) {
    return {};
  }
  return values;
}

QByteArray settingsText(const Values& values) {
  QJsonObject object;
  for (const auto& [key, value] : values) object.insert(key, toJson(value));
  return QJsonDocument(object).toJson();
}

QString systemMessage(int error) {
  return QString::fromStdString(std::system_category().message(error));
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
  // A null text becomes an empty one; the file has no such difference.
  change(key, value.isNull() ? QVariant(QStringLiteral("")) : QVariant(value));
}

void SettingsStore::setFlag(const QString& key, bool value) {
  change(key, value);
}

void SettingsStore::setReal(const QString& key, double value) {
  if (std::isfinite(value)) {
    change(key, value);
  } else {
    remove(key);
  }
}

void SettingsStore::setBytes(const QString& key, const QByteArray& value) {
  change(key, value);
}

void SettingsStore::setBytesList(const QString& key, const QList<QByteArray>& value) {
  QVariantList list;
  for (const QByteArray& entry : value) list.append(entry);
  change(key, list);
}

void SettingsStore::change(const QString& key, const QVariant& value) {
  const QVariant before = read(key);
  if (before == value && before.typeId() == value.typeId()) return;
  write(key, value);
  Q_EMIT m_changes.changed(key);
}

QVariant MemorySettingsStore::read(const QString& key) const {
  const auto found = m_values.find(key);
  return found == m_values.end() ? QVariant() : found->second;
}

void MemorySettingsStore::write(const QString& key, const QVariant& value) {
  put(m_values, key, value);
}

DesktopSettingsStore::DesktopSettingsStore()
    : DesktopSettingsStore(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                           QStringLiteral("/Quilmora/Quilmora.json")) {}

DesktopSettingsStore::DesktopSettingsStore(QString path) : m_path(std::move(path)), m_values(readSettings(m_path)) {
  m_writeTimer.setSingleShot(true);
  QObject::connect(&m_writeTimer, &QTimer::timeout, &m_writeTimer, [this] { writeNow(); });
}

DesktopSettingsStore::~DesktopSettingsStore() {
  m_onFailure = nullptr;
  writeNow();
}

QString DesktopSettingsStore::obstacle() const {
  struct stat status {};
  const QByteArray file = QFile::encodeName(m_path);
  if (::lstat(file.constData(), &status) == 0) {
    if (::stat(file.constData(), &status) == 0 && !S_ISREG(status.st_mode))
      return QStringLiteral("“%1” is not a regular file.").arg(m_path);
    if (::access(file.constData(), W_OK) != 0) return QStringLiteral("“%1”: %2.").arg(m_path, systemMessage(errno));
  }
  // The folder, or its nearest existing ancestor.
  QByteArray folder = file;
  do folder.truncate(std::max<qsizetype>(folder.lastIndexOf('/'), 1));
  while (folder.size() > 1 && ::stat(folder.constData(), &status) != 0 && errno == ENOENT);
  if (::access(folder.constData(), W_OK | X_OK) != 0)
    return QStringLiteral("“%1”: %2.").arg(QFile::decodeName(folder), systemMessage(errno));
  return {};
}

QVariant DesktopSettingsStore::read(const QString& key) const {
  const auto found = m_values.find(key);
  return found == m_values.end() ? QVariant() : found->second;
}

void DesktopSettingsStore::write(const QString& key, const QVariant& value) {
  put(m_values, key, value);
  writeSoon();
}

void DesktopSettingsStore::writeSoon() {
  m_isChanged = true;
  if (QCoreApplication::instance() != nullptr && !m_writeTimer.isActive()) m_writeTimer.start(0);
}

void DesktopSettingsStore::writeNow() {
  if (!std::exchange(m_isChanged, false)) return;
  QDir().mkpath(QFileInfo(m_path).path());
  const Outcome written = DiskFileWriter().write(m_path, settingsText(m_values));
  if (!written.isDone() && m_onFailure) std::exchange(m_onFailure, nullptr)(written.reason());
}

}  // namespace quilmora
