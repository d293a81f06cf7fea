#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

#include "model/MapIndex.h"
#include "model/MindMapDocument.h"
#include "model/TreeInfo.h"
#include "support/Folders.h"

namespace {

using quilmora::Edge;
using quilmora::MindMap;
using quilmora::Node;

const QString folder = sourceFolder() + QStringLiteral("/samples");

QStringList sampleNames() {
  return QDir(folder).entryList({QStringLiteral("*.mindmap")}, QDir::Files, QDir::Name);
}

MindMap sample(const char* name) {
  return quilmora::decodeDocumentAt(folder + u'/' + QLatin1String(name));
}

TEST(Samples, FourMapsComeWithTheProgram) {
  EXPECT_EQ(sampleNames(),
            (QStringList{QStringLiteral("course-outline.mindmap"), QStringLiteral("knowledge-atlas.mindmap"),
                         QStringLiteral("product-plan.mindmap"), QStringLiteral("trip.mindmap")}));
}

TEST(Samples, EachIsOneSoundTree) {
  for (const QString& name : sampleNames()) {
    const MindMap map = quilmora::decodeDocumentAt(folder + u'/' + name);
    const quilmora::MapIndex index(map.nodes, map.edges);
    const quilmora::TreeInfo tree(index);
    EXPECT_EQ(tree.roots().size(), 1u) << name.toStdString();
    EXPECT_EQ(map.edges.size() + 1, map.nodes.size()) << name.toStdString();
    EXPECT_EQ(index.numberCount(), map.nodes.size()) << name.toStdString() << ": an edge names no topic, or ids repeat";
    for (const auto& link : map.relationships) {
      EXPECT_NE(index.find(link.from), quilmora::MapIndex::npos) << name.toStdString();
      EXPECT_NE(index.find(link.to), quilmora::MapIndex::npos) << name.toStdString();
    }
  }
}

TEST(Samples, NoTwoTopicsShareAPlace) {
  for (const QString& name : sampleNames()) {
    const MindMap map = quilmora::decodeDocumentAt(folder + u'/' + name);
    std::set<std::pair<double, double>> places;
    for (const Node& node : map.nodes) places.insert({node.position.x(), node.position.y()});
    EXPECT_EQ(places.size(), map.nodes.size()) << name.toStdString();
  }
}

TEST(Samples, PicturesAreImages) {
  int count = 0;
  for (const Node& node : sample("trip.mindmap").nodes) {
    if (!node.imageData) continue;
    ++count;
    EXPECT_EQ(QImage::fromData(QByteArray::fromBase64(node.imageData->toLatin1())).size(), QSize(240, 150));
  }
  EXPECT_EQ(count, 1);
}

TEST(Samples, TheLargeOneIsWhatItsGeneratorWrites) {
  const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
  if (python.isEmpty()) GTEST_SKIP() << "python3 is not installed";
  QProcess process;
  process.start(python, {folder + QStringLiteral("/generate_large.py")});
  ASSERT_TRUE(process.waitForFinished(60'000));
  ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  QFile file(folder + QStringLiteral("/knowledge-atlas.mindmap"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(process.readAllStandardOutput() == file.readAll());
  EXPECT_EQ(sample("knowledge-atlas.mindmap").nodes.size(), 2697u);
}

}  // namespace
