#define GL_GLEXT_PROTOTYPES
#include "view/gl/GraphicsCard.h"

#include <GL/gl.h>
#include <GL/glext.h>

namespace sim {
namespace {

constexpr int kUnits = 4;

void Switch(GLenum what, bool isOn) {
  if (isOn)
    glEnable(what);
  else
    glDisable(what);
}

}  // namespace

void SetCardState(int units, int blending, int depthTest, int depthWriting, int lighting, int fog,
                  int culling) {
  for (int unit = kUnits - 1; unit >= 0; --unit) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    Switch(GL_TEXTURE_2D, unit < units);
  }
  Switch(GL_BLEND, blending != 0);
  Switch(GL_DEPTH_TEST, depthTest != 0);
  glDepthMask(depthWriting != 0 ? GL_TRUE : GL_FALSE);
  Switch(GL_LIGHTING, lighting != 0);
  Switch(GL_FOG, fog != 0);
  Switch(GL_CULL_FACE, culling != 0);
}

void BindCardTexture(int texture, int unit) {
  glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
  glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
  glActiveTexture(GL_TEXTURE0);
}

void GenerateCardTextures(int* outTextures, int count) {
  for (int index = 0; index < count; ++index) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    outTextures[index] = static_cast<int>(texture);
  }
}

}  // namespace sim
