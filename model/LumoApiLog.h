#pragma once

#include "LumoApi/Export.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

/// The log of the converter: each line goes through this one function.
///
/// Lines go to the handler that the app registers, to standard error without one, and nowhere while the log
/// is silent, where a line costs next to nothing. Every operation may be called from any thread; the handler
/// is called on the thread that logs, with no lock held, and must not throw (what it throws is dropped).
class LUMOAPI_EXPORT LumoApiLog {
 public:
  /// A line of the log.
  struct Line {
    /// The logging source, without a suffix: "LumoApi/LumoApiMessageAndUrlConverter".
    std::string_view file;
    /// The line in that source.
    int line;
    /// The message text, UTF-8. Of the texts that were filled in, control characters, ends of lines and marks
    /// of direction stand as `\u001b` or `\u2028`, and bytes that are not UTF-8 as `\xff`.
    std::string_view message;
  };
  /// What the app does with a line.
  using Handler = std::function<void(const Line&)>;

  static void setHandler(Handler handler);
  /// Back to standard error.
  static void removeHandler();
  /// Drops every line from now on, until a handler is set or removed.
  static void silence() noexcept;

  /// What a format's places are filled with: a text for "%@" and "%s", a number for "%d" and "%lu".
  using Argument = std::variant<std::string_view, std::int64_t, std::uint64_t>;

  /// Whether anybody listens, for arguments that cost something to make.
  static bool isListening() noexcept;

  /// Logs a line. The format is the program's own text, never a user's; its places "%@", "%s", "%d", "%lu"
  /// are filled with the arguments in order, "%%" is a percent sign. Never throws; where memory is short the
  /// line is dropped.
  static void log(std::string_view format, std::initializer_list<Argument> arguments = {},
                  int line = __builtin_LINE()) noexcept;
};
