#include "LumoApi/Base64.h"
#include "bench/Payloads.h"
#include "bench/Timings.h"
#include "bench/plain/Plain.h"
#include "platform/text/PercentEncoding.h"

#include <boost/url/encode.hpp>
#include <boost/url/rfc/pchars.hpp>
#include <boost/url/string_view.hpp>
#include <openssl/evp.h>

#include <cstring>
#include <memory>
#include <span>

namespace bench {

namespace {

/// Bytes, their base64 text, and room for either; warm and of one address in all repetitions.
struct Base64Buffers {
  explicit Base64Buffers(std::size_t size)
      : bytes(randomBytes(size)), text(lumo::base64Encoded(bytes)), out(text.size() + 1, '\0') {}

  std::span<const std::uint8_t> input() const {
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
  }
  std::uint8_t* output() { return reinterpret_cast<std::uint8_t*>(out.data()); }

  std::string bytes;
  std::string text;
  std::string out;
};

void registerBase64(std::size_t size) {
  const std::string name = sizeName(size);
  auto buffers = std::make_shared<Base64Buffers>(size);
  timing("memcpy/" + name,
         [buffers] { return std::memcpy(buffers->output(), buffers->bytes.data(), buffers->bytes.size()); });
  timing("base64 encode/" + name + "/lumo",
         [buffers] { return lumo::base64Encode(buffers->input(), buffers->out.data()); });
  timing("base64 encode/" + name + "/openssl", [buffers] {
    return EVP_EncodeBlock(buffers->output(), buffers->input().data(),
                           static_cast<int>(buffers->bytes.size()));
  });
  timing("base64 decode/" + name + "/lumo",
         [buffers] { return lumo::base64Decode(buffers->text, buffers->output()); });
  timing("base64 decode/" + name + "/openssl", [buffers] {
    return EVP_DecodeBlock(buffers->output(), reinterpret_cast<const unsigned char*>(buffers->text.data()),
                           static_cast<int>(buffers->text.size()));
  });
}

void registerPercentEncoding(std::size_t size) {
  const std::string name = "percent-encode/" + sizeName(size) + " of ideographs/";
  const std::string text = ideographs(size / 3);
  timing(name + "lumo", [text] { return lumo::percentEncoded(text, lumo::CharacterSet::QueryAllowed); });
  timing(name + "boost",
         [text] { return boost::urls::encode(boost::urls::string_view(text), boost::urls::pchars); });
  timing(name + "plain", [text] { return plain::percentEncoded(text); });
}

}  // namespace

void registerTextTimings() {
  for (const std::size_t size : {64 * KiB, MiB, 5 * MiB}) registerBase64(size);
  for (const std::size_t size : {KiB, 64 * KiB}) registerPercentEncoding(size);
}

}  // namespace bench
