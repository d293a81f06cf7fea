#pragma once

#include <optional>

#include <QString>

#include "platform/Clock.h"

namespace quilmora {

class FileWriter;

// The desktop's list of recent documents, the file recently-used.xbel in the user's data folder: XBEL bookmarks, each
// with the type of the document and the applications that opened it. What other programs wrote stays as it is, byte for
// byte; a file that is damaged, too large or unreadable is left alone. Failures are not reported.
class RecentlyUsedFile {
 public:
  // Both must outlive it.
  RecentlyUsedFile(QString path, FileWriter& writer, const Clock& clock);
  // This user's file.
  static QString pathForUser();

  // Adds the document to the list, or records that it was used again.
  void note(const QString& documentPath);
  // Removes this application from every entry, and the entries that then have no application.
  void clear();

 private:
  // Nothing if the file is to be left alone.
  std::optional<QString> read() const;
  void write(const QString& text) const;

  QString m_path;
  FileWriter& m_writer;
  const Clock& m_clock;
  QString m_lastNoted;  // an auto-save after each change is not a new use
};

}  // namespace quilmora
