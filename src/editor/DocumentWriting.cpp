#include "editor/DocumentWriting.h"

#include <new>

#include <QFile>
#include <QFileInfo>

#include "model/DocumentError.h"
#include "model/DocumentStream.h"
#include "platform/ContentHash.h"
#include "platform/FileWriter.h"
#include "platform/RegularFile.h"

namespace quilmora {

namespace {

// A missing folder is no reason to stop here: the write reports it, and succeeds if the folder has come back.
Outcome consentTo(const DocumentWrite& write, WrittenDocument& written) {
  if (!write.known) return Outcome::done();
  const FileComparison comparison = compareFile(*write.known, write.path);
  written.change = comparison.change;
  written.state = comparison.now;
  const QString sentence = sentenceOf(comparison.change);
  return sentence.isEmpty() ? Outcome::done() : Outcome::failed(sentence);
}

// A copy that somebody else has changed stays.
void removeSuperseded(const DocumentWrite& write) {
  if (!write.superseded) return;
  const auto& [path, state] = *write.superseded;
  const QFileInfo file(path);
  if (file.canonicalFilePath() == QFileInfo(write.path).canonicalFilePath() || file.isSymLink()) return;
  if (compareFile(state, path).change == FileChange::none) QFile::remove(path);
}

Outcome keepOtherVersion(const DocumentWrite& write, FileWriter& writer) {
  if (write.otherVersion.isEmpty() || !QFileInfo(write.path).isFile()) return Outcome::done();
  constexpr std::size_t pieceSize = std::size_t{1} << 20;
  try {
    RegularFile file(QFile::encodeName(write.path));
    const std::unique_ptr<FileStream> copy = writer.stream(write.otherVersion);
    const auto piece = std::make_unique<char[]>(pieceSize);
    for (std::size_t count = 0; (count = file.read(piece.get(), pieceSize)) > 0;)
      if (!copy->append(piece.get(), static_cast<qsizetype>(count))) break;
    return copy->commit();
  } catch (const FileReadError& error) {
    return Outcome::failed(QStringLiteral("The other version cannot be kept: %1.").arg(error.message()));
  }
}

void writeWhole(const DocumentWrite& write, FileWriter& writer, WrittenDocument& written) {
  if (const Outcome consent = consentTo(write, written); !consent.isDone()) {
    written.outcome = refusedWrite(write.path, consent.reason());
    return;
  }
  written.outcome = keepOtherVersion(write, writer);
  if (!written.outcome.isDone()) return;
  const std::unique_ptr<FileStream> stream = writer.stream(write.path);
  ContentHash hash;
  streamDocument(write.map, [&](std::string_view piece) {
    hash.add(piece);
    return stream->append(piece.data(), static_cast<qsizetype>(piece.size()));
  });
  written.outcome = stream->commitWith([&] { return consentTo(write, written); });
  if (!written.outcome.isDone()) {
    if (!write.otherVersion.isEmpty()) QFile::remove(write.otherVersion);
    return;
  }
  written.change = FileChange::none;
  written.state = {stampOf(write.path), hash.value()};
  // If another program replaced it at once, the next comparison finds out.
  if (auto stamp = stream->stamp(); stamp && !stamp->isSameFile(written.state.stamp)) {
    stamp->link = written.state.stamp.link;
    written.state.stamp = *stamp;
  }
  removeSuperseded(write);
}

}  // namespace

WrittenDocument writeDocument(const DocumentWrite& write, FileWriter& writer) {
  WrittenDocument written;
  try {
    writeWhole(write, writer, written);
  } catch (const DocumentError& error) {
    written.outcome = refusedWrite(write.path, error.message());
  } catch (const std::bad_alloc&) {
    written.outcome = Outcome::failed(QStringLiteral("There is not enough memory for it."));
  }
  return written;
}

QString sentenceOf(FileChange change) {
  switch (change) {
    case FileChange::none:
    case FileChange::folderGone:
    case FileChange::madeReadOnly:
      return {};
    case FileChange::removed:
      return QStringLiteral("Another program has removed or renamed it.");
    case FileChange::becameLink:
      return QStringLiteral("Another program has put a link in its place.");
    case FileChange::changed:
      return QStringLiteral("Another program has changed it.");
  }
  Q_UNREACHABLE();
}

}  // namespace quilmora
