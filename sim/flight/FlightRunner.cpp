// The walk over a flight.
#include "flight/FlightRunner.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "host/CostWatch.h"
#include "report/Event.h"
#include "report/Moment.h"
#include "report/Narrator.h"

namespace sim {
namespace {

bool IsFrame(int moment) { return moment > kAfterStart && moment < kAtEnd; }

// Whether an expectation is settled by what was found at this moment of its span.
bool Decides(const Expectation& expectation, bool holds, int moment) {
  const bool isLast = moment - expectation.moment >= expectation.frames;
  switch (expectation.span) {
    case Span::Once:
      break;
    case Span::Within:
    case Span::Never:
      return holds || isLast;
    case Span::Throughout:
      return !holds || isLast;
  }
  return true;
}

std::string History(const Expectation& expectation, std::optional<int> lastHeld) {
  if (expectation.claim.isCostly && expectation.span == Span::Once) return "";
  if (lastHeld) return fmt::format(", true last after frame {}", *lastHeld);
  return expectation.span == Span::Never ? "" : ", never true before";
}

std::string SpanText(const Expectation& expectation) {
  const std::string frames =
      fmt::format("{} frame{}", expectation.frames, expectation.frames == 1 ? "" : "s");
  switch (expectation.span) {
    case Span::Once:
      break;
    case Span::Within:
      return " within " + frames;
    case Span::Throughout:
      return " throughout " + frames;
    case Span::Never:
      return " never within " + frames;
  }
  return "";
}

}  // namespace

FlightRunner::FlightRunner(Flight flightToFly, Narrator& flightNarrator)
    : flight(std::move(flightToFly)),
      narrator(flightNarrator),
      nextRow(flight.rows.begin()),
      stepProgress(flight.stepCount),
      expectationProgress(flight.expectations.size()) {
  open.reserve(flight.expectations.size());
  for (const Expectation& expectation : flight.expectations) open.push_back({&expectation, {}, ""});
  gFlightRunner = this;
}

FlightRunner::~FlightRunner() { gFlightRunner = nullptr; }

// ---- Steps ----------------------------------------------------------------------------------------------

void FlightRunner::CarryOutSteps(int frame) {
  const auto isEarlier = [](const RunningRow& left, const RunningRow& right) {
    return left.row->steps.front().line < right.row->steps.front().line;
  };
  for (; nextRow != flight.rows.end() && nextRow->frame == frame; ++nextRow) {
    const RunningRow row{.row = &*nextRow, .due = frame};
    running.insert(std::ranges::upper_bound(running, row, isEarlier), row);
  }
  for (RunningRow& row : running) CarryOut(row, frame);
  std::erase_if(running, [](const RunningRow& row) { return row.next == row.row->steps.size(); });
}

void FlightRunner::CarryOut(RunningRow& row, int frame) {
  const std::vector<Step>& steps = row.row->steps;
  while (row.next < steps.size() && row.due <= frame) {
    const Step& step = steps[row.next];
    const Outcome outcome = step.effect();
    Note(step, frame, outcome);
    if (!outcome.text.empty()) MarkInTrace(outcome.text);
    if (!outcome.succeeded) {
      TellFailedStep(frame, step.line, outcome.text);
    } else if (!outcome.text.empty()) {
      narrator.Tell(frame, outcome.text);
    }
    if (!outcome.isDone) return;
    ++row.next;
    if (row.next < steps.size()) row.due = frame + steps[row.next].later;
  }
}

void FlightRunner::Note(const Step& step, int frame, const Outcome& outcome) {
  const Progress progress = !outcome.succeeded ? Progress::Failed
                            : outcome.isDone   ? Progress::Done
                                               : Progress::Running;
  stepProgress[step.index] = {progress, frame, outcome.text};
}

void FlightRunner::TellFailedStep(int frame, int line, const std::string& text) {
  TellEvent(StepFailed{{.frame = frame, .line = line, .text = text}});
  narrator.Tell(frame, fmt::format("FAILED  {}, line {}", text, line));
}

void FlightRunner::EndSteps(int lastFrame) {
  for (const RunningRow& row : running)
    for (std::size_t index = row.next; index < row.row->steps.size(); ++index)
      TellFailedStep(lastFrame, row.row->steps[index].line, "the flight ended before this step was done");
  running.clear();
}

// ---- Expectations ---------------------------------------------------------------------------------------

void FlightRunner::CheckExpectations(int moment) {
  std::erase_if(open, [&](OpenExpectation& expectation) { return Look(expectation, moment); });
}

// Before its moment it is looked at, too, for a failure to say where it held last.
bool FlightRunner::Look(OpenExpectation& looked, int moment) {
  const Expectation& expectation = *looked.expectation;
  const bool isEarly = moment < expectation.moment;
  if (isEarly && (!IsFrame(moment) || expectation.claim.isCostly)) return false;
  if (!isEarly && moment != expectation.moment && !IsFrame(moment)) {
    // No frame follows any more: what was seen until now decides, unless the flight was cut short.
    if (expectation.span == Span::Once || moment != kAtEnd) return false;
    Settle(looked, moment, expectation.span != Span::Within);
    return true;
  }
  Finding finding = expectation.claim.check();
  looked.lastFound = std::move(finding.found);
  const bool isSettled = !isEarly && Decides(expectation, finding.holds, moment);
  if (isSettled) Settle(looked, moment, finding.holds != (expectation.span == Span::Never));
  if (finding.holds && IsFrame(moment)) looked.lastHeld = moment;
  return isSettled;
}

void FlightRunner::Settle(const OpenExpectation& settled, int moment, bool holds) {
  const Expectation& expectation = *settled.expectation;
  const std::string told =
      fmt::format("{}{} (found {})", expectation.claim.text, SpanText(expectation), settled.lastFound);
  // Of one that must never hold, it is no news where it held.
  const std::optional<int> lastHeld = expectation.span == Span::Never ? std::nullopt : settled.lastHeld;
  TellEvent(ExpectationSettled{.index = expectation.index,
                               .holds = holds,
                               .found = settled.lastFound,
                               .lastHeld = holds ? 0 : lastHeld.value_or(0),
                               .coversLoadFailures = holds && expectation.claim.coversLoadFailures});
  expectationProgress[expectation.index] = {holds ? Progress::Done : Progress::Failed, moment,
                                            settled.lastFound};
  if (holds) return narrator.Tell(moment, "ok      " + told);
  narrator.Tell(moment,
                fmt::format("FAILED  {}{}, line {}", told, History(expectation, lastHeld), expectation.line));
}

}  // namespace sim
