#pragma once

#include "LumoApi/Data.h"

#include <cstddef>
#include <optional>
#include <string>

namespace lumo {

// Without state: any thread may call these functions at any time, also for the same file.

/// What became of an operation on a file: an empty text where it went well, else what went wrong in words,
/// without the file's name ("Permission denied", "not a regular file").
using FileError = std::string;

/// Replaces the file's content at once: the bytes are written beside it, flushed to the disk and renamed, so
/// that a reader, and a writer that dies midway, leave the old content or the new, never half. Only the owner
/// may read the file. Anything but a regular file in its place, a link too, is refused and left alone. A
/// writer that dies midway may leave its unfinished file, `path` and seven characters more, behind.
FileError replacePrivateFile(const std::string& path, const DataChain& content);

/// Removes the file; that there is none is no error. Anything but a regular file is refused and left alone.
FileError removePrivateFile(const std::string& path);

/// Reads the file whole; `content` is null where there is none, which is no error. A link, anything but a
/// regular file, a file of another user, one of more than `limit` bytes and one that changes its size
/// meanwhile are refused.
FileError readPrivateFile(const std::string& path, std::size_t limit, std::optional<Data>& content);

}  // namespace lumo
