#include "host/Pictures.h"

#include <fmt/core.h>

#include <algorithm>

#include "InputError.h"
#include "host/CameraServices.h"
#include "report/Event.h"
#include "report/News.h"
#include "view/Screen.h"
#include "world/World.h"

namespace sim {
namespace {

View ViewOfCamera() {
  const VYRACameraPosition& camera = Camera();
  const auto of = [](float number) { return static_cast<double>(number); };
  return {.x = of(camera.x),
          .y = of(camera.y),
          .z = of(camera.z),
          .pitch = of(camera.pitch),
          .heading = of(camera.heading),
          .roll = of(camera.roll),
          .zoom = camera.zoom > 0.0F ? of(camera.zoom) : 1.0};
}

void Write(const Picture& picture, const std::string& fileName) {
  try {
    WritePng(picture, fileName);
    gNews.push_back(fmt::format("picture written to {}", fileName));
  } catch (const InputError& error) {
    gNews.push_back(fmt::format("FAILED  {}", error.what()));
    TellEvent(FlightFailed{error.what()});
  }
}

}  // namespace

Pictures::Pictures(const PictureOptions& options, bool hasWindow)
    : context(hasWindow ? std::optional<HeadlessContext>() : std::optional<HeadlessContext>(std::in_place)),
      buffer(hasWindow ? std::optional<FrameBuffer>()
                       : std::optional<FrameBuffer>(std::in_place, gScreen.Width(), gScreen.Height())),
      requests(options.requests) {
  gPictures = this;
  gPainter = &painter;
}

Pictures::~Pictures() {
  gPictures = nullptr;
  gPainter = nullptr;
}

void Pictures::BeginFrame() {
  for (PictureRequest& request : requests)
    if (request.frame == gWorld.frame) request.frame = 0;
  const bool isSeen =
      std::ranges::any_of(requests, [](const PictureRequest& request) { return request.frame == 0; });
  if (buffer) buffer->Bind();
  painter.Begin(gScreen.Width(), gScreen.Height(), ViewOfCamera(), isSeen || !buffer);
}

void Pictures::EndFrame() {
  if (!painter.IsPainting()) return;
  painter.End();
  if (requests.empty()) return;
  const Picture picture = buffer ? buffer->Read() : ReadPixels(gScreen.Width(), gScreen.Height());
  for (const PictureRequest& request : requests)
    if (request.frame == 0) Write(picture, request.fileName);
  std::erase_if(requests, [](const PictureRequest& request) { return request.frame == 0; });
}

}  // namespace sim
