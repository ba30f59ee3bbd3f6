#include "platform/JSON.h"

#include "platform/Text.h"

#include <boost/json/basic_parser_impl.hpp>

#include <array>
#include <charconv>
#include <climits>
#include <cmath>
#include <variant>

namespace lumo {

namespace {

namespace bj = boost::json;

/// Takes the parser's events and puts the value together from them.
class Builder {
 public:
  static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_object_size = max_array_size;
  static constexpr std::size_t max_string_size = max_array_size;
  static constexpr std::size_t max_key_size = max_array_size;

  Value takeRoot() { return std::move(root_); }

  bool on_document_begin(bj::error_code&) { return true; }
  bool on_document_end(bj::error_code&) { return true; }

  bool on_array_begin(bj::error_code&) { return open(Value::Array()); }
  bool on_array_end(std::size_t, bj::error_code&) { return close(); }
  bool on_object_begin(bj::error_code&) { return open(Value::Dictionary()); }
  bool on_object_end(std::size_t, bj::error_code&) { return close(); }

  bool on_key_part(bj::string_view part, std::size_t, bj::error_code&) { return collect(part); }
  bool on_key(bj::string_view rest, std::size_t, bj::error_code&) {
    collect(rest);
    open_.back().key = std::exchange(text_, {});
    return true;
  }
  bool on_string_part(bj::string_view part, std::size_t, bj::error_code&) { return collect(part); }
  bool on_string(bj::string_view rest, std::size_t, bj::error_code&) {
    collect(rest);
    return add(std::exchange(text_, {}));
  }

  bool on_number_part(bj::string_view, bj::error_code&) { return true; }
  bool on_int64(std::int64_t number, bj::string_view, bj::error_code&) { return add(number); }
  bool on_uint64(std::uint64_t number, bj::string_view, bj::error_code&) { return add(number); }

  /// The parser's own double is off by a few units in the last place now and then; the text is what counts.
  /// It is all in one piece because the document is.
  bool on_double(double approximate, bj::string_view text, bj::error_code& error) {
    double number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
      number = std::copysign(0.0, approximate);
      if (!(std::abs(approximate) < 1)) error = bj::error::exponent_overflow;
    }
    return error ? false : add(number);
  }

  bool on_bool(bool value, bj::error_code&) { return add(value); }
  bool on_null(bj::error_code&) { return add(Value()); }
  bool on_comment_part(bj::string_view, bj::error_code&) { return true; }
  bool on_comment(bj::string_view, bj::error_code&) { return true; }

 private:
  struct Container {
    std::variant<Value::Array, Value::Dictionary> content;
    std::string key;  // of the value that comes next in a dictionary
  };

  bool open(std::variant<Value::Array, Value::Dictionary> content) {
    open_.push_back({std::move(content), {}});
    return true;
  }

  bool close() {
    Value value = std::visit([](auto& content) { return Value(std::move(content)); }, open_.back().content);
    open_.pop_back();
    return add(std::move(value));
  }

  bool collect(bj::string_view part) {
    text_.append(part.data(), part.size());
    return true;
  }

  bool add(Value value) {
    if (open_.empty()) {
      root_ = std::move(value);
    } else if (auto* array = std::get_if<Value::Array>(&open_.back().content)) {
      array->push_back(std::move(value));
    } else {
      std::get<Value::Dictionary>(open_.back().content).set(std::move(open_.back().key), std::move(value));
    }
    return true;
  }

  Value root_;
  std::vector<Container> open_;
  std::string text_;
};

std::string inWords(const bj::error_code& error) {
  if (error == bj::error::syntax) return "not JSON";
  if (error == bj::error::incomplete) return "the text ends early";
  if (error == bj::error::exponent_overflow) return "a number that is out of range";
  if (error == bj::error::too_deep) return "nested too deeply";
  if (error == bj::error::illegal_leading_surrogate || error == bj::error::illegal_trailing_surrogate) {
    return "half of a surrogate pair";
  }
  return error.message();
}

/// What each byte is written as after a backslash: 0 for the byte itself, 'u' for \u00xx.
constexpr std::array<char, 256> makeEscapes(bool escapeSolidus) {
  std::array<char, 256> escapes{};
  for (std::size_t control = 0; control < 0x20; ++control) escapes[control] = 'u';
  escapes['\b'] = 'b';
  escapes['\f'] = 'f';
  escapes['\n'] = 'n';
  escapes['\r'] = 'r';
  escapes['\t'] = 't';
  escapes['"'] = '"';
  escapes['\\'] = '\\';
  if (escapeSolidus) escapes['/'] = '/';
  return escapes;
}

constexpr std::array<char, 256> kEscapes = makeEscapes(false);
constexpr std::array<char, 256> kEscapesWithSolidus = makeEscapes(true);

class Writer {
 public:
  explicit Writer(JSONStyle style)
      : indent_(style.indent), escapes_(style.escapeSolidus ? kEscapesWithSolidus : kEscapes) {}

