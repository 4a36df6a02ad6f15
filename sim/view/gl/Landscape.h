// The land and the sea around a point as triangles: fine nearby, coarser with the distance. No OpenGL here.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "view/gl/Frustum.h"
#include "world/earth/LocalFrame.h"
#include "world/terrain/Terrain.h"

namespace sim {

class Landscape {
 public:
  struct Vertex {
    std::array<float, 3> position;  // local metres
    std::array<std::uint8_t, 4> colour;
  };

  // Moves the middle. Only what is not there yet is made: the ground itself does not change.
  void Update(const world::LocalFrame& frame, const world::Terrain& terrain, const world::Vector& middle);

  // Three to a triangle.
  const std::vector<Vertex>& Triangles() const { return triangles; }

  // Some of them that lie side by side. Each vertex belongs to one block; the blocks are in the order of the
  // vertices.
  struct Block {
    std::size_t begin;
    std::size_t end;
    Bounds bounds;
  };
  const std::vector<Block>& Blocks() const { return blocks; }

 private:
  static constexpr int kLevels = 8;
  static constexpr int kCells = 96;         // to a side; a multiple of 4
  static constexpr int kCellsOfBlock = 16;  // to a side
  static constexpr double kFinestCell = 20.0;

  // A point of the ground, or of the bottom of the sea.
  struct Point {
    world::Vector ground;   // local metres
    world::Vector surface;  // of the sea there
    double height = 0.0;    // above the sea
    std::array<float, 3> land{};
    std::array<float, 3> sea{};
  };
  struct Level {
    bool isMade = false;
    long column = 0;  // of its middle, in cells
    long row = 0;
    std::vector<Point> points;
  };

  void Make(Level& level, double cell, const world::LocalFrame& frame, const world::Terrain& terrain) const;
  static void CloseSeams(Level& level);
  void Cover(const Level& level, const Level* finer);
  void AddBlock(std::size_t begin);
  void AddTriangle(const Point& a, const Point& b, const Point& c);

  std::array<Level, kLevels> levels;
  world::Place reference{
      .latitude = 1'000.0, .longitude = 0.0, .altitude = 0.0};  // of the frame of all levels
  std::vector<Vertex> triangles;
  std::vector<Block> blocks;
};

}  // namespace sim
