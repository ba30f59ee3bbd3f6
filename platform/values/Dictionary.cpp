#include "LumoApi/Dictionary.h"

#include <cstring>
#include <random>

namespace lumo {

namespace {

struct Seeds {
  std::uint64_t a;
  std::uint64_t b;
};

Seeds drawSeeds() noexcept {
  try {
    std::random_device device;
    const auto draw = [&device] { return (std::uint64_t{device()} << 32) | device(); };
    return {draw(), draw()};
  } catch (...) {  // no source of randomness: an address is better than nothing
    static const int anchor = 0;
    const auto address = reinterpret_cast<std::uintptr_t>(&anchor);
    return {address * 0x9E3779B97F4A7C15u, address * 0xC2B2AE3D27D4EB4Fu};
  }
}

/// Both halves of the 128-bit product, folded: every bit of the result depends on every bit of both factors.
std::uint64_t fold(std::uint64_t x, std::uint64_t y) noexcept {
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(x) * y;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

}  // namespace

std::uint64_t seededHash(std::string_view key) noexcept {
  static const Seeds seeds = drawSeeds();
  std::uint64_t hash = seeds.a ^ key.size();
  while (!key.empty()) {
    std::uint64_t word = 0;
    const std::size_t taken = key.size() < sizeof word ? key.size() : sizeof word;
    std::memcpy(&word, key.data(), taken);
    hash = fold(hash ^ word, seeds.b | 1) + seeds.a;
    key.remove_prefix(taken);
  }
  return fold(hash, 0x9E3779B97F4A7C15u ^ seeds.b);
}

}  // namespace lumo
