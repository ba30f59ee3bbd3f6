// Queries: split as they are received, and written and read again. For writing, each line of the input that
// has a tab is an entry, a key before the tab and a value after it.

#include "LumoApi/LumoApiURLDecoder.h"
#include "LumoApi/LumoApiURLEncoder.h"
#include "LumoApi/RawQuery.h"
#include "fuzz/Door.h"
#include "platform/text/PercentEncoding.h"
#include "platform/text/Text.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace lumo::fuzz {

namespace {

using Pair = std::pair<std::string, std::string>;

/// The pairs of the pieces that have a `middle`, with the last value of each key in the place of the first.
std::vector<Pair> pairsOf(std::string_view text, char separator, char middle) {
  std::vector<Pair> pairs;
  for (bool more = true; more;) {
    const std::size_t end = text.find(separator);
    const std::string_view piece = text.substr(0, end);
    more = end != text.npos;
    if (more) text.remove_prefix(end + 1);
    const std::size_t keySize = piece.find(middle);
    if (keySize == piece.npos) continue;
    Pair pair(piece.substr(0, keySize), piece.substr(keySize + 1));
    const auto known =
        std::find_if(pairs.begin(), pairs.end(), [&](const Pair& p) { return p.first == pair.first; });
    if (known == pairs.end()) {
      pairs.push_back(std::move(pair));
    } else {
      *known = std::move(pair);
    }
  }
  return pairs;
}

void checkSplitting(std::string_view text) {
  const RawQuery query(Data::unowned(text));
  const std::vector<Pair> expected = pairsOf(text, '&', '=');
  const StringDictionary dictionary = query.dictionary();
  require(std::equal(dictionary.begin(), dictionary.end(), expected.begin(), expected.end(),
                     [](const auto& entry, const Pair& pair) {
                       return entry.key == pair.first && entry.value == pair.second;
                     }),
          "the pairs are those of the plain splitter");
  require(query.empty() == expected.empty(), "a query without a pair is empty");
  for (const auto& [key, value] : expected) require(query.find(key) == value, "each pair is found");
  for (const std::string_view key : {"", "a", "file_type", "title"}) {
    const bool isThere =
        std::any_of(expected.begin(), expected.end(), [key](const Pair& pair) { return pair.first == key; });
    require(query.find(key).has_value() == isThere, "no other pair is found");
  }
}

bool splits(const Pair& pair) {
  return pair.first.find_first_of("&=") != pair.first.npos || pair.second.find('&') != pair.second.npos;
}

std::string joined(std::vector<Pair> pairs) {
  std::stable_partition(pairs.begin(), pairs.end(), splits);
  std::string text = "demo://host/path";
  char separator = '?';
  for (const auto& [key, value] : pairs) {
    text.append(1, std::exchange(separator, '&')).append(key).append("=").append(value);
  }
  return text;
}

void checkWriting(const std::vector<Pair>& pairs) {
  LumoApiQueryDictionary query;
  for (const auto& [key, value] : pairs) query.set(key, QueryValue::text(value));
  const auto url = LumoApiURLEncoder::urlWithScheme("demo", "host", "/path", &query);
  const std::string text = joined(pairs);
  require(url.has_value() == isValidUTF8(text), "text that is UTF-8 is written");
  if (!url) return;
  require(url->absoluteString() == percentEncoded(text, CharacterSet::QueryAllowed),
          "the joined text is encoded once");

  const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
  for (const Pair& pair : pairs) {
    if (splits(pair)) continue;
    const auto raw = decoder->queryItem().find(*percentEncoded(pair.first, CharacterSet::QueryAllowed));
    require(raw && percentDecoded(*raw) == pair.second, "an entry that holds no separator reads back");
  }
}

}  // namespace

void door(std::string_view input) {
  if (input.size() > 10'000) return;  // the plain splitter is slow
  checkSplitting(input);
  checkWriting(pairsOf(input, '\n', '\t'));
}

}  // namespace lumo::fuzz
