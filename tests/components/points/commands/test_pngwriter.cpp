// Pictures as files, read back with the library that wrote them.

#include "components/points/commands/pngwriter.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "orobasictypes/oropath.h"
#include "tests/tempfolder.h"

namespace {

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> pixels;
};

class PngWriterTest : public testing::Test {
 protected:
  // The problem, empty when there is none.
  std::string write(const std::string& name, const std::vector<uint8_t>& pixels, int width,
                    int height) {
    const OroPath path(OroString(folder_.file(name).u16string().c_str()));
    PngWriter writer;
    if (writer.write(path, pixels, width, height)) return "";
    reason_ = writer.reason();
    return writer.problem();
  }
  Picture read(const std::string& name) {
    const std::string bytes = folder_.read(name);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    Picture picture;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0) return picture;
    image.format = PNG_FORMAT_RGB;
    picture.pixels.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) != 0) {
      picture.width = static_cast<int>(image.width);
      picture.height = static_cast<int>(image.height);
    }
    return picture;
  }

  tests::TempFolder folder_;
  OroString reason_;  // of the last failure
};

TEST_F(PngWriterTest, AFileHasEachPixel) {
  std::vector<uint8_t> pixels(7 * 5 * 3);
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<uint8_t>(i * 37);
  EXPECT_EQ(write("a.png", pixels, 7, 5), "");
  const Picture picture = read("a.png");
  EXPECT_EQ(picture.width, 7);
  EXPECT_EQ(picture.height, 5);
  EXPECT_EQ(picture.pixels, pixels);
}

TEST_F(PngWriterTest, APictureMayBeOnePixel) {
  EXPECT_EQ(write("a.png", {1, 2, 3}, 1, 1), "");
  EXPECT_EQ(read("a.png").pixels, (std::vector<uint8_t>{1, 2, 3}));
}

TEST_F(PngWriterTest, AFolderThatIsNotThereIsToldAndNothingIsMade) {
  EXPECT_EQ(write("absent/a.png", {1, 2, 3}, 1, 1), "The picture %1 cannot be made in its folder");
  EXPECT_FALSE(reason_.isEmpty());
  EXPECT_FALSE(std::filesystem::exists(folder_.file("absent")));
}

TEST_F(PngWriterTest, AnOlderFileIsReplaced) {
  folder_.write("a.png",
                "older, and longer than the picture that takes its place" + std::string(1000, '.'));
  EXPECT_EQ(write("a.png", {1, 2, 3}, 1, 1), "");
  EXPECT_EQ(read("a.png").width, 1);
}

}  // namespace
