#include "bench/Payloads.h"
#include "bench/Timings.h"
#include "platform/values/JSON.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <memory>

namespace bench {

namespace {

constexpr unsigned kPlainWriting = rapidjson::kWriteDefaultFlags;

template <unsigned kFlags>
std::size_t rapidWritten(const rapidjson::Document& document) {
  using Text = rapidjson::StringBuffer;
  using UTF8 = rapidjson::UTF8<>;
  Text text;
  rapidjson::Writer<Text, UTF8, UTF8, rapidjson::CrtAllocator, kFlags> writer(text);
  document.Accept(writer);
  return text.GetSize();
}

void registerWriting(const std::string& name, const lumo::Value& value) {
  timing("JSON writing/" + name + "/lumo", [value] { return lumo::writeJSON(value); });
  auto document = std::make_shared<rapidjson::Document>();
  document->Parse(lumo::writeJSON(value)->c_str());
  timing("JSON writing/" + name + "/rapidjson",
         [document] { return rapidWritten<kPlainWriting>(*document); });
  // As the library does.
  timing("JSON writing/" + name + "/rapidjson, UTF-8 checked",
         [document] { return rapidWritten<rapidjson::kWriteValidateEncodingFlag>(*document); });
}

}  // namespace

void registerJSONTimings() {
  registerWriting("150 bytes", smallDocument());
  registerWriting("100 KB", largeDocument());
}

}  // namespace bench
