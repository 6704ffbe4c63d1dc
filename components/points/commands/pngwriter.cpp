#include "components/points/commands/pngwriter.h"

#include <png.h>

#include <new>

#include "orobasictypes/orotranslate.h"
#include "orobasictypes/orowholefile.h"

bool PngWriter::write(const OroPath& path, const std::vector<uint8_t>& pixels, int width,
                      int height) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.format = PNG_FORMAT_RGB;
  image.width = static_cast<png_uint_32>(width);
  image.height = static_cast<png_uint_32>(height);
  OroWholeFile file;
  if (!file.open(path)) {
    return fail(oroKey("The picture %1 cannot be made in its folder"), file.reason());
  }
  std::vector<char> bytes(PNG_IMAGE_PNG_SIZE_MAX(image));
  png_alloc_size_t size = bytes.size();
  // With room for any picture of this size only memory can be short.
  if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr) == 0) {
    throw std::bad_alloc();
  }
  if (file.write(bytes.data(), size) && file.commit()) return true;
  return fail(oroKey("The picture %1 could not be written to its end"), file.reason());
}

// Always false.
bool PngWriter::fail(const char* key, const OroString& reason) {
  problem_ = key;
  reason_ = reason;
  return false;
}
