// The picture of a frame, drawn without a window: probed where it is known what must be there.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "InputError.h"
#include "view/Fonts.h"
#include "view/gl/FrameBuffer.h"
#include "view/gl/FramePainter.h"
#include "view/gl/HeadlessContext.h"

namespace {

using namespace sim;

constexpr int kWidth = 160;
constexpr int kHeight = 90;

class PictureTest : public testing::Test {
 protected:
  // With so many pixels to one of the screen's, which is as much smaller.
  Picture Draw(const View& view, const std::function<void(FramePainter&)>& draw, int density = 1) {
    buffer.Bind();
    painter.Begin({kWidth / density, kHeight / density, kWidth, kHeight}, view, true);
    draw(painter);
    painter.End();
    return buffer.Read();
  }

  Picture DrawSurface(const std::function<void(FramePainter&)>& draw, int density = 1) {
    return Draw(
        {},
        [&](FramePainter& surface) {
          surface.SetSurfaceState();
          draw(surface);
        },
        density);
  }

  // Straight down from above a place.
  View Above(const world::Place& place, double height) const {
    const world::Vector ground = world.localFrame.ToLocal(place);
    return {.x = ground.x, .y = ground.y + height, .z = ground.z, .pitch = -90.0};
  }

  // A place nearby with ground of this kind all around it.
  world::Place Find(bool isWet) const {
    world::Place place = world::kHome;
    const auto isFar = [&](double degrees) {
      for (const double north : {-0.01, 0.0, 0.01}) {
        const auto ground = world.terrain.GroundAt({place.latitude + north, place.longitude + degrees, 0.0});
        if (!ground || ground->isWet != isWet || (!isWet && ground->altitude < 20.0)) return false;
      }
      return true;
    };
    while (!isFar(-0.01) || !isFar(0.0) || !isFar(0.01)) place.longitude += 0.01;
    return place;
  }

  World world;
  HeadlessContext context;
  FrameBuffer buffer{kWidth, kHeight};
  FramePainter painter;
};

int Bright(const std::array<int, 3>& pixel) { return pixel[0] + pixel[1] + pixel[2]; }

TEST_F(PictureTest, WaterIsBlueLandIsNotAndTheSkyLiesAboveTheHorizon) {
  const auto drawGround = [this](FramePainter& scene) { scene.DrawGround(world); };
  const auto water = Draw(Above(Find(true), 500.0), drawGround).At(kWidth / 2, kHeight / 2);
  EXPECT_GT(water[2], water[0] + 40);
  EXPECT_GT(water[2], water[1]);
  const auto land = Draw(Above(Find(false), 500.0), drawGround).At(kWidth / 2, kHeight / 2);
  EXPECT_GT(land[1], land[2] + 10);

  View ahead = Above(Find(false), 500.0);
  ahead.pitch = 0.0;
  const Picture picture = Draw(ahead, drawGround);
  const auto sky = picture.At(kWidth / 2, kHeight - 1);
  EXPECT_GT(sky[2], sky[0] + 40) << "blue above";
  const auto ground = picture.At(kWidth / 2, 2);
  EXPECT_LT(Bright(ground), Bright(sky)) << "darker below";
  ahead.roll = 180.0;
  EXPECT_GT(Bright(Draw(ahead, drawGround).At(kWidth / 2, 2)), Bright(ground)) << "and the other way round";
}

// Land that is not drawn, as it seems to lie out of sight, would leave the haze behind it.
TEST_F(PictureTest, NoPieceOfTheGroundIsMissingWhereverTheEyeTurns) {
  const std::array<int, 3> haze{204, 222, 237};
  View view = Above(Find(false), 700.0);
  for (int turn = 0; turn < 24; ++turn) {
    view.heading = 15.0 * turn;
    view.roll = 40.0 * turn;
    view.pitch = -90.0 + 1.5 * turn;
    view.zoom = turn % 2 == 0 ? 1.0 : 5.0;
    const Picture picture = Draw(view, [this](FramePainter& scene) {
      scene.SetSceneState();
      scene.DrawGround(world);
    });
    int missing = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) missing += picture.At(x, y) == haze ? 1 : 0;
    EXPECT_EQ(missing, 0) << "turn " << turn;
  }
}

