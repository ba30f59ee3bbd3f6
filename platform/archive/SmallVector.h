#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

namespace lumo {

/// A vector of plain values that needs no heap for the first `kInline` of them.
template <class T, std::size_t kInline>
class SmallVector {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  SmallVector() noexcept = default;
  SmallVector(const SmallVector&) = delete;
  SmallVector& operator=(const SmallVector&) = delete;

  bool empty() const noexcept { return size_ == 0; }
  std::size_t size() const noexcept { return size_; }
  T* data() noexcept { return data_; }
  const T* data() const noexcept { return data_; }
  const T* begin() const noexcept { return data_; }
  const T* end() const noexcept { return data_ + size_; }
  T& operator[](std::size_t place) noexcept { return data_[place]; }
  const T& operator[](std::size_t place) const noexcept { return data_[place]; }
  T& back() noexcept { return data_[size_ - 1]; }

  void push_back(const T& value) {
    reserve(size_ + 1);
    data_[size_++] = value;
  }
  void pop_back() noexcept { --size_; }

  /// New values are all zero bits.
  void resize(std::size_t size) {
    reserve(size);
    if (size > size_) std::memset(static_cast<void*>(data_ + size_), 0, (size - size_) * sizeof(T));
    size_ = size;
  }

  /// Takes in what was written behind the values, into reserved memory.
  void extend(std::size_t count) noexcept { size_ += count; }

  void reserve(std::size_t capacity) {
    if (capacity > capacity_) [[unlikely]]
      grow(std::max(capacity, 2 * capacity_));
  }

 private:
  [[gnu::noinline]] void grow(std::size_t capacity) {
    auto larger = std::make_unique_for_overwrite<std::byte[]>(capacity * sizeof(T));
    std::memcpy(larger.get(), data_, size_ * sizeof(T));
    heap_ = std::move(larger);
    data_ = reinterpret_cast<T*>(heap_.get());
    capacity_ = capacity;
  }

  T* data_ = reinterpret_cast<T*>(inline_);
  std::size_t size_ = 0;
  std::size_t capacity_ = kInline;
  std::unique_ptr<std::byte[]> heap_;
  alignas(T) std::byte inline_[kInline * sizeof(T)];
};

}  // namespace lumo
