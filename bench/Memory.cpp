// Prints how much memory the conversions take, a figure a line.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "bench/Payloads.h"
#include "platform/pictures/Image.h"
#include "support/Allocations.h"

#include <cstdio>
#include <string>

namespace {

using Converter = LumoApiMessageAndUrlConverter;

void print(const std::string& name, std::size_t figure) { std::printf("%s %zu\n", name.c_str(), figure); }

void measureShare(const std::string& name, const std::optional<LumoApiMessage>& message) {
  Converter::urlWithMessage(message);  // what is made once is made now
  {
    const Allocations all;
    const auto url = Converter::urlWithMessage(message);
    print(name + "/allocations", all.blocks());
    print(name + "/peak beyond the URL", all.peak() - url->absoluteString().size());
  }
  const Allocations large(Allocations::kNever, false, 65536);
  Converter::urlWithMessage(message);
  print(name + "/large allocations", large.blocks());
}

void measurePicture(const std::string& name, const lumo::Data& picture) {
  const double quality = bench::profileQuality(picture);
  const Allocations all;
  const auto result = lumo::jpegRepresentation(picture, quality);
  print(name + "/peak beyond input and output", all.peak() - result->size());
}

}  // namespace

int main() {
  bench::useStore();
  measureShare("text share/5 letters", bench::textMessage("hello"));
  measureShare("text share/1536 ideographs", bench::textMessage(bench::ideographs(1536)));
  measureShare("link share/1 MiB preview", bench::linkMessage(bench::MiB));
  measureShare("staging/50 MiB", bench::videoMessage(50 * bench::MiB));
  measurePicture("avatar/12 megapixels", bench::picture12());
  measurePicture("avatar/48 megapixels", bench::picture48());
}
