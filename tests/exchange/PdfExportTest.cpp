#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "exchange/ImageExport.h"
#include "exchange/PictureFiles.h"
#include "platform/FileWriter.h"
#include "support/PictureMap.h"
#include "support/QtPrinters.h"
#include "support/TemporaryDisk.h"

namespace quilmora {
namespace {

using State = ExportOutcome::State;

struct ProgramRun {
  int status = -1;
  QString text;  // all that it wrote
};

ProgramRun run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, arguments);
  if (!process.waitForFinished(120'000)) return {};
  return {process.exitCode(), QString::fromUtf8(process.readAll())};
}

class PdfExport : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* program : {"qpdf", "pdftoppm", "pdfinfo", "pdfimages", "pdftotext"})
      if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
        GTEST_SKIP() << program << " is missing";
  }
  QString path() const { return m_folder.filePath(QStringLiteral("map.pdf")); }
  void write(const MindMap& map, const PictureParts& parts = {}) {
    ASSERT_EQ(exportPicture(map, ExportFormat::pdf, path(), m_writer, {}, {}, parts).state, State::written);
    const ProgramRun check = run(QStringLiteral("qpdf"), {QStringLiteral("--check"), path()});
    EXPECT_EQ(check.status, 0) << check.text.toStdString();
  }
  // The page at two pixels per point, as drawn by another program.
  QImage rendered() const {
    const QString target = m_folder.filePath(QStringLiteral("page"));
    const ProgramRun drawing = run(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("144"),
                                                                QStringLiteral("-singlefile"), path(), target});
    EXPECT_EQ(drawing.status, 0) << drawing.text.toStdString();
    return QImage(target + QStringLiteral(".ppm")).convertToFormat(QImage::Format_RGB32);
  }
  QString information(const QString& name) const {
    const QString text = run(QStringLiteral("pdfinfo"), {path()}).text;
    return QRegularExpression(name + QStringLiteral(":\\s+(.*)")).match(text).captured(1).trimmed();
  }

  QTemporaryDir m_folder;
  DiskFileWriter m_writer;
};

TEST_F(PdfExport, AnEmptyMapIsOnePageOfBackground) {
  MindMap map = test::mapOf({});
  map.canvas.background = QStringLiteral("#AABBCC");
  write(map);
  EXPECT_EQ(information(QStringLiteral("Pages")), QStringLiteral("1"));
  EXPECT_EQ(information(QStringLiteral("Page size")), QStringLiteral("1200 x 800 pts"));
  const QImage page = rendered();
  ASSERT_EQ(page.size(), QSize(2400, 1600));
  QImage blank(page.size(), QImage::Format_RGB32);
  blank.fill(QColor(0xAA, 0xBB, 0xCC));
  EXPECT_EQ(test::differingPixels(page, blank), 0);
}

TEST_F(PdfExport, ASingleTopicHasAPageOf160Points) {
  MindMap map = test::mapOf({});
  map.nodes.append(test::topic(1, 400, 300));
  write(map);
  EXPECT_EQ(information(QStringLiteral("Page size")), QStringLiteral("160 x 160 pts"));
}

TEST_F(PdfExport, ThePageIsThePicturePixelForPixel) {
  MindMap map = test::pictureMap(30, 320.0, 4);
  // Whole sizes, so that the other program does not scale.
  map.nodes.updateAll(
      [](Node& node) { node.position = QPointF(std::round(node.position.x()), std::round(node.position.y())); });
  PictureParts parts;
  parts.pixelCount = 30'000;
  write(map, parts);
  const QImage picture = test::unbandedPicture(map);
  const ProgramRun reading = run(QStringLiteral("pdfimages"), {path(), m_folder.filePath(QStringLiteral("image"))});
  EXPECT_EQ(reading.status, 0) << reading.text.toStdString();
  const QImage held(m_folder.filePath(QStringLiteral("image-000.ppm")));
  EXPECT_EQ(test::differingPixels(held.convertToFormat(QImage::Format_RGB32), picture), 0);
  // The other program stretches pictures by a pixel; that is invisible from afar.
  const QImage page = rendered();
  ASSERT_EQ(page.size(), picture.size());
  const auto fromAfar = [](const QImage& image) {
    return image.scaled(image.size() / 16, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  };
  int largest = 0;
  const QImage a = fromAfar(page);
  const QImage b = fromAfar(picture);
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      largest = std::max({largest, std::abs(qRed(a.pixel(x, y)) - qRed(b.pixel(x, y))),
                          std::abs(qGreen(a.pixel(x, y)) - qGreen(b.pixel(x, y))),
                          std::abs(qBlue(a.pixel(x, y)) - qBlue(b.pixel(x, y)))});
  EXPECT_LT(largest, 24);
}

TEST_F(PdfExport, ThePageHoldsOnePictureAndNoText) {
  write(test::pictureMap(10, 200.0, 6));
  const QString images = run(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path()}).text;
  EXPECT_EQ(images.trimmed().split(u'\n').size(), 3) << images.toStdString();  // two header lines
  EXPECT_EQ(run(QStringLiteral("pdftotext"), {path(), QStringLiteral("-")}).text.trimmed(), QString());
}

TEST_F(PdfExport, PagesBeyondTheLimitAreCountedInLargerUnits) {
  MindMap map = test::mapOf({});
  map.nodes.append(test::topic(1, 0, 0));
  map.nodes.append(test::topic(2, 0, 20'000));
  write(map);
  QFile file(path());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray head = file.read(2000);
  EXPECT_TRUE(head.contains("/MediaBox [0 0 80 10080] /UserUnit 2")) << head.toStdString();
  EXPECT_TRUE(head.contains("/Width 320 /Height 40320"));
}

TEST_F(PdfExport, AFullDiskIsToldAndLeavesNothing) {
  TemporaryDisk disk(QByteArrayLiteral("64k"));
  if (!disk.isMounted()) GTEST_SKIP() << "only root can mount a disk";
  const QString target = disk.path(QStringLiteral("map.pdf"));
  const auto outcome = exportPicture(test::pictureMap(60, 600.0), ExportFormat::pdf, target, m_writer);
  EXPECT_EQ(outcome.state, State::failed);
  EXPECT_EQ(outcome.reason, QStringLiteral("“map.pdf” could not be written. The disk is full."));
  EXPECT_FALSE(QFile::exists(target));
}

}  // namespace
}  // namespace quilmora
