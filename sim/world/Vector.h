// Three numbers and what is done with them. What the axes are is said where a vector is used.
#pragma once

#include <cmath>

namespace sim::world {

struct Vector {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  Vector& operator+=(const Vector& other) {
    x += other.x;
    y += other.y;
    z += other.z;
    return *this;
  }
};

inline Vector operator+(const Vector& left, const Vector& right) {
  return {left.x + right.x, left.y + right.y, left.z + right.z};
}
inline Vector operator-(const Vector& left, const Vector& right) {
  return {left.x - right.x, left.y - right.y, left.z - right.z};
}
inline Vector operator-(const Vector& vector) { return {-vector.x, -vector.y, -vector.z}; }
inline Vector operator*(double factor, const Vector& vector) {
  return {factor * vector.x, factor * vector.y, factor * vector.z};
}

inline double Dot(const Vector& left, const Vector& right) {
  return left.x * right.x + left.y * right.y + left.z * right.z;
}
inline Vector Cross(const Vector& left, const Vector& right) {
  return {left.y * right.z - left.z * right.y, left.z * right.x - left.x * right.z,
          left.x * right.y - left.y * right.x};
}
inline double Length(const Vector& vector) { return std::sqrt(Dot(vector, vector)); }

// The vector at length 1. Not for one of length 0.
inline Vector Unit(const Vector& vector) { return (1.0 / Length(vector)) * vector; }

}  // namespace sim::world
