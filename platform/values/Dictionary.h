#pragma once

#include "LumoApi/Export.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo {

/// A hash of a key that differs from process to process, so that nobody can prepare keys that collide.
LUMOAPI_EXPORT std::uint64_t seededHash(std::string_view key) noexcept;

/// A dictionary with text keys that keeps the order of insertion; a replaced key keeps its place.
///
/// Keys are case-sensitive and compared byte by byte. A few entries are looked through one by one, many
/// through an index, so no number of keys makes it slow. Several threads may read one, none while it changes.
/// `Key` is anything that gives its text as std::string_view.
template <class T, class Key = std::string>
class Dictionary {
 public:
  /// A key and its value.
  struct Entry {
    /// An entry made in place.
    template <class K, class V>
    Entry(K&& k, V&& v) : key(std::forward<K>(k)), value(std::forward<V>(v)) {}
    /// The key.
    Key key;
    /// Its value.
    T value;
    friend bool operator==(const Entry&, const Entry&) = default;
  };
  /// Goes over the entries in their order.
  using const_iterator = typename std::vector<Entry>::const_iterator;

  Dictionary() noexcept = default;
  Dictionary(std::initializer_list<std::pair<Key, T>> entries) {
    reserve(entries.size());
    for (const auto& [key, value] : entries) set(key, value);
  }

  bool empty() const noexcept { return entries_.empty(); }
  std::size_t size() const noexcept { return entries_.size(); }
  const_iterator begin() const noexcept { return entries_.begin(); }
  const_iterator end() const noexcept { return entries_.end(); }
  void reserve(std::size_t count) { entries_.reserve(count); }

  /// Null where the key is absent.
  const T* find(std::string_view key) const noexcept {
    const std::size_t place = placeOf(key);
    return place == kNone ? nullptr : &entries_[place].value;
  }
  /// Null where the key is absent; not to be called while another thread reads.
  T* find(std::string_view key) noexcept { return const_cast<T*>(std::as_const(*this).find(key)); }
  bool contains(std::string_view key) const noexcept { return placeOf(key) != kNone; }

  /// Adds the entry, or replaces the value of the one with the same key. Changes nothing where it throws.
  /// Key and value are made in place of what they are made from.
  void set(const Key& key, T value) { assign(key, std::move(value)); }
  /// The same.
  void set(Key&& key, T&& value) { assign(std::move(key), std::move(value)); }
  /// The same with anything that a key and a value can be made from. Flattened, for nothing of the vector's
  /// growing is left where room is known to be there.
  template <class K, class V>
  [[gnu::flatten]] void assign(K&& key, V&& value) {
    const std::uint64_t bit = bitOf(std::string_view(key));
    const bool isNew = (seen_ & bit) == 0;
    if (isNew && entries_.size() < kIndexedFrom && entries_.size() != entries_.capacity()) [[likely]] {
      entries_.emplace_back(std::forward<K>(key), std::forward<V>(value));
      seen_ |= bit;
    } else {
      assignWithCare(std::forward<K>(key), std::forward<V>(value));
    }
  }

  /// The same keys with equal values, in whatever order.
  friend bool operator==(const Dictionary& a, const Dictionary& b) {
    if (a.size() != b.size()) return false;
    for (const Entry& entry : a) {
      const T* other = b.find(std::string_view(entry.key));
      if (!other || !(entry.value == *other)) return false;
    }
    return true;
  }

 private:
  friend class Value;
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  static constexpr std::size_t kIndexedFrom = 24;

  /// One of 64 bits, chosen by what is cheap to read of a key: most keys that are absent miss it in `seen_`.
  static std::uint64_t bitOf(std::string_view key) noexcept {
    if (key.empty()) return 1;
    const unsigned mixed = static_cast<unsigned char>(key.front()) +
                           2u * static_cast<unsigned char>(key[key.size() * 3 / 4]) +
                           3u * static_cast<unsigned>(key.size());
    return std::uint64_t{1} << (mixed % 64);
  }

  std::size_t placeOf(std::string_view key) const noexcept {
    if (!(seen_ & bitOf(key))) return kNone;
    if (index_.empty()) {
      for (std::size_t place = 0; place < entries_.size(); ++place) {
        if (std::string_view(entries_[place].key) == key) return place;
      }
      return kNone;
    }
    const std::size_t mask = index_.size() - 1;
    for (std::size_t slot = seededHash(key) & mask; index_[slot] != 0; slot = (slot + 1) & mask) {
      const std::size_t place = index_[slot] - 1;
      if (std::string_view(entries_[place].key) == key) return place;
    }
    return kNone;
  }

  /// For what may be present, and for what may need room.
  template <class K, class V>
  [[gnu::noinline]] void assignWithCare(K&& key, V&& value) {
    if (T* present = find(std::string_view(key))) {
      *present = T(std::forward<V>(value));
      return;
    }
    if (entries_.size() >= kIndexedFrom) makeRoomInIndex(entries_.size() + 1);
    const std::uint64_t bit = bitOf(std::string_view(key));
    entries_.emplace_back(std::forward<K>(key), std::forward<V>(value));
    seen_ |= bit;
    if (!index_.empty()) addToIndex(entries_.size() - 1);
  }

  /// Open addressing at most half full; a slot holds a place plus one, 0 when free.
  void makeRoomInIndex(std::size_t count) {
    if (count * 2 <= index_.size()) return;
    std::size_t slots = 64;
    while (slots < count * 4) slots *= 2;
    std::vector<std::size_t> larger(slots, 0);
    index_.swap(larger);
    for (std::size_t place = 0; place < entries_.size(); ++place) addToIndex(place);
  }

  void addToIndex(std::size_t place) noexcept {
    const std::size_t mask = index_.size() - 1;
    std::size_t slot = seededHash(std::string_view(entries_[place].key)) & mask;
    while (index_[slot] != 0) slot = (slot + 1) & mask;
    index_[slot] = place + 1;
  }

  std::vector<Entry> entries_;
  std::vector<std::size_t> index_;
  std::uint64_t seen_ = 0;  // the bits of all keys
};

/// A dictionary whose values are texts: a group's query, the whole query of a response.
using StringDictionary = Dictionary<std::string>;

}  // namespace lumo
