#pragma once

#include "LumoApi/Data.h"
#include "platform/pictures/ErrorTrap.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

struct jpeg_common_struct;
struct jpeg_error_mgr;

/// What the picture formats share; part of no public interface.
namespace lumo::image {

/// The longest side that a JPEG can have.
inline constexpr std::uint32_t kMaxSide = 65'500;
/// The most pixels of a picture that is read and written row by row.
inline constexpr std::uint64_t kMaxStreamedPixels = std::uint64_t{1} << 28;
/// The most pixels of a picture that is held whole.
inline constexpr std::uint64_t kMaxHeldPixels = 100'000'000;

constexpr bool isWithin(std::uint64_t width, std::uint64_t height, std::uint64_t maxPixels) {
  return width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide && width * height <= maxPixels;
}

// One function a format; the bytes begin with the format's signature. `quality` runs from 1 to 100.
std::optional<Data> reencodeJPEG(const Data& picture, int quality);
std::optional<Data> reencodePNG(const Data& picture, int quality);
std::optional<Data> reencodeWebP(const Data& picture, int quality);
std::optional<Data> reencodeHEIF(const Data& picture, int quality);

/// Whether a HEIF file is built as cameras build them. The format allows pictures put together from others
/// that are put together themselves, circles of them included, overlays of any number of pictures and any
/// number of turns, on which a decoder would come to no end.
bool isSimplyBuilt(const Data& picture);

/// The longest colour profile that is kept.
inline constexpr std::size_t kMaxProfileSize = 3 << 20;

/// What is kept of a picture beside its pixels.
struct Traits {
  int orientation = 1;  // 1 to 8, as EXIF numbers them; 1 is upright
  Data colorProfile;    // empty: sRGB is assumed
};

/// Throws std::bad_alloc unless this much memory is to be had at this moment. Asked before the pictures of
/// the libraries that take want of memory for damage, or do not survive it.
void requireMemory(std::uint64_t size);

/// The orientation in an EXIF block; 1 where there is none.
int orientationOf(std::span<const std::uint8_t> exif) noexcept;

/// The profile as it goes into a JPEG of so many colour channels; empty where it does not fit there.
Data fittingProfile(const Data& profile, int colorChannels) noexcept;

/// The orientation and the profile of a JPEG, from the segments before its pixels.
Traits traitsOfJPEG(const Data& picture, int colorChannels);

/// Pixels of 8-bit channels: grey, grey and alpha, RGB, or RGB and alpha.
constexpr bool hasAlpha(int channels) { return channels % 2 == 0; }
constexpr int colorChannelsOf(int channels) { return channels < 3 ? 1 : 3; }

/// Lays a row over white; what is left of it are its colour channels, packed at its start.
void layOverWhite(std::uint8_t* row, std::size_t width, int channels) noexcept;

/// A picture held whole.
struct Bitmap {
  std::uint8_t* pixels;
  std::size_t stride;
  std::uint32_t width;
  std::uint32_t height;
  int channels;
};

/// Encodes the picture, whose pixels are used up on the way.
std::optional<Data> encode(const Bitmap& bitmap, int quality, const Traits& traits);

/// Horizontal and vertical sampling factors of the planes Y, Cb and Cr.
using Sampling = std::array<std::array<int, 2>, 3>;

/// Writes one JPEG. Its functions are called in their order, until one of them returns false or null.
class JPEGWriter {
 public:
  JPEGWriter();
  ~JPEGWriter();
  JPEGWriter(const JPEGWriter&) = delete;
  JPEGWriter& operator=(const JPEGWriter&) = delete;

  /// Begins a picture of rows of 1 (grey) or 3 (RGB) channels; then writeRow() for each.
  bool startRows(std::uint32_t width, std::uint32_t height, int channels, int quality, const Traits& traits);
  bool writeRow(const std::uint8_t* row);

  /// Begins a picture of Y'CbCr planes at their own sampling; then writePlanes() for each row of blocks.
  bool startPlanes(std::uint32_t width, std::uint32_t height, const Sampling& sampling, int quality,
                   const Traits& traits);
  bool writePlanes(std::uint8_t*** planes, unsigned lines);

  std::optional<Data> finish();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// Leads the JPEG library's errors into the trap and silences its warnings.
void trapJPEGErrors(jpeg_common_struct* codec, jpeg_error_mgr* errors, ErrorTrap* trap) noexcept;

}  // namespace lumo::image