TEST_F(PictureTest, ModelsStandWhereAndAsTheyAreTurned) {
  // A red board, 2 m to the right of the origin of its model and flat.
  world::ObjectModel model;
  model.points = {{1.0, 0.0, -1.0}, {3.0, 0.0, -1.0}, {3.0, 0.0, 1.0}, {1.0, 0.0, 1.0}};
  model.triangles = {{{0, 1, 2}, {1.0F, 0.0F, 0.0F}}, {{0, 2, 3}, {1.0F, 0.0F, 0.0F}}};
  const auto pointer = std::make_shared<const world::ObjectModel>(model);
  const View down{.x = 50.0, .y = 10.0, .z = 0.0, .pitch = -90.0};
  const auto isRed = [&](double heading, int x, int y) {
    const Picture picture = Draw(down, [&](FramePainter& scene) {
      scene.SetSceneState();
      scene.DrawObject({.model = pointer,
                        .position = {50.0, 0.0, 0.0},
                        .angles = {.heading = heading, .pitch = 0.0, .roll = 0.0},
                        .lighting = 1,
                        .isEarthRelative = false});
    });
    const auto pixel = picture.At(x, y);
    return pixel[0] > 120 && pixel[1] < 60;
  };
  constexpr int kAside = 26;  // pixels: two metres, seen from ten
  EXPECT_TRUE(isRed(0.0, kWidth / 2 + kAside, kHeight / 2)) << "to the east";
  EXPECT_TRUE(isRed(90.0, kWidth / 2, kHeight / 2 - kAside)) << "to the south";
  EXPECT_TRUE(isRed(180.0, kWidth / 2 - kAside, kHeight / 2)) << "to the west";
  EXPECT_FALSE(isRed(180.0, kWidth / 2 + kAside, kHeight / 2));
}

// Each pixel of a text is FreeType's ink, of the colour where the ink is full, as fine as the display is.
TEST_F(PictureTest, TextIsTheInkOfItsCharactersInItsColour) {
  for (const int density : {1, 2, 1}) {
    const Picture picture = DrawSurface(
        [](FramePainter& surface) {
          surface.DrawBox({0, 0, kWidth, kHeight});
          surface.DrawText("T", 20, 30, {.font = 2, .colour = {1.0F, 0.0F, 0.0F}});
        },
        density);
    const Ink ink = FontOf(2).InkOf(U'T', density);
    EXPECT_GT(ink.height, 9 * density);
    for (int row = 0; row < ink.height; ++row) {
      for (int column = 0; column < ink.width; ++column) {
        const auto pixel = picture.At(20 * density + ink.left + column, 30 * density + ink.top - 1 - row);
        const int strength = ink.pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(ink.width) +
                                        static_cast<std::size_t>(column)];
        const bool isRed = pixel[0] > 250 && pixel[1] < 5;
        EXPECT_EQ(isRed, strength == 255) << column << ", " << row;
      }
    }
    EXPECT_NE(std::ranges::find(ink.pixels, 255), ink.pixels.end());
  }
}

TEST_F(PictureTest, WhatIsDrawnLaterLiesAbove) {
  const Picture picture = DrawSurface([](FramePainter& surface) {
    surface.DrawText("HHHHHHHH", 20, 30, {.font = 2});
    surface.DrawBox({50, 0, kWidth, kHeight});
  });
  const auto brightest = [&](int left, int right) {
    int most = 0;
    for (int x = left; x < right; ++x) most = std::max(most, Bright(picture.At(x, 35)));
    return most;
  };
  EXPECT_GT(brightest(20, 48), 750);
  EXPECT_LT(brightest(52, 100), 400);
}

TEST_F(PictureTest, FileHoldsWhatWasDrawnTheRightWayUp) {
  const Picture drawn = DrawSurface([](FramePainter& surface) { surface.DrawBox({0, 0, 80, 45}); });
  const std::string fileName = testing::TempDir() + "vyra-picture-test.png";
  WritePng(drawn, fileName);
  const Picture read = ReadPng(fileName);
  std::filesystem::remove(fileName);
  EXPECT_EQ(read.width, kWidth);
  EXPECT_EQ(read.height, kHeight);
  EXPECT_EQ(read.bytes, drawn.bytes);
  EXPECT_LT(Bright(read.At(10, 10)), Bright(read.At(10, 80)));
  EXPECT_THROW(WritePng(drawn, "/no/such/folder/picture.png"), InputError);
  EXPECT_THROW(WritePng(drawn, "/dev/full"), InputError);
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full")) << "what cannot be written stays";
}

}  // namespace
