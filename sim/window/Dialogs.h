// What the simulator tells or asks its user before it goes on.
#pragma once

#include <span>
#include <string>

namespace sim {

class FlightWindow;
struct LastEnd;

// What is being loaded; it goes on at once.
void ShowStatus(FlightWindow& window, const std::string& text);

// A message. Waits until the user has read it; or, where there may be none, two seconds.
void ShowMessage(FlightWindow& window, std::span<const std::string> lines, bool waitsForUser);

// The plugin that ended the last flight may be left out this time.
enum class LastEndChoice { FlyWithout, FlyWithAll, Leave };
LastEndChoice AskAboutLastEnd(FlightWindow& window, const LastEnd& end);

}  // namespace sim
