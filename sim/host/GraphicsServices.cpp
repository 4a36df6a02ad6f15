// Numbers of textures begin behind those of the simulator's own three.
#include "host/GraphicsServices.h"

#include <algorithm>
#include <array>

#include "view/gl/FramePainter.h"
#include "view/gl/GraphicsCard.h"

namespace sim {
namespace {

constexpr int kOwnTextures = FramePainter::kOwnTextures;

std::array<int, kGraphicsSwitches> gState{};
std::array<int, kTextureUnits> gBound{};
std::vector<int> gBoundInFrame;
int gTextures = 0;

void Bind(int texture, int unit) {
  if (unit < 0 || unit >= kTextureUnits) return;
  gBound[static_cast<std::size_t>(unit)] = texture;
  if (gPainter != nullptr) BindCardTexture(texture, unit);
  if (std::ranges::find(gBoundInFrame, texture) == gBoundInFrame.end()) gBoundInFrame.push_back(texture);
}

void Generate(int* outTextures, int count) {
  if (outTextures == nullptr) return;
  if (gPainter != nullptr) GenerateCardTextures(outTextures, count);
  for (int index = 0; index < count; ++index) {
    ++gTextures;
    if (gPainter == nullptr) outTextures[index] = kOwnTextures + gTextures;
  }
}

}  // namespace

void FillGraphicsServices(VYRAHostServices& services) {
  services.SetGraphicsState = [](int units, int blending, int depthTest, int depthWriting, int lighting,
                                 int fog, int culling) {
    gState = {units, blending, depthTest, depthWriting, lighting, fog, culling};
    if (gPainter != nullptr) SetCardState(units, blending, depthTest, depthWriting, lighting, fog, culling);
  };
  services.BindTexture2d = Bind;
  services.GenerateTextureNumbers = Generate;
  services.GetTexture = [](int texture) { return texture >= 0 && texture < kOwnTextures ? texture + 1 : 0; };
}

int GraphicsState(int index) { return gState[static_cast<std::size_t>(index)]; }

int BoundTexture(int unit) { return gBound[static_cast<std::size_t>(unit)]; }

const std::vector<int>& TexturesBoundInFrame() { return gBoundInFrame; }

void ForgetTexturesBoundInFrame() { gBoundInFrame.clear(); }

int CountTextures() { return gTextures; }

}  // namespace sim
