#pragma once

#include "LumoApi/Data.h"

// clang-format off
#include <cstdio>  // jpeglib.h wants it before itself
#include <jpeglib.h>
// clang-format on
#include <webp/encode.h>
#include <zlib.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

/// Makes pictures of every format.
namespace lumo {

using namespace std::string_literals;
using Color = std::array<int, 4>;
using Colors = std::array<Color, 4>;

// The pictures have four fields of 16 x 16 pixels, each of one colour, the last one see-through in places.
inline constexpr int kSide = 32;
inline constexpr Colors kOpaque{
    {{200, 30, 40, 255}, {20, 160, 60, 255}, {30, 60, 220, 255}, {90, 90, 10, 255}}};
inline constexpr Colors kTranslucent{
    {{200, 30, 40, 255}, {20, 160, 60, 255}, {30, 60, 220, 128}, {90, 90, 10, 0}}};
inline constexpr Colors kGray{
    {{0, 0, 0, 255}, {85, 85, 85, 255}, {170, 170, 170, 255}, {255, 255, 255, 255}}};

inline std::size_t fieldAt(int x, int y) { return static_cast<std::size_t>((x >= 16) + 2 * (y >= 16)); }

inline std::vector<std::uint8_t> pixelsOf(const Colors& colors, const std::vector<std::size_t>& channels) {
  std::vector<std::uint8_t> pixels;
  for (int place = 0; place < kSide * kSide; ++place) {
    for (std::size_t channel : channels) {
      pixels.push_back(static_cast<std::uint8_t>(colors[fieldAt(place % kSide, place / kSide)][channel]));
    }
  }
  return pixels;
}

inline std::vector<std::uint8_t> opaquePixels() { return pixelsOf(kOpaque, {0, 1, 2}); }

struct JPEGShape {
  unsigned width = kSide;
  J_COLOR_SPACE from = JCS_RGB, to = JCS_YCbCr;
  std::array<int, 2> sampling = {1, 1};
  bool progressive = false, arithmetic = false, adobe = true;
  int quality = 95, restartRows = 0;
  std::vector<std::pair<int, std::string>> segments = {};
};

inline Data makeJPEG(std::vector<std::uint8_t> pixels, const JPEGShape& shape) {
  jpeg_compress_struct codec{};
  jpeg_error_mgr errors{};
  codec.err = jpeg_std_error(&errors);
  jpeg_create_compress(&codec);
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&codec, &bytes, &size);
  codec.image_width = shape.width;
  codec.in_color_space = shape.from;
  codec.input_components = shape.from == JCS_GRAYSCALE ? 1 : shape.from == JCS_CMYK ? 4 : 3;
  const std::size_t stride = std::size_t{shape.width} * static_cast<unsigned>(codec.input_components);
  codec.image_height = static_cast<JDIMENSION>(pixels.size() / stride);
  jpeg_set_defaults(&codec);
  jpeg_set_colorspace(&codec, shape.to);
  codec.comp_info[0].h_samp_factor = shape.sampling[0];
  codec.comp_info[0].v_samp_factor = shape.sampling[1];
  jpeg_set_quality(&codec, shape.quality, TRUE);
  codec.restart_in_rows = shape.restartRows;
  codec.arith_code = shape.arithmetic;
  if (!shape.adobe) codec.write_Adobe_marker = FALSE;
  if (shape.progressive) jpeg_simple_progression(&codec);
  jpeg_start_compress(&codec, TRUE);
  for (const auto& [marker, text] : shape.segments) {
    jpeg_write_marker(&codec, marker, reinterpret_cast<const JOCTET*>(text.data()),
                      static_cast<unsigned>(text.size()));
  }
  for (JSAMPROW row = pixels.data(); codec.next_scanline < codec.image_height; row += stride) {
    jpeg_write_scanlines(&codec, &row, 1);
  }
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
  return Data(std::shared_ptr<const void>(bytes, std::free), bytes, size);
}

inline std::string bigEndian(std::size_t number) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(number >> shift);
  return bytes;
}

inline std::string pngChunk(const std::string& name, const std::string& content) {
  const std::string body = name + content;
  const auto crc = crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
  return bigEndian(content.size()) + body + bigEndian(crc);
}

inline std::string deflated(const std::string& text, int effort = 1) {
  std::string packed(compressBound(text.size()), '\0');
  uLongf size = packed.size();
  compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(text.data()),
            text.size(), effort);
  return packed.substr(0, size);
}

struct PNGKind {
  int depth, type;
  bool interlaced = false;
};

