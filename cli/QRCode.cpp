#include "cli/QRCode.h"

#include <png.h>
#include <qrencode.h>

#include <cstdint>
#include <memory>
#include <new>

namespace lumo::cli {

namespace {

constexpr std::size_t kMargin = 4;
constexpr std::size_t kPixels = 8;  // of a module's side

struct Release {
  void operator()(QRcode* code) const noexcept { QRcode_free(code); }
};

}  // namespace

QRCode::QRCode(std::string_view text) {
  // The lowest correction gives the fewest modules, which a camera reads best from a screen.
  const std::unique_ptr<QRcode, Release> code(QRcode_encodeData(
      static_cast<int>(text.size()), reinterpret_cast<const unsigned char*>(text.data()), 0, QR_ECLEVEL_L));
  if (!code) throw std::bad_alloc();  // the only reason, for a text that fits
  const auto width = static_cast<std::size_t>(code->width);
  side_ = width + 2 * kMargin;
  isDark_.resize(side_ * side_);
  for (std::size_t row = 0; row < width; ++row) {
    for (std::size_t column = 0; column < width; ++column) {
      isDark_[(row + kMargin) * side_ + column + kMargin] = (code->data[row * width + column] & 1) != 0;
    }
  }
}

std::string textOf(const QRCode& code, bool isColoured) {
  constexpr std::string_view kHalves[] = {" ", "▄", "▀", "█"};
  std::string text;
  for (std::size_t row = 0; row < code.side(); row += 2) {
    if (isColoured) text += "\x1B[38;5;16;48;5;231m";
    for (std::size_t column = 0; column < code.side(); ++column) {
      const bool upper = code.isDark(row, column) == isColoured;
      const bool lower = code.isDark(row + 1, column) == isColoured;
      text += kHalves[(upper ? 2 : 0) + (lower ? 1 : 0)];
    }
    text += isColoured ? "\x1B[0m\n" : "\n";
  }
  return text;
}

std::string pngOf(const QRCode& code) {
  const std::size_t width = code.side() * kPixels;
  std::vector<std::uint8_t> pixels(width * width);
  for (std::size_t at = 0; at < pixels.size(); ++at) {
    pixels[at] = code.isDark(at / width / kPixels, at % width / kPixels) ? 0 : 255;
  }
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(width);
  image.height = image.width;
  image.format = PNG_FORMAT_GRAY;
  std::string png(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
  png_alloc_size_t size = png.size();
  if (!png_image_write_to_memory(&image, png.data(), &size, 0, pixels.data(), 0, nullptr)) {
    throw std::bad_alloc();
  }
  png.resize(size);
  return png;
}

std::string svgOf(const QRCode& code) {
  const std::string side = std::to_string(code.side());
  std::string svg = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 )" + side + " " + side +
                    R"(" shape-rendering="crispEdges"><path fill="#fff" d="M0 0h)" + side + "v" + side +
                    R"(H0z"/><path d=")";
  for (std::size_t row = 0; row < code.side(); ++row) {
    for (std::size_t column = 0; column < code.side(); ++column) {
      std::size_t end = column;
      while (code.isDark(row, end)) ++end;
      if (end == column) continue;
      const std::string length = std::to_string(end - column);
      svg.append("M").append(std::to_string(column)).append(" ").append(std::to_string(row));
      svg.append("h").append(length).append("v1h-").append(length).append("z");
      column = end;
    }
  }
  return svg + "\"/></svg>\n";
}

}  // namespace lumo::cli
