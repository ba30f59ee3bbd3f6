#include "documents/Document.h"

#include <algorithm>
#include <vector>

namespace lumo::documents {

namespace {

/// Where the characters that count begin: every byte but the later ones of a UTF-8 sequence.
bool beginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

bool isPlainName(std::string_view name) {
  constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_$";
  return !name.empty() && name.find_first_not_of(kLetters) == std::string_view::npos;
}

/// A name from a document may be of any length; what is shown of it is not.
std::string shortened(std::string_view name) {
  constexpr std::size_t kMost = 64;
  if (name.size() <= kMost) return std::string(name);
  std::size_t length = kMost;
  while (length > 0 && !beginsCharacter(name[length])) --length;
  return std::string(name.substr(0, length)) + "…";
}

/// A number as the document must have had it: one that JSON writes like an integer, but that is none here,
/// had a fraction or an exponent.
std::string numberInWords(const Value& number) {
  std::string digits = *writeJSON(number);
  const bool looksWhole = digits.find_first_not_of("-0123456789") == std::string::npos;
  return number.asDouble() && looksWhole ? digits + ".0" : digits;
}

std::string inWords(const Value& value) {
  if (value.isNull()) return "null";
  if (const bool* boolean = value.asBoolean()) return *boolean ? "true" : "false";
  if (value.isNumber()) return numberInWords(value);
  if (value.asString()) return "a string";
  return value.asArray() ? "an array" : "an object";
}

}  // namespace

TextPosition positionIn(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::size_t lineBreak = before.rfind('\n');
  const std::string_view line = lineBreak == std::string_view::npos ? before : before.substr(lineBreak + 1);
  return {static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1,
          static_cast<std::size_t>(std::count_if(line.begin(), line.end(), beginsCharacter)) + 1};
}

Value parseDocument(std::string_view text) {
  JSONError error;
  std::optional<Value> document = parseJSON(text, &error);
  if (document) return *std::move(document);
  const TextPosition position = positionIn(text, error.offset);
  throw DocumentError("line " + std::to_string(position.line) + ", column " +
                      std::to_string(position.column) + ": " + error.message);
}

std::string Place::path() const {
  std::vector<const Place*> way;
  for (const Place* place = this; place->around_; place = place->around_) way.push_back(place);
  std::string path;
  for (auto place = way.rbegin(); place != way.rend(); ++place) (*place)->appendTo(path);
  return path;
}

void Place::appendTo(std::string& path) const {
  if (isElement_) {
    path.append("[").append(std::to_string(index_)).append("]");
  } else if (const std::string shown = shortened(member_); !isPlainName(shown)) {
    path.append("[").append(*writeJSON(shown, {.escapeSolidus = false})).append("]");
  } else {
    if (!path.empty()) path += '.';
    path += shown;
  }
}

void Place::fail(std::string_view what) const {
  std::string message = path();
  if (!message.empty()) message += ": ";
  throw DocumentError(message.append(what));
}

void Place::failMember(std::string_view member, std::string_view what) const {
  Place(*this, member, *value_).fail(what);
}

void Place::failExpecting(std::string_view kind) const {
  fail("not " + std::string(kind) + " but " + inWords(*value_));
}

}  // namespace lumo::documents