inline Data pngOf(std::size_t width, std::size_t height, PNGKind kind, const std::string& rows,
                  const std::string& chunks = "", int effort = 1) {
  const std::string shape = {static_cast<char>(kind.depth), static_cast<char>(kind.type), 0, 0,
                             kind.interlaced};
  return Data("\x89PNG\r\n\x1A\n" + pngChunk("IHDR", bigEndian(width) + bigEndian(height) + shape) + chunks +
              pngChunk("IDAT", deflated(rows, effort)) + pngChunk("IEND", ""));
}

inline Data makePNG(const Colors& colors, int type = 2, int depth = 8, const std::string& chunks = "",
                    bool interlaced = false) {
  const std::vector<std::size_t> kChannels[] = {{0}, {}, {0, 1, 2}, {0}, {0, 3}, {}, {0, 1, 2, 3}};
  const std::vector<std::array<int, 4>> kWhole = {{0, 0, 1, 1}},
                                        kSeven = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                                  {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
  std::string rows;
  for (const auto& [left, top, right, down] : interlaced ? kSeven : kWhole) {
    for (int y = top; y < kSide; y += down) {
      rows += '\0';
      int held = 0, bits = 0;
      for (int x = left; x < kSide; x += right) {
        for (const std::size_t channel : kChannels[type]) {
          const int value = colors[fieldAt(x, y)][channel];
          const int sample = depth > 8 ? value * 257 : value >> (8 - depth);
          held = held << depth | (type == 3 ? static_cast<int>(fieldAt(x, y)) : sample);
          for (bits += depth; bits >= 8; held &= (1 << bits) - 1)
            rows += static_cast<char>(held >> (bits -= 8));
        }
      }
      if (bits > 0) rows += static_cast<char>(held << (8 - bits));
    }
  }
  std::string palette;
  for (const Color& c : colors)
    palette += {static_cast<char>(c[0]), static_cast<char>(c[1]), static_cast<char>(c[2])};
  const std::string before = (type == 3 ? pngChunk("PLTE", palette) : "") + chunks;
  return pngOf(kSide, kSide, {depth, type, interlaced}, rows, before);
}

inline Data makeWebP(const Colors& colors) {
  const std::vector<std::uint8_t> pixels = pixelsOf(colors, {0, 1, 2, 3});
  std::uint8_t* bytes = nullptr;
  const std::size_t size = WebPEncodeLosslessRGBA(pixels.data(), kSide, kSide, 4 * kSide, &bytes);
  return Data(std::shared_ptr<const void>(bytes, WebPFree), bytes, size);
}

inline std::string riffChunk(const std::string& name, const std::string& content) {
  const std::size_t size = content.size();
  return name + std::string{static_cast<char>(size & 255), static_cast<char>(size >> 8), 0, 0} + content +
         std::string(size % 2, '\0');
}

struct Decoded {
  std::array<JDIMENSION, 2> size;
  std::array<int, 2> sampling;
  std::vector<std::uint8_t> pixels;
};

inline Decoded decoded(const Data& jpeg) {
  jpeg_decompress_struct codec{};
  jpeg_error_mgr errors{};
  codec.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&codec);
  jpeg_mem_src(&codec, jpeg.data(), jpeg.size());
  jpeg_read_header(&codec, TRUE);
  codec.out_color_space = JCS_RGB;
  jpeg_start_decompress(&codec);
  const jpeg_component_info& luma = codec.comp_info[0];
  Decoded picture{{codec.output_width, codec.output_height}, {luma.h_samp_factor, luma.v_samp_factor}, {}};
  picture.pixels.resize(std::size_t{3} * codec.output_width * codec.output_height);
  for (JSAMPROW row = picture.pixels.data(); codec.output_scanline < codec.output_height;
       row += 3 * codec.output_width) {
    jpeg_read_scanlines(&codec, &row, 1);
  }
  jpeg_destroy_decompress(&codec);
  return picture;
}

inline const std::string kExif =
    "II*\0\x08\0\0\0\x02\0\x25\x88\4\0\1\0\0\0\x26\0\0\0\x12\1\3\0\1\0\0\0\6\0\0\0\0\0\0\0GPS Taipei"s;
inline std::string profileFor(const std::string& space) {
  std::string profile(132, '\0');
  profile.replace(2, 2, "\1\x84").replace(12, 12, "mntr" + space + "XYZ ").replace(36, 4, "acsp");
  profile.replace(68, 12, "\0\0\xF6\xD6\0\1\0\0\0\0\xD3\x2D"s);
  for (int byte = 0; byte < 256; ++byte) profile += static_cast<char>(byte);  // the reader shuns tiny ones
  return profile;
}

}  // namespace lumo
