#define GL_GLEXT_PROTOTYPES
#include "view/gl/ScenePainter.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <array>
#include <cmath>
#include <numbers>

#include "view/gl/GroundColours.h"
#include "view/gl/Solids.h"
#include "world/Angles.h"

namespace sim {
namespace {

constexpr double kNearest = 0.8;  // metres
constexpr double kFarthest = 160'000.0;
constexpr double kHalfWidthAtOneMetre = 0.62;  // of what is seen at zoom 1

constexpr std::array<float, 4> kHaze{0.80F, 0.87F, 0.93F, 1.0F};
constexpr float kHazePerMetre = 0.000034F;

// Bands of the sky, from below the horizon up.
struct SkyBand {
  double degrees;
  std::array<float, 3> colour;
};
constexpr std::array<SkyBand, 7> kSky{{{-90.0, {0.80F, 0.87F, 0.93F}},
                                       {0.0, {0.80F, 0.87F, 0.93F}},
                                       {4.0, {0.71F, 0.82F, 0.92F}},
                                       {12.0, {0.54F, 0.72F, 0.89F}},
                                       {28.0, {0.36F, 0.58F, 0.83F}},
                                       {55.0, {0.22F, 0.44F, 0.74F}},
                                       {90.0, {0.15F, 0.34F, 0.66F}}}};

world::Vector Direction(double headingRadians, double degreesUp) {
  const double up = world::ToRadians(degreesUp);
  return {std::sin(headingRadians) * std::cos(up), std::sin(up), -std::cos(headingRadians) * std::cos(up)};
}

// Lighter where the sun stands.
void SkyVertex(const world::Vector& direction, const std::array<float, 3>& colour) {
  const double toSun = std::max(Dot(direction, Sunlight()), 0.0);
  const auto glow = static_cast<float>(0.30 * std::pow(toSun, 12.0) + 0.6 * std::pow(toSun, 400.0));
  glColor3f(std::lerp(colour[0], 1.0F, glow), std::lerp(colour[1], 0.98F, glow),
            std::lerp(colour[2], 0.92F, glow));
  glVertex3d(direction.x, direction.y, direction.z);
}

void DrawSky() {
  constexpr int kSectors = 64;
  glDepthMask(GL_FALSE);
  for (std::size_t band = 0; band + 1 < kSky.size(); ++band) {
    glBegin(GL_QUAD_STRIP);
    for (int sector = 0; sector <= kSectors; ++sector) {
      const double heading = 2.0 * std::numbers::pi * sector / kSectors;
      SkyVertex(Direction(heading, kSky[band].degrees), kSky[band].colour);
      SkyVertex(Direction(heading, kSky[band + 1].degrees), kSky[band + 1].colour);
    }
    glEnd();
  }
  glDepthMask(GL_TRUE);
}

void SetHaze() {
  glEnable(GL_FOG);
  glFogi(GL_FOG_MODE, GL_EXP);
  glFogf(GL_FOG_DENSITY, kHazePerMetre);
  glFogfv(GL_FOG_COLOR, kHaze.data());
}

// A rectangle on the ground: metres along a runway and to its right, from its middle.
struct Strip {
  double from;
  double to;
  double left;
  double right;
};

class Runway {
 public:
  Runway(const world::NavAid& airport, const world::LocalFrame& frame)
      : middle(frame.ToLocal(airport.place)),
        directions(frame.DirectionsAt(airport.place)),
        heading(world::ToRadians(airport.heading)) {}

  void Draw(const Strip& strip) const {
    Corner(strip.from, strip.left);
    Corner(strip.from, strip.right);
    Corner(strip.to, strip.right);
    Corner(strip.to, strip.left);
  }

 private:
  void Corner(double along, double right) const {
    constexpr double kAboveGround = 0.05;
    const double north = along * std::cos(heading) - right * std::sin(heading);
    const double east = along * std::sin(heading) + right * std::cos(heading);
    const world::Vector corner =
        middle + north * directions.north + east * directions.east + kAboveGround * directions.up;
    glVertex3d(corner.x, corner.y, corner.z);
  }

