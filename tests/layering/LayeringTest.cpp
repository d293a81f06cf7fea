#include <gtest/gtest.h>

#include "layering/Layering.h"
#include "support/Folders.h"

namespace {

using layering::violations;
using Lines = std::vector<std::string>;

TEST(Layering, SourcesIncludeOnlyFromTheirOwnFloorAndBelow) {
  const auto files = layering::readSources(sourceFolder().toStdString() + "/src");
  ASSERT_GT(files.size(), 50u);
  for (const std::string& line : violations(files)) ADD_FAILURE() << "src/" << line;
}

TEST(Layering, AFileMayIncludeFromItsOwnFolderAndFromBelow) {
  EXPECT_EQ(violations({{"editor/A.cpp", "#include \"editor/A.h\"\n#include \"model/MindMap.h\"\n#include <vector>\n"},
                        {"app/main.cpp", "#include <QApplication>\n#include \"canvas/view/CanvasView.h\"\n"}}),
            Lines());
}

TEST(Layering, AnIncludeFromAFloorAboveIsFound) {
  EXPECT_EQ(violations({{"model/MindMap.cpp", "#include \"model/MindMap.h\"\n\n#include \"editor/TreeInfo.h\"\n"}}),
            Lines{"model/MindMap.cpp:3: model may not include from editor"});
}

TEST(Layering, PaintingMayNotKnowTheView) {
  EXPECT_EQ(violations({{"canvas/painting/NodePainter.cpp", "#include \"canvas/view/CanvasView.h\"\n"}}),
            Lines{"canvas/painting/NodePainter.cpp:1: canvas/painting may not include from canvas/view"});
}

TEST(Layering, LayoutsAreBlindToThemes) {
  EXPECT_EQ(violations({{"layout/TreeLayout.cpp", "#include \"themes/Theme.h\"\n"}}),
            Lines{"layout/TreeLayout.cpp:1: layout may not include from themes"});
}

TEST(Layering, AWidgetHeaderInAHeadlessFileIsFound) {
  EXPECT_EQ(violations({{"canvas/painting/A.h", "#include <QWidget>\n"},
                        {"platform/B.cpp", "#include <QtWidgets/QLabel>\n"},
                        {"cli/C.cpp", "  #  include <qlabel.h>\n"}}),
            (Lines{"canvas/painting/A.h:1: a headless file includes the widget header QWidget",
                   "platform/B.cpp:1: a headless file includes the widget header QtWidgets/QLabel",
                   "cli/C.cpp:1: a headless file includes the widget header qlabel.h"}));
}

TEST(Layering, AnIncludeWithoutItsFolderIsFound) {
  EXPECT_EQ(violations({{"model/MindMap.cpp", "#include \"MindMap.h\"\n"}}),
            Lines{"model/MindMap.cpp:1: \"MindMap.h\" is not written as folder/File.h"});
}

TEST(Layering, AFolderWithoutAFloorIsFound) {
  EXPECT_EQ(violations({{"helpers/Strings.h", ""}}), Lines{"helpers/Strings.h:1: stands in no known folder"});
}

}  // namespace
