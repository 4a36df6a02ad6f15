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

FrameSize Pictures::SizeOfFrame() const {
  const int width = gScreen.Width();
  const int height = gScreen.Height();
  if (buffer || pixelWidth == 0) return {width, height, width, height};
  return {width, height, pixelWidth, pixelHeight};
}

void Pictures::BeginFrame() {
  for (PictureRequest& request : requests)
    if (request.frame == gWorld.frame) request.frame = 0;
  const bool isSeen =
      std::ranges::any_of(requests, [](const PictureRequest& request) { return request.frame == 0; });
  if (buffer) {
    if (buffer->Width() != gScreen.Width() || buffer->Height() != gScreen.Height())
      buffer.emplace(gScreen.Width(), gScreen.Height());
    buffer->Bind();
  }
  painter.Begin(SizeOfFrame(), ViewOfCamera(), isSeen || (!buffer && isShown));
}

void Pictures::EndFrame() {
  if (!painter.IsPainting()) return;
  painter.End();
  if (requests.empty()) return;
  const Picture picture =
      buffer ? buffer->Read() : ReadPixels(SizeOfFrame().pixelWidth, SizeOfFrame().pixelHeight);
  for (const PictureRequest& request : requests)
    if (request.frame == 0) Write(picture, request.fileName);
  std::erase_if(requests, [](const PictureRequest& request) { return request.frame == 0; });
}

}  // namespace sim
