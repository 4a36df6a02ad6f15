// What the menu bar and the panels look like: fonts, sizes and colours.
#pragma once

struct ImFont;
struct SDL_Window;

namespace sim {

// How much larger than on a plain display of 96 dots per inch everything is drawn, in steps of a half, 1 to
// 3.
float DensityOf(SDL_Window* window);

// Sets the style anew and makes the fonts, for the Dear ImGui context that is the current one. density: see
// above. pixelsPerPoint: of the window's picture, other than 1 where the system counts in points.
void SetLook(float density, float pixelsPerPoint);

// Characters of one width, for the log and for numbers below each other.
ImFont* MonospacedFont();

// The colours of what a reader is to notice. As ImGui::TextColored and ImGui::GetColorU32 take them.
struct Colour {
  float red;
  float green;
  float blue;
};
constexpr Colour kFaint{0.56F, 0.60F, 0.66F};
constexpr Colour kGood{0.48F, 0.78F, 0.52F};
constexpr Colour kWarning{0.94F, 0.72F, 0.34F};
constexpr Colour kBad{0.94F, 0.42F, 0.40F};

}  // namespace sim
