// What is drawn, and from where.
#include "host/CameraServices.h"
#include "host/GraphicsServices.h"
#include "host/SceneryServices.h"
#include "host/datarefs/DataRefRow.h"
#include "view/DrawnScene.h"
#include "view/Screen.h"
#include "world/World.h"

namespace sim {
namespace {

double Of(float number) { return static_cast<double>(number); }

void AddCamera(std::vector<DataRefRow>& rows) {
  rows.push_back(Float("sim/camera/x_m", "metres", "place of the camera in local metres, to the east",
                       [] { return Of(Camera().x); }));
  rows.push_back(Float("sim/camera/y_m", "metres", "place of the camera in local metres, upward",
                       [] { return Of(Camera().y); }));
  rows.push_back(Float("sim/camera/z_m", "metres", "place of the camera in local metres, to the south",
                       [] { return Of(Camera().z); }));
  rows.push_back(Float("sim/camera/pitch_deg", "degrees", "how far the camera looks up",
                       [] { return Of(Camera().pitch); }));
  rows.push_back(Float("sim/camera/heading_deg", "degrees", "where the camera looks to, true",
                       [] { return Of(Camera().heading); }));
  rows.push_back(Float("sim/camera/roll_deg", "degrees", "how far the camera is banked to the right",
                       [] { return Of(Camera().roll); }));
  rows.push_back(
      Float("sim/camera/zoom", "ratio", "how much larger all looks", [] { return Of(Camera().zoom); }));
  rows.push_back(Switch("sim/camera/is_plugins", "whether a plugin sets the camera",
                        [] { return PluginHasCamera() ? 1.0 : 0.0; }));
}

void AddGraphics(std::vector<DataRefRow>& rows) {
  rows.push_back(Int("sim/screen/width_px", "pixels", "width of the screen",
                     [] { return static_cast<double>(gScreen.Width()); }));
  rows.push_back(Int("sim/screen/height_px", "pixels", "height of the screen",
                     [] { return static_cast<double>(gScreen.Height()); }));
  rows.push_back(IntArray("sim/graphics/state", "",
                          "the drawing state that was set last: texture units in use, blending, depth test, "
                          "depth writing, lighting, fog, culling of back faces",
                          kGraphicsSwitches,
                          [](int index) { return static_cast<double>(GraphicsState(index)); }));
  rows.push_back(IntArray("sim/graphics/bound_textures", "texture numbers", "the texture bound in each unit",
                          kTextureUnits, [](int unit) { return static_cast<double>(BoundTexture(unit)); }));
  rows.push_back(Int("sim/graphics/textures_made", "textures", "texture numbers given out since the start",
                     [] { return static_cast<double>(CountTextures()); }));
}

void AddScenery(std::vector<DataRefRow>& rows) {
  rows.push_back(Int("sim/scenery/package_count", "packages", "packages of scenery with an index",
                     [] { return static_cast<double>(gWorld.scenery.Packages().size()); }));
  rows.push_back(Int("sim/scenery/objects_loaded", "loads", "loads of objects that were not released yet",
                     [] { return static_cast<double>(gWorld.objects.CountLoads()); }));
  rows.push_back(Int("sim/scenery/objects_loading", "loads", "loads of objects under way in the background",
                     [] { return static_cast<double>(gWorld.objects.CountPendingLoads()); }));
  rows.push_back(Int("sim/scenery/objects_drawn", "times",
                     "objects that plugins drew in the frame drawn last",
                     [] { return static_cast<double>(gDrawnScene.objects.size()); }));
  rows.push_back(Int("sim/scenery/reloads", "times", "reloads of the scenery since the start",
                     [] { return static_cast<double>(CountSceneryReloads()); }));
}

}  // namespace

std::vector<DataRefRow> ViewDataRefs() {
  std::vector<DataRefRow> rows;
  AddCamera(rows);
  AddGraphics(rows);
  AddScenery(rows);
  return rows;
}

}  // namespace sim
