#include "platform/pictures/Codec.h"

#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string_view>
#include <vector>

namespace lumo::image {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kMaxChunkSize = 8'000'000;
constexpr std::uint64_t kMaxDeflateRatio = 1032;
/// The most bytes that the pixels unpack to, as the file has them or as they are passed on, whichever is
/// more; half as many where they come in passes.
constexpr std::uint64_t kMaxUnpackedSize = 400'000'000;

/// What the chunks beside the pixels say.
struct Chunks {
  bool areSmall = true;
  /// May also come after the pixels, when the JPEG has long begun.
  std::span<const std::uint8_t> exif;
};

Chunks chunksOf(const Data& picture) {
  constexpr std::size_t kSignature = 8, kHeader = 8, kChecksum = 4;
  const std::uint8_t* bytes = picture.data();
  Chunks chunks;
  std::size_t place = kSignature;
  while (picture.size() - place >= kHeader + kChecksum) {
    const std::size_t size = png_get_uint_32(bytes + place);
    const std::string_view name = picture.view().substr(place + 4, 4);
    if (name != "IDAT"sv && size > kMaxChunkSize) chunks.areSmall = false;
    if (size > picture.size() - place - kHeader - kChecksum) break;
    if (name == "eXIf"sv && chunks.exif.empty()) chunks.exif = {bytes + place + kHeader, size};
    place += kHeader + size + kChecksum;
  }
  return chunks;
}

class Reader {
 public:
  explicit Reader(const Data& picture) : picture_(picture) {}
  ~Reader() { png_destroy_read_struct(&png_, &info_, nullptr); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  /// Reads up to the pixels.
  bool open() {
    return run([this] {
      png_ =
          png_create_read_struct_2(PNG_LIBPNG_VER_STRING, this, fail, ignoreWarning, this, allocate, release);
      if (!png_) trap_.fail(true);
      info_ = png_create_info_struct(png_);
      if (!info_) trap_.fail(true);
      setLimits();
      png_set_read_fn(png_, this, read);
      png_read_info(png_, info_);
    });
  }

  std::uint32_t width() const { return png_get_image_width(png_, info_); }
  std::uint32_t height() const { return png_get_image_height(png_, info_); }
  int channels() const { return png_get_channels(png_, info_); }
  std::size_t rowSize() const { return png_get_rowbytes(png_, info_); }
  std::uint64_t unpackedSize() const { return std::uint64_t{rowSize()} * height(); }
  bool isInterlaced() const { return png_get_interlace_type(png_, info_) != PNG_INTERLACE_NONE; }

  /// Moves the profile out of the reader.
  Data takeColorProfile() {
    png_charp name = nullptr;
    png_bytep bytes = nullptr;
    int compression = 0;
    png_uint_32 size = 0;
    Data profile;
    if (png_get_iCCP(png_, info_, &name, &compression, &bytes, &size) && size <= kMaxProfileSize) {
      profile = Data::copy({bytes, size});
    }
    png_free_data(png_, info_, PNG_FREE_ICCP, 0);
    return profile;
  }

  /// From here on rows have 8 bits a channel, without palette.
  bool start() {
    return run([this] {
      png_set_scale_16(png_);
      png_set_expand(png_);
      png_read_update_info(png_, info_);
    });
  }

  bool readRow(std::uint8_t* row) {
    return run([&] { png_read_row(png_, row, nullptr); });
  }

  bool readAll(std::uint8_t** rows) {
    return run([&] { png_read_image(png_, rows); });
  }

  bool readEnd() {
    return run([this] { png_read_end(png_, nullptr); });
  }

 private:
  /// The library goes on without memory where it can, and calls a picture damaged where it cannot: neither is
  /// to be taken for what the file says.
  template <class Calls>
  bool run(const Calls& calls) {
    const bool done = trap_.run(calls);
    if (outOfMemory_) throw std::bad_alloc();
    return done;
  }

  static png_voidp allocate(png_structp png, png_alloc_size_t size) {
    void* block = std::malloc(size);
    if (!block) static_cast<Reader*>(png_get_mem_ptr(png))->outOfMemory_ = true;
    return block;
  }
  static void release(png_structp, png_voidp block) { std::free(block); }
  static void fail(png_structp png, png_const_charp) {
    static_cast<Reader*>(png_get_error_ptr(png))->trap_.fail();
  }
  static void ignoreWarning(png_structp, png_const_charp) {}

  static void read(png_structp png, png_bytep bytes, std::size_t size) {
    auto* reader = static_cast<Reader*>(png_get_io_ptr(png));
    if (size > reader->picture_.size() - reader->place_) reader->trap_.fail();
    std::copy_n(reader->picture_.data() + reader->place_, size, bytes);
    reader->place_ += size;
  }

  /// Of the chunks beside the pixels only the profile is read, nothing that could be blown up.
  void setLimits() {
    png_set_user_limits(png_, kMaxSide, kMaxSide);
    png_set_chunk_malloc_max(png_, kMaxChunkSize);
    png_set_chunk_cache_max(png_, 16);
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_AS_DEFAULT, reinterpret_cast<png_const_bytep>("iCCP"),
                                1);
  }

