// The kernels of every vector unit of this machine, held against the plain ones. The first byte says how many
// places of a character there is room for; the rest is the text.

#include "fuzz/Door.h"
#include "fuzz/Input.h"
#include "platform/kernels/Kernels.h"

#include <memory>
#include <string>
#include <vector>

namespace lumo::fuzz {

namespace {

using namespace kernels;

constexpr ASCIISet kSets[] = {
    ASCIISet("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=:@/?"),
    ASCIISet(std::string_view("\0 /09AFaf~\x7F", 11))};

/// What is written into just as much memory as it needs.
template <class Write>
std::string written(std::size_t size, const Write& write) {
  const auto memory = std::make_unique<char[]>(size);
  require(write(memory.get()) == memory.get() + size, "the end is where it was to be");
  return {memory.get(), size};
}

std::string encoded(const Kernels& kernels, std::string_view text) {
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size() / 3 * 3);
  return written(bytes.size() / 3 * 4, [&](char* out) { return kernels.encodeBase64(bytes, out); });
}

/// Empty for what is no base64.
std::string decoded(const Kernels& kernels, std::string_view text) {
  const std::size_t size = text.size() / 4 * 3;
  bool isBase64 = false;
  const std::string bytes = written(size, [&](char* out) {
    isBase64 = kernels.decodeBase64(text.substr(0, size / 3 * 4), reinterpret_cast<std::uint8_t*>(out));
    return out + size;
  });
  return isBase64 ? bytes : std::string();
}

std::string escaped(const Kernels& kernels, std::string_view text, const ASCIISet& kept) {
  const std::size_t size = 3 * text.size() - 2 * kPlain.count(text, kept);
  return written(size, [&](char* out) { return kernels.escape(text, kept, out); });
}

std::vector<std::size_t> places(const Kernels& kernels, std::string_view text, std::size_t room) {
  std::vector<std::size_t> found(room);
  found.resize(kernels.places('&', text, found));
  return found;
}

void check(const Kernels& kernels, std::string_view text, std::size_t room) {
  require(encoded(kernels, text) == encoded(kPlain, text), "base64 is the same");
  require(decoded(kernels, text) == decoded(kPlain, text), "and is read the same");
  const std::string base64 = encoded(kPlain, text);
  require(decoded(kernels, base64) == decoded(kPlain, base64), "where it is base64");
  require(kernels.utf16Length(text) == kPlain.utf16Length(text), "the length is the same");
  require(places(kernels, text, room) == places(kPlain, text, room),
          "a character is found in the same places");
  for (const ASCIISet& set : kSets) {
    require(kernels.escapedRun(text, set) == kPlain.escapedRun(text, set), "a run ends in the same place");
    require(kernels.count(text, set) == kPlain.count(text, set), "the count is the same");
    require(escaped(kernels, text, set) == escaped(kPlain, text, set), "escapes are the same");
  }
}

}  // namespace

void door(std::string_view input) {
  Input bytes(input);
  const std::size_t room = bytes.below(80);
  const std::string_view text = bytes.rest();
  for (const Kernels* kernels : available()) {
    check(*kernels, text, room);
    for (std::size_t size = 0; size < text.size() && size < 4; ++size)
      check(*kernels, text.substr(size), room);
  }
}

}  // namespace lumo::fuzz
