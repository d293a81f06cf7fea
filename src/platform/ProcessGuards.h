#pragma once

#include <QByteArray>

namespace quilmora {

// Call at the start of a program, before anything is opened. A write that the system refuses (a closed pipe, a limit on
// file sizes) becomes an ordinary error and never kills the process; a closed standard stream is replaced by /dev/null,
// so that no document gets its descriptor and is written to.
void guardProcess();

// From here on, output of this process to standard error is dropped when it would block, such as on a full pipe or a
// stopped terminal. Other processes that share the stream are not affected.
void neverWaitForStandardError();

// Writes as much to standard error as is possible without blocking.
void writeToStandardError(const QByteArray& bytes);

}  // namespace quilmora
