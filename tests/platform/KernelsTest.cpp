#include "LumoApi/Base64.h"
#include "platform/kernels/Kernels.h"
#include "platform/text/PercentEncoding.h"
#include "platform/text/Text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace lumo::kernels {
namespace {

constexpr ASCIISet kSets[] = {
    ASCIISet("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=:@/?"),
    ASCIISet(std::string_view("\0 /09AFaf~\x7F", 11))};

// The result begins somewhere in a line of memory; what is around it must stay as it is.
template <class Write>
std::string written(std::size_t size, Write write) {
  const std::size_t before = size % 61;
  std::string buffer(before + size + 64, '\x5A');
  write(buffer.data() + before);
  const std::string result = buffer.substr(before, size);
  EXPECT_EQ(buffer.erase(before, size), std::string(before + 64, '\x5A'));
  return result;
}

std::string encoded(const Kernels& kernels, std::string_view text) {
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size() / 3 * 3);
  return written(text.size() / 3 * 4,
      [&](char* out) { EXPECT_EQ(kernels.encodeBase64(bytes, out), out + bytes.size() / 3 * 4); });
}

// Empty for what is no base64.
std::string decoded(const Kernels& kernels, std::string_view text) {
  bool read = false;
  const std::string bytes = written(text.size() / 4 * 3, [&](char* out) {
    read = kernels.decodeBase64(text.substr(0, text.size() / 4 * 4), reinterpret_cast<std::uint8_t*>(out));
  });
  return read ? bytes : std::string();
}

std::string escaped(const Kernels& kernels, std::string_view text, const ASCIISet& kept) {
  const std::size_t size = 3 * text.size() - 2 * kPlain.count(text, kept);
  return written(size, [&](char* out) { EXPECT_EQ(kernels.escape(text, kept, out), out + size); });
}

std::array<std::size_t, 6> places(const Kernels& kernels, std::string_view text) {
  std::array<std::size_t, 6> found{};
  found[5] = kernels.places('&', text, std::span(found).first(5));
  return found;
}

// All kernels of each kind against the plain ones, the text ending where its block of memory does.
void agree(std::string_view text, std::size_t offset) {
  std::vector<char> block(offset);
  block.insert(block.end(), text.begin(), text.end());
  block.shrink_to_fit();
  text = {block.data() + offset, text.size()};
  ASSERT_EQ(isValidUTF8(text), kPlain.utf16Length(text) != kNotUTF8);
  ASSERT_EQ(isQueryValue(text), kPlain.count(text, kSets[0]) == text.size() && text.find('&') == text.npos);
  ASSERT_TRUE(base64Encoded(text).starts_with(encoded(kPlain, text)));
  for (const Kernels* kernels : available().subspan(1)) {
    SCOPED_TRACE(std::string(kernels->name) + ", " + std::to_string(offset) + ": " +
                 testing::PrintToString(text.substr(0, 400)));
    ASSERT_TRUE(encoded(*kernels, text) == encoded(kPlain, text));
    ASSERT_TRUE(decoded(*kernels, text) == decoded(kPlain, text));
    ASSERT_EQ(kernels->utf16Length(text), kPlain.utf16Length(text));
    ASSERT_EQ(places(*kernels, text), places(kPlain, text));
    for (const ASCIISet& set : kSets) {
      ASSERT_EQ(kernels->escapedRun(text, set), kPlain.escapedRun(text, set));
      ASSERT_EQ(kernels->count(text, set), kPlain.count(text, set));
      ASSERT_TRUE(escaped(*kernels, text, set) == escaped(kPlain, text, set));
    }
  }
}

TEST(Kernels, AgreeOnEveryLengthAndAlignment) {
  // Pieces of texts that take different ways through the kernels, the last of them none that is valid.
  const std::vector<std::string> kinds[] = {{"a"}, {"A", "+", "/", "9", "z", "Q", "m"}, {"\u4E2D"},
      {"\u00E9", "\u4E2D", "\U0001F600", "plain text", " ", "\x7F"},
      {"%41", "%fF", "abc", "?", "value=", "&", "&", "&a=", "="},
      {"%41", "%4", "%", "x", "\xE4\xB8", "\xF0\x9F\x98\x80", "\xBF", "\xFF", std::string(1, '\0'), "  "}};
  std::mt19937 random(7);
  for (const auto& pieces : kinds) {
    for (std::size_t size = 0; size <= 300; ++size) {
      std::string text;
      while (text.size() < size) text += pieces[random() % pieces.size()];
      agree(text, size * 11 % 64);  // a character that ends late
      if (size % 9 == 0) agree(text.substr(0, size), random() % 64);
    }
  }
  for (std::size_t offset = 0; offset < 64; ++offset)
    agree(std::string(130 + offset % 7, 'x') + "\u4E2D%4", offset);
}

TEST(Kernels, AgreeOnEveryByteInEveryPlace) {
  for (std::size_t at = 0; at < 131; ++at) {
    std::string text(64 + at % 67, 'A');
    for (int byte = 0; byte < 256; ++byte) {
      text[at % text.size()] = static_cast<char>(byte);
      agree(text, 0);
    }
  }
}

TEST(Kernels, AgreeOnEveryTwoBytesAndWhatFollowsAcrossBlocks) {
  for (const std::size_t before : {0U, 15U, 16U, 31U, 32U, 61U, 62U, 63U, 64U}) {
    for (const std::string after : {"", "\x80", "\x80\x80", "A", "\x80\x80\x80"}) {
      std::string text = std::string(before, 'x') + "??" + after;
      if (before > 0) text[before - 1] = '%';  // an escape whose digits they may be
      for (int pair = 0; pair < 0x10000; ++pair) {
        text[before] = static_cast<char>(pair >> 8);
        text[before + 1] = static_cast<char>(pair);
        const std::size_t units = kPlain.utf16Length(text), run = kPlain.escapedRun(text, kSets[0]);
        for (const Kernels* kernels : available().subspan(1)) {
          ASSERT_EQ(kernels->utf16Length(text), units) << kernels->name << testing::PrintToString(text);
          ASSERT_EQ(kernels->escapedRun(text, kSets[0]), run)
              << kernels->name << testing::PrintToString(text);
        }
      }
    }
  }
}

TEST(Kernels, AgreeOnLongTexts) {
  std::mt19937 random(11);
  std::string bytes, base64, query;
  for (int i = 0; i < 30000; ++i) {
    bytes += static_cast<char>(random());
    base64 += kBase64Alphabet[random() % 64];
    query += i % 50 == 0 ? std::string("%e4%B8%aD") : std::string(1, base64.back());
  }
  for (const std::string& text : {bytes, base64, query, query + "%G"}) {
    for (std::size_t offset = 0; offset < 16; ++offset) agree(std::string_view(text).substr(offset), offset);
  }
}

}  // namespace
}  // namespace lumo::kernels
