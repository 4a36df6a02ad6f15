// The drawing state and the textures of plugins, in the current OpenGL context.
#pragma once

namespace sim {

// units: texture units that are used. All others are switches.
void SetCardState(int units, int blending, int depthTest, int depthWriting, int lighting, int fog,
                  int culling);

void BindCardTexture(int texture, int unit);

// count: 0 or more.
void GenerateCardTextures(int* outTextures, int count);

}  // namespace sim
