#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace lumo {

/// Copies a text that is at least as long as the part and no longer than two of them.
template <std::size_t kPart>
void copyEnds(const char* from, std::size_t size, char* out) noexcept {
  char head[kPart], tail[kPart];
  std::memcpy(head, from, kPart);
  std::memcpy(tail, from + size - kPart, kPart);
  std::memcpy(out, head, kPart);
  std::memcpy(out + size - kPart, tail, kPart);
}

/// Copies the text to `out`, which must not overlap it; gives the end of the copy.
///
/// The keys and fixed words of a URL have a handful of characters: two overlapping moves copy those in less
/// than a call to memcpy takes. Without state: any thread may call it.
inline char* copyText(std::string_view text, char* out) noexcept {
  const std::size_t size = text.size();
  const char* from = text.data();
  if (size > 16) {
    std::memcpy(out, from, size);
  } else if (size >= 8) {
    copyEnds<8>(from, size, out);
  } else if (size >= 4) {
    copyEnds<4>(from, size, out);
  } else if (size >= 2) {
    copyEnds<2>(from, size, out);
  } else if (size == 1) {
    *out = *from;
  }
  return out + size;
}

}  // namespace lumo
