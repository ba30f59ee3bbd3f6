#pragma once

#include "cli/Files.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace lumo::cli {

/// The lines of an input, one after the other. A line ends with "\n" or "\r\n"; the last may lack its end.
class LineReader {
 public:
  explicit LineReader(Input& input) noexcept : input_(input) {}

  /// The next line without its end, valid until the next call; null after the last. Whenever it must wait for
  /// input, it flushes the output first: whoever feeds the input may want to see the results so far.
  std::optional<std::string_view> next(Output& output);

 private:
  std::string_view taken(std::size_t length, std::size_t lengthWithEnd);
  /// Moves what is left to the front of the buffer and reads more behind it.
  void fill();

  Input& input_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool ended_ = false;
};

}  // namespace lumo::cli
