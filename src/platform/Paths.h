#pragma once

#include <QByteArray>
#include <QString>

class QUrl;

namespace quilmora {

// The path from the root of the file system, without trailing slashes. Leaves ".." alone: after a symbolic link only
// the file system knows where it leads.
QString absolutePath(const QString& path);

// What follows the last slash.
QString fileNameIn(const QString& path);

// A path as the system gives it. Bytes that are not UTF-8 become halves of surrogate pairs, so that they stay distinct
// and name no other file; the reverse function restores them.
QString pathFromBytes(const QByteArray& bytes);
QByteArray bytesFromPath(const QString& path);
// The path of a file URL.
QString pathFromUrl(const QUrl& url);

// The folder for what the program keeps between runs and nobody edits. It may not exist yet.
QString stateFolder();

// Why no file can have this path, or an empty text: names that are not UTF-8 are refused, so that no other file is
// mistaken for it.
QString refusalOfPath(const QString& path);

}  // namespace quilmora
