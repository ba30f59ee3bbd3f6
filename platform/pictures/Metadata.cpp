#include "platform/pictures/Codec.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace lumo::image {

namespace {

using namespace std::string_view_literals;
using Bytes = std::span<const std::uint8_t>;

bool startsWith(Bytes bytes, std::string_view text) {
  return bytes.size() >= text.size() &&
         std::equal(text.begin(), text.end(), bytes.begin(),
                    [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
}

/// A number of 2 or 4 bytes, or 0 where the bytes end before it.
std::uint64_t numberAt(Bytes bytes, std::uint64_t offset, std::size_t size, bool bigEndian) {
  if (offset > bytes.size() || bytes.size() - offset < size) return 0;
  std::uint64_t number = 0;
  for (std::size_t place = 0; place < size; ++place) {
    number = number << 8 | bytes[static_cast<std::size_t>(offset) + (bigEndian ? place : size - 1 - place)];
  }
  return number;
}

/// The parts of a colour profile that one JPEG carries in several segments, in whatever order.
class ProfileParts {
 public:
  void add(Bytes segment) {  // what follows the segment's name: number of the part, count of parts, bytes
    if (segment.size() < 2) return;
    const std::size_t number = segment[0];
    const std::size_t count = segment[1];
    if (count_ == 0) count_ = count;
    consistent_ = consistent_ && count == count_ && number >= 1 && number <= count && !parts_[number].data();
    if (!consistent_) return;
    parts_[number] = segment.subspan(2);
    size_ += parts_[number].size();
    ++found_;
  }

  /// Empty where parts are missing or contradict each other.
  Data joined() const {
    if (!consistent_ || found_ != count_ || size_ > kMaxProfileSize) return {};
    std::vector<std::uint8_t> profile;
    profile.reserve(size_);
    for (const Bytes part : parts_) profile.insert(profile.end(), part.begin(), part.end());
    return Data(std::move(profile));
  }

 private:
  std::array<Bytes, 256> parts_;
  std::size_t count_ = 0;
  std::size_t found_ = 0;
  std::size_t size_ = 0;
  bool consistent_ = true;
};

}  // namespace

int orientationOf(Bytes exif) noexcept {
  if (startsWith(exif, "Exif\0\0"sv)) exif = exif.subspan(6);
  const bool bigEndian = startsWith(exif, "MM\0*"sv);
  if (!bigEndian && !startsWith(exif, "II*\0"sv)) return 1;

  constexpr std::uint64_t kOrientationTag = 0x0112;
  constexpr std::uint64_t kShort = 3;
  const std::uint64_t directory = numberAt(exif, 4, 4, bigEndian);
  const std::uint64_t count = numberAt(exif, directory, 2, bigEndian);
  for (std::uint64_t index = 0; index < count; ++index) {
    const std::uint64_t entry = directory + 2 + 12 * index;
    if (numberAt(exif, entry, 2, bigEndian) != kOrientationTag) continue;
    const std::uint64_t value = numberAt(exif, entry + 8, 2, bigEndian);
    const bool known = numberAt(exif, entry + 2, 2, bigEndian) == kShort && value >= 1 && value <= 8;
    return known ? static_cast<int>(value) : 1;
  }
  return 1;
}

Data fittingProfile(const Data& profile, int colorChannels) noexcept {
  constexpr std::size_t kHeaderSize = 128;
  const std::string_view bytes = profile.view();
  if (bytes.size() < kHeaderSize || bytes.size() > kMaxProfileSize) return {};
  const std::uint64_t size = numberAt({profile.data(), profile.size()}, 0, 4, true);
  if (size < kHeaderSize || size > bytes.size()) return {};
  if (bytes.substr(36, 4) != "acsp"sv) return {};
  if (bytes.substr(16, 4) != (colorChannels == 1 ? "GRAY"sv : "RGB "sv)) return {};
  return profile.slice(0, static_cast<std::size_t>(size));
}

Traits traitsOfJPEG(const Data& picture, int colorChannels) {
  constexpr std::uint8_t kStandaloneFirst = 0xD0, kStartOfImage = 0xD8, kEndOfImage = 0xD9,
                         kStartOfScan = 0xDA, kApp1 = 0xE1, kApp2 = 0xE2;
  const Bytes bytes(picture.data(), picture.size());
  Bytes exif;
  ProfileParts profile;
  std::size_t place = 2;
  while (place + 1 < bytes.size()) {
    const std::uint8_t marker = bytes[place + 1];
    if (bytes[place] != 0xFF || marker == 0xFF) {  // filling, or rubbish that decoders skip as well
      ++place;
      continue;
    }
    place += 2;
    if (marker == kStartOfScan || marker == kEndOfImage) break;
    if (marker <= 1 || (marker >= kStandaloneFirst && marker <= kStartOfImage)) continue;
    const auto size = static_cast<std::size_t>(numberAt(bytes, place, 2, true));
    if (size < 2 || size > bytes.size() - place) break;
    const Bytes segment = bytes.subspan(place + 2, size - 2);
    if (marker == kApp1 && exif.empty() && startsWith(segment, "Exif\0\0"sv)) exif = segment;
    if (marker == kApp2 && startsWith(segment, "ICC_PROFILE\0"sv)) profile.add(segment.subspan(12));
    place += size;
  }
  return {orientationOf(exif), fittingProfile(profile.joined(), colorChannels)};
}

}  // namespace lumo::image
