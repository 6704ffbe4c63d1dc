#include "components/points/commands/pngwriter.h"

#include <png.h>

#include "orobasictypes/orowholefile.h"

bool PngWriter::isThere() { return true; }

bool PngWriter::write(const OroPath& path, const std::vector<uint8_t>& pixels, int width,
                      int height) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.format = PNG_FORMAT_RGB;
  image.width = static_cast<png_uint_32>(width);
  image.height = static_cast<png_uint_32>(height);
  std::vector<char> bytes(PNG_IMAGE_PNG_SIZE_MAX(image));
  png_alloc_size_t size = bytes.size();
  if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr) == 0) {
    return false;
  }
  OroWholeFile file;
  return file.open(path) && file.write(bytes.data(), size) && file.commit();
}
