#pragma once

#include <QByteArray>
#include <QString>

class QUrl;

namespace quilmora {

// The path from the root of the file system, without slashes at its end. Leaves ".." alone: behind a symbolic link only
// the file system knows where it leads.
QString absolutePath(const QString& path);

// A path as the system gives it. Bytes that are no UTF-8 become halves of surrogate pairs, so that they stay told apart
// and name no other file; the way back keeps them.
QString pathFromBytes(const QByteArray& bytes);
QByteArray bytesFromPath(const QString& path);
// The path of a file URL.
QString pathFromUrl(const QUrl& url);

// The folder for what the program keeps from one run to the next and no person edits. It may not exist yet.
QString stateFolder();

// Why no file can have this path, or an empty text: names that are not UTF-8 are refused, lest another file be taken
// for the one that is meant.
QString refusalOfPath(const QString& path);

}  // namespace quilmora
