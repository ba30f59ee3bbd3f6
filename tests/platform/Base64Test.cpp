#include "LumoApi/Base64.h"

#include <gtest/gtest.h>

namespace lumo {
namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// One bit after the other.
std::string reference(std::string_view bytes) {
  std::string text;
  unsigned bits = 0;
  int held = 0;
  for (const char byte : bytes) {
    bits = bits << 8 | static_cast<unsigned char>(byte);
    for (held += 8; held >= 6; held -= 6) text += kAlphabet[bits >> (held - 6) & 63];
  }
  if (held > 0) text += kAlphabet[bits << (6 - held) & 63];
  text.resize((text.size() + 3) / 4 * 4, '=');
  return text;
}

TEST(Base64, EveryShortLengthBothWaysAndInPieces) {
  EXPECT_EQ(base64Encoded("light work."), "bGlnaHQgd29yay4=");
  std::string bytes;
  for (std::size_t size = 0; size <= 100; ++size, bytes += static_cast<char>(size * 157 + 3)) {
    SCOPED_TRACE(size);
    const std::string text = reference(bytes);
    EXPECT_EQ(base64Encoded(bytes), text);
    EXPECT_EQ(base64Decoded(text), bytes);
    EXPECT_EQ(base64DecodedData(text), Data::copy(bytes));
    for (std::size_t a = 0; size < 20 && a <= size; ++a) {
      for (std::size_t b = a; b <= size; ++b) {
        DataChain chain;
        for (const auto& piece : {bytes.substr(0, a), bytes.substr(a, b - a), bytes.substr(b)}) {
          chain.append(Data::copy(piece));
        }
        std::string encoded(base64EncodedSize(size), '\0');
        EXPECT_EQ(base64Encode(chain, encoded.data()), encoded.data() + encoded.size());
        EXPECT_EQ(encoded, text) << a << ' ' << b;
      }
    }
  }
}

TEST(Base64, DecodingIsStrict) {
  for (const std::string_view text : {"A", "AB", "ABC", "AB=", "ABCDE", "=", "====", "A===", "=AAA", "AB=C",
           "AA==AAAA", "AAA=AAAA", "AAAA====", "AAAA A==", "AAAA\r\nAA", "AAA\n", "AA-_"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(base64Decoded(text), std::nullopt);
    EXPECT_EQ(base64DecodedData(text), std::nullopt);
  }
  for (std::size_t at = 0; at < 4; ++at) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string text = "AAAABBBBAAAA";
      text[4 + at] = text[8 + at] = static_cast<char>(byte);
      EXPECT_EQ(base64Decoded(text).has_value(), kAlphabet.find(text[8 + at]) != kAlphabet.npos) << byte;
    }
  }
  // Spare bits do not matter.
  EXPECT_EQ(base64Decoded("QR=="), "A");
  EXPECT_EQ(base64Decoded("QUL="), "AB");
}

}  // namespace
}  // namespace lumo
