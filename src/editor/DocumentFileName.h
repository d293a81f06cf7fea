#pragma once

#include <QStringList>

namespace quilmora {

// What the names of documents may end with, in lower case and without the dot.
QStringList documentExtensions();

// The file name for a map with this title: the title and ".mindmap", with a space and `number` between them if it is
// above 0. A title that is not a legal file name is changed into one that stays within its folder, on one line and
// within the 255 bytes that file systems allow.
QString documentFileName(const QString& title, int number = 0);

// The same for an export: the title, a dot and the extension.
QString exportFileName(const QString& title, const QString& extension);

// The path with its extension replaced by "mindmap", or with "mindmap" appended if it has none.
QString withDocumentExtension(const QString& path);

// The path with the extension appended, unless it has it already, in either case.
QString withExtension(const QString& path, const QString& extension);

}  // namespace quilmora
