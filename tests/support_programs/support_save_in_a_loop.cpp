// Saves two documents to one path in turn, without a pause, until it is killed.
// Usage: support_save_in_a_loop FIRST SECOND TARGET

#include <cstdio>

#include <QFile>

#include "model/MindMapDocument.h"
#include "platform/FileWriter.h"

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const quilmora::MindMap maps[] = {quilmora::decodeDocumentAt(QFile::decodeName(argv[1])),
                                    quilmora::decodeDocumentAt(QFile::decodeName(argv[2]))};
  quilmora::DiskFileWriter writer;
  for (int round = 0;; ++round) {
    const QString error = writer.write(QFile::decodeName(argv[3]), quilmora::encodeDocument(maps[round % 2])).reason();
    if (!error.isEmpty()) {
      std::fprintf(stderr, "%s\n", qPrintable(error));
      return 1;
    }
    if (round == 0) {
      std::puts("saving");
      std::fflush(stdout);
    }
  }
}
