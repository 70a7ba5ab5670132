#include "tool/PngWriter.h"

#include <png.h>
#include <stdexcept>

#include "tool/ReplacingFile.h"

namespace tool {
namespace {

[[noreturn]] void fail(const std::string& target, const std::string& cause) {
  throw std::runtime_error("cannot write " + target + ": " + cause);
}

std::string pngBytes(const host::Image& image, const std::string& target) {
  static_assert(sizeof(host::Rgb) == 3, "the pixels are handed over as they lie in memory");
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  header.width = static_cast<png_uint_32>(image.width());
  header.height = static_cast<png_uint_32>(image.height());
  header.format = PNG_FORMAT_RGB;
  png_alloc_size_t size = 0;
  const void* pixels = image.pixels().data();
  if (png_image_write_to_memory(&header, nullptr, &size, 0, pixels, 0, nullptr) == 0) {
    fail(target, header.message);
  }
  std::string bytes(size, '\0');
  if (png_image_write_to_memory(&header, bytes.data(), &size, 0, pixels, 0, nullptr) == 0) {
    fail(target, header.message);
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace

void writePng(const host::Image& image, const std::string& target) {
  const std::string bytes = pngBytes(image, target);
  ReplacingFile file(target);
  file.write(bytes);
  file.takePlace();
}

}  // namespace tool
