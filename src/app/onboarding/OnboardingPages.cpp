#include "app/onboarding/OnboardingPages.h"

#include "commands/CommandTable.h"
#include "platform/PlatformText.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;

OnboardingRow command(const QString& symbol, const QString& commandId, const QString& description) {
  return {symbol, findCommand(commandId)->spelledKey(), description};
}

OnboardingRow other(const QString& symbol, const QString& keys, const QString& description) {
  return {symbol, platformText(keys), description};
}

OnboardingPage canvasPage() {
  return {{},
          u"Infinite Canvas"_s,
          {},
          {command(u"plus.circle.fill"_s, u"createNode"_s, u"Create a new topic"_s),
           other(u"arrow.turn.down.right"_s, u"Tab"_s, u"Add a child topic"_s),
           other(u"arrow.up.and.down.and.arrow.left.and.right"_s, u"Arrow keys"_s, u"Navigate between topics"_s),
           other(u"hand.draw.fill"_s, u"Cmd + drag"_s, u"Reparent a topic"_s),
           command(u"arrow.up.left.and.arrow.down.right"_s, u"zoomToFit"_s, u"Zoom to fit everything"_s)},
          {}};
}

OnboardingPage aiPage() {
  return {u"sparkles"_s,
          u"AI-Powered"_s,
          {},
          {command(u"text.bubble.fill"_s, u"toggleAIChat"_s, u"Chat with AI about your map"_s),
           command(u"wand.and.stars"_s, u"aiGenerate"_s, u"Generate entire maps from a prompt"_s),
           other(u"arrow.branch"_s, u"Right-click → Expand"_s, u"Expand any topic into subtopics"_s),
           other(u"doc.plaintext"_s, u"Right-click → Summary"_s, u"Summarize a branch into key points"_s)},
          u"Works offline with Smart mode, or connect Claude / OpenAI in Settings."_s};
}

OnboardingPage orderPage() {
  return {
      u"command"_s,
      u"Stay Organized"_s,
      {},
      {command(u"command.circle.fill"_s, u"toggleCommandPalette"_s, u"Command palette — quick access to everything"_s),
       command(u"list.bullet.indent"_s, u"toggleOutline"_s, u"Outline view — see your map as a tree"_s),
       command(u"play.rectangle.fill"_s, u"togglePresentation"_s, u"Present your map in fullscreen"_s),
       command(u"magnifyingglass"_s, u"toggleSearch"_s, u"Search across all topics"_s),
       other(u"square.and.arrow.up"_s, u"Export"_s, u"PDF, PNG, SVG, Markdown, OPML"_s)},
      {}};
}

}  // namespace

const std::vector<OnboardingPage>& onboardingPages() {
  static const std::vector<OnboardingPage> pages = {
      {u"tree.fill"_s,
       u"Welcome to Quilmora"_s,
       platformText(u"Visual thinking for your Mac.\nMap ideas, plan projects, and let AI help you explore."_s),
       {},
       {}},
      canvasPage(),
      aiPage(),
      orderPage(),
      {u"sparkle"_s,
       u"Ready to go!"_s,
       u"Start with a template or a blank canvas."_s,
       {},
       u"Reopen anytime from Help → Quilmora Quick Start"_s},
  };
  return pages;
}

}  // namespace quilmora
