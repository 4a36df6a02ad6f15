// What the user does in the window, with the mouse, a key or a panel, comes through here, as steps that a
// flight file could have. So a flight file of the steps that a flight was flown with flies it again.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>

#include "flight/Vocabulary.h"

namespace sim {

class Narrator;

// Asks for a step: an object with a step's word and what stands beside it, but no moment, as in
// {"enablePlugin": "org.skyvora.clock"}. It is carried out where the steps of flight files are, at the
// beginning of the next frame, behind what was asked for before; what goes on for several frames does so. A
// mouse that is moved twice before a frame has only been moved to the second place. Throws InputError for
// what is no step.
//
// `whenDone` is told what came of it. One that could not be carried out is told to the user, and does not
// fail the flight.
void Do(nlohmann::json step, std::function<void(const Outcome&)> whenDone = {});

// A step that was begun.
struct UserAction {
  int frame;  // before which
  const nlohmann::json& step;
  bool succeeded;  // so far
};
// Who is told of each, until another one is set; an empty function for nobody.
void TellUserActionsTo(std::function<void(const UserAction&)> listener);

// Of the flight that begins: for steps that need to know its rate. What was asked for before is forgotten.
void BeginUserActions(const FlightContext& context);

// To be called once in each frame.
void CarryOutUserActions(int frame, Narrator& narrator);

}  // namespace sim
