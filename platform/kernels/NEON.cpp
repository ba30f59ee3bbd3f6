#include "platform/kernels/Kernels.h"

#if defined(__aarch64__) && defined(__ARM_NEON)

#include "platform/kernels/Vector.h"

#include <arm_neon.h>

#include <cstring>

namespace lumo::kernels {

namespace {

const std::uint8_t* bytesAt(const void* at) noexcept { return static_cast<const std::uint8_t*>(at); }
std::uint8_t* bytesAt(void* at) noexcept { return static_cast<std::uint8_t*>(at); }

struct NEON {
  using Bytes = uint8x16_t;
  using Bits = std::uint64_t;
  static constexpr std::size_t kSize = 16;
  static constexpr std::size_t kLeast = kSize;
  static constexpr int kBits = 4;

  static Bytes load(const void* at) noexcept { return vld1q_u8(bytesAt(at)); }
  static Bytes loadPart(const void* at, std::size_t size) noexcept {
    char bytes[kSize] = {};
    std::memcpy(bytes, at, size);
    return load(bytes);
  }
  static void store(Bytes bytes, void* at) noexcept { vst1q_u8(bytesAt(at), bytes); }

  static Bytes fill(std::uint8_t byte) noexcept { return vdupq_n_u8(byte); }
  static Bytes table(const Table& table) noexcept { return load(table.data()); }
  static Bytes lookUp(Bytes table, Bytes index) noexcept { return vqtbl1q_u8(table, index); }
  static Bytes row(Bytes rows, Bytes bytes) noexcept { return lookUp(rows, low(bytes)); }
  static Bytes low(Bytes bytes) noexcept { return bytes & fill(15); }
  static Bytes high(Bytes bytes) noexcept { return vshrq_n_u8(bytes, 4); }
  static Bytes minus(Bytes a, Bytes b) noexcept { return vqsubq_u8(a, b); }

  // Of bytes that are all ones or all zeros, four bits each.
  static Bits bitsOf(Bytes bytes) noexcept {
    return vget_lane_u64(vreinterpret_u64_u8(vshrn_n_u16(vreinterpretq_u16_u8(bytes), 4)), 0);
  }
  static Bits meet(Bytes a, Bytes b) noexcept { return bitsOf(vtstq_u8(a, b)); }
  static Bits equal(Bytes bytes, std::uint8_t byte) noexcept { return bitsOf(vceqq_u8(bytes, fill(byte))); }
  static Bits beyondASCII(Bytes bytes) noexcept { return atLeast(bytes, 0x80); }
  static Bits continuations(Bytes bytes) noexcept {
    return bitsOf(vcltq_s8(vreinterpretq_s8_u8(bytes), vdupq_n_s8(-64)));
  }
  static Bits atLeast(Bytes bytes, std::uint8_t least) noexcept {
    return bitsOf(vcgeq_u8(bytes, fill(least)));
  }

  static void escapeAll(Bytes bytes, char* out) noexcept {
    const Bytes digits = table(kUpperDigits);
    vst3q_u8(bytesAt(out), {{fill('%'), lookUp(digits, high(bytes)), lookUp(digits, low(bytes))}});
  }

  using Edge = BufferedEdge<NEON>;
};

char* encodeBase64(std::span<const std::uint8_t> bytes, char* out) noexcept {
  const auto* letters = reinterpret_cast<const std::uint8_t*>(kBase64Alphabet.data());
  const uint8x16x4_t alphabet = vld1q_u8_x4(letters);
  const uint8x16_t six = vdupq_n_u8(63);
  std::size_t at = 0;
  for (; bytes.size() - at >= 48; at += 48, out += 64) {
    const uint8x16x3_t group = vld3q_u8(bytes.data() + at);
    const uint8x16_t a = vshrq_n_u8(group.val[0], 2);
    const uint8x16_t b = vsliq_n_u8(vshrq_n_u8(group.val[1], 4), group.val[0], 4) & six;
    const uint8x16_t c = vsliq_n_u8(vshrq_n_u8(group.val[2], 6), group.val[1], 2) & six;
    const uint8x16_t d = group.val[2] & six;
    vst4q_u8(bytesAt(out), {{vqtbl4q_u8(alphabet, a), vqtbl4q_u8(alphabet, b), vqtbl4q_u8(alphabet, c),
                             vqtbl4q_u8(alphabet, d)}});
  }
  return kPlain.encodeBase64(bytes.subspan(at), out);
}

// The value of each ASCII character as a base64 digit, 0xFF for the others.
constexpr auto kDigits = []() {
  std::array<std::uint8_t, 128> digits{};
  digits.fill(0xFF);
  for (std::size_t i = 0; i < kBase64Alphabet.size(); ++i) {
    digits[static_cast<std::uint8_t>(kBase64Alphabet[i])] = static_cast<std::uint8_t>(i);
  }
  return digits;
}();

// A lookup past its table gives 0, or leaves what is there: bytes beyond ASCII become 0 in both, so their own
// topmost bit marks them.
uint8x16_t digitsOf(uint8x16_t characters, const uint8x16x4_t& lower, const uint8x16x4_t& upper) noexcept {
  const uint8x16_t fromUpper = vqtbl4q_u8(upper, characters ^ vdupq_n_u8(64));
  return vqtbx4q_u8(fromUpper, lower, characters) | (characters & vdupq_n_u8(0x80));
}

bool decodeBase64(std::string_view text, std::uint8_t* out) noexcept {
  const uint8x16x4_t lower = vld1q_u8_x4(kDigits.data()), upper = vld1q_u8_x4(kDigits.data() + 64);
  uint8x16_t seen = vdupq_n_u8(0);
  std::size_t at = 0;
  for (; text.size() - at >= 64; at += 64, out += 48) {
    const uint8x16x4_t group = vld4q_u8(bytesAt(text.data() + at));
    const uint8x16_t a = digitsOf(group.val[0], lower, upper), b = digitsOf(group.val[1], lower, upper);
    const uint8x16_t c = digitsOf(group.val[2], lower, upper), d = digitsOf(group.val[3], lower, upper);
    seen = seen | a | b | c | d;
    vst3q_u8(out, {{vshlq_n_u8(a, 2) | vshrq_n_u8(b, 4), vshlq_n_u8(b, 4) | vshrq_n_u8(c, 2),
                    vshlq_n_u8(c, 6) | d}});
  }
  return vmaxvq_u8(seen) < kBase64Alphabet.size() && kPlain.decodeBase64(text.substr(at), out);
}

}  // namespace

constinit const Kernels kNEON = {"NEON",           encodeBase64, decodeBase64, utf16Length<NEON>,
                                 escapedRun<NEON>, count<NEON>,  escape<NEON>, places<NEON>};

}  // namespace lumo::kernels

#endif
