#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <sys/stat.h>

#include "editor/CommandRig.h"
#include "editor/NodeImages.h"
#include "platform/FileDialogs.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

struct NodeImageFiles : testing::Test {
  NodeImageFiles() {
    QObject::connect(&images, &NodeImages::errorRaised, [this](const QString& message) { errors.append(message); });
  }
  QString picture(const char* name, QSize size) const {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    EXPECT_TRUE(image.save(path(name)));
    return path(name);
  }
  QString file(const char* name, const QByteArray& content) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return file.fileName();
  }
  QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }
  QSize storedSize() {
    const auto data = rig.editor.nodeByID(topicId(1))->imageData;
    return data ? QImage::fromData(QByteArray::fromBase64(data->toLatin1()), "PNG").size() : QSize();
  }

  QTemporaryDir folder;
  CommandRig rig{mapOf({1})};
  QueuedFileDialogs panels;
  NodeImages images{rig.editor, panels};
  QStringList errors;
};

}  // namespace

TEST_F(NodeImageFiles, PictureInAFileBecomesTheTopics) {
  images.setFromFile(topicId(1), picture("small.png", {40, 30}));
  EXPECT_EQ(storedSize(), QSize(40, 30));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(errors.isEmpty());
}

TEST_F(NodeImageFiles, LargePictureIsStoredWithItsLongerSideAt400) {
  images.setFromFile(topicId(1), picture("large.jpg", {6000, 3000}));
  EXPECT_EQ(storedSize(), QSize(400, 200));
}

TEST_F(NodeImageFiles, NameOfTheFileMayLie) {
  QFile::rename(picture("truth.png", {20, 20}), path("lie.jpg"));
  images.setFromFile(topicId(1), path("lie.jpg"));
  EXPECT_EQ(storedSize(), QSize(20, 20));
}

TEST_F(NodeImageFiles, FileThatIsNoPictureChangesNothingAndSaysSo) {
  images.setFromFile(topicId(1), file("notes.png", "just words"));
  ASSERT_EQ(errors.size(), 1);
  EXPECT_TRUE(errors[0].startsWith(QStringLiteral("Failed to add image: notes.png: "))) << errors[0].toStdString();
  rig.expectNothing();
}

TEST_F(NodeImageFiles, CutPictureMissingFileAndFolderChangeNothing) {
  QFile whole(picture("whole.png", {300, 300}));
  ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
  images.setFromFile(topicId(1), file("cut.png", whole.read(40)));
  images.setFromFile(topicId(1), path("missing.png"));
  images.setFromFile(topicId(1), folder.path());
  EXPECT_EQ(errors.size(), 3);
  rig.expectNothing();
}

// An SVG would be drawn with the files that it refers to, wherever they are, and wait forever for a pipe.
TEST_F(NodeImageFiles, DrawingIsRefusedWhateverItsName) {
  const QByteArray drawing = R"(<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink"
      width="9" height="9"><image xlink:href=")" +
                             path("pipe").toUtf8() + R"(" width="9" height="9"/></svg>)";
  ASSERT_EQ(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
  for (const char* name : {"drawing.svg", "drawing.png", "drawing"})
    images.setFromFile(topicId(1), file(name, drawing));
  ASSERT_EQ(errors.size(), 3);
  EXPECT_EQ(errors[0],
            QStringLiteral("Failed to add image: drawing.svg: This is a drawing. Save it as PNG or JPEG, and "
                           "add that."));
  rig.expectNothing();
}

TEST_F(NodeImageFiles, PipeIsRefusedAtOnce) {
  ASSERT_EQ(::mkfifo(QFile::encodeName(path("pipe.png")).constData(), 0600), 0);
  images.setFromFile(topicId(1), path("pipe.png"));
  EXPECT_EQ(errors.size(), 1);
  rig.expectNothing();
}

TEST_F(NodeImageFiles, PictureStandsUprightAsItsCameraSays) {
  // The smallest Exif block that says "turn by 90 degrees".
  const QByteArray turned =
      QByteArray::fromHex("ffe1002245786966000049492a0008000000010012010300010000000600000000000000");
  QFile upright(picture("photo.jpg", {40, 20}));
  ASSERT_TRUE(upright.open(QIODevice::ReadOnly));
  QByteArray bytes = upright.readAll();
  images.setFromFile(topicId(1), file("turned.jpg", bytes.insert(2, turned)));
  EXPECT_EQ(storedSize(), QSize(20, 40));
}

TEST_F(NodeImageFiles, TopicThatHasGoneTakesNoPicture) {
  images.setFromFile(topicId(9), picture("small.png", {40, 30}));
  EXPECT_TRUE(errors.isEmpty());
  rig.expectNothing();
}

TEST_F(NodeImageFiles, AskingOffersImagesAndTakesTheAnswer) {
  images.ask(topicId(1));
  rig.expectNothing();
  panels.openPaths = {picture("chosen.png", {12, 34})};
  images.ask(topicId(1));
  EXPECT_EQ(storedSize(), QSize(12, 34));
  ASSERT_EQ(panels.openRequests.size(), 2);
  EXPECT_EQ(panels.openRequests[0].content, FileDialogs::Content::images);
  EXPECT_TRUE(panels.openRequests[0].extensions.contains(QStringLiteral("png")));
  EXPECT_TRUE(panels.openRequests[0].extensions.contains(QStringLiteral("jpg")));
  EXPECT_FALSE(panels.openRequests[0].extensions.contains(QStringLiteral("svg")));
  EXPECT_FALSE(panels.openRequests[0].allowsFolders);
}
