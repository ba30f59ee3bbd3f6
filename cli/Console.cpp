#include "cli/Console.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace lumo::cli {

bool isColoured(const std::optional<std::string>& when) {
  if (when && *when != "auto") return *when == "always";
  const char* refused = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return ::isatty(STDOUT_FILENO) == 1 && (!refused || *refused == '\0') &&
         !(terminal && std::string_view(terminal) == "dumb");
}

void complain(std::string_view text) {
  std::string line("lumoapi: ");
  line.append(text).append("\n");
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

}  // namespace lumo::cli
