#pragma once

#include <QStringList>

namespace quilmora {

// Runs the batch tool with its arguments, the program's name left out. Returns the exit status: 0; 1 with one line on
// standard error where reading or writing fails; 2 with the usage on standard error for wrong usage.
int runCommandLine(const QStringList& arguments);

}  // namespace quilmora
