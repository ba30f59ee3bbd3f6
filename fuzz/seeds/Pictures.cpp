#include "fuzz/seeds/Pictures.h"

#include "support/Pictures.h"

namespace lumo::fuzz {

namespace {

Data lossyWebP() {
  const std::vector<std::uint8_t> pixels = pixelsOf(kTranslucent, {0, 1, 2, 3});
  std::uint8_t* bytes = nullptr;
  const std::size_t size = WebPEncodeRGBA(pixels.data(), kSide, kSide, 4 * kSide, 60, &bytes);
  return Data(std::shared_ptr<const void>(bytes, WebPFree), bytes, size);
}

}  // namespace

std::vector<std::string> pictures() {
  std::vector<std::string> made;
  const auto add = [&made](const Data& picture) { made.emplace_back(picture.view()); };
  add(makeWebP(kTranslucent));
  add(lossyWebP());
  const std::vector<std::uint8_t> gray = pixelsOf(kGray, {0}), rgb = opaquePixels(),
                                  cmyk = pixelsOf(kOpaque, {0, 1, 2, 3});
  for (const bool progressive : {false, true}) {
    for (const int restartRows : {0, 1}) {
      const auto addJPEG = [&](const std::vector<std::uint8_t>& pixels, J_COLOR_SPACE from, J_COLOR_SPACE to,
                               std::array<int, 2> sampling) {
        add(makeJPEG(pixels, {.from = from,
                              .to = to,
                              .sampling = sampling,
                              .progressive = progressive,
                              .restartRows = restartRows,
                              .segments = {{JPEG_APP0 + 1, "Exif\0\0"s + kExif}}}));
      };
      for (const std::array<int, 2> sampling : {std::array{1, 1}, {2, 1}, {2, 2}, {1, 2}, {4, 1}}) {
        addJPEG(rgb, JCS_RGB, JCS_YCbCr, sampling);
      }
      addJPEG(rgb, JCS_RGB, JCS_RGB, {1, 1});
      addJPEG(gray, JCS_GRAYSCALE, JCS_GRAYSCALE, {1, 1});
      addJPEG(cmyk, JCS_CMYK, JCS_CMYK, {1, 1});
      addJPEG(cmyk, JCS_CMYK, JCS_YCCK, {2, 2});
    }
  }
  constexpr std::pair<int, int> kPNGForms[] = {{0, 1}, {0, 2},  {0, 4},  {0, 8}, {0, 16},
                                               {2, 8}, {2, 16}, {3, 1},  {3, 2}, {3, 4},
                                               {3, 8}, {4, 8},  {4, 16}, {6, 8}, {6, 16}};
  for (const auto& [type, depth] : kPNGForms) {
    for (const bool interlaced : {false, true}) add(makePNG(kOpaque, type, depth, "", interlaced));
  }
  return made;
}

}  // namespace lumo::fuzz
