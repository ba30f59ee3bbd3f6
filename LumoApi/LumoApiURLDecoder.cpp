#include "LumoApi/LumoApiURLDecoder.h"

#include <utility>

using lumo::Data;

std::optional<std::string_view> LumoApiURLDecoder::textOf(const Text& text) noexcept {
  if (!text) return std::nullopt;
  return text->view();
}

LumoApiURLDecoder::Text LumoApiURLDecoder::copyOf(std::optional<std::string_view> text) {
  if (!text) return std::nullopt;
  return Data::copy(*text);
}

// decoderWithUrl:
std::optional<LumoApiURLDecoder> LumoApiURLDecoder::decoderWithUrl(
    const std::optional<lumo::URL>& url) noexcept {
  if (!url) return std::nullopt;
  LumoApiURLDecoder decoder;
  const auto shared = [&url](std::optional<std::string_view> part) -> Text {
    if (!part) return std::nullopt;
    return url->shared(*part);
  };
  decoder.scheme_ = shared(url->scheme());
  decoder.host_ = shared(url->host());
  decoder.path_ = shared(url->path());
  if (Text query = shared(url->query())) decoder.queryItem_ = lumo::RawQuery(*std::move(query));
  return decoder;
}
