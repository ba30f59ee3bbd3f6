#include "LumoApi/LumoApiLog.h"

#include "model/LogMessage.h"
#include "model/Registered.h"

#include <atomic>
#include <cstdio>
#include <memory>
#include <utility>

namespace {

constexpr std::string_view kFile = "LumoApi/LumoApiMessageAndUrlConverter";

using RegisteredHandler = lumo::Registered<LumoApiLog::Handler>;

constinit std::atomic<bool> listening{true};

void writeToStandardError(const LumoApiLog::Line& line) {
  (void)std::fprintf(stderr, "%.*s:%d: %.*s\n", static_cast<int>(line.file.size()), line.file.data(),
                     line.line, static_cast<int>(line.message.size()), line.message.data());
}

void replace(RegisteredHandler::Pointer handler, bool listens) noexcept {
  RegisteredHandler::set(std::move(handler), [listens] { listening = listens; });
}

}  // namespace

void LumoApiLog::setHandler(Handler function) {
  replace(std::make_shared<const Handler>(std::move(function)), true);
}

void LumoApiLog::removeHandler() { replace(nullptr, true); }

void LumoApiLog::silence() noexcept { replace(nullptr, false); }

bool LumoApiLog::isListening() noexcept { return listening.load(std::memory_order_relaxed); }

void LumoApiLog::log(std::string_view format, std::initializer_list<Argument> arguments, int line) noexcept {
  if (!isListening()) return;
  try {
    const auto listener = RegisteredHandler::current();
    const std::string message = lumo::logMessage(format, arguments);
    const Line logged{kFile, line, message};
    if (listener && *listener) {
      (*listener)(logged);
    } else {
      writeToStandardError(logged);
    }
  } catch (...) {  // a log line is never worth a conversion
  }
}
