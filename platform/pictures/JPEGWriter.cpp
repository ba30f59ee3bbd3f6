#include "platform/pictures/Codec.h"

// clang-format off
#include <cstdio>  // jpeglib.h wants it before itself
#include <jpeglib.h>
#include <jerror.h>
// clang-format on

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace lumo::image {

namespace {

ErrorTrap& trapOf(j_common_ptr codec) { return *static_cast<ErrorTrap*>(codec->client_data); }

void failInTrap(j_common_ptr codec) { trapOf(codec).fail(codec->err->msg_code == JERR_OUT_OF_MEMORY); }
void ignoreMessage(j_common_ptr, int) {}
void ignoreOutput(j_common_ptr) {}

/// The growing JPEG. The library asks for room in a place where nothing may be thrown, so that it is plain
/// memory. It grows by small steps, so that little lies idle; the C library moves blocks of this size
/// without copying them.
struct Output : jpeg_destination_mgr {
  Output() : jpeg_destination_mgr() {
    init_destination = [](j_compress_ptr codec) { of(codec).grow(codec); };
    empty_output_buffer = [](j_compress_ptr codec) -> boolean {
      of(codec).grow(codec);
      return TRUE;
    };
    term_destination = [](j_compress_ptr) {};
  }
  ~Output() { std::free(bytes); }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  static Output& of(j_compress_ptr codec) { return *static_cast<Output*>(codec->dest); }

  void grow(j_compress_ptr codec) {
    constexpr std::size_t kFirstCapacity = 64 << 10, kLargestStep = 1 << 20;
    const std::size_t used = capacity;  // the library asks when all is full
    const std::size_t larger = capacity == 0 ? kFirstCapacity : capacity + std::min(capacity, kLargestStep);
    void* moved = std::realloc(bytes, larger);
    if (!moved) trapOf(reinterpret_cast<j_common_ptr>(codec)).fail(true);
    bytes = static_cast<std::uint8_t*>(moved);
    capacity = larger;
    next_output_byte = bytes + used;
    free_in_buffer = capacity - used;
  }

  Data take() {
    const std::size_t size = capacity - free_in_buffer;
    if (void* fitted = std::realloc(bytes, size)) bytes = static_cast<std::uint8_t*>(fitted);
    const std::uint8_t* start = bytes;
    return Data(std::shared_ptr<const void>(std::exchange(bytes, nullptr), std::free), start, size);
  }

  std::uint8_t* bytes = nullptr;
  std::size_t capacity = 0;
};

/// Writes what is kept of the original: a block that holds its orientation alone, and its profile.
void writeTraits(j_compress_ptr codec, const Traits& traits) {
  if (traits.orientation != 1) {
    const std::uint8_t exif[] = {
        'E',  'x',  'i', 'f', 0, 0,        // name
        'M',  'M',  0,   '*', 0, 0, 0, 8,  // big-endian; directory at 8
        0,    1,                           // of one entry:
        0x01, 0x12, 0,   3,   0, 0, 0, 1, 0, static_cast<std::uint8_t>(traits.orientation), 0, 0,  //
        0,    0,    0,   0};  // no further directory
    jpeg_write_marker(codec, JPEG_APP0 + 1, exif, sizeof exif);
  }
  if (!traits.colorProfile.empty()) {
    jpeg_write_icc_profile(codec, traits.colorProfile.data(),
                           static_cast<unsigned>(traits.colorProfile.size()));
  }
}

}  // namespace

void trapJPEGErrors(jpeg_common_struct* codec, jpeg_error_mgr* errors, ErrorTrap* trap) noexcept {
  codec->err = jpeg_std_error(errors);
  codec->client_data = trap;
  errors->error_exit = failInTrap;
  errors->emit_message = ignoreMessage;
  errors->output_message = ignoreOutput;
}

struct JPEGWriter::State {
  State() { trapJPEGErrors(reinterpret_cast<j_common_ptr>(&codec), &errors, &trap); }
  ~State() { jpeg_destroy_compress(&codec); }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  void create(std::uint32_t width, std::uint32_t height, int channels, J_COLOR_SPACE space) {
    jpeg_create_compress(&codec);
    codec.dest = &output;
    codec.image_width = width;
    codec.image_height = height;
    codec.input_components = channels;
    codec.in_color_space = space;
    jpeg_set_defaults(&codec);
  }

  void start(int quality, const Traits& traits) {
    jpeg_set_quality(&codec, quality, TRUE);
    jpeg_start_compress(&codec, TRUE);
    writeTraits(&codec, traits);
  }

  ErrorTrap trap;
  jpeg_error_mgr errors{};
  Output output;
  jpeg_compress_struct codec{};
};

JPEGWriter::JPEGWriter() : state_(std::make_unique<State>()) {}

JPEGWriter::~JPEGWriter() = default;

bool JPEGWriter::startRows(std::uint32_t width, std::uint32_t height, int channels, int quality,
                           const Traits& traits) {
  return state_->trap.run([&] {
    constexpr int kFullChromaFrom = 90;
    state_->create(width, height, channels, channels == 1 ? JCS_GRAYSCALE : JCS_RGB);
    if (channels == 3 && quality >= kFullChromaFrom) {
      state_->codec.comp_info[0].h_samp_factor = 1;
      state_->codec.comp_info[0].v_samp_factor = 1;
    }
    state_->start(quality, traits);
  });
}

bool JPEGWriter::writeRow(const std::uint8_t* row) {
  return state_->trap.run([&] {
    JSAMPROW rows[] = {const_cast<std::uint8_t*>(row)};
    jpeg_write_scanlines(&state_->codec, rows, 1);
  });
}

bool JPEGWriter::startPlanes(std::uint32_t width, std::uint32_t height, const Sampling& sampling, int quality,
                             const Traits& traits) {
  return state_->trap.run([&] {
    state_->create(width, height, 3, JCS_YCbCr);
    for (std::size_t plane = 0; plane < sampling.size(); ++plane) {
      state_->codec.comp_info[plane].h_samp_factor = sampling[plane][0];
      state_->codec.comp_info[plane].v_samp_factor = sampling[plane][1];
    }
    state_->codec.raw_data_in = TRUE;
    state_->start(quality, traits);
  });
}

bool JPEGWriter::writePlanes(std::uint8_t*** planes, unsigned lines) {
  return state_->trap.run([&] { jpeg_write_raw_data(&state_->codec, planes, lines); });
}

std::optional<Data> JPEGWriter::finish() {
  if (!state_->trap.run([&] { jpeg_finish_compress(&state_->codec); })) return std::nullopt;
  return state_->output.take();
}

}  // namespace lumo::image
