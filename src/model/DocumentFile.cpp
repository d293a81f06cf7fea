#include "model/DocumentFile.h"

#include <cerrno>
#include <cstring>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "model/DocumentReader.h"
#include "model/DocumentStream.h"
#include "model/DocumentWriter.h"
#include "model/PaddedText.h"
#include "platform/ContentHash.h"
#include "platform/FileWriter.h"
#include "platform/Paths.h"
#include "platform/RegularFile.h"
#include "platform/TemporaryFiles.h"

namespace quilmora {

namespace {

constexpr QLatin1String documentName("document.json");

[[noreturn]] void failWithSystemError(int error) {
  throw DocumentError(readingFailure(error));
}

PaddedText readWhole(const QByteArray& path) try {
  RegularFile file(path, QStringLiteral("this folder holds no document.json"));
  // One byte more than expected, so that a file that has not grown ends within the first round.
  std::size_t capacity = static_cast<std::size_t>(file.size()) + 1;
  PaddedText text = PaddedText::withCapacity(capacity);
  while (true) {
    const std::size_t count = file.read(text.bytes.get() + text.size, capacity - text.size);
    if (count == 0) return text;
    text.size += count;
    if (text.size < capacity) continue;
    capacity *= 2;
    PaddedText larger = PaddedText::withCapacity(capacity);
    std::memcpy(larger.bytes.get(), text.bytes.get(), text.size);
    larger.size = text.size;
    text = std::move(larger);
  }
} catch (const FileReadError& error) {
  throw DocumentError(error.message());
}

void writeFile(const QString& path, const QByteArray& bytes) {
  const Outcome written = DiskFileWriter().write(path, bytes);
  if (!written.isDone()) throw DocumentError(written.reason());
}

void ensureFolder(const QString& path) {
  if (!QFileInfo(path).isDir() && ::mkdir(QFile::encodeName(path).constData(), 0777) != 0) failWithSystemError(errno);
}

// The text comes last: a failure before it has changed no document.
void fillPackage(const QString& folder, const QByteArray& json) {
  ensureFolder(folder + QStringLiteral("/Assets"));
  ensureFolder(folder + QStringLiteral("/Thumbnails"));
  writeFile(folder + QLatin1Char('/') + documentName, json);
}

// Moves a folder to a path where nothing may exist.
void moveIntoPlace(const QString& from, const QString& to) {
  const QByteArray source = QFile::encodeName(from);
  const QByteArray target = QFile::encodeName(to);
  if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0) return;
  // Some file systems support only the plain call, which replaces nothing but an empty folder.
  if (errno != EINVAL || ::rename(source.constData(), target.constData()) != 0) failWithSystemError(errno);
}

void requireFilePath(const QString& path) {
  if (const QString refusal = refusalOfPath(path); !refusal.isEmpty()) throw DocumentError(refusal);
}

}  // namespace

QString documentFileAt(const QString& path) {
  const QString inner = path + QLatin1Char('/') + documentName;
  struct stat status {};
  return ::stat(QFile::encodeName(inner).constData(), &status) == 0 ? inner : path;
}

MindMap decodeDocumentAt(const QString& path) {
  requireFilePath(path);
  return decodePadded(readWhole(QFile::encodeName(documentFileAt(path))));
}

ReadDocument readDocumentAt(const QString& path) {
  requireFilePath(path);
  const QString file = documentFileAt(path);
  ReadDocument document;
  // The stamp is taken first: if another program replaces the file in between, its content will differ.
  document.state.stamp = stampOf(file);
  PaddedText text = readWhole(QFile::encodeName(file));
  ContentHash hash;
  hash.add(text.view());
  document.state.contentHash = hash.value();
  document.map = decodePadded(std::move(text));
  return document;
}

void writePackage(const MindMap& map, const QString& path) {
  requireFilePath(path);
  const QString target = absolutePath(path);
  const QFileInfo existing(target);
  const QByteArray json = encodeDocument(map);
  if (existing.exists() || existing.isSymLink()) {
    if (!existing.isDir() || !QFileInfo(target + QLatin1Char('/') + documentName).isFile())
      throw DocumentError(QStringLiteral("something that is no package has this name"));
    fillPackage(target, json);
    return;
  }
  if (!QFileInfo(existing.absolutePath()).isDir()) throw DocumentError(QStringLiteral("there is no such folder"));
  const QString temporary = existing.absolutePath() + QLatin1Char('/') + QLatin1String(temporaryName());
  removeStaleTemporariesOnce(QFile::encodeName(existing.absolutePath()));
  if (::mkdir(QFile::encodeName(temporary).constData(), 0777) != 0) failWithSystemError(errno);
  try {
    fillPackage(temporary, json);
    moveIntoPlace(temporary, target);
  } catch (...) {
    QDir(temporary).removeRecursively();
    throw;
  }
}

}  // namespace quilmora
