#include "cli/Console.h"

#include <cstdio>
#include <string>

namespace lumo::cli {

void complain(std::string_view text) {
  std::string line("lumoapi: ");
  line.append(text).append("\n");
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

}  // namespace lumo::cli
