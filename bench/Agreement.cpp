#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "bench/Payloads.h"
#include "bench/Timings.h"
#include "bench/plain/Plain.h"
#include "platform/archive/KeyedUnarchiver.h"
#include "platform/pictures/Image.h"
#include "platform/text/PercentEncoding.h"

#include <boost/url/encode.hpp>
#include <boost/url/rfc/pchars.hpp>
#include <openssl/evp.h>

#include <iostream>

namespace bench {

namespace {

using plain::splitQuery;

bool sameCodecs() {
  const std::string bytes = randomBytes(1000);
  std::string text(2000, '\0');
  const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                                     reinterpret_cast<const unsigned char*>(bytes.data()), 1000);
  text.resize(static_cast<std::size_t>(length));
  const std::string expected = lumo::base64Encoded(bytes);
  const std::string han = ideographs(1000);
  const auto escaped = lumo::percentEncoded(han, lumo::CharacterSet::QueryAllowed);
  return text == expected && plain::base64(bytes) == expected && plain::percentEncoded(han) == escaped &&
         boost::urls::encode(boost::urls::string_view(han), boost::urls::pchars) == escaped;
}

std::string sharedURL(const std::optional<LumoApiMessage>& message) {
  return std::string(LumoApiMessageAndUrlConverter::urlWithMessage(message)->absoluteString());
}

bool sameTextShare(const std::string& text) {
  const auto message = textMessage(text);
  const auto other =
      plain::textShare(static_cast<const LumoApiTextObject&>(*message->object()), 7, useStore());
  return splitQuery(sharedURL(message)) == splitQuery(*other);
}

std::optional<lumo::Value> takeRecord(plain::Query& query) {
  return lumo::unarchivedValue(*lumo::base64DecodedData(query.extract("pasteboard").mapped()));
}

bool sameLinkShare() {
  const auto message = linkMessage(10 * KiB);
  const auto other =
      plain::linkShare(static_cast<const LumoApiURLObject&>(*message->object()), 7, useStore());
  plain::Query query = splitQuery(sharedURL(message));
  plain::Query otherQuery = splitQuery(*other);
  const auto staged = takeRecord(query);
  return staged && staged == takeRecord(otherQuery) && query == otherQuery;
}

/// Both re-encode a picture to nearly the same size: at the same quality and sampling.
bool samePictures() {
  const lumo::Data picture = cameraPicture(640, 480, 90);
  const double size = static_cast<double>(lumo::jpegRepresentation(picture, 0.7)->size());
  const double ratio = static_cast<double>(plain::reencoded(picture, 0.7)->size()) / size;
  return ratio > 0.9 && ratio < 1.1;
}

}  // namespace

bool peersAgree() {
  const std::pair<const char*, bool> checks[] = {
      {"codecs", sameCodecs()},
      {"text share", sameTextShare("hello") && sameTextShare(ideographs(1536))},
      {"link share", sameLinkShare()},
      {"pictures", samePictures()},
  };
  bool agree = true;
  for (const auto& [name, same] : checks) {
    if (!same) std::cerr << "The versions compared do not give the same result: " << name << '\n';
    agree = agree && same;
  }
  return agree;
}

}  // namespace bench
