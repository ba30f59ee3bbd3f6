#pragma once

#include "LumoApi/LumoApiFilePasteboard.h"
#include "LumoApi/LumoApiLargeData.h"

#include <optional>
#include <string>

namespace lumo::cli {

/// The file that holds the large-data record of a command, where other processes meet it.
class StoreFile {
 public:
  /// Without a file there is no pasteboard, and nothing else happens.
  explicit StoreFile(const std::optional<std::string>& file);

  /// What a conversion is given; null without a file.
  LumoApiPasteboard* pasteboard() noexcept { return file_ ? &*file_ : nullptr; }

  /// Before a conversion: a record of its request replaces the file's. Throws a FileError where the file
  /// could not be read or written; one that holds something else must not be replaced.
  void prepare(LumoApiLargeDataPtr record);
  /// After a conversion, to which a file that failed was one without a record. Throws the FileError.
  void check() const;

 private:
  /// Remembers the first thing that went wrong.
  class Watched final : public LumoApiPasteboard {
   public:
    explicit Watched(const std::string& file) : pasteboard_(file) {}
    bool write(LumoApiLargeDataPtr record) noexcept override;
    LumoApiLargeDataPtr read() noexcept override;
    const std::string& error() const noexcept { return error_; }

   private:
    void keepError() noexcept;

    LumoApiFilePasteboard pasteboard_;
    std::string error_;
  };

  std::optional<Watched> file_;
};

}  // namespace lumo::cli
