// An app that sends: sender TEXT, or sender --picture FILE STORE, which stages the picture's bytes in STORE.
// Prints the URL that a real app hands to the system to open.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

namespace {

/// A share to the messenger's contacts.
constexpr std::int32_t kShare = 7;

std::optional<lumo::Data> contentOf(const char* file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return std::nullopt;
  return lumo::Data(std::string(std::istreambuf_iterator<char>(stream), {}));
}

}  // namespace

int main(int argc, char** argv) {
  LumoApiDatastore& store = LumoApiDatastore::instance();
  store.setValues({.scheme = "sender", .appName = "Sender"});
  LumoApiLog::silence();

  std::shared_ptr<LumoApiObject> object;
  if (argc == 2) {
    object = LumoApiTextObject::objectWithText(argv[1]);
  } else if (argc == 4 && std::string(argv[1]) == "--picture") {
    store.setPasteboard(std::make_shared<LumoApiFilePasteboard>(argv[3]));
    object = LumoApiImageObject::objectWithData(contentOf(argv[2]), std::nullopt, "A picture", std::nullopt);
  } else {
    std::cerr << "usage: sender TEXT | sender --picture FILE STORE\n";
    return 2;
  }

  LumoApiRefusal refusal;
  const auto url = LumoApiMessageAndUrlConverter::urlWithMessage(
      LumoApiMessage::messageWithObject(object, kShare), &refusal);
  if (!url) {
    std::cerr << "sender: " << refusal.description() << '\n';
    return 1;
  }
  std::cout << url->absoluteString() << '\n';
}
