#include "fuzz/seeds/Pictures.h"

#include <jpeglib.h>
#include <png.h>
#include <webp/encode.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace lumo::fuzz {

namespace {

constexpr unsigned kWidth = 37;
constexpr unsigned kHeight = 21;

using Row = std::vector<std::uint8_t>;

/// A gradient with an edge in it.
Row row(std::size_t size, unsigned y) {
  Row bytes(size);
  for (std::size_t x = 0; x < size; ++x) {
    bytes[x] = static_cast<std::uint8_t>(x > size / 2 ? 255 - y * 9 : x * 5 + y * 3);
  }
  return bytes;
}

struct JPEGForm {
  J_COLOR_SPACE from, to;
  int horizontal, vertical;
  bool isProgressive;
  unsigned restartRows;
};

std::string jpeg(const JPEGForm& form) {
  jpeg_compress_struct codec{};
  jpeg_error_mgr errors{};
  codec.err = jpeg_std_error(&errors);
  jpeg_create_compress(&codec);
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&codec, &bytes, &size);
  codec.image_width = kWidth;
  codec.image_height = kHeight;
  codec.in_color_space = form.from;
  codec.input_components = form.from == JCS_GRAYSCALE ? 1 : form.from == JCS_CMYK ? 4 : 3;
  jpeg_set_defaults(&codec);
  jpeg_set_colorspace(&codec, form.to);
  codec.comp_info[0].h_samp_factor = form.horizontal;
  codec.comp_info[0].v_samp_factor = form.vertical;
  codec.restart_in_rows = static_cast<int>(form.restartRows);
  if (form.isProgressive) jpeg_simple_progression(&codec);
  jpeg_start_compress(&codec, TRUE);
  constexpr char kExif[] = "Exif\0\0MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0";
  jpeg_write_marker(&codec, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(kExif), sizeof kExif - 1);
  while (codec.next_scanline < kHeight) {
    Row line = row(std::size_t{kWidth} * static_cast<unsigned>(codec.input_components), codec.next_scanline);
    JSAMPROW start = line.data();
    jpeg_write_scanlines(&codec, &start, 1);
  }
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
  std::string made(reinterpret_cast<char*>(bytes), size);
  std::free(bytes);
  return made;
}

std::string png(int type, int depth, int interlaced) {
  std::string made;
  png_structp codec = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(codec);
  const auto write = [](png_structp writer, png_bytep bytes, std::size_t size) {
    static_cast<std::string*>(png_get_io_ptr(writer))->append(reinterpret_cast<char*>(bytes), size);
  };
  png_set_write_fn(codec, &made, write, nullptr);
  png_set_IHDR(codec, info, kWidth, kHeight, depth, type, interlaced, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  std::vector<png_color> palette(std::size_t{1} << depth % 16, png_color{200, 100, 50});
  if (type == PNG_COLOR_TYPE_PALETTE) {
    png_set_PLTE(codec, info, palette.data(), static_cast<int>(palette.size()));
    constexpr png_byte kAlpha[] = {0, 128};
    png_set_tRNS(codec, info, kAlpha, 2, nullptr);
  }
  png_write_info(codec, info);
  std::vector<Row> rows;
  std::vector<png_bytep> starts;
  for (unsigned y = 0; y < kHeight; ++y) rows.push_back(row(png_get_rowbytes(codec, info), y));
  for (Row& line : rows) starts.push_back(line.data());
  png_write_image(codec, starts.data());
  png_write_end(codec, info);
  png_destroy_write_struct(&codec, &info);
  return made;
}

std::string webp(bool isLossless) {
  Row pixels;
  for (unsigned y = 0; y < kHeight; ++y) {
    const Row line = row(std::size_t{kWidth} * 4, y);
    pixels.insert(pixels.end(), line.begin(), line.end());
  }
  std::uint8_t* bytes = nullptr;
  constexpr int kStride = kWidth * 4;
  const std::size_t size = isLossless
                               ? WebPEncodeLosslessRGBA(pixels.data(), kWidth, kHeight, kStride, &bytes)
                               : WebPEncodeRGBA(pixels.data(), kWidth, kHeight, kStride, 60, &bytes);
  std::string made(reinterpret_cast<char*>(bytes), size);
  WebPFree(bytes);
  return made;
}

}  // namespace

std::vector<std::string> pictures() {
  std::vector<std::string> made = {webp(true), webp(false)};
  for (const bool isProgressive : {false, true}) {
    for (const unsigned restartRows : {0U, 1U}) {
      for (const auto& [horizontal, vertical] : {std::pair{1, 1}, {2, 1}, {2, 2}, {1, 2}, {4, 1}}) {
        made.push_back(jpeg({JCS_RGB, JCS_YCbCr, horizontal, vertical, isProgressive, restartRows}));
      }
      made.push_back(jpeg({JCS_RGB, JCS_RGB, 1, 1, isProgressive, restartRows}));
      made.push_back(jpeg({JCS_GRAYSCALE, JCS_GRAYSCALE, 1, 1, isProgressive, restartRows}));
      made.push_back(jpeg({JCS_CMYK, JCS_CMYK, 1, 1, isProgressive, restartRows}));
      made.push_back(jpeg({JCS_CMYK, JCS_YCCK, 2, 2, isProgressive, restartRows}));
    }
  }
  constexpr std::pair<int, int> kPNGForms[] = {{0, 1}, {0, 2},  {0, 4},  {0, 8}, {0, 16},
                                               {2, 8}, {2, 16}, {3, 1},  {3, 2}, {3, 4},
                                               {3, 8}, {4, 8},  {4, 16}, {6, 8}, {6, 16}};
  for (const auto& [type, depth] : kPNGForms) {
    for (const int interlaced : {0, 1}) made.push_back(png(type, depth, interlaced));
  }
  return made;
}

}  // namespace lumo::fuzz
