#include "script/PictureFiles.h"

#include <png.h>

#include <vector>

namespace quoll {

bool ReadPicture(const std::string& file, PixelImage& picture) {
  constexpr uint32_t kLargest = 8192;  // pixels of a side
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&image, file.c_str()) == 0) return false;
  image.format = PNG_FORMAT_RGB;
  if (image.width > kLargest || image.height > kLargest) {
    png_image_free(&image);
    return false;
  }
  std::vector<uint8_t> bytes(PNG_IMAGE_SIZE(image));
  const png_color black{};  // behind what can be seen through
  if (png_image_finish_read(&image, &black, bytes.data(), 0, nullptr) == 0) return false;

  picture.width = static_cast<int32_t>(image.width);
  picture.height = static_cast<int32_t>(image.height);
  picture.pixels.clear();
  for (size_t at = 0; at < bytes.size(); at += 3)
    picture.pixels.push_back(bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16);
  return true;
}

}  // namespace quoll
