#include <new>

#include <gtest/gtest.h>

#include "exchange/ExportWriter.h"
#include "platform/FileWriter.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

namespace quilmora {
namespace {

class WriterWithoutMemory final : public FileWriter {
 public:
  Outcome write(const QString&, const QByteArray&) override { throw std::bad_alloc(); }
  std::unique_ptr<FileStream> stream(const QString&) override { throw std::bad_alloc(); }
};

ExportOutcome exportWithoutMemory(ExportFormat format) {
  WriterWithoutMemory writer;
  return writeExport(test::mapOf({1}), format, QStringLiteral("out"), writer);
}

TEST(ExportWriter, AMapWithoutMemoryForItsPictureIsNotRendered) {
  for (const ExportFormat format : {ExportFormat::png, ExportFormat::pdf})
    EXPECT_EQ(exportWithoutMemory(format).state, ExportOutcome::State::notRendered) << rawValue(format).toStdString();
}

TEST(ExportWriter, MemoryThatRunsOutForATextIsTold) {
  for (const ExportFormat format :
       {ExportFormat::json, ExportFormat::svg, ExportFormat::opml, ExportFormat::markdown}) {
    const ExportOutcome outcome = exportWithoutMemory(format);
    EXPECT_EQ(outcome.state, ExportOutcome::State::failed) << rawValue(format).toStdString();
    EXPECT_EQ(outcome.reason, QStringLiteral("the map is too large for the memory of this machine"));
  }
}

}  // namespace
}  // namespace quilmora
