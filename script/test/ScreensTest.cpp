// Whole screens of the window against stored pictures.
#include <gtest/gtest.h>
#include <png.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace quoll {

namespace {

struct Pixels {
  uint32_t width = 0, height = 0;
  std::vector<uint8_t> bytes;  // red, green, blue
};

Pixels ReadPng(const std::filesystem::path& file) {
  Pixels pixels;
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  EXPECT_NE(png_image_begin_read_from_file(&image, file.c_str()), 0) << file << ": " << image.message;
  image.format = PNG_FORMAT_RGB;
  pixels.width = image.width;
  pixels.height = image.height;
  pixels.bytes.resize(PNG_IMAGE_SIZE(image));
  EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.bytes.data(), 0, nullptr), 0) << image.message;
  return pixels;
}

TEST(Screens, EqualTheStoredPictures) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "quollscreens";
  std::filesystem::create_directories(folder);
  const std::string command = std::string("'") + QUOLLRUN + "' --folder '" + EMPTY_ROMS + "' '" +
                              TEST_SCRIPTS + "/screens.lua' '" + folder.string() + "'";
  ASSERT_EQ(std::system(command.c_str()), 0);  // NOLINT(cert-env33-c): our own program
  for (const char* name :
       {"two_colours", "four_colours_dib", "sixteen_colours_narrow", "eighty_columns_dib"}) {
    SCOPED_TRACE(name);
    const std::string file = std::string(name) + ".png";
    const Pixels drawn = ReadPng(folder / file);
    const Pixels stored = ReadPng(std::filesystem::path(TEST_SCRIPTS) / "pictures" / file);
    ASSERT_EQ(drawn.width, stored.width);
    ASSERT_EQ(drawn.height, stored.height);
    size_t first = 0;
    while (first < stored.bytes.size() && drawn.bytes[first] == stored.bytes[first]) ++first;
    const size_t pixel = first / 3;
    EXPECT_EQ(first, stored.bytes.size())
        << "first difference at x " << pixel % stored.width << ", y " << pixel / stored.width;
  }
  std::filesystem::remove_all(folder);
}

}  // namespace

}  // namespace quoll
