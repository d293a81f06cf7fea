#pragma once

#include <QString>

namespace quilmora {

// The name of the file that a map of this title is saved in: the title and ".mindmap", and between them a space and
// `number` when it is above 0. A title that is no legal file name is made one: the name stays within its folder, on one
// line and within the 255 bytes that file systems allow.
QString documentFileName(const QString& title, int number = 0);

// The same for an export: the title, a dot and the extension.
QString exportFileName(const QString& title, const QString& extension);

// The path with the extension "mindmap" in place of its own, or behind it when it has none.
QString withDocumentExtension(const QString& path);

// The path with the extension behind it, unless it has it already, in either case.
QString withExtension(const QString& path, const QString& extension);

}  // namespace quilmora
