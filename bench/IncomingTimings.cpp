#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "bench/Payloads.h"
#include "bench/Timings.h"
#include "bench/plain/Plain.h"

#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>

#include <cstring>
#include <memory>

namespace bench {

namespace {

/// From the text, as an app is handed it, to the parts and one value of the query.
std::size_t split(std::string_view text) {
  const auto decoder = LumoApiURLDecoder::decoderWithUrl(lumo::URL::parse(text));
  return decoder->host()->size() + decoder->path()->size() + decoder->queryItem().find("file_type")->size();
}

std::optional<LumoApiMessage> message(std::string_view text) {
  return LumoApiMessageAndUrlConverter::messageWithUrl(lumo::URL::parse(text));
}

}  // namespace

void registerIncomingTimings() {
  useStore();
  const auto small = std::make_shared<const std::string>(incomingURL());
  timing("incoming/300 bytes, split/lumo", [small] { return split(*small); });
  timing("incoming/300 bytes, message/lumo", [small] { return message(*small); });
  timing("incoming/300 bytes/boost", [small] { return boost::urls::parse_uri(*small); });
  timing("incoming/300 bytes/plain", [small] { return plain::splitQuery(*small); });

  const auto large = std::make_shared<const std::string>(incomingURL(MiB));
  const auto room = std::make_shared<std::string>(large->size(), '\0');
  timing("incoming/1.4 MB/lumo", [large] { return message(*large); });
  timing("incoming/1.4 MB/boost", [large] { return boost::urls::parse_uri(*large); });
  timing("incoming/1.4 MB/memcpy",
         [large, room] { return std::memcpy(room->data(), large->data(), large->size()); });
}

}  // namespace bench
