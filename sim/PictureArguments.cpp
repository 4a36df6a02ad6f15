// A size is written WxH, and a picture to be taken FRAME:FILE.
#include "PictureArguments.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "view/Screen.h"

namespace sim {
namespace {

std::optional<int> WholeNumber(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

bool IsSide(std::optional<int> side) {
  return side && *side >= Screen::kSmallestSide && *side <= Screen::kLargestSide;
}

void ReadSize(const std::string& text, PictureOptions& options) {
  const std::size_t cross = text.find('x');
  const std::optional<int> width = WholeNumber(text.substr(0, cross));
  const std::optional<int> height =
      cross == std::string::npos ? std::nullopt : WholeNumber(text.substr(cross + 1));
  if (!IsSide(width) || !IsSide(height))
    throw CLI::ValidationError(
        "--size", "a width and a height from 16 to 8192 are needed, as in 1280x800, not " + text);
  options.width = *width;
  options.height = *height;
}

void ReadRequest(const std::string& text, PictureOptions& options) {
  const std::size_t colon = text.find(':');
  const std::optional<int> frame = WholeNumber(text.substr(0, colon));
  if (!frame || *frame < 1 || colon == std::string::npos || colon + 1 == text.size())
    throw CLI::ValidationError("--screenshot",
                               "a frame and a file are needed, as in 600:picture.png, not " + text);
  options.requests.push_back({.frame = *frame, .fileName = text.substr(colon + 1)});
}

}  // namespace

void AddPictureOptions(CLI::App& command, PictureOptions& options) {
  command.add_option_function<std::string>(
      "--size", [&options](const std::string& text) { ReadSize(text, options); },
      "Size of the screen in pixels: WxH. Without it, 1280x800");
  command
      .add_option_function<std::vector<std::string>>(
          "--screenshot",
          [&options](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) ReadRequest(text, options);
          },
          "Write a picture of a frame to a PNG file: FRAME:FILE; may be given several times")
      ->allow_extra_args(false);
  command.add_flag("--opengl", options.wantsContext,
                   "Give plugins an OpenGL context to draw with, also when there is no picture of it");
}

}  // namespace sim
