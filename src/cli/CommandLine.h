#pragma once

#include <QStringList>

namespace quilmora {

// Runs the batch tool with its arguments, without the program's name. Returns the exit status: 0; 1 with one line on
// standard error if reading or writing fails; 2 with the usage on standard error if the arguments are wrong.
int runCommandLine(const QStringList& arguments);

}  // namespace quilmora
