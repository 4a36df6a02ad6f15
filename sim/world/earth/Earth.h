// The earth: the WGS84 ellipsoid. Sea level is its surface.
#pragma once

namespace sim::world {

// A place by latitude and longitude in degrees and by its height above the ellipsoid in metres.
struct Place {
  double latitude = 0.0;
  double longitude = 0.0;
  double altitude = 0.0;
};

// How far on the ground one goes, in metres, for a radian of latitude or longitude at a place.
struct MetresPerRadian {
  double north;
  double east;
};
MetresPerRadian MetresPerRadianAt(const Place& place);

// Metres on the ground from one place to another nearby, by the radii at the first: good to about a metre in
// ten kilometres.
struct GroundOffset {
  double north;
  double east;
};
GroundOffset OffsetBetween(const Place& from, const Place& to);
Place Moved(const Place& from, const GroundOffset& offset);

// The shortest way over the ellipsoid: its length in metres, and the true heading with which it begins.
struct Way {
  double metres;
  double heading;
};
Way WayBetween(const Place& from, const Place& to);

// Acceleration at sea level by the normal-gravity formula of WGS84, in metres per second squared.
double GravityAt(double latitudeDegrees);

}  // namespace sim::world
