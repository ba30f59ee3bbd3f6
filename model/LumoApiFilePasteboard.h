#pragma once

#include "LumoApi/Export.h"
#include "LumoApi/LumoApiDatastore.h"

#include <cstddef>
#include <memory>
#include <string>

/// A pasteboard in a file, where two processes can meet: one stages a record, another reads it.
///
/// The file is the keyed archive of the record, readable by its owner alone. It is replaced at once: readers
/// see the old record or the new one, never half, also when a writer dies midway. The file itself is never
/// followed where it is a link. A file that is damaged, oversized, another user's or no record at all reads
/// as no record, and lastError() says why; no file is no record and no error. Every operation may be called
/// from any thread, and by several processes at once.
class LUMOAPI_EXPORT LumoApiFilePasteboard : public LumoApiPasteboard {
 public:
  /// The largest file that is read or written, in bytes: several times what the largest request stages.
  static constexpr std::size_t kMaxFileSize = 268'435'456;

  /// A pasteboard in the file with that path, which need not exist yet.
  explicit LumoApiFilePasteboard(std::string path);
  ~LumoApiFilePasteboard() override;

  bool write(LumoApiLargeDataPtr record) noexcept override;
  LumoApiLargeDataPtr read() noexcept override;

  /// What went wrong in the last operation, with the file's name in front; empty where it went well.
  std::string lastError() const;

 private:
  struct State;
  const std::unique_ptr<State> state_;
};
