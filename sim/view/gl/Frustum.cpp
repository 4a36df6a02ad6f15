#include "view/gl/Frustum.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstddef>

namespace sim {
namespace {

using Matrix = std::array<double, 16>;  // by columns

Matrix Product(const Matrix& left, const Matrix& right) {
  Matrix product{};
  for (std::size_t column = 0; column < 4; ++column)
    for (std::size_t row = 0; row < 4; ++row)
      for (std::size_t inner = 0; inner < 4; ++inner)
        product[column * 4 + row] += left[inner * 4 + row] * right[column * 4 + inner];
  return product;
}

}  // namespace

// A point is seen when, in clip coordinates, neither x nor y is beyond -w and w.
Frustum::Frustum() : sides{} {
  Matrix projection{};
  Matrix view{};
  glGetDoublev(GL_PROJECTION_MATRIX, projection.data());
  glGetDoublev(GL_MODELVIEW_MATRIX, view.data());
  const Matrix clip = Product(projection, view);
  std::size_t side = 0;
  for (const std::size_t axis : {0UL, 1UL}) {
    for (const double sign : {1.0, -1.0}) {
      const auto part = [&](std::size_t column) {
        return clip[column * 4 + 3] + sign * clip[column * 4 + axis];
      };
      const world::Vector normal{part(0), part(1), part(2)};
      const double length = world::Length(normal);
      sides[side++] = {(1.0 / length) * normal, part(3) / length};
    }
  }
}

bool Frustum::MayShow(const Bounds& bounds) const {
  return std::ranges::all_of(sides, [&](const Plane& plane) {
    return world::Dot(plane.normal, bounds.middle) + plane.distance >= -bounds.radius;
  });
}

}  // namespace sim
