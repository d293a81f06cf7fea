#include <QDir>
#include <gtest/gtest.h>

#include "platform/Paths.h"

namespace quilmora {
namespace {

TEST(Paths, AreTakenFromTheCurrentFolder) {
  EXPECT_EQ(absolutePath(QStringLiteral("Plan.mindmap")), QDir::currentPath() + QStringLiteral("/Plan.mindmap"));
  EXPECT_EQ(absolutePath(QStringLiteral("/home/Plan.mindmap")), QStringLiteral("/home/Plan.mindmap"));
}

TEST(Paths, LoseSlashesAtTheirEnd) {
  EXPECT_EQ(absolutePath(QStringLiteral("/home/Plan.mindmap//")), QStringLiteral("/home/Plan.mindmap"));
  EXPECT_EQ(absolutePath(QStringLiteral("/")), QStringLiteral("/"));
}

TEST(Paths, KeepTheStepUpBehindALink) {
  EXPECT_EQ(absolutePath(QStringLiteral("/home/link/../Plan.mindmap")), QStringLiteral("/home/link/../Plan.mindmap"));
}

}  // namespace
}  // namespace quilmora
