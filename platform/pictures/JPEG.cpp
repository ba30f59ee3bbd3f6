#include "platform/pictures/Codec.h"

// clang-format off
#include <cstdio>  // jpeglib.h wants it before itself
#include <jpeglib.h>
// clang-format on

#include <utility>
#include <vector>

namespace lumo::image {

namespace {

constexpr int kMaxScans = 500;
/// A progressive picture of a few bytes a scan can have its decoder go over all blocks again and again. In
/// arithmetic coding a block takes ten times as long, and each byte as long as six blocks.
constexpr std::uint64_t kMaxBlockVisits = 40'000'000;
constexpr std::uint64_t kArithmeticBlock = 10, kArithmeticByte = 6;
/// Holds the coefficients of the largest picture that is not read row by row.
constexpr long kMaxMemory = 1 << 30;

/// Counts what is decoded, scan by scan, before it is.
struct BlockVisits : jpeg_progress_mgr {
  std::uint64_t count = 0;
  int scan = 0;  // the last that was counted

  bool addScan(const jpeg_decompress_struct& info) {
    if (std::exchange(scan, info.input_scan_number) == info.input_scan_number) return true;
    for (int place = 0; place < info.comps_in_scan; ++place) {
      const jpeg_component_info& component = *info.cur_comp_info[place];
      count += std::uint64_t{component.width_in_blocks} * component.height_in_blocks *
               (info.arith_code ? kArithmeticBlock : 1);
    }
    return scan <= kMaxScans && count <= kMaxBlockVisits;
  }

  /// Called by the decoder now and then, at least once in a scan.
  static void check(j_common_ptr codec) {
    auto& visits = *static_cast<BlockVisits*>(codec->progress);
    if (!visits.addScan(*reinterpret_cast<j_decompress_ptr>(codec))) {
      static_cast<ErrorTrap*>(codec->client_data)->fail();
    }
  }
};

class Reader {
 public:
  Reader() {
    trapJPEGErrors(reinterpret_cast<j_common_ptr>(&info), &errors_, &trap_);
    visits_.progress_monitor = BlockVisits::check;
  }
  ~Reader() { jpeg_destroy_decompress(&info); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  /// Reads up to the pixels.
  bool open(const Data& picture) {
    return trap_.run([&] {
      jpeg_create_decompress(&info);
      info.mem->max_memory_to_use = kMaxMemory;
      jpeg_mem_src(&info, picture.data(), picture.size());
      info.progress = &visits_;
      jpeg_read_header(&info, TRUE);
      if (info.arith_code) visits_.count = picture.size() * kArithmeticByte;
      BlockVisits::check(reinterpret_cast<j_common_ptr>(&info));
    });
  }

  bool start() {
    return trap_.run([&] { jpeg_start_decompress(&info); });
  }

  bool readRow(std::uint8_t* row) {
    return trap_.run([&] { jpeg_read_scanlines(&info, &row, 1); });
  }

  bool readPlanes(std::uint8_t*** planes, unsigned lines) {
    return trap_.run([&] { jpeg_read_raw_data(&info, planes, lines); });
  }

  jpeg_decompress_struct info{};

 private:
  ErrorTrap trap_;
  jpeg_error_mgr errors_{};
  BlockVisits visits_{};
};

/// Room for one row of blocks of each plane.
class Planes {
 public:
  explicit Planes(const jpeg_decompress_struct& info) {
    for (std::size_t plane = 0; plane < planes_.size(); ++plane) {
      const jpeg_component_info& component = info.comp_info[plane];
      const std::size_t stride = std::size_t{component.width_in_blocks} * DCTSIZE;
      const std::size_t lines = static_cast<std::size_t>(component.v_samp_factor) * DCTSIZE;
      samples_[plane].resize(stride * lines);
      for (std::size_t line = 0; line < lines; ++line) {
        rows_[plane].push_back(samples_[plane].data() + line * stride);
      }
      planes_[plane] = rows_[plane].data();
    }
  }

  std::uint8_t*** get() { return planes_.data(); }

