#include "world/aircraft/Attitude.h"

#include <algorithm>

#include "world/Angles.h"

namespace sim::world {
namespace {

// The vector turned by the quaternion w + v.
Vector Rotated(double w, const Vector& v, const Vector& vector) {
  const Vector twice = 2.0 * Cross(v, vector);
  return vector + w * twice + Cross(v, twice);
}

}  // namespace

Attitude::Attitude(const EulerAngles& angles) {
  const double heading = ToRadians(angles.heading) / 2.0;
  const double pitch = ToRadians(angles.pitch) / 2.0;
  const double roll = ToRadians(angles.roll) / 2.0;
  const double ch = std::cos(heading);
  const double sh = std::sin(heading);
  const double cp = std::cos(pitch);
  const double sp = std::sin(pitch);
  const double cr = std::cos(roll);
  const double sr = std::sin(roll);
  w = cr * cp * ch + sr * sp * sh;
  v = {sr * cp * ch - cr * sp * sh, cr * sp * ch + sr * cp * sh, cr * cp * sh - sr * sp * ch};
}

EulerAngles Attitude::Angles() const {
  const double sineOfPitch = std::clamp(2.0 * (w * v.y - v.z * v.x), -1.0, 1.0);
  const double heading = std::atan2(2.0 * (w * v.z + v.x * v.y), 1.0 - 2.0 * (v.y * v.y + v.z * v.z));
  const double roll = std::atan2(2.0 * (w * v.x + v.y * v.z), 1.0 - 2.0 * (v.x * v.x + v.y * v.y));
  return {.heading = NormalHeading(ToDegrees(heading)),
          .pitch = ToDegrees(std::asin(sineOfPitch)),
          .roll = ToDegrees(roll)};
}

Vector Attitude::ToEarth(const Vector& body) const { return Rotated(w, v, body); }

Vector Attitude::ToBody(const Vector& earth) const { return Rotated(w, -v, earth); }

void Attitude::Turn(const Vector& rates, double seconds) {
  const Vector turn = (0.5 * seconds) * rates;
  const double wBefore = w;
  w -= Dot(v, turn);
  v += wBefore * turn + Cross(v, turn);
  const double length = std::sqrt(w * w + Dot(v, v));
  w /= length;
  v = (1.0 / length) * v;
}

}  // namespace sim::world