  std::string takeText() { return std::move(text_); }

  /// False for what JSON cannot hold. `depth` is that of the containers around the value.
  bool write(const Value& value, int depth) {
    if (value.isNull()) return append("null");
    if (const bool* boolean = value.asBoolean()) return append(*boolean ? "true" : "false");
    if (const std::int64_t* number = value.asInteger()) return writeDigits(*number);
    if (const std::uint64_t* number = value.asUnsigned()) return writeDigits(*number);
    if (const double* number = value.asDouble()) return writeDouble(*number);
    if (const std::string* text = value.asString()) return writeString(*text);
    if (depth == kMaxJSONDepth) return false;
    if (const Value::Array* array = value.asArray()) return writeArray(*array, depth);
    if (const Value::Dictionary* dictionary = value.asDictionary())
      return writeDictionary(*dictionary, depth);
    return false;
  }

 private:
  bool append(std::string_view text) {
    text_.append(text);
    return true;
  }

  template <class Number, class... Format>
  bool writeDigits(Number number, Format... format) {
    char digits[40];
    const auto result = std::to_chars(std::begin(digits), std::end(digits), number, format...);
    return append({digits, result.ptr});
  }

  bool writeDouble(double number) {
    if (!std::isfinite(number)) return false;
    constexpr double kWrittenInFull = 1e21;  // whole numbers below it are, as in JavaScript
    const bool inFull = std::trunc(number) == number && std::abs(number) < kWrittenInFull;
    if (!(inFull ? writeDigits(number, std::chars_format::fixed) : writeDigits(number))) return false;
    // Exponents come with two digits at least: "1e-07" is not the shortest form.
    const std::size_t size = text_.size();
    if (size > 3 && text_[size - 4] == 'e' && text_[size - 2] == '0') text_.erase(size - 2, 1);
    return true;
  }

  bool writeString(std::string_view text) {
    if (!isValidUTF8(text)) return false;
    text_ += '"';
    std::size_t written = 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
      const auto byte = static_cast<unsigned char>(text[place]);
      const char escape = escapes_[byte];
      if (escape == 0) [[likely]] {
        continue;
      }
      text_.append(text, written, place - written);
      written = place + 1;
      text_ += '\\';
      text_ += escape;
      if (escape == 'u') {
        constexpr char kHex[] = "0123456789abcdef";
        text_.append("00").append({kHex[byte >> 4], kHex[byte & 15]});
      }
    }
    text_.append(text, written);
    text_ += '"';
    return true;
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
      append(indent_ < 0 ? ":" : ": ");
      if (!write(value, depth + 1)) return false;
    }
    startLine(depth);
    return append("}");
  }

  void startElement(char before, int depth) {
    text_ += before;
    startLine(depth);
  }

  void startLine(int depth) {
    if (indent_ < 0) return;
    text_ += '\n';
    text_.append(static_cast<std::size_t>(indent_) * static_cast<std::size_t>(depth), ' ');
  }

  int indent_;
  const std::array<char, 256>& escapes_;
  std::string text_;
};

}  // namespace

std::optional<Value> parseJSON(std::string_view text, JSONError* error) {
  const auto refuse = [error](std::string words, std::size_t offset) {
    if (error) *error = {std::move(words), offset};
    return std::nullopt;
  };
  // The parser counts the digits of a number in an int.
  if (text.size() > INT_MAX) return refuse("too long", 0);

  bj::parse_options options;
  options.max_depth = kMaxJSONDepth;
  bj::basic_parser<Builder> parser(options);
  bj::error_code code;
  const std::size_t used = parser.write_some(false, text.data(), text.size(), code);
  if (code) return refuse(inWords(code), used);
  if (used < text.size()) return refuse("text after the end of the document", used);
  return parser.handler().takeRoot();
}

std::optional<std::string> writeJSON(const Value& value, JSONStyle style) {
  Writer writer(style);
  if (!writer.write(value, 0)) return std::nullopt;
  return writer.takeText();
}

}  // namespace lumo
