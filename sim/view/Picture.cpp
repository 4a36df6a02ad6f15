// The rows of a PNG file run from the top down, which libpng calls a negative stride.
#include "view/Picture.h"

#include <fmt/core.h>
#include <png.h>

#include <cerrno>
#include <cstring>
#include <fstream>

#include "InputError.h"

namespace sim {
namespace {

constexpr int kBytesOfPixel = 3;

png_image Describe(const Picture& picture) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(picture.width);
  image.height = static_cast<png_uint_32>(picture.height);
  image.format = PNG_FORMAT_RGB;
  return image;
}

png_int_32 Stride(const Picture& picture) { return -picture.width * kBytesOfPixel; }

}  // namespace

// Made in memory first: libpng would remove a file that it cannot write to the end, whatever it is.
void WritePng(const Picture& picture, const std::string& fileName) {
  png_image image = Describe(picture);
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  std::vector<char> bytes(size);
  if (png_image_write_to_memory(&image, bytes.data(), &size, 0, picture.bytes.data(), Stride(picture),
                                nullptr) == 0)
    throw InputError(fmt::format("cannot write the picture {}: {}", fileName, image.message));
  errno = 0;
  std::ofstream file(fileName, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(size));
  file.close();
  if (!file) throw InputError(fmt::format("cannot write the picture {}: {}", fileName, std::strerror(errno)));
}

Picture ReadPng(const std::string& fileName) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  const bool isOpened = png_image_begin_read_from_file(&image, fileName.c_str()) != 0;
  if (!isOpened) throw InputError(fmt::format("cannot read the picture {}: {}", fileName, image.message));
  image.format = PNG_FORMAT_RGB;
  Picture picture{
      .width = static_cast<int>(image.width), .height = static_cast<int>(image.height), .bytes = {}};
  picture.bytes.resize(PNG_IMAGE_SIZE(image));
  if (png_image_finish_read(&image, nullptr, picture.bytes.data(), Stride(picture), nullptr) == 0)
    throw InputError(fmt::format("cannot read the picture {}: {}", fileName, image.message));
  return picture;
}

}  // namespace sim
