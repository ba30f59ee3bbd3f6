#include "platform/pictures/HEVC.h"

#include <algorithm>
#include <vector>

namespace lumo::image {

namespace {

/// Reads a unit's bits; past the end it gives zeros and remembers.
class BitReader {
 public:
  /// Leaves out each 3 that keeps two zero bytes and what follows them from looking like a unit's start.
  explicit BitReader(Bytes unit) {
    constexpr std::size_t kEnough = 256;  // the size of a picture comes long before
    int zeros = 0;
    for (const std::uint8_t byte : unit.first(std::min(kEnough, unit.size()))) {
      const bool isPadding = zeros >= 2 && byte == 3;
      if (!isPadding) bytes_.push_back(byte);
      zeros = byte == 0 ? zeros + 1 : 0;
    }
  }

  std::uint64_t bits(std::size_t count) {
    std::uint64_t value = 0;
    for (; count > 0; --count, ++place_) {
      const bool isPast = place_ / 8 >= bytes_.size();
      value = value << 1 | (isPast ? 0u : bytes_[place_ / 8] >> (7 - place_ % 8) & 1u);
    }
    return value;
  }

  /// A number of as many bits as zeros stand before its first one, less one.
  std::uint64_t expGolomb() {
    constexpr std::size_t kMostZeros = 31;
    std::size_t zeros = 0;
    while (zeros < kMostZeros && bits(1) == 0) ++zeros;
    return (std::uint64_t{1} << zeros) - 1 + bits(zeros);
  }

  void skip(std::size_t count) { place_ += count; }
  bool isShort() const { return place_ > bytes_.size() * 8; }

 private:
  std::vector<std::uint8_t> bytes_;
  std::size_t place_ = 0;
};

/// What profile and level the picture, and each of its sublayers, keeps to.
void skipProfiles(BitReader& bits, std::size_t sublayers) {
  constexpr std::size_t kProfile = 88, kLevel = 8, kMaxSublayers = 8;
  bits.skip(kProfile + kLevel);
  if (sublayers == 0) return;
  std::size_t size = 0;
  for (std::size_t layer = 0; layer < kMaxSublayers; ++layer) {
    if (bits.bits(1) == 1 && layer < sublayers) size += kProfile;
    if (bits.bits(1) == 1 && layer < sublayers) size += kLevel;
  }
  bits.skip(size);
}

}  // namespace

bool HEVCPicture::addConfiguration(Bytes content) {
  constexpr std::size_t kProfileAndFormats = 22;
  ByteReader reader(content);
  reader.take(kProfileAndFormats);
  for (std::uint64_t arrays = reader.number(1); arrays > 0; --arrays) {
    reader.take(1);  // the type, which each unit also states
    for (std::uint64_t units = reader.number(2); units > 0; --units) {
      const std::uint64_t size = reader.number(2);
      if (!addUnit(reader.take(size))) return false;
    }
  }
  return !reader.isShort();
}

bool HEVCPicture::addUnits(Bytes units) {
  for (ByteReader reader(units); !reader.rest().empty();) {
    const std::uint64_t size = reader.number(4);
    if (!addUnit(reader.take(size))) return false;
  }
  return true;
}

bool HEVCPicture::addUnit(Bytes unit) {
  constexpr unsigned kSliceTypes = 32, kSequenceParameterSet = 33;
  constexpr std::size_t kHeader = 2;
  if (unit.size() < kHeader) return false;
  const unsigned type = unit[0] >> 1 & 63;
  if (type < kSliceTypes) ++slices;
  if (type != kSequenceParameterSet) return true;

  BitReader bits(unit.subspan(kHeader));
  bits.skip(4);  // the set that it belongs to
  const std::size_t sublayers = static_cast<std::size_t>(bits.bits(3));
  bits.skip(1);
  skipProfiles(bits, sublayers);
  bits.expGolomb();  // its own number
  constexpr std::uint64_t kSamplesOf2Pixels[] = {2, 3, 4, 6}, kFullChroma = 3;
  const std::uint64_t chroma = bits.expGolomb();
  if (chroma > kFullChroma) return false;
  if (chroma == kFullChroma) bits.skip(1);
  samplesOf2Pixels = std::max(samplesOf2Pixels, kSamplesOf2Pixels[chroma]);
  width = std::max(width, bits.expGolomb());
  height = std::max(height, bits.expGolomb());
  return !bits.isShort();
}

}  // namespace lumo::image
