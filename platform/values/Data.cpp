#include "LumoApi/Data.h"

#include <algorithm>
#include <cstring>

namespace lumo {

namespace {

template <class Container>
Data adopt(Container&& bytes) {
  if (bytes.empty()) return {};
  auto owner = std::make_shared<const std::remove_cvref_t<Container>>(std::forward<Container>(bytes));
  const auto* start = reinterpret_cast<const std::uint8_t*>(owner->data());
  const std::size_t size = owner->size();
  return {std::move(owner), start, size};
}

}  // namespace

Data::Data(std::vector<std::uint8_t>&& bytes) : Data(adopt(std::move(bytes))) {}

Data::Data(std::string&& bytes) : Data(adopt(std::move(bytes))) {}

Data Data::copy(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return {};
  DataBuffer buffer = uninitialized(bytes.size());
  std::memcpy(buffer.bytes, bytes.data(), bytes.size());
  return std::move(buffer.data);
}

Data Data::copy(std::string_view bytes) {
  return copy(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

DataBuffer Data::uninitialized(std::size_t size) {
  auto owner = std::make_shared_for_overwrite<std::uint8_t[]>(size);
  std::uint8_t* bytes = owner.get();
  return {Data(std::move(owner), bytes, size), bytes};
}

Data Data::slice(std::size_t offset, std::size_t length) const noexcept {
  offset = std::min(offset, size_);
  return {owner_, bytes_ + offset, std::min(length, size_ - offset)};
}

void DataChain::append(Data piece) {
  if (!piece.empty()) pieces_.push_back(std::move(piece));
}

std::size_t DataChain::size() const noexcept {
  std::size_t total = 0;
  for (const Data& piece : pieces_) total += piece.size();
  return total;
}

Data DataChain::joined() const {
  if (pieces_.empty()) return {};
  if (pieces_.size() == 1) return pieces_.front();
  DataBuffer buffer = Data::uninitialized(size());
  std::uint8_t* out = buffer.bytes;
  for (const Data& piece : pieces_) out = std::copy(piece.begin(), piece.end(), out);
  return std::move(buffer.data);
}

}  // namespace lumo
