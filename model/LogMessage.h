#pragma once

#include "LumoApi/LumoApiLog.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace lumo {

/// The message text of a log line: the places of the format filled with the arguments, such that none of them
/// can forge a line or steer a terminal.
std::string logMessage(std::string_view format, std::initializer_list<LumoApiLog::Argument> arguments);

}  // namespace lumo
