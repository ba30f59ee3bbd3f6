#include "platform/kernels/Kernels.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <algorithm>
#include <bit>
#include <cstring>

// kindsHere() in Kernels.cpp asks the processor for these.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2,bmi,bmi2,popcnt"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2,bmi,bmi2,popcnt")
#endif

#include "platform/kernels/Vector.h"

namespace lumo::kernels {

namespace {

// A third of the 48 characters that 16 bytes become when each is escaped.
struct Third {
  Table percents;  // "%" where one stands, 0 elsewhere
  Table digits;    // which of the 16 digits of eight bytes stands there; the topmost bit gives 0
};

// The third whose digits are taken from those of eight bytes, the first of which is given.
constexpr Third third(std::size_t which, std::size_t firstByte) noexcept {
  Third made{};
  for (std::size_t i = 0; i < 16; ++i) {
    const std::size_t byte = (16 * which + i) / 3, place = (16 * which + i) % 3;
    made.percents[i] = place == 0 ? '%' : 0;
    made.digits[i] = static_cast<std::uint8_t>(place == 0 ? 0x80 : 2 * (byte - firstByte) + place - 1);
  }
  return made;
}

constexpr Third kFirstThird = third(0, 0), kMiddleThird = third(1, 4), kLastThird = third(2, 8);

__m128i load16(const void* at) noexcept { return _mm_loadu_si128(static_cast<const __m128i*>(at)); }

struct AVX2 {
  using Bytes = __m256i;
  using Bits = std::uint32_t;
  static constexpr std::size_t kSize = 32;
  static constexpr std::size_t kLeast = kSize;
  static constexpr int kBits = 1;

  static Bytes load(const void* at) noexcept { return _mm256_loadu_si256(static_cast<const __m256i*>(at)); }

  static Bytes loadPart(const void* at, std::size_t size) noexcept {
    char bytes[kSize] = {};
    std::memcpy(bytes, at, size);
    return load(bytes);
  }

  static void store(Bytes bytes, void* at) noexcept { _mm256_storeu_si256(static_cast<__m256i*>(at), bytes); }

  static Bytes fill(std::uint8_t byte) noexcept { return _mm256_set1_epi8(static_cast<char>(byte)); }
  static Bytes table(const Table& table) noexcept {
    return _mm256_broadcastsi128_si256(load16(table.data()));
  }
  static Bytes lookUp(Bytes table, Bytes index) noexcept { return _mm256_shuffle_epi8(table, index); }
  // An index with its topmost bit set gives 0, and its next three bits do not matter.
  static Bytes row(Bytes rows, Bytes bytes) noexcept { return lookUp(rows, bytes); }
  static Bytes low(Bytes bytes) noexcept { return bytes & fill(15); }
  static Bytes high(Bytes bytes) noexcept { return _mm256_srli_epi16(bytes, 4) & fill(15); }
  static Bytes minus(Bytes a, Bytes b) noexcept { return _mm256_subs_epu8(a, b); }

  static Bits topBits(Bytes bytes) noexcept { return static_cast<Bits>(_mm256_movemask_epi8(bytes)); }
  static Bits meet(Bytes a, Bytes b) noexcept { return ~topBits(_mm256_cmpeq_epi8(a & b, fill(0))); }
  static Bits equal(Bytes bytes, std::uint8_t byte) noexcept {
    return topBits(_mm256_cmpeq_epi8(bytes, fill(byte)));
  }
  static Bits beyondASCII(Bytes bytes) noexcept { return topBits(bytes); }
  static Bits continuations(Bytes bytes) noexcept { return topBits(_mm256_cmpgt_epi8(fill(0xC0), bytes)); }
  static Bits atLeast(Bytes bytes, std::uint8_t least) noexcept {
    return topBits(_mm256_cmpeq_epi8(_mm256_max_epu8(bytes, fill(least)), bytes));
  }

  static void escapeAll(Bytes bytes, char* out) noexcept {
    const Bytes digits = table(kUpperDigits);
    const Bytes highs = lookUp(digits, high(bytes)), lows = lookUp(digits, low(bytes));
    // The digits of the first eight bytes of each half, of the last eight, and of those in between.
    const Bytes first = _mm256_unpacklo_epi8(highs, lows), last = _mm256_unpackhi_epi8(highs, lows);
    const Bytes middle = _mm256_alignr_epi8(last, first, 8);
    const Bytes a = textOf(kFirstThird, first), b = textOf(kMiddleThird, middle),
                c = textOf(kLastThird, last);
    store(_mm256_permute2x128_si256(a, b, 0x20), out);
    store(_mm256_blend_epi32(c, a, 0xF0), out + 32);
    store(_mm256_permute2x128_si256(b, c, 0x31), out + 64);
  }

  // That third of the text of each half.
  static Bytes textOf(const Third& third, Bytes digits) noexcept {
    return table(third.percents) | lookUp(digits, table(third.digits));
  }

