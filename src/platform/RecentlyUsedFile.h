#pragma once

#include <optional>

#include <QString>

#include "platform/Clock.h"

namespace quilmora {

class FileWriter;

// The desktop's list of recent documents, the file recently-used.xbel in the user's data folder: XBEL bookmarks, each
// with the type of the document and the applications that opened it. What other programs wrote stays as it is, byte by
// byte; a file that is damaged, too large or not readable is left alone. Nothing is told of a failure.
class RecentlyUsedFile {
 public:
  // Both outlive it.
  RecentlyUsedFile(QString path, FileWriter& writer, const Clock& clock);
  // The file of this user.
  static QString pathForUser();

  // Puts the document on the list, or tells that it was used again.
  void note(const QString& documentPath);
  // Takes this application off every entry, and away the entries that no other application has a part in.
  void clear();

 private:
  // Nothing where the file is to be left alone.
  std::optional<QString> read() const;
  void write(const QString& text) const;

  QString m_path;
  FileWriter& m_writer;
  const Clock& m_clock;
  QString m_lastNoted;  // an auto-save after each change says nothing new
};

}  // namespace quilmora
