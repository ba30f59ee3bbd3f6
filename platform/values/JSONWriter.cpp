#include "platform/kernels/Kernels.h"
#include "platform/values/JSON.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

namespace lumo {

namespace {

template <class Word>
Word littleEndian(Word word) {
  if constexpr (std::endian::native == std::endian::little) return word;
  return sizeof word == 8 ? static_cast<Word>(__builtin_bswap64(word))
                          : static_cast<Word>(__builtin_bswap32(static_cast<std::uint32_t>(word)));
}

/// The bytes of a word, the first one lowest.
template <class Word>
Word load(const char* bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return littleEndian(word);
}

/// One to seven bytes and, behind them, others that need no escape. Put together in a register: memory that
/// was just written in parts is slow to read as a word.
std::uint64_t loadShort(const char* bytes, std::size_t count) {
  const std::uint64_t filler = std::uint64_t{0x7F7F7F7F7F7F7F7F} << 8 * count;
  const auto byte = [bytes](std::size_t i) {
    return std::uint64_t{static_cast<std::uint8_t>(bytes[i])} << 8 * i;
  };
  if (count < 4) return filler | byte(0) | byte(count / 2) | byte(count - 1);
  const std::uint64_t end = load<std::uint32_t>(bytes + count - 4);
  return filler | load<std::uint32_t>(bytes) | end << 8 * (count - 4);
}

void store(std::uint64_t word, char* bytes) {
  word = littleEndian(word);
  std::memcpy(bytes, &word, sizeof word);
}

/// The characters that a text cannot hold as they are.
class Escapes {
 public:
  constexpr explicit Escapes(bool escapeSolidus) : solidi_(everyByte(escapeSolidus ? '/' : '\\')) {
    for (std::size_t control = 0; control < 0x20; ++control) letters_[control] = 'u';
    letters_['\b'] = 'b';
    letters_['\f'] = 'f';
    letters_['\n'] = 'n';
    letters_['\r'] = 'r';
    letters_['\t'] = 't';
    for (const char itself : {'"', '\\', escapeSolidus ? '/' : '\\'}) {
      letters_[static_cast<std::uint8_t>(itself)] = itself;
    }
  }

  /// What stands after the backslash for a byte that needs one: 'u' for \u00xx.
  char letter(std::uint8_t byte) const { return letters_[byte]; }

  /// Sets the upper bit of the first byte of a word that needs an escape, and of some others; 0 where none
  /// does.
  std::uint64_t find(std::uint64_t word) const {
    const std::uint64_t controls = word - everyByte(0x20);
    const std::uint64_t quotes = (word ^ everyByte('"')) - everyByte(1);
    const std::uint64_t backslashes = (word ^ everyByte('\\')) - everyByte(1);
    const std::uint64_t solidi = (word ^ solidi_) - everyByte(1);
    return (controls | quotes | backslashes | solidi) & ~word & kUpperBits;
  }

  static constexpr std::uint64_t kUpperBits = 0x8080808080808080;

 private:
  static constexpr std::uint64_t everyByte(std::uint64_t byte) { return byte * 0x0101010101010101; }

  std::array<char, 256> letters_{};
  std::uint64_t solidi_;  // backslashes where a solidus is no escape
};

constexpr Escapes kEscapes(false);
constexpr Escapes kEscapesWithSolidus(true);

class Writer {
 public:
  // The buffer is written before it is read.
  // cppcheck-suppress uninitMemberVar
  explicit Writer(JSONStyle style)
      : indent_(style.indent), escapes_(style.escapeSolidus ? kEscapesWithSolidus : kEscapes) {}

  std::string takeText() {
    flush();
    return std::move(text_);
  }

  /// False for what JSON cannot hold. `depth` is that of the containers around the value.
  bool write(const Value& value, int depth) {
    if (const std::string* text = value.asString()) return writeString(*text);
    if (const std::int64_t* number = value.asInteger()) return writeDigits(*number);
    if (const double* number = value.asDouble()) return writeDouble(*number);
    if (const bool* boolean = value.asBoolean()) return append(*boolean ? "true" : "false");
    if (const std::uint64_t* number = value.asUnsigned()) return writeDigits(*number);
    if (value.isNull()) return append("null");
    if (depth == kMaxJSONDepth) return false;
    if (const Value::Array* array = value.asArray()) return writeArray(*array, depth);
    if (const Value::Dictionary* dictionary = value.asDictionary())
      return writeDictionary(*dictionary, depth);
    return false;
  }

 private:
  static constexpr std::size_t kBufferSize = 4096;
  static constexpr std::size_t kLongestEscape = 6;
  static constexpr std::size_t kPieceSize = kBufferSize / kLongestEscape - 2;

  /// Makes sure that as many bytes can be written at next_ without a look at where the buffer ends.
  void makeRoom(std::size_t size) {
    if (static_cast<std::size_t>(std::end(buffer_) - next_) < size) flush();
  }

  void flush() {
    text_.append(buffer_, static_cast<std::size_t>(next_ - buffer_));
    next_ = buffer_;
  }

  void put(char character) {
    makeRoom(1);
    *next_++ = character;
  }

  bool append(std::string_view text) {
    makeRoom(text.size());
    next_ = std::copy(text.begin(), text.end(), next_);
    return true;
  }

