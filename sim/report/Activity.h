// What the user and the plugins did in a flight, counted for its summary.
#pragma once

namespace sim {

struct Activity {
  int clicks = 0;
  int keys = 0;
  int menuPicks = 0;
  int commandsHeld = 0;      // by the flight file
  int commandPasses = 0;     // in which it held one
  long long textsDrawn = 0;  // strings and numbers
  long long boxesDrawn = 0;
  int cameraTakings = 0;  // by plugins
  int cameraFrames = 0;   // whose camera a plugin set
  int planesTakings = 0;  // of the AI planes, by plugins
  int planesReturns = 0;
  long long probings = 0;  // of the terrain
  long long probingsThatHit = 0;
  long long objectsLoaded = 0;
  long long objectsReleased = 0;
  long long objectsDrawn = 0;
};

inline Activity gActivity;

}  // namespace sim
