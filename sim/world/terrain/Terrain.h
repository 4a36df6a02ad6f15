// The ground: natural heights, level fields around airports, the sea where the land lies below 0, and the
// deck of a ship.
#pragma once

#include <optional>
#include <vector>

#include "world/Vector.h"
#include "world/earth/LocalFrame.h"
#include "world/terrain/Deck.h"

namespace sim::world {

// The ground at a latitude and longitude. Vectors: x to the east, y up, z south, of that place.
struct Ground {
  double altitude = 0.0;         // metres
  Vector normal{0.0, 1.0, 0.0};  // of length 1
  Vector velocity{};             // metres per second; not 0 on a moving deck
  bool isWet = false;
  bool isDeck = false;
};

class Terrain {
 public:
  // levelFields: where the ground is flat for some 1200 m around, at the altitude that each has. They are
  // at least 8 km apart.
  explicit Terrain(const std::vector<Place>& levelFields);

  // Moves the deck to where it is then.
  void SetTime(double seconds) { deck.SetTime(seconds); }

  // The ground below or above a place, whatever its altitude; nothing outside of the world.
  std::optional<Ground> GroundAt(const Place& place) const;

  // The ground on the vertical line, parallel to the frame's y, through a point in local metres. All of the
  // result is in local metres.
  struct Hit {
    Vector location;
    Vector normal;
    Vector velocity;
    bool isWet;
  };
  std::optional<Hit> Probe(const LocalFrame& frame, const Vector& point) const;

  const Deck& Ship() const { return deck; }

 private:
  const Place* LevelFieldNear(const Place& place) const;

  Deck deck;
  std::vector<Place> fields;
  // For each cell of a grid over the world, the fields that reach into it, by number.
  std::vector<std::vector<int>> fieldsOfCell;
};

}  // namespace sim::world
