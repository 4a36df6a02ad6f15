// Who is to blame for the end of a flight, and how to say it.
//
// Two plugins may come into question: the one that was called last, as the library knows it, and the one
// whose code was running, as the thread's stack tells. They differ when plugins call each other without the
// library, when a plugin's module was closed but is still called, and when a plugin has a thread of its own.
// The rules:
//
//  1. The first frame of the stack, from the inside, whose code lies in a plugin's module names the plugin:
//     its code did it, be it by calling the library or the C library with a bad pointer. Should another
//     plugin have been called, both are told.
//  2. Without such a frame, on the main thread, it is the plugin that was called: the call was made with what
//     it had registered. Should the code have been that of a module that was closed, its plugin is told too.
//  3. Without such a frame, on another thread, it is the plugin whose module was the last to lie where the
//     code was. Calls are made on the main thread alone, so they say nothing about others.
//  4. Otherwise nobody is blamed, and it is said where the flight was. So it is with a signal that another
//     process has sent.
#pragma once

#include <string>
#include <vector>

#include "host/FlightBoard.h"
#include "report/Report.h"
#include "supervise/Backtrace.h"
#include "supervise/MemoryMap.h"

namespace sim {

// What is known of the end of a flight.
struct Evidence {
  const FlightBoard& board;
  const ThreadFacts& facts;
  std::vector<StackFrame> frames;  // the innermost first
  MemoryMap map;
};

// What was noted of a thread of a process, and what its files tell about it.
Evidence EvidenceOf(pid_t process, const ThreadFacts& facts);

// How a flight ended badly.
struct BadEnd {
  Result result = Result::Crashed;
  bool hasCulprit = false;
  // Without a culprit it has neither signature, name, path nor call.
  Culprit culprit;
};

// `what` happened: "segmentation fault at address 0x0 (a null pointer)".
BadEnd Blame(const Evidence& evidence, Result result, const std::string& what);

// The same for a process that is gone without a word. One that has exited was exited by the plugin that was
// called last; who a signal came from cannot be known, so that the call is told, but nobody is blamed.
BadEnd BlameRunningCall(const FlightBoard& board, const std::string& what);
BadEnd BlameNobody(const FlightBoard& board, const std::string& what);

// Makes a call the culprit's.
void Identify(Culprit& culprit, const CallFacts& call);

// The call at a depth of the board's, the outermost being 0; what it is lacks.
Culprit DescribeCall(const FlightBoard& board, std::size_t depth);

}  // namespace sim
