// Pictures that are read and written row by row take little memory, however large they are.

#include "platform/pictures/Image.h"
#include "support/Allocations.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

#include <random>

namespace lumo {
namespace {

std::string noise(std::size_t size) {
  std::minstd_rand random(7);
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random() >> 8);
  return bytes;
}

TEST(PictureMemoryTest, BeyondTheResultItStaysUnder8MiB) {
  if (!Allocations::kWatches) GTEST_SKIP();
  constexpr std::size_t kWidest = 65'500, kRow = 8 * kWidest + 1, kRows = 22;
  std::string rows = noise(kRow * kRows);
  for (std::size_t row = 0; row < kRows; ++row) rows[row * kRow] = 0;
  std::string profile = profileFor("RGB ") + noise((3 << 20) - 388);
  profile.replace(0, 4, bigEndian(profile.size()));
  const std::string packed = pngChunk("iCCP", "p\0\0"s + deflated(profile));
  const std::string samples = noise(kWidest * 3 * 16);
  const std::vector<std::uint8_t> pixels(samples.begin(), samples.end());
  const std::tuple<const char*, Data, std::size_t> kCases[] = {
      {"PNG", pngOf(kWidest, kRows, {16, 6}, rows, "", 0), 5'000'000},
      {"PNG with a long profile", pngOf(kWidest, kRows, {16, 6}, rows, packed, 0),
          8'503'056},  // at which growth by halves leaves 4 MB idle
      {"JPEG", makeJPEG(pixels, {.width = kWidest, .sampling = {2, 2}}), 2'000'000},
      {"JPEG of RGB", makeJPEG(pixels, {.width = kWidest, .to = JCS_RGB, .quality = 100}), 4'000'000}};
  for (const auto& [name, picture, size] : kCases) {
    SCOPED_TRACE(name);
    const Allocations allocations;
    const std::optional<Data> jpeg = jpegRepresentation(picture, 1);
    ASSERT_TRUE(jpeg);
    EXPECT_GT(jpeg->size(), size);
    EXPECT_LT(allocations.peak(), jpeg->size() + (8 << 20));
  }
}

}  // namespace
}  // namespace lumo
