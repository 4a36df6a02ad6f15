#define GL_GLEXT_PROTOTYPES
#include "view/gl/FramePainter.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>

#include "view/gl/Solids.h"
#include "world/aircraft/AircraftDescription.h"
#include "world/files/TextFile.h"

namespace sim {
namespace {

// Letters that are drawn finer than that would not all have room in their texture.
constexpr int kDensest = 3;

// What a plugin may have left behind.
void ResetState() {
  glUseProgram(0);
  for (int unit = 3; unit >= 0; --unit) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glDisable(GL_TEXTURE_2D);
  }
  for (const GLenum switchedOff : std::initializer_list<GLenum>{
           GL_LIGHTING, GL_FOG, GL_CULL_FACE, GL_ALPHA_TEST, GL_SCISSOR_TEST, GL_STENCIL_TEST})
    glDisable(switchedOff);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
  glLineWidth(1.0F);
  glPointSize(1.0F);
}

ModelPointer ReadModel(const std::string& descriptionFile) {
  const world::AircraftDescription description =
      world::ParseAircraft(world::ReadTextFile(descriptionFile), descriptionFile);
  if (description.modelFile.empty()) return nullptr;
  const auto folder = std::filesystem::path(descriptionFile).parent_path();
  return std::make_shared<world::ObjectModel>(
      world::ReadObjectModel((folder / description.modelFile).string()));
}

}  // namespace

// One grey pixel each: the simulator paints nothing with them yet, and plugins find a texture that is one.
FramePainter::OwnTextures::OwnTextures() {
  constexpr std::array<std::uint8_t, 4> kGrey{128, 128, 128, 255};
  std::array<GLuint, kOwnTextures> textures{};
  glGenTextures(kOwnTextures, textures.data());
  for (const GLuint texture : textures) {
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, kGrey.data());
  }
  glBindTexture(GL_TEXTURE_2D, 0);
}

FramePainter::FramePainter() : plainAircraft(std::make_shared<world::ObjectModel>(PlainAircraft())) {}

void FramePainter::Begin(const FrameSize& frameSize, const View& frameView, bool isSeen) {
  size = frameSize;
  view = frameView;
  isPainting = isSeen;
  ResetState();
  if (size.width > 0) surface.SetDensity(std::clamp(size.pixelWidth / size.width, 1, kDensest));
  glDepthMask(GL_TRUE);
  glClearColor(0.80F, 0.87F, 0.93F, 1.0F);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
}

void FramePainter::SetSceneState() const {
  ResetState();
  scene.SetState(view, size.pixelWidth, size.pixelHeight);
}

void FramePainter::SetSurfaceState() const {
  ResetState();
  glDisable(GL_DEPTH_TEST);
  glViewport(0, 0, size.pixelWidth, size.pixelHeight);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0.0, size.width, 0.0, size.height, -1.0, 1.0);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

void FramePainter::DrawGround(const World& world) {
  SetSceneState();
  scene.DrawSkyAndGround(view, world);
  glFinish();  // now, and not in a call into the plugin that happens to come next
}

void FramePainter::DrawRunways(const World& world) {
  SetSceneState();
  scene.DrawRunways(view, world);
}

void FramePainter::DrawShip(const World& world) {
  SetSceneState();
  scene.DrawShip(world);
}

void FramePainter::DrawPlane(const DrawnPlane& plane, const World& world) {
  const std::string& description = plane.plane == 0
                                       ? world.modelPath
                                       : world.aiPlanes[static_cast<std::size_t>(plane.plane - 1)].modelPath;
  scene.models.Draw(ModelOfAircraft(description), plane.position, plane.angles);
}

void FramePainter::DrawObject(const DrawnObject& object) {
  scene.models.Draw(object.model, object.position, object.angles);
}

void FramePainter::DrawText(std::string_view text, int x, int y, const TextStyle& style) {
  surface.DrawText(text, x, y, style);
}

void FramePainter::DrawBox(const Rectangle& box) { surface.DrawBox(box); }

// An aircraft whose files are missing or damaged was told of when it was loaded: here it is a plain one.
const ModelPointer& FramePainter::ModelOfAircraft(const std::string& descriptionFile) {
  const auto [entry, isNew] = aircraftModels.try_emplace(descriptionFile, plainAircraft);
  if (!isNew || descriptionFile.empty()) return entry->second;
  try {
    if (ModelPointer model = ReadModel(descriptionFile)) entry->second = model;
  } catch (const world::FileError&) {
  }
  return entry->second;
}

}  // namespace sim
