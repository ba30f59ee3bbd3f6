#pragma once

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "cli/Files.h"
#include "documents/RequestReader.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

/// Every kind of request there is, made anew by each call.
namespace requests {

struct Outgoing {
  std::string name;
  LumoApiMessage message;
};

/// The example documents: an object of every class that can be sent.
inline std::vector<Outgoing> outgoing() {
  const std::filesystem::path folder = LUMOAPI_SOURCE_DIR "/examples";
  std::vector<Outgoing> all;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    if (file.path().extension() != ".json") continue;
    const auto document = lumo::parseJSON(lumo::cli::readRegularFile(file.path()).view());
    LumoApiMessage message =
        *lumo::documents::readEncodeRequest({*document, lumo::cli::FilesBeside(folder)}).message;
    auto card = std::make_shared<LumoApiKivaObject>();
    card->setKivaData("{\"app\":\"card\"}");
    message.setIsSupportKiva(true);
    message.setKivaObject(std::move(card));
    all.push_back({file.path().stem(), std::move(message)});
  }
  return all;
}

/// URLs that the messenger opens the app with.
inline std::vector<std::string> incoming() {
  const std::string texts = "&title=SGk=&description=QSB3YWxr&url=aHR0cHM6Ly9hLmV4YW1wbGUv";
  std::vector<std::string> all{"demo://request_from_lumo/pick?a=b",
      "demo://request_from_lumo/view?file_type=nimbo&video_assetURL=YS9i" + texts,
      "demo://response_from_lumo/?error=0&error_description=QSB3YWxrIGFyb3VuZCB0aGUgaGFyYm91cg==&more=%41",
      "demo://maLaunchApp/?appParameter=a%20longer%20text%20than%20fits%20where%20none%20is%20allocated",
      "demo://anywhere/?NeedToGetData=true"};
  for (const char* kind : {"text", "img", "nimbo", "audio", "video", "news", "url", "file", "common"}) {
    all.push_back(std::string("demo://request_from_lumo/view?extMap=eyJhIjpbMSwieCJdfQ==&file_type=") + kind +
                  "&file_data=QSB3YWxrIGFyb3VuZCB0aGUgaGFyYm91cg==" + texts);
  }
  return all;
}

}  // namespace requests