 private:
  std::array<std::vector<std::uint8_t>, 3> samples_;
  std::array<std::vector<std::uint8_t*>, 3> rows_;
  std::array<std::uint8_t**, 3> planes_;
};

/// Whether the planes can be written as they are: in one scan, whose units of all planes together hold at
/// most ten blocks.
bool canPassPlanesOn(const jpeg_decompress_struct& info) {
  if (info.jpeg_color_space != JCS_YCbCr) return false;
  int blocks = 0;
  for (int plane = 0; plane < info.num_components; ++plane) {
    blocks += info.comp_info[plane].h_samp_factor * info.comp_info[plane].v_samp_factor;
  }
  return blocks <= C_MAX_BLOCKS_IN_MCU;
}

/// Leaves out the two steps that lose most, upsampling and a round through RGB.
std::optional<Data> passPlanesOn(Reader& reader, int quality, const Traits& traits) {
  jpeg_decompress_struct& info = reader.info;
  info.out_color_space = JCS_YCbCr;
  info.raw_data_out = TRUE;
  if (!reader.start()) return std::nullopt;

  Sampling sampling;
  for (std::size_t plane = 0; plane < sampling.size(); ++plane) {
    sampling[plane] = {info.comp_info[plane].h_samp_factor, info.comp_info[plane].v_samp_factor};
  }
  JPEGWriter writer;
  if (!writer.startPlanes(info.image_width, info.image_height, sampling, quality, traits))
    return std::nullopt;
  Planes planes(info);
  const auto lines = static_cast<unsigned>(info.max_v_samp_factor * DCTSIZE);
  while (info.output_scanline < info.output_height) {
    if (!reader.readPlanes(planes.get(), lines) || !writer.writePlanes(planes.get(), lines))
      return std::nullopt;
  }
  return writer.finish();
}

/// Ink to light, in place. Files that Adobe's marker stands in hold light (255 less ink) already.
void makeRGB(std::uint8_t* row, std::size_t width, bool holdsLight) {
  const std::uint8_t flip = holdsLight ? 0 : 255;
  std::uint8_t* out = row;
  for (const std::uint8_t* pixel = row; width > 0; --width, pixel += 4) {
    const unsigned black = pixel[3] ^ flip;
    for (int color = 0; color < 3; ++color) {
      *out++ = static_cast<std::uint8_t>((static_cast<unsigned>(pixel[color] ^ flip) * black + 127) / 255);
    }
  }
}

std::optional<Data> passRowsOn(Reader& reader, int quality, const Traits& traits) {
  jpeg_decompress_struct& info = reader.info;
  const bool isGray = info.jpeg_color_space == JCS_GRAYSCALE;
  const bool isInk = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
  info.out_color_space = isGray ? JCS_GRAYSCALE : isInk ? JCS_CMYK : JCS_RGB;
  if (!reader.start()) return std::nullopt;

  JPEGWriter writer;
  if (!writer.startRows(info.image_width, info.image_height, isGray ? 1 : 3, quality, traits))
    return std::nullopt;
  std::vector<std::uint8_t> row(std::size_t{info.output_width} *
                                static_cast<unsigned>(info.output_components));
  while (info.output_scanline < info.output_height) {
    if (!reader.readRow(row.data())) return std::nullopt;
    if (isInk) makeRGB(row.data(), info.output_width, info.saw_Adobe_marker);
    if (!writer.writeRow(row.data())) return std::nullopt;
  }
  return writer.finish();
}

}  // namespace

std::optional<Data> reencodeJPEG(const Data& picture, int quality) {
  Reader reader;
  if (!reader.open(picture)) return std::nullopt;
  const std::uint64_t maxPixels = jpeg_has_multiple_scans(&reader.info) ? kMaxHeldPixels : kMaxStreamedPixels;
  if (!isWithin(reader.info.image_width, reader.info.image_height, maxPixels)) return std::nullopt;

  const Traits traits = traitsOfJPEG(picture, reader.info.jpeg_color_space == JCS_GRAYSCALE ? 1 : 3);
  return canPassPlanesOn(reader.info) ? passPlanesOn(reader, quality, traits)
                                      : passRowsOn(reader, quality, traits);
}

}  // namespace lumo::image
