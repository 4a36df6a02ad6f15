// Accessors over gWorld. A reader's refcon is the address of the value that it shows.
#include "host/OwnDataRefs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "VYRADataAccess.h"
#include "world/World.h"

namespace sim {
namespace {

std::array<char, 64> gBuildString{};  // of the library, terminated

template <class Value>
Value Read(void* refcon) {
  return *static_cast<const Value*>(refcon);
}

void PublishInt(const char* name, int& value) {
  VYRARegisterDataAccessor(name, VYRA_TYPE_INT, 0, Read<int>, nullptr, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &value, nullptr);
}

// Writable when there is a function to write it.
void PublishFloat(const char* name, float& value, VYRAWriteFloat_f write = nullptr) {
  VYRARegisterDataAccessor(name, VYRA_TYPE_FLOAT, write != nullptr ? 1 : 0, nullptr, nullptr, Read<float>,
                           write, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           &value, &value);
}

void PublishDouble(const char* name, double& value) {
  VYRARegisterDataAccessor(name, VYRA_TYPE_DOUBLE, 0, nullptr, nullptr, nullptr, nullptr, Read<double>,
                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &value, nullptr);
}

// The bytes from offset on that exist, at most `wanted`.
std::size_t BytesAt(int offset, int wanted) {
  const int size = static_cast<int>(gBuildString.size());
  if (offset < 0 || offset >= size) return 0;
  return static_cast<std::size_t>(std::clamp(wanted, 0, size - offset));
}

int ReadBuildString(void* /*refcon*/, void* values, int offset, int max) {
  if (values == nullptr) return static_cast<int>(gBuildString.size());
  const std::size_t count = BytesAt(offset, max);
  if (count != 0) std::memcpy(values, gBuildString.data() + offset, count);
  return static_cast<int>(count);
}

void WriteBuildString(void* /*refcon*/, void* values, int offset, int count) {
  const std::size_t bytes = BytesAt(offset, count);
  if (bytes != 0) std::memcpy(gBuildString.data() + offset, values, bytes);
  gBuildString.back() = '\0';
}

// A plugin may write anything, but one value that is no number would spoil the motion for good.
void WriteThrottle(void* refcon, float value) {
  if (std::isfinite(value)) *static_cast<float*>(refcon) = std::clamp(value, 0.0F, 1.0F);
}

void WriteHeading(void* refcon, float value) {
  if (std::isfinite(value)) *static_cast<float*>(refcon) = NormalHeading(value);
}

void WriteSwitch(void* refcon, int value) { *static_cast<int*>(refcon) = value != 0 ? 1 : 0; }

}  // namespace

void PublishSwitch(const char* name, int& value) {
  VYRARegisterDataAccessor(name, VYRA_TYPE_INT, 1, Read<int>, WriteSwitch, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &value, &value);
}

void RegisterSimulatorDataRefs() {
  VYRARegisterDataAccessor("sim/version/vyra_build_string", VYRA_TYPE_DATA, 1, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, ReadBuildString,
                           WriteBuildString, nullptr, nullptr);

  PublishDouble("sim/time/elapsed_s", gWorld.elapsedSeconds);
  PublishInt("sim/time/frame", gWorld.frame);

  AircraftMotion& aircraft = gWorld.aircraft;
  PublishDouble("sim/aircraft/latitude_deg", aircraft.latitudeDegrees);
  PublishDouble("sim/aircraft/longitude_deg", aircraft.longitudeDegrees);
  PublishFloat("sim/aircraft/altitude_m", aircraft.altitudeMetres);
  PublishFloat("sim/aircraft/heading_deg", aircraft.headingDegrees);
  PublishFloat("sim/aircraft/speed_m_per_s", aircraft.speedMetresPerSecond);
  PublishFloat("sim/aircraft/climb_m_per_s", aircraft.climbMetresPerSecond);
  PublishFloat("sim/aircraft/throttle_ratio", aircraft.throttleRatio, WriteThrottle);
  PublishFloat("sim/aircraft/target_heading_deg", aircraft.targetHeadingDegrees, WriteHeading);
}

}  // namespace sim
