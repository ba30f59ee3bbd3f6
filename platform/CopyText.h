#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace lumo {

/// Copies the text to `out`, which must not overlap it; gives the end of the copy.
///
/// The keys and fixed words of a URL have a handful of characters: two overlapping moves copy those in less
/// than a call to memcpy takes.
inline char* copyText(std::string_view text, char* out) noexcept {
  const std::size_t size = text.size();
  const char* from = text.data();
  if (size > 16) {
    std::memcpy(out, from, size);
  } else if (size >= 8) {
    char head[8], tail[8];
    std::memcpy(head, from, 8);
    std::memcpy(tail, from + size - 8, 8);
    std::memcpy(out, head, 8);
    std::memcpy(out + size - 8, tail, 8);
  } else if (size >= 4) {
    char head[4], tail[4];
    std::memcpy(head, from, 4);
    std::memcpy(tail, from + size - 4, 4);
    std::memcpy(out, head, 4);
    std::memcpy(out + size - 4, tail, 4);
  } else {
    for (std::size_t i = 0; i < size; ++i) out[i] = from[i];
  }
  return out + size;
}

}  // namespace lumo
