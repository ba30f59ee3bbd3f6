// An app that receives: receiver URL [STORE] says what the messenger wants of it with the URL that opened it.
// STORE holds the bytes that travel beside the URL. Asked to pick something, it answers with a text.
//
// Any app can make such a URL: nothing of it is shown or opened without being looked at.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"

#include <iostream>
#include <memory>

namespace {

enum MessageType { kShow = 1, kPick = 3, kAnswer = 4, kResponse = 6 };

void show(const LumoApiObject* object) {
  if (const auto* text = dynamic_cast<const LumoApiTextObject*>(object)) {
    std::cout << "text: " << text->text().value_or("(none)") << '\n';
  } else if (const auto* image = dynamic_cast<const LumoApiImageObject*>(object)) {
    std::cout << "picture: " << (image->data() ? image->data()->size() : 0) << " bytes, "
              << image->title().value_or("untitled") << '\n';
  } else {
    std::cout << "something this app does not show\n";
  }
}

void answer() {
  const auto message =
      LumoApiMessage::messageWithObject(LumoApiTextObject::objectWithText("picked for you"), kAnswer);
  if (const auto url = LumoApiMessageAndUrlConverter::urlWithMessage(message)) {
    std::cout << url->absoluteString() << '\n';
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::cerr << "usage: receiver URL [STORE]\n";
    return 2;
  }
  LumoApiDatastore& store = LumoApiDatastore::instance();
  store.setValues({.scheme = "receiver", .appName = "Receiver"});
  if (argc == 3) store.setPasteboard(std::make_shared<LumoApiFilePasteboard>(argv[2]));
  LumoApiLog::silence();

  LumoApiRefusal refusal;
  const auto message = LumoApiMessageAndUrlConverter::messageWithUrl(lumo::URL::parse(argv[1]), &refusal);
  if (!message) {
    std::cerr << "receiver: " << refusal.description() << '\n';
    return 1;
  }
  switch (message->type()) {
    case kShow:
      show(message->object().get());
      break;
    case kPick:
      answer();
      break;
    case kResponse:
      if (const auto* result = dynamic_cast<const LumoApiResultObject*>(message->object().get())) {
        std::cout << "error " << result->error().value_or("(none)") << ": "
                  << result->errorDescription().value_or("") << '\n';
      }
      break;
    default:
      break;
  }
}
