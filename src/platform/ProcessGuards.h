#pragma once

#include <QByteArray>

namespace quilmora {

// For the start of a program, before anything is opened. A write that the system refuses (a reader that has gone, a
// limit on the size of files) is an error where it happens and never ends the process; and a standard stream that was
// closed is replaced by nothing, lest a document be opened in its place and written to.
void guardProcess();

// From here on, what this process writes to standard error is dropped where it would have to wait, such as for a full
// pipe or a stopped terminal. Other processes that share the stream see no change.
void neverWaitForStandardError();

// Writes as much to standard error as goes without waiting.
void writeToStandardError(const QByteArray& bytes);

}  // namespace quilmora
