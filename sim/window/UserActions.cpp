#include "window/UserActions.h"

#include <fmt/format.h>

#include <utility>
#include <vector>

#include "flight/JsonDocument.h"
#include "host/CostWatch.h"
#include "report/Narrator.h"

namespace sim {
namespace {

constexpr const char* kMove = "moveMouse";

struct Asked {
  nlohmann::json step;
  Effect effect;
  std::function<void(const Outcome&)> whenDone;
  bool isBegun = false;
};

FlightContext gContext;
std::vector<Asked> gAsked;
std::function<void(const UserAction&)> gListener;

Effect EffectOf(nlohmann::json step) {
  step["later"] = 0;
  const JsonDocument document("the user's step", step.dump());
  const Entry entry(document, "", "");
  return FindStep(entry).read(entry, gContext);
}

void Tell(const Asked& asked, const Outcome& outcome, int frame, Narrator& narrator) {
  if (outcome.text.empty()) return;
  MarkInTrace(outcome.text);
  // The mouse is on its way in nearly every frame.
  if (asked.step.contains(kMove)) return;
  narrator.Tell(frame, outcome.succeeded ? outcome.text : "not done: " + outcome.text);
}

// True when it is done, in whatever way.
bool CarryOut(Asked& asked, int frame, Narrator& narrator) {
  const Outcome outcome = asked.effect();
  if (!std::exchange(asked.isBegun, true) && gListener) gListener({frame, asked.step, outcome.succeeded});
  Tell(asked, outcome, frame, narrator);
  const bool isDone = outcome.isDone || !outcome.succeeded;
  if (isDone && asked.whenDone) asked.whenDone(outcome);
  return isDone;
}

}  // namespace

void Do(nlohmann::json step, std::function<void(const Outcome&)> whenDone) {
  if (!gAsked.empty() && step.contains(kMove) && gAsked.back().step.contains(kMove) && !gAsked.back().isBegun)
    gAsked.pop_back();
  Effect effect = EffectOf(step);
  gAsked.push_back({std::move(step), std::move(effect), std::move(whenDone)});
}

void TellUserActionsTo(std::function<void(const UserAction&)> listener) { gListener = std::move(listener); }

void BeginUserActions(const FlightContext& context) {
  gContext = context;
  gAsked.clear();
}

void CarryOutUserActions(int frame, Narrator& narrator) {
  // What is asked for meanwhile comes in the next frame, behind what goes on.
  std::vector<Asked> now = std::exchange(gAsked, {});
  std::erase_if(now, [&](Asked& asked) { return CarryOut(asked, frame, narrator); });
  gAsked.insert(gAsked.begin(), std::make_move_iterator(now.begin()), std::make_move_iterator(now.end()));
}

}  // namespace sim
