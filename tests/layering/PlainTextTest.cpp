#include <regex>

#include <gtest/gtest.h>

#include "layering/Layering.h"
#include "support/Folders.h"

namespace {

using Lines = std::vector<std::string>;

bool isJudged(const std::string& path) {
  const bool isUi = path.rfind("app/", 0) == 0 || path.rfind("canvas/view/", 0) == 0;
  // Menus.cpp is exempt: it shows only the program's own commands.
  return isUi && path.rfind("canvas/view/PlainText.", 0) != 0 && path != "app/commands/Menus.cpp";
}

// What precedes a call of the same name that shows nothing: settings, clipboard data, whole actions; and what precedes
// the definition of a function.
bool isAnotherCall(const std::string& before) {
  return before.ends_with("void ") || before.ends_with("ettings.") || before.ends_with("copied->") ||
         before.ends_with("m_window->") || before.ends_with("pboard()->") || before.ends_with("pboard->");
}

// Every call that passes a text to the toolkit directly, unless the text is a literal: a line "path:line" for each.
Lines unguardedTexts(const std::vector<layering::SourceFile>& files) {
  static const std::string literal =
      R"(\s*\(\s*(?!QStringLiteral\("|tr\("|"|QString\(\)|\{\}|\)|const Command|command\)))";
  static const std::regex shown(
      R"((plain::)?\b(?:setText|setToolTip|setStatusTip|setWhatsThis|setTitle|setInformativeText|setDetailedText|)"
      R"(addAction|addMenu|addTab|setTabText|setItemText|showText))" +
      literal);
  // A widget that gets a text in its constructor.
  static const std::regex made(
      R"(()new (?:QLabel|QPushButton|QToolButton|QCheckBox|QRadioButton|QGroupBox)\s*\((?!\w+\)|&\w+\(\)\)|tr\("|QStringLiteral\("))");
  static const std::regex forbidden(
      R"(()(?:\bQMessageBox\b|\bQErrorMessage\b|\bsetHtml\b|\binsertHtml\b|\bQTextBrowser\b))");
  Lines found;
  for (const layering::SourceFile& file : files) {
    if (!isJudged(file.path)) continue;
    for (const std::regex* rule : {&shown, &made, &forbidden}) {
      for (std::sregex_iterator match(file.text.begin(), file.text.end(), *rule), end; match != end; ++match) {
        const auto place = static_cast<std::size_t>(match->position());
        if ((*match)[1].length() > 0 ||
            isAnotherCall(file.text.substr(place < 12 ? 0 : place - 12, place < 12 ? place : 12)))
          continue;
        const auto line = 1 + std::count(file.text.begin(), file.text.begin() + match->position(), '\n');
        found.push_back(file.path + ":" + std::to_string(line));
      }
    }
  }
  return found;
}

TEST(PlainTexts, NothingButPlainTextReachesLabelsToolTipsAndMenus) {
  for (const std::string& place : unguardedTexts(layering::readSources(sourceFolder().toStdString() + "/src")))
    ADD_FAILURE() << "src/" << place << ": show this text by a function of canvas/view/PlainText.h";
}

TEST(PlainTexts, ATextFromElsewhereOnTheToolkitsOwnRoadIsFound) {
  EXPECT_EQ(unguardedTexts({{"app/A.cpp", "label->setText(node.title);\nlabel->setText(QStringLiteral(\"OK\"));\n"},
                            {"app/B.cpp", "widget->setToolTip(\n    path);\nplain::setToolTip(*widget, path);\n"},
                            {"canvas/view/C.cpp", "auto* label = new QLabel(title, this);\nnew QLabel(this);\n"},
                            {"app/D.cpp", "QMessageBox box;\n"},
                            {"exchange/E.cpp", "setText(node.title);\n"}}),
            (Lines{"app/A.cpp:1", "app/B.cpp:1", "canvas/view/C.cpp:1", "app/D.cpp:1"}));
}

}  // namespace
