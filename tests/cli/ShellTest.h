#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

/// Runs the tool as its users do.
class ShellTest : public ::testing::Test {
 protected:
  struct Outcome {
    int status;
    std::string output, errors;
  };

  ShellTest() {
    std::string name = (std::filesystem::temp_directory_path() / "lumoapi-XXXXXX").string();
    folder_ = ::mkdtemp(name.data());
  }
  ~ShellTest() override { std::filesystem::remove_all(folder_); }

  void write(const std::string& name, const std::string& text) { std::ofstream(folder_ / name) << text; }
  std::string read(const std::filesystem::path& name) const {
    std::stringstream text;
    text << std::ifstream(folder_ / name).rdbuf();
    return text.str();
  }

  /// Runs a line of shell in a folder of the test's own; `lumoapi` is the tool.
  Outcome shell(const std::string& line, const std::string& input = "") {
    write("in", input);
    const std::string script = "cd '" + folder_.string() + "' && PATH=\"" +
                               std::filesystem::path(LUMOAPI_TOOL).parent_path().string() + ":$PATH\" && { " +
                               line + "\n} <in >out 2>err";
    const int status = std::system(script.c_str());
    return {WEXITSTATUS(status), read("out"), read("err")};
  }

  /// The output or the errors begin so, or are empty.
  static void expectBeginning(const std::string& text, const std::string& beginning) {
    EXPECT_EQ(text.substr(0, beginning.empty() ? 99 : beginning.size()), beginning);
  }

  std::filesystem::path folder_;
};
