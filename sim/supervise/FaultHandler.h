// What the flying process does when it is hit by a fault, or is asked where its main thread stands: it notes
// the facts on the board, and leaves it to the supervisor to make sense of them.
#pragma once

#include <csignal>

namespace sim {

// With this signal the supervisor asks the main thread where it stands. Its value tells what to do.
int QuestionSignal();
enum class Question : int { WhereAreYou, DieOfAbort };

// To be called on the main thread of the flying process, before any plugin is loaded. A fault on another
// thread's stack that is full cannot be handled: the process dies of it at once, and the supervisor sees that
// alone.
void InstallFaultHandlers();

// Notes where the thread stands that throws an exception.
void NoteThrow();

// Notes where the thread stands that exits the process.
void GatherExit();

// Likewise, and waits for the supervisor to end the process; unless its end has been noted, or it is only a
// copy of the flight. To be called by functions registered with atexit.
void NoteExit();

}  // namespace sim
