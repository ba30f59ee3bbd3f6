#include "platform/kernels/Kernels.h"

#if defined(__x86_64__)

// g++ 12 takes the lanes that its own intrinsics leave open for variables that were never set.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wuninitialized"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <immintrin.h>

#include <algorithm>
#include <bit>

// kindsHere() in Kernels.cpp asks the processor for these.
#if defined(__clang__)
#pragma clang attribute push(                                                                    \
    __attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi,avx512vbmi2,bmi,bmi2,popcnt"))), \
    apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx512f,avx512bw,avx512vl,avx512vbmi,avx512vbmi2,bmi,bmi2,popcnt")
#endif

#include "platform/kernels/Vector.h"

namespace lumo::kernels {

namespace {

using Bytes64 = std::array<std::uint8_t, 64>;

// A place that may lie outside of everything, where no pointer may be moved to; to be fetched early, or to be
// read with a mask that leaves out what lies outside.
const void* placeAt(const void* from, std::ptrdiff_t distance) noexcept {
  const auto place = reinterpret_cast<std::uintptr_t>(from) + static_cast<std::uintptr_t>(distance);
  return reinterpret_cast<const void*>(place);  // NOLINT(performance-no-int-to-ptr)
}

struct AVX512 {
  using Bytes = __m512i;
  using Bits = std::uint64_t;
  static constexpr std::size_t kSize = 64;
  static constexpr std::size_t kLeast = 1;
  static constexpr int kBits = 1;

  // The lowest bits, up to 64 of them.
  static Bits first(std::size_t size) noexcept {
    return _bzhi_u64(~Bits{0}, static_cast<unsigned>(std::min(size, kSize)));
  }

  static Bytes load(const void* at) noexcept { return _mm512_loadu_si512(at); }
  static Bytes loadPart(const void* at, std::size_t size) noexcept {
    return _mm512_maskz_loadu_epi8(first(size), at);
  }

  static void store(Bytes bytes, void* at) noexcept { _mm512_storeu_si512(at, bytes); }

  static Bytes fill(std::uint8_t byte) noexcept { return _mm512_set1_epi8(static_cast<char>(byte)); }
  static Bytes table(const Table& table) noexcept {
    return _mm512_broadcast_i32x4(_mm_loadu_si128(reinterpret_cast<const __m128i*>(table.data())));
  }
  static Bytes lookUp(Bytes table, Bytes index) noexcept { return _mm512_shuffle_epi8(table, index); }
  // An index with its topmost bit set gives 0, and its next three bits do not matter.
  static Bytes row(Bytes rows, Bytes bytes) noexcept { return lookUp(rows, bytes); }
  static Bytes low(Bytes bytes) noexcept { return bytes & fill(15); }
  static Bytes high(Bytes bytes) noexcept { return _mm512_srli_epi16(bytes, 4) & fill(15); }
  static Bytes minus(Bytes a, Bytes b) noexcept { return _mm512_subs_epu8(a, b); }

  static Bits meet(Bytes a, Bytes b) noexcept { return _mm512_test_epi8_mask(a, b); }
  static Bits equal(Bytes bytes, std::uint8_t byte) noexcept {
    return _mm512_cmpeq_epi8_mask(bytes, fill(byte));
  }
  static Bits beyondASCII(Bytes bytes) noexcept { return _mm512_movepi8_mask(bytes); }
  static Bits continuations(Bytes bytes) noexcept { return _mm512_cmplt_epi8_mask(bytes, fill(0xC0)); }
  static Bits atLeast(Bytes bytes, std::uint8_t least) noexcept {
    return _mm512_cmpge_epu8_mask(bytes, fill(least));
  }

  class Edge {
   public:
    Edge(std::string_view text, std::size_t at) noexcept
        : start_(text.data() + at), before_(std::min<std::size_t>(at, 3)), after_(text.size() - at) {}

    // What is not in the mask is not read, wherever it lies.
    Bytes load(std::size_t back) const noexcept {
      const Bits outside = first(back - std::min(back, before_));
      return _mm512_maskz_loadu_epi8(first(back + after_) & ~outside,
                                     placeAt(start_, -static_cast<std::ptrdiff_t>(back)));
    }

