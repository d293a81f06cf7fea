#pragma once

#include <utility>
#include <vector>

#include <QByteArray>
#include <QDir>
#include <QFile>

#include "support/Folders.h"

// The seeds of a fuzzer by file name, in order; empty if one cannot be read.
inline std::vector<std::pair<QString, QByteArray>> corpusOf(const char* fuzzer) {
  const QDir folder(sourceFolder() + QStringLiteral("/fuzz/corpus/") + QLatin1String(fuzzer));
  std::vector<std::pair<QString, QByteArray>> seeds;
  for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    seeds.emplace_back(name, file.readAll());
  }
  return seeds;
}
