// The services of drawing state and textures. What plugins set and bind is kept, so that it can be looked at,
// and goes to OpenGL where there is a context.
#pragma once

#include <vector>

#include "VYRAHost.h"

namespace sim {

constexpr int kGraphicsSwitches = 7;
constexpr int kTextureUnits = 4;

void FillGraphicsServices(VYRAHostServices& services);

int GraphicsState(int index);  // 0 to 6
int BoundTexture(int unit);    // 0 to 3; 0 for none
const std::vector<int>& TexturesBoundInFrame();
void ForgetTexturesBoundInFrame();  // as a frame's drawing begins
int CountTextures();                // given out by GenerateTextureNumbers

}  // namespace sim