  using Edge = BufferedEdge<AVX2>;
};

// What to add to a base64 digit's value for its character. Entry 0 is for values that are no less than 26 and
// no more than 51, entry 13 for those less than 26; above 51 a value's entry is the value less 51.
constexpr Table kToCharacter = []() {
  Table table{};
  table[0] = 'a' - 26;
  for (std::size_t i = 1; i <= 10; ++i) table[i] = static_cast<std::uint8_t>('0' - 52);
  table[11] = static_cast<std::uint8_t>('+' - 62);
  table[12] = static_cast<std::uint8_t>('/' - 63);
  table[13] = 'A';
  return table;
}();

// Puts the three bytes a b c of each group into the four bytes b a c b: then each digit's bits lie together
// in one of the two 16-bit numbers.
constexpr Table kGroups = {1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10};

__m256i digitsOf(__m256i groups) noexcept {
  // A product's upper half is a shift to the right, and its lower half one to the left, by a distance of its
  // own for each 16-bit number.
  const __m256i first =
      _mm256_mulhi_epu16(groups & _mm256_set1_epi32(0x0FC0FC00), _mm256_set1_epi32(1 << 26 | 1 << 6));
  const __m256i second =
      _mm256_mullo_epi16(groups & _mm256_set1_epi32(0x003F03F0), _mm256_set1_epi32(1 << 24 | 1 << 4));
  return first | second;
}

// Twelve bytes, and no more, of the sixteen that are read or written.
__m128i twelve() noexcept { return _mm_setr_epi32(-1, -1, -1, 0); }

// The text of twelve bytes at the beginning of each half.
__m256i textOf(__m256i halves) noexcept {
  const __m256i digits = digitsOf(_mm256_shuffle_epi8(halves, AVX2::table(kGroups)));
  const __m256i isUpper = _mm256_cmpgt_epi8(AVX2::fill(26), digits);
  const __m256i entry = AVX2::minus(digits, AVX2::fill(51)) | (isUpper & AVX2::fill(13));
  return _mm256_add_epi8(digits, AVX2::lookUp(AVX2::table(kToCharacter), entry));
}

char* encodeBase64(std::span<const std::uint8_t> bytes, char* out) noexcept {
  constexpr std::ptrdiff_t kHalf = 12, kRead = 28;  // the second load reads four bytes too many
  const std::uint8_t *from = bytes.data(), *end = from + bytes.size();
  for (; end - from >= kRead; from += 2 * kHalf, out += AVX2::kSize) {
    const __m256i halves =
        _mm256_inserti128_si256(_mm256_castsi128_si256(load16(from)), load16(from + kHalf), 1);
    AVX2::store(textOf(halves), out);
  }
  for (; end - from >= kHalf; from += kHalf, out += sizeof(__m128i)) {
    const __m128i half = _mm_maskload_epi32(reinterpret_cast<const int*>(from), twelve());
    const __m256i text = textOf(_mm256_castsi128_si256(half));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(text));
  }
  return from == end ? out : kPlain.encodeBase64({from, end}, out);
}

// What to add to a base64 character for its value, by its upper nibble; "/" has entry 1 to itself.
constexpr Table kToDigit = {0,
                            static_cast<std::uint8_t>(63 - '/'),
                            62 - '+',
                            52 - '0',
                            static_cast<std::uint8_t>(-'A'),
                            static_cast<std::uint8_t>(-'A'),
                            static_cast<std::uint8_t>(26 - 'a'),
                            static_cast<std::uint8_t>(26 - 'a')};

constexpr ASCIISet kBase64(kBase64Alphabet);

// The 24 bytes that 32 digits stand for, and 8 bytes of 0.
__m256i bytesOf(__m256i digits) noexcept {
  const __m256i pairs = _mm256_maddubs_epi16(digits, _mm256_set1_epi16(1 << 8 | 1 << 6));
  const __m256i groups = _mm256_madd_epi16(pairs, _mm256_set1_epi32(1 << 16 | 1 << 12));
  constexpr Table kDense = {2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, 0x80, 0x80, 0x80, 0x80};
  const __m256i halves = _mm256_shuffle_epi8(groups, AVX2::table(kDense));
  return _mm256_permutevar8x32_epi32(halves, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
}

// The values of 32 characters; `bad` becomes other than 0 where one is no digit.
__m256i valuesOf(__m256i characters, __m256i& bad) noexcept {
  const __m256i high = AVX2::high(characters);
  const __m256i found =
      AVX2::row(AVX2::table(kBase64.rows), characters) & AVX2::lookUp(AVX2::table(kPowersOfTwo), high);
  bad = bad | _mm256_cmpeq_epi8(found, AVX2::fill(0));
  const __m256i isSlash = _mm256_cmpeq_epi8(characters, AVX2::fill('/'));  // -1 there
  const __m256i toAdd = AVX2::lookUp(AVX2::table(kToDigit), _mm256_add_epi8(high, isSlash));
  return _mm256_add_epi8(characters, toAdd);
}

bool decodeBase64(std::string_view text, std::uint8_t* out) noexcept {
  constexpr std::size_t kHalf = AVX2::kSize / 2, kHalfBytes = 12;
  constexpr std::size_t kNeeded = AVX2::kSize + 12;  // the store writes eight bytes too many
  __m256i bad = AVX2::fill(0);
  std::size_t at = 0;
  for (; text.size() - at >= kNeeded; at += AVX2::kSize, out += 2 * kHalfBytes) {
    AVX2::store(bytesOf(valuesOf(AVX2::load(text.data() + at), bad)), out);
  }
  for (; text.size() - at >= kHalf; at += kHalf, out += kHalfBytes) {
    const __m256i characters = _mm256_inserti128_si256(AVX2::fill('A'), load16(text.data() + at), 0);
    const __m256i bytes = bytesOf(valuesOf(characters, bad));
    _mm_maskstore_epi32(reinterpret_cast<int*>(out), twelve(), _mm256_castsi256_si128(bytes));
  }
  return AVX2::topBits(bad) == 0 && kPlain.decodeBase64(text.substr(at), out);
}

}  // namespace

constinit const Kernels kAVX2 = {"AVX2",           encodeBase64, decodeBase64, utf16Length<AVX2>,
                                 escapedRun<AVX2>, count<AVX2>,  escape<AVX2>, places<AVX2>};

}  // namespace lumo::kernels

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#endif
