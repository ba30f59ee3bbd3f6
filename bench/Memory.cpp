// Prints how much memory the conversions take, a figure a line.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "bench/CountingMalloc.h"
#include "bench/Payloads.h"
#include "platform/Image.h"

#include <cstdio>
#include <string>

namespace {

using Converter = LumoApiMessageAndUrlConverter;

void print(const std::string& name, std::size_t figure) { std::printf("%s %zu\n", name.c_str(), figure); }

void measureShare(const std::string& name, const std::optional<LumoApiMessage>& message) {
  Converter::urlWithMessage(message);  // what is made once is made now
  bench::restartCounting();
  const std::size_t before = bench::allocations().live;
  const auto url = Converter::urlWithMessage(message);
  const bench::Allocations after = bench::allocations();
  const std::size_t beyond = after.peak - before;
  print(name + "/allocations", after.count);
  print(name + "/large allocations", after.large);
  print(name + "/peak beyond the URL", beyond - url->absoluteString().size());
}

void measurePicture(const std::string& name, const lumo::Data& picture) {
  bench::restartCounting();
  const std::size_t before = bench::allocations().live;
  const auto result = lumo::jpegRepresentation(picture, bench::profileQuality(picture));
  print(name + "/peak beyond input and output", bench::allocations().peak - before - result->size());
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