  template <class Number, class... Format>
  bool writeDigits(Number number, Format... format) {
    makeRoom(kMostDigits);
    next_ = std::to_chars(next_, next_ + kMostDigits, number, format...).ptr;
    return true;
  }
  static constexpr std::size_t kMostDigits = 40;

  bool writeDouble(double number) {
    if (!std::isfinite(number)) return false;
    if (std::signbit(number)) put('-');
    const double size = std::abs(number);
    return writeThousandths(size) || writeLong(size);
  }

  /// Writes a number with at most three places behind the point, as most have; false for others. With at most
  /// 15 digits in all there is no shorter way to write it.
  bool writeThousandths(double number) {
    if (number >= 1e12) return false;
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): what is rounded wrong does not compare equal
    const auto thousandths = static_cast<std::uint64_t>(number * 1000 + 0.5);
    if (static_cast<double>(thousandths) / 1000 != number) return false;
    writeDigits(thousandths / 1000);
    std::uint64_t rest = thousandths % 1000;
    if (rest != 0) put('.');
    for (std::uint64_t place = 100; rest != 0; rest %= place, place /= 10) {
      put(static_cast<char>('0' + rest / place));
    }
    return true;
  }

  bool writeLong(double number) {
    constexpr double kWrittenInFull = 1e21;  // whole numbers below it are, as in JavaScript
    makeRoom(kMostDigits);
    const char* begin = next_;
    if (std::trunc(number) == number && number < kWrittenInFull) {
      return writeDigits(number, std::chars_format::fixed);
    }
    writeDigits(number);
    // Exponents come with two digits at least: "1e-07" is not the shortest form.
    if (next_ - begin > 4 && next_[-4] == 'e' && next_[-2] == '0') {
      next_[-2] = next_[-1];
      --next_;
    }
    return true;
  }

  bool writeString(std::string_view text) {
    std::uint64_t seen = 0;
    std::string_view rest = text;
    put('"');
    do {
      const std::string_view piece = rest.substr(0, kPieceSize);
      makeRoom(piece.size() * kLongestEscape + sizeof(std::uint64_t) + 1);
      seen |= writeEscaped(piece);
      rest.remove_prefix(piece.size());
    } while (!rest.empty());
    *next_++ = '"';
    return (seen & Escapes::kUpperBits) == 0 || kernels::best().utf16Length(text) != kernels::kNotUTF8;
  }

  /// Writes a piece of a text for which there is room, eight bytes at a time as far as they need no escapes;
  /// gives the bits that are set in any byte.
  std::uint64_t writeEscaped(std::string_view piece) {
    std::uint64_t seen = 0;
    const char* in = piece.data();
    const char* const end = in + piece.size();
    char* out = next_;
    while (in != end) {
      const auto left = static_cast<std::size_t>(end - in);
      const std::uint64_t word = left >= sizeof word ? load<std::uint64_t>(in) : loadShort(in, left);
      store(word, out);
      seen |= word;
      const std::uint64_t found = escapes_.find(word);
      if (found == 0) [[likely]] {
        const std::size_t written = std::min(left, sizeof word);
        in += written;
        out += written;
      } else {
        const std::size_t clean = static_cast<std::size_t>(std::countr_zero(found)) / 8;
        in += clean;
        out = writeByte(static_cast<std::uint8_t>(*in++), out + clean);
      }
    }
    next_ = out;
    return seen;
  }

  char* writeByte(std::uint8_t byte, char* out) const {
    const char letter = escapes_.letter(byte);
    *out++ = '\\';
    *out++ = letter;
    if (letter != 'u') return out;
    constexpr char kHex[] = "0123456789abcdef";
    for (const char digit : {'0', '0', kHex[byte >> 4], kHex[byte & 15]}) *out++ = digit;
    return out;
  }

  bool writeArray(const Value::Array& array, int depth) {
    if (array.empty()) return append("[]");
    char before = '[';
    for (const Value& element : array) {
      startElement(std::exchange(before, ','), depth + 1);
      if (!write(element, depth + 1)) return false;
    }
    startLine(depth);
    return append("]");
  }

  bool writeDictionary(const Value::Dictionary& dictionary, int depth) {
    if (dictionary.empty()) return append("{}");
    char before = '{';
    for (const auto& [key, value] : dictionary) {
      startElement(std::exchange(before, ','), depth + 1);
      if (!writeString(key)) return false;
      put(':');
      if (indent_ >= 0) put(' ');
      if (!write(value, depth + 1)) return false;
    }
    startLine(depth);
    return append("}");
  }

  void startElement(char before, int depth) {
    put(before);
    startLine(depth);
  }

  void startLine(int depth) {
    if (indent_ < 0) return;
    put('\n');
    flush();
    text_.append(static_cast<std::size_t>(indent_) * static_cast<std::size_t>(depth), ' ');
  }

  const int indent_;
  const Escapes& escapes_;
  std::string text_;
  char buffer_[kBufferSize];  // what comes after text_, up to next_
  char* next_ = buffer_;
};

}  // namespace

std::optional<std::string> writeJSON(const Value& value, JSONStyle style) {
  Writer writer(style);
  if (!writer.write(value, 0)) return std::nullopt;
  return writer.takeText();
}

}  // namespace lumo
