#pragma once

#include <vector>

#include <QString>

namespace quilmora {

// The content of the quick start, in the words of this desktop. Keys of commands come from the table of commands.

struct OnboardingRow {
  QString symbol;
  QString keys;  // "Ctrl + N"; may be empty
  QString description;
};

struct OnboardingPage {
  QString symbol;  // may be empty
  QString title;
  QString text;  // below the title; may be empty
  std::vector<OnboardingRow> rows;
  QString note;  // below the rows; may be empty
};

// The last one leads to a first map: it has buttons instead of rows.
const std::vector<OnboardingPage>& onboardingPages();

}  // namespace quilmora
