#include "view/gl/ModelPainter.h"

#include <GL/gl.h>

#include <array>
#include <cstddef>

#include "view/gl/GroundColours.h"

namespace sim {
namespace {

void DrawTriangle(const world::ObjectModel& model, const world::ObjectModel::Triangle& triangle) {
  const auto corner = [&](int index) {
    return model.points[static_cast<std::size_t>(triangle.corners[index])];
  };
  const world::Vector across = Cross(corner(1) - corner(0), corner(2) - corner(0));
  if (Length(across) == 0.0) return;
  const world::Vector normal = world::Unit(across);
  glNormal3d(normal.x, normal.y, normal.z);
  glColor3fv(triangle.colour);
  for (int index = 0; index < 3; ++index) glVertex3d(corner(index).x, corner(index).y, corner(index).z);
}

void SetLight() {
  const world::Vector sun = Sunlight();
  const std::array<float, 4> direction{static_cast<float>(sun.x), static_cast<float>(sun.y),
                                       static_cast<float>(sun.z), 0.0F};
  constexpr std::array<float, 4> kSun{0.62F, 0.60F, 0.55F, 1.0F};
  constexpr std::array<float, 4> kSky{0.46F, 0.49F, 0.54F, 1.0F};
  glLightfv(GL_LIGHT0, GL_POSITION, direction.data());
  glLightfv(GL_LIGHT0, GL_DIFFUSE, kSun.data());
  glLightfv(GL_LIGHT0, GL_AMBIENT, kSky.data());
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, GL_TRUE);
  glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
}

}  // namespace

ModelPainter::~ModelPainter() {
  for (const auto& [model, list] : lists) glDeleteLists(list.number, 1);
}

void ModelPainter::Draw(const ModelPointer& model, const world::Vector& position,
                        const world::EulerAngles& angles) {
  const auto [entry, isNew] = lists.try_emplace(model.get());
  if (isNew) {
    entry->second = {model, glGenLists(1)};
    glNewList(entry->second.number, GL_COMPILE);
    glBegin(GL_TRIANGLES);
    for (const auto& triangle : model->triangles) DrawTriangle(*model, triangle);
    glEnd();
    glEndList();
  }
  glPushAttrib(GL_ENABLE_BIT | GL_LIGHTING_BIT | GL_CURRENT_BIT);
  glEnable(GL_DEPTH_TEST);
  glDisable(GL_TEXTURE_2D);
  glDisable(GL_CULL_FACE);
  glEnable(GL_LIGHTING);
  glEnable(GL_LIGHT0);
  SetLight();
  glEnable(GL_COLOR_MATERIAL);
  glPushMatrix();
  glTranslated(position.x, position.y, position.z);
  glRotated(-angles.heading, 0.0, 1.0, 0.0);
  glRotated(angles.pitch, 1.0, 0.0, 0.0);
  glRotated(-angles.roll, 0.0, 0.0, 1.0);
  glCallList(entry->second.number);
  glPopMatrix();
  glPopAttrib();
}

}  // namespace sim
