#include <QStringList>
#include <gtest/gtest.h>

#include "exchange/ExportFormat.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

TEST(ExportFormat, RowsInTheOrderOfTheMenu) {
  QStringList rows;
  for (const ExportFormat format : allExportFormats())
    rows.append(QStringList{rawValue(format), label(format), menuEntry(format)}.join(QStringLiteral(" | ")));
  EXPECT_EQ(rows.join(u'\n'), QStringLiteral("json | JSON | JSON\n"
                                             "png | PNG | PNG Image\n"
                                             "pdf | PDF | PDF\n"
                                             "svg | SVG | SVG\n"
                                             "opml | OPML | OPML\n"
                                             "md | Markdown | Markdown"));
}

TEST(ExportFormat, EveryRawValueReadsBack) {
  for (const ExportFormat format : allExportFormats()) {
    EXPECT_EQ(exportFormatFromRawValue(rawValue(format)), format);
    EXPECT_EQ(requestedExportFormat(rawValue(format)), format);
  }
}

TEST(ExportFormat, ARequestWithAnUnknownTextAsksForJson) {
  for (const char* text : {"", "markdown", "MD", "svg ", "docx"}) {
    EXPECT_EQ(exportFormatFromRawValue(QLatin1String(text)), std::nullopt) << text;
    EXPECT_EQ(requestedExportFormat(QLatin1String(text)), ExportFormat::json) << text;
  }
}

}  // namespace
}  // namespace quilmora
