#include "platform/values/JSON.h"

#include <boost/json/basic_parser_impl.hpp>

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

}  // namespace lumo
