#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace lumo::cli {

/// How much of a file has been read, for a person who waits: on standard error if that is a terminal, and
/// only where the results go elsewhere. Work that is soon done shows nothing, and nothing stays behind.
class Progress {
 public:
  /// `size` of the file in bytes; 0 where it is not known, and then nothing is shown.
  Progress(const std::string& name, std::size_t size);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void advance(std::size_t bytes);
  /// Makes room for another text.
  void hide();

 private:
  using Clock = std::chrono::steady_clock;

  std::string name_;
  std::size_t size_;
  std::size_t done_ = 0;
  bool isShown_ = false;
  Clock::time_point next_;
};

}  // namespace lumo::cli