   private:
    const char* start_;
    std::size_t before_, after_;
  };
};

// 48 bytes a b c d e f … become 64 bytes b a c b e d f e …: then each digit's bits lie together.
constexpr auto kGroups = []() {
  Bytes64 indexes{};
  for (std::size_t i = 0; i < 64; i += 4) {
    const auto group = static_cast<std::uint8_t>(i / 4 * 3);
    indexes[i] = indexes[i + 3] = static_cast<std::uint8_t>(group + 1);
    indexes[i + 1] = group;
    indexes[i + 2] = static_cast<std::uint8_t>(group + 2);
  }
  return indexes;
}();

__m512i textOf(__m512i bytes) noexcept {
  // Where the bits of each digit begin in the two groups of a 64-bit number.
  const __m512i starts = _mm512_set1_epi64(0x3036242A1016040A);
  const __m512i groups = _mm512_permutexvar_epi8(AVX512::load(kGroups.data()), bytes);
  const __m512i digits = _mm512_multishift_epi64_epi8(starts, groups);
  // The lookup takes no notice of an index's bits above the sixth.
  return _mm512_permutexvar_epi8(digits, AVX512::load(kBase64Alphabet.data()));
}

// Both the line to be read and the line to be written soon are fetched early: else stores wait for their
// lines, and a load that spans two lines waits for both.
void fetchAhead(const void* in, const void* out) noexcept {
  constexpr std::ptrdiff_t kAhead = 512;
  _mm_prefetch(static_cast<const char*>(placeAt(in, kAhead)), _MM_HINT_T0);
  _mm_prefetch(static_cast<const char*>(placeAt(out, kAhead)), _MM_HINT_T0);
}

// Up to 48 bytes.
char* encodePart(std::span<const std::uint8_t> bytes, char* out) noexcept {
  const std::size_t size = bytes.size() / 3 * 4;
  _mm512_mask_storeu_epi8(out, AVX512::first(size), textOf(AVX512::loadPart(bytes.data(), bytes.size())));
  return out + size;
}

// How many bytes a long text takes to get to the beginning of a line; from there each store fills one.
std::size_t bytesToLine(const char* out) noexcept {
  return (~reinterpret_cast<std::uintptr_t>(out) + 1) % 64 / 4 * 3;
}

char* encodeBase64(std::span<const std::uint8_t> bytes, char* out) noexcept {
  std::size_t at = bytes.size() < 1024 ? 0 : bytesToLine(out);
  if (at > 0) out = encodePart(bytes.first(at), out);
  for (; bytes.size() - at >= 64; at += 48, out += 64) {
    fetchAhead(bytes.data() + at, out);
    AVX512::store(textOf(AVX512::load(bytes.data() + at)), out);
  }
  for (; at + 48 < bytes.size(); at += 48) out = encodePart(bytes.subspan(at, 48), out);
  return encodePart(bytes.subspan(at), out);
}

constexpr auto kDigits = []() {
  std::array<std::uint8_t, 128> digits{};
  digits.fill(0x80);
  for (std::size_t i = 0; i < kBase64Alphabet.size(); ++i) {
    digits[static_cast<std::uint8_t>(kBase64Alphabet[i])] = static_cast<std::uint8_t>(i);
  }
  return digits;
}();

// The three bytes of each 32-bit number, the upper first.
constexpr auto kDense = []() {
  Bytes64 indexes{};
  for (std::size_t i = 0; i < 48; ++i) indexes[i] = static_cast<std::uint8_t>(i / 3 * 4 + 2 - i % 3);
  return indexes;
}();

// Decodes 64 characters into 48 bytes, with 16 more of no matter. Whatever sets the topmost bit in `seen` is
// no digit.
__m512i bytesOf(__m512i characters, __m512i& seen) noexcept {
  const __m512i lower = AVX512::load(kDigits.data()), upper = AVX512::load(kDigits.data() + 64);
  const __m512i digits = _mm512_permutex2var_epi8(lower, characters, upper);
  seen = _mm512_ternarylogic_epi64(seen, characters, digits, 0xFE);  // all three or-ed
  const __m512i pairs = _mm512_maddubs_epi16(digits, _mm512_set1_epi16(1 << 8 | 1 << 6));
  const __m512i groups = _mm512_madd_epi16(pairs, _mm512_set1_epi32(1 << 16 | 1 << 12));
  return _mm512_permutexvar_epi8(AVX512::load(kDense.data()), groups);
}

bool decodeBase64(std::string_view text, std::uint8_t* out) noexcept {
  __m512i seen = AVX512::fill(0);
  std::size_t at = 0;
  for (; text.size() - at >= 128; at += 64, out += 48) {  // so much that a whole vector can be stored
    fetchAhead(text.data() + at, out);
    AVX512::store(bytesOf(AVX512::load(text.data() + at), seen), out);
  }
  for (; at < text.size(); at += 64, out += 48) {
    const std::size_t size = std::min<std::size_t>(text.size() - at, 64);
    const __m512i characters =
        _mm512_mask_loadu_epi8(AVX512::fill('A'), AVX512::first(size), text.data() + at);
    _mm512_mask_storeu_epi8(out, AVX512::first(size / 4 * 3), bytesOf(characters, seen));
  }
  return _mm512_movepi8_mask(seen) == 0;
}

// A third of the 192 bytes that 64 bytes become when each becomes three: "%" or the byte itself, then its
// upper and its lower digit.
struct Third {
  Bytes64 from;  // for each byte here, which of the 64 it is of, or 64 more: lower digits
  std::array<std::uint64_t, 3> places;  // of the first, second and third bytes of the three
  std::array<int, 3> starts;            // the first of the 64 bytes whose first, second or third byte is here
};

constexpr Third third(std::size_t which) noexcept {
  Third made{};
  for (std::size_t i = 64; i-- > 0;) {
    const std::size_t from = (64 * which + i) / 3, place = (64 * which + i) % 3;
    made.from[i] = static_cast<std::uint8_t>(place == 2 ? from + 64 : from);
    made.places[place] |= std::uint64_t{1} << i;
    made.starts[place] = static_cast<int>(from);
  }
  return made;
}

constexpr Third kThirds[] = {third(0), third(1), third(2)};

// Which bytes of the third are there, given the bytes that are there at all and those that are escaped.
std::uint64_t wanted(const Third& part, std::uint64_t present, std::uint64_t escaped) noexcept {
  return _pdep_u64(present >> part.starts[0], part.places[0]) |
         _pdep_u64(escaped >> part.starts[1], part.places[1]) |
         _pdep_u64(escaped >> part.starts[2], part.places[2]);
}

// Each byte is spread over three, then the second and third bytes of those that are kept are squeezed out.
char* escape(std::string_view text, const ASCIISet& kept, char* out) noexcept {
  const __m512i rows = AVX512::table(kept.rows), digits = AVX512::table(kUpperDigits);
  for (std::size_t at = 0; at < text.size(); at += 64) {
    const std::uint64_t present = AVX512::first(text.size() - at);
    const __m512i bytes = _mm512_maskz_loadu_epi8(present, text.data() + at);
    const std::uint64_t escaped = present & ~inSet<AVX512>(bytes, rows);
    if (escaped == 0) {
      _mm512_mask_storeu_epi8(out, present, bytes);
      out += std::popcount(present);
      continue;
    }
    const __m512i firsts = _mm512_mask_mov_epi8(bytes, escaped, AVX512::fill('%'));
    const __m512i highs = AVX512::lookUp(digits, AVX512::high(bytes));
    const __m512i lows = AVX512::lookUp(digits, AVX512::low(bytes));
    for (const Third& part : kThirds) {
      const __m512i from = AVX512::load(part.from.data());
      const __m512i spread = _mm512_permutex2var_epi8(highs, from, lows);
      if (escaped == AVX512::first(64)) {
        AVX512::store(_mm512_mask_mov_epi8(spread, part.places[0], firsts), out);
        out += 64;
        continue;
      }
      const std::uint64_t here = wanted(part, present, escaped);
      const auto size = static_cast<std::size_t>(std::popcount(here));
      const __m512i all = _mm512_mask_permutexvar_epi8(spread, part.places[0], from, firsts);
      _mm512_mask_storeu_epi8(out, AVX512::first(size), _mm512_maskz_compress_epi8(here, all));
      out += size;
    }
  }
  return out;
}

}  // namespace

constinit const Kernels kAVX512 = {"AVX-512",          encodeBase64,  decodeBase64, utf16Length<AVX512>,
                                   escapedRun<AVX512>, count<AVX512>, escape,       places<AVX512>};

}  // namespace lumo::kernels

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#endif
