#include "cli/Commands.h"
#include "cli/Console.h"

#include <csignal>
#include <new>

int main(int argc, char** argv) {
  static_cast<void>(
      std::signal(SIGPIPE, SIG_IGN));  // a reader that went away is an error of writing, like any other
  try {
    return lumo::cli::runTool({argv + (argc > 0 ? 1 : 0), argv + argc});
  } catch (const std::bad_alloc&) {
    lumo::cli::complain("memory is exhausted");
    return lumo::cli::kFileError;
  }
}
