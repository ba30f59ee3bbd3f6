#pragma once

#include "LumoApi/Data.h"
#include "cli/Console.h"
#include "cli/Progress.h"
#include "documents/NamedBytes.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace lumo::cli {

/// The most that is read of a file, and of a line: what the JSON parser takes.
inline constexpr std::size_t kMostBytes = 0x7FFFFFFF;

/// A file that could not be read or written; says which and why.
class FileError : public std::runtime_error {
 public:
  /// In words that begin with the file's name.
  explicit FileError(const std::string& what) : std::runtime_error(what) {}
  FileError(const std::string& name, const std::string& reason) : FileError(name + ": " + reason) {}
  /// The reason is what `error` (an errno) stands for.
  FileError(const std::string& name, int error);

  /// Whether the reader of a pipe went away, which is nothing to talk about.
  bool isBrokenPipe() const noexcept { return brokenPipe_; }

 private:
  bool brokenPipe_ = false;
};

/// Runs a command's work and gives its exit status; what it cannot read or write ends it.
template <class Work>
int withFiles(const Work& work) {
  try {
    return work();
  } catch (const FileError& error) {
    if (!error.isBrokenPipe()) complain(error.what());
    return kFileError;
  }
}

/// Whether the operand is a URL in place of a file name. A file wins: its name may hold a ":" too.
bool isURL(const std::string& operand);

/// The files that a document names, by paths relative to its folder.
class FilesBeside : public documents::NamedBytes {
 public:
  explicit FilesBeside(std::filesystem::path folder = {}) : folder_(std::move(folder)) {}
  Data file(const std::string& path) const override;

 private:
  const std::filesystem::path folder_;
};

/// The file that a command reads; "-" is standard input.
class Input {
 public:
  explicit Input(const std::string& file);
  ~Input();
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  /// For messages.
  const std::string& name() const noexcept { return name_; }
  /// The files that a document in it names.
  const FilesBeside& files() const noexcept { return files_; }

  /// Waits for bytes and gives how many were put into the buffer; 0 at the end.
  std::size_t read(char* buffer, std::size_t size);
  /// To be called before a complaint about what was read.
  void hideProgress() { progress_->hide(); }
  /// All that is left, in one piece.
  std::string readAll();

 private:
  std::string name_;
  FilesBeside files_;
  int descriptor_;
  std::size_t expectedSize_ = 0;
  std::optional<Progress> progress_;
};

/// Standard output, written in large pieces.
class Output {
 public:
  /// What is written next; whoever appends to it calls flush().
  std::string& buffer() noexcept { return buffer_; }
  void flush();

 private:
  std::string buffer_;
};

/// Writes a whole file; "-" is standard output. Throws a FileError, for a file that is there too, unless it
/// may be replaced.
enum class Existing { Kept, Replaced };
void writeFile(const std::string& file, std::string_view bytes, Existing existing = Existing::Replaced);

/// The bytes of a regular file; anything else (a pipe, a device, a folder) is an error.
Data readRegularFile(const std::filesystem::path& path);

}  // namespace lumo::cli
