#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "bench/Payloads.h"
#include "bench/Timings.h"
#include "bench/plain/Plain.h"
#include "platform/archive/KeyedArchiver.h"

namespace bench {

namespace {

using Converter = LumoApiMessageAndUrlConverter;

void registerTextShare(const std::string& name, const std::string& text) {
  const auto message = textMessage(text);
  const auto values = useStore();
  timing("text share/" + name + "/lumo", [message] { return Converter::urlWithMessage(message); });
  timing("text share/" + name + "/plain", [message, values] {
    return plain::textShare(static_cast<const LumoApiTextObject&>(*message->object()), message->type(),
                            values);
  });
}

/// Both pay for memory that is new each time, as a URL that is handed out is.
void registerLinkShare() {
  const auto message = linkMessage(MiB);
  const auto values = useStore();
  const auto& link = static_cast<const LumoApiURLObject&>(*message->object());
  timing("link share/1 MiB preview/lumo", [message] { return Converter::urlWithMessage(message); });
  timing("link share/1 MiB preview/base64", [preview = *link.previewImageData()] {
    lumo::DataBuffer text = lumo::Data::uninitialized(lumo::base64EncodedSize(preview.size()));
    lumo::base64Encode(std::span(preview.data(), preview.size()), reinterpret_cast<char*>(text.bytes));
    return text;
  });
  timing("link share/1 MiB preview/plain",
         [message, values, &link] { return plain::linkShare(link, message->type(), values); });
}

void registerLargeData(std::size_t size) {
  timing("staging/" + sizeName(size) + "/lumo",
         [message = videoMessage(size)] { return Converter::urlWithMessage(message); });
  timing("keyed archive/" + sizeName(size) + "/lumo",
         [record = record(size)] { return lumo::archivedData(record); });
}

}  // namespace

void registerShareTimings() {
  registerTextShare("5 letters", "hello");
  registerTextShare("1536 letters", letters(1536));
  registerTextShare("1536 ideographs", ideographs(1536));
  registerLinkShare();
  for (const std::size_t size : {KiB, MiB, 50 * MiB}) registerLargeData(size);
  timing("keyed archive/1 MiB/libplist",
         [picture = randomData(MiB)] { return plain::archived("previewimagedata", picture); });
}

}  // namespace bench