  world::Vector middle;
  world::LocalFrame::Directions directions;
  double heading;
};

void DrawRunway(const Runway& runway, bool isPaint) {
  constexpr double kHalfLength = 750.0;
  constexpr double kHalfWidth = 18.0;
  constexpr double kDash = 30.0;
  constexpr double kFirstDash = 110.0 - kHalfLength;
  constexpr int kDashes = 22;
  constexpr int kStripes = 4;  // on each side of a threshold
  if (!isPaint) {
    glColor3f(0.30F, 0.31F, 0.33F);
    runway.Draw({-kHalfLength, kHalfLength, -kHalfWidth, kHalfWidth});
    return;
  }
  glColor3f(0.92F, 0.92F, 0.90F);
  for (int dash = 0; dash < kDashes; ++dash) {
    const double along = kFirstDash + 2.0 * kDash * dash;
    runway.Draw({along, along + kDash, -0.6, 0.6});
  }
  for (const double end : {-1.0, 1.0}) {
    for (int stripe = 0; stripe < kStripes; ++stripe) {
      const double near = 2.5 + 3.6 * stripe;
      for (const double side : {-1.0, 1.0})
        runway.Draw(
            {end * (kHalfLength - 40.0), end * (kHalfLength - 8.0), side * near, side * (near + 1.8)});
    }
  }
  for (const double side : {-1.0, 1.0})
    runway.Draw({-kHalfLength, kHalfLength, side * (kHalfWidth - 1.0), side * (kHalfWidth - 0.4)});
}

}  // namespace

ScenePainter::ScenePainter() : ship(std::make_shared<world::ObjectModel>(ShipModel())) {}

void ScenePainter::SetState(const View& view, int width, int height) const {
  const double half = kNearest * kHalfWidthAtOneMetre / view.zoom;
  const double halfHeight = half * height / width;
  glViewport(0, 0, width, height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glFrustum(-half, half, -halfHeight, halfHeight, kNearest, kFarthest);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glRotated(view.roll, 0.0, 0.0, 1.0);
  glRotated(-view.pitch, 1.0, 0.0, 0.0);
  glRotated(view.heading, 0.0, 1.0, 0.0);
  glTranslated(-view.x, -view.y, -view.z);
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LEQUAL);
  glDepthMask(GL_TRUE);
  SetHaze();
}

void ScenePainter::DrawSkyAndGround(const View& view, const World& world) {
  glDisable(GL_FOG);
  glDisable(GL_DEPTH_TEST);
  glPushMatrix();
  glTranslated(view.x, view.y, view.z);
  glScaled(10.0, 10.0, 10.0);
  DrawSky();
  glPopMatrix();
  glEnable(GL_DEPTH_TEST);
  glEnable(GL_FOG);

  landscape.Update(world.localFrame, world.terrain, {view.x, view.y, view.z});
  const auto& triangles = landscape.Triangles();
  glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  glEnableClientState(GL_VERTEX_ARRAY);
  glEnableClientState(GL_COLOR_ARRAY);
  glVertexPointer(3, GL_FLOAT, sizeof(Landscape::Vertex), triangles.data()->position.data());
  glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(Landscape::Vertex), triangles.data()->colour.data());
  // Most of the land lies behind or beside the eye, and to find that out triangle by triangle takes longest.
  const Frustum frustum;
  for (const Landscape::Block& block : landscape.Blocks())
    if (frustum.MayShow(block.bounds))
      glDrawArrays(GL_TRIANGLES, static_cast<GLint>(block.begin),
                   static_cast<GLsizei>(block.end - block.begin));
  glPopClientAttrib();
}

void ScenePainter::DrawRunways(const View& view, const World& world) const {
  constexpr double kSeenFrom = 40'000.0;  // metres
  glEnable(GL_POLYGON_OFFSET_FILL);
  // Asphalt lies on the ground and paint on the asphalt, in the same plane.
  for (const bool isPaint : {false, true}) {
    glPolygonOffset(isPaint ? -4.0F : -2.0F, isPaint ? -64.0F : -16.0F);
    glBegin(GL_QUADS);
    for (int number = 0; number < world.navigation.Count(); ++number) {
      const world::NavAid& navAid = *world.navigation.Get(number);
      if (navAid.type != world::kAirport) continue;
      const world::Vector place = world.localFrame.ToLocal(navAid.place);
      if (std::hypot(place.x - view.x, place.z - view.z) > kSeenFrom) continue;
      DrawRunway(Runway(navAid, world.localFrame), isPaint);
    }
    glEnd();
  }
  glDisable(GL_POLYGON_OFFSET_FILL);
}

void ScenePainter::DrawShip(const World& world) {
  const world::Deck& deck = world.terrain.Ship();
  models.Draw(ship, world.localFrame.ToLocal(deck.Position()),
              {.heading = deck.Heading(), .pitch = 0.0, .roll = 0.0});
}

}  // namespace sim
