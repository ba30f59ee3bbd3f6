// Writes the manual page and the completions below a folder, where an installation has them, too.

#include "cli/Console.h"
#include "cli/pages/Pages.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace {

namespace fs = std::filesystem;

bool write(const fs::path& file, const std::string& text) {
  std::error_code error;
  fs::create_directories(file.parent_path(), error);
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) lumo::cli::complain(file.string() + ": cannot be written");
  return !stream.fail();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return lumo::cli::kWrongUsage;
  const fs::path share = argv[1];
  const bool isDone = write(share / "man/man1/lumoapi.1", lumo::cli::manualPage(argv[2], argv[3])) &&
                      write(share / "bash-completion/completions/lumoapi", lumo::cli::bashCompletion()) &&
                      write(share / "zsh/site-functions/_lumoapi", lumo::cli::zshCompletion()) &&
                      write(share / "fish/vendor_completions.d/lumoapi.fish", lumo::cli::fishCompletion());
  return isDone ? lumo::cli::kDone : lumo::cli::kFileError;
}