  const Data& picture_;
  std::size_t place_ = 0;
  ErrorTrap trap_;
  bool outOfMemory_ = false;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

std::optional<Data> passRowsOn(Reader& reader, int quality, const Traits& traits) {
  const std::uint32_t width = reader.width(), height = reader.height();
  const int channels = reader.channels();
  JPEGWriter writer;
  if (!writer.startRows(width, height, colorChannelsOf(channels), quality, traits)) return std::nullopt;
  std::vector<std::uint8_t> row(reader.rowSize());
  for (std::uint32_t line = 0; line < height; ++line) {
    if (!reader.readRow(row.data())) return std::nullopt;
    layOverWhite(row.data(), width, channels);
    if (!writer.writeRow(row.data())) return std::nullopt;
  }
  if (!reader.readEnd()) return std::nullopt;
  return writer.finish();
}

/// The rows of an interlaced picture come in seven passes.
std::optional<Data> passWholeOn(Reader& reader, int quality, const Traits& traits) {
  const std::uint32_t height = reader.height();
  const std::size_t stride = reader.rowSize();
  std::vector<std::uint8_t> pixels(stride * height);
  std::vector<std::uint8_t*> rows(height);
  for (std::size_t line = 0; line < height; ++line) rows[line] = pixels.data() + line * stride;
  if (!reader.readAll(rows.data()) || !reader.readEnd()) return std::nullopt;
  return encode({pixels.data(), stride, reader.width(), height, reader.channels()}, quality, traits);
}

}  // namespace

std::optional<Data> reencodePNG(const Data& picture, int quality) {
  const Chunks chunks = chunksOf(picture);
  Reader reader(picture);
  if (!chunks.areSmall || !reader.open()) return std::nullopt;
  const bool isInterlaced = reader.isInterlaced();
  if (!isWithin(reader.width(), reader.height(), isInterlaced ? kMaxHeldPixels : kMaxStreamedPixels)) {
    return std::nullopt;
  }
  // More pixels than the bytes can unpack to: the end is missing, which need not be found out row by row.
  const std::uint64_t unpackedSize = reader.unpackedSize();
  if (unpackedSize / kMaxDeflateRatio > picture.size()) return std::nullopt;

  const Data profile = reader.takeColorProfile();
  if (!reader.start()) return std::nullopt;
  const std::uint64_t maxUnpackedSize = isInterlaced ? kMaxUnpackedSize / 2 : kMaxUnpackedSize;
  if (std::max(unpackedSize, reader.unpackedSize()) > maxUnpackedSize) return std::nullopt;
  const Traits traits{orientationOf(chunks.exif),
                      fittingProfile(profile, colorChannelsOf(reader.channels()))};
  return isInterlaced ? passWholeOn(reader, quality, traits) : passRowsOn(reader, quality, traits);
}

}  // namespace lumo::image
