#pragma once

#include <QString>

// Where the tests find things, without a trailing slash.
QString sourceFolder();          // the root of the sources
QString programFolder();         // the built programs
QString supportProgramFolder();  // the small programs that tests start
