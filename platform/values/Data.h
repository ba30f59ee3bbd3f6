#pragma once

#include "LumoApi/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo {

struct DataBuffer;

/// An immutable, reference-counted byte buffer.
///
/// Copying a Data copies no bytes: a video of 50 MiB is staged, archived and read back as the very same
/// memory. Distinct Data objects may be used from several threads at once, also where they share their bytes.
class LUMOAPI_EXPORT Data {
 public:
  /// Empty bytes (which differ from absent bytes, `std::nullopt`).
  Data() noexcept = default;

  Data(const Data&) noexcept = default;
  Data& operator=(const Data&) noexcept = default;
  /// Takes the bytes of the other, which is then empty.
  Data(Data&& other) noexcept
      : owner_(std::move(other.owner_)),
        bytes_(std::exchange(other.bytes_, nullptr)),
        size_(std::exchange(other.size_, 0)) {}
  /// The same.
  Data& operator=(Data&& other) noexcept {
    owner_ = std::move(other.owner_);
    bytes_ = std::exchange(other.bytes_, nullptr);
    size_ = std::exchange(other.size_, 0);
    return *this;
  }

  /// Takes the bytes over without copying them.
  explicit Data(std::vector<std::uint8_t>&& bytes);
  /// The same.
  explicit Data(std::string&& bytes);

  /// Shares `size` bytes at `bytes`, which stay valid and unchanged as long as `owner` lives.
  Data(std::shared_ptr<const void> owner, const std::uint8_t* bytes, std::size_t size) noexcept
      : owner_(std::move(owner)), bytes_(bytes), size_(size) {}

  /// Copies the bytes.
  static Data copy(std::span<const std::uint8_t> bytes);
  /// The same.
  static Data copy(std::string_view bytes);

  /// The bytes where they are: they must stay, unchanged, as long as this Data and its copies.
  static Data unowned(std::string_view bytes) noexcept {
    return {nullptr, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
  }

  /// A buffer of `size` bytes, in one allocation, to be filled before its Data is shared.
  static DataBuffer uninitialized(std::size_t size);

  const std::uint8_t* data() const noexcept { return bytes_; }
  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  const std::uint8_t* begin() const noexcept { return bytes_; }
  const std::uint8_t* end() const noexcept { return bytes_ + size_; }

  /// The bytes as text; no encoding is assumed.
  std::string_view view() const noexcept { return {reinterpret_cast<const char*>(bytes_), size_}; }

  /// Whether this Data keeps its bytes alive; false for unowned() and for empty bytes.
  bool isOwned() const noexcept { return owner_ != nullptr; }

  /// A part of the bytes, sharing their memory; both numbers are cut to what is there.
  Data slice(std::size_t offset, std::size_t length) const noexcept;

  /// Equal bytes; the same memory is equal without being read.
  friend bool operator==(const Data& a, const Data& b) noexcept {
    return a.size_ == b.size_ && (a.bytes_ == b.bytes_ || a.view() == b.view());
  }

 private:
  std::shared_ptr<const void> owner_;
  const std::uint8_t* bytes_ = nullptr;
  std::size_t size_ = 0;
};

/// A Data that is still being filled through `bytes`.
struct DataBuffer {
  /// The bytes, which nobody else may see yet.
  Data data;
  /// Where they are written.
  std::uint8_t* bytes = nullptr;
};

/// Bytes that lie in several buffers, one after the other: an archive, so that the large buffers in it are
/// written where they are needed without ever being put together.
class LUMOAPI_EXPORT DataChain {
 public:
  DataChain() noexcept = default;

  void reserve(std::size_t pieces) { pieces_.reserve(pieces); }
  void append(Data piece);

  std::size_t size() const noexcept;
  /// The buffers, in order.
  const std::vector<Data>& pieces() const noexcept { return pieces_; }

  /// The same bytes in one buffer; copies nothing when they lie in one already.
  Data joined() const;

 private:
  std::vector<Data> pieces_;
};

}  // namespace lumo
