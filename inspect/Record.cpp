#include "inspect/Record.h"

#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiLargeData.h"
#include "inspect/Printable.h"
#include "platform/archive/KeyedUnarchiver.h"
#include "platform/values/JSON.h"

#include <algorithm>
#include <utility>

namespace lumo::inspection {

namespace {

constexpr std::size_t kMostEntries = 100;
constexpr std::size_t kLongestKey = 64;

/// A key as it stands in a path, cut between two characters where it is very long.
std::string inPath(std::string_view key) {
  if (key.size() <= kLongestKey) return std::string(key);
  std::size_t length = kLongestKey;
  while (length > 0 && (static_cast<unsigned char>(key[length]) & 0xC0) == 0x80) --length;
  return std::string(key.substr(0, length)) + "…";
}

/// Walks through a record; an archive is no deeper than its reader allows.
class Walk {
 public:
  void visit(const Value::Dictionary& dictionary, const std::string& prefix) {
    for (const auto& [key, value] : dictionary) {
      if (isFull()) {
        ++record.leftOut;
      } else {
        visit(value, prefix + inPath(key), recordMeaning(key));
      }
    }
  }

  Record record;

 private:
  bool isFull() const noexcept { return record.entries.size() == kMostEntries; }

  void visit(const Value& value, const std::string& path, std::string_view meaning) {
    RecordEntry& entry = record.entries.emplace_back(RecordEntry{path, meaning, {}, {}, {}});
    if (const Data* bytes = value.asData()) {
      visitBytes(entry, *bytes);
    } else if (const Value::Array* array = value.asArray()) {
      entry.text = "a list of " + std::to_string(array->size());
      visit(*array, path);
    } else if (const Value::Dictionary* dictionary = value.asDictionary()) {
      entry.text = "a dictionary of " + std::to_string(dictionary->size());
      visit(*dictionary, path + ".");
    } else {
      entry.text = textOf(value, path);
    }
  }

  void visit(const Value::Array& array, const std::string& path) {
    for (std::size_t i = 0; i < array.size(); ++i) {
      if (isFull()) {
        record.leftOut += array.size() - i;
        return;
      }
      visit(array[i], path + "[" + std::to_string(i) + "]", "");
    }
  }

  /// The main bytes of common content are an archive of their own.
  void visitBytes(RecordEntry& entry, const Data& bytes) {
    entry.bytes = bytes;
    entry.content = contentOf(bytes);
    if (entry.path != record::kFileData.text || entry.content.extension != "plist") return;
    const std::optional<Value> root = unarchivedValue(bytes);
    const Value::Dictionary* form = root ? root->asDictionary() : nullptr;
    if (!form) return;
    entry.content.inWords = "archive";
    visit(*form, std::string(record::kFileData.text) + ".");
  }

  static std::string textOf(const Value& value, std::string_view path) {
    const std::string* text = value.asString();
    if (!text) return writeJSON(value).value_or("?");
    if (path != record::kKivaData.text) return *text;
    return base64Decoded(*text).value_or(*text);
  }
};

const RecordEntry* find(const Record& record, std::string_view path) {
  const auto place = std::find_if(record.entries.begin(), record.entries.end(),
                                  [&](const RecordEntry& entry) { return entry.path == path; });
  return place == record.entries.end() ? nullptr : &*place;
}

void checkSize(std::string_view path, std::uint64_t size, std::uint64_t limit, Warnings& warnings) {
  if (limit == 0 || size <= limit) return;
  warnings.add(codes::kLimitExceeded, path,
               [&] { return grouped(size) + " bytes; the messenger accepts " + grouped(limit); });
}

void checkPictures(const Record& record, const RecordInfo& info, Warnings& warnings) {
  const std::string_view list = lumo::record::kImageDataList.text;
  std::uint64_t together = 0, count = 0;
  for (const RecordEntry& entry : record.entries) {
    if (!entry.path.starts_with(list) || !entry.bytes) continue;
    ++count;
    together += entry.bytes->size();
    checkSize(entry.path, entry.bytes->size(), info.picture, warnings);
  }
  checkSize(list, together, info.together, warnings);
  if (info.pictures != 0 && count > info.pictures) {
    warnings.add(codes::kLimitExceeded, list, [&] {
      return std::to_string(count) + " pictures; the messenger accepts " + std::to_string(info.pictures);
    });
  }
}

}  // namespace

Record recordOf(const Value::Dictionary& dictionary) {
  Walk walk;
  walk.visit(dictionary, "");
  return std::move(walk.record);
}

std::optional<Record> archivedRecord(const Data& archive) {
  const std::optional<Value> root = unarchivedValue(archive);
  const Value::Dictionary* dictionary = root ? root->asDictionary() : nullptr;
  if (!dictionary) return std::nullopt;
  return recordOf(*dictionary);
}

void checkRecord(const Record& record, const RecordInfo& info, Warnings& warnings) {
  if (!info.needed.empty() && !find(record, info.needed)) {
    warnings.add(codes::kRecordIncomplete, info.needed,
                 [] { return "is not in the record, which makes no sense without it"; });
  }
  const RecordEntry* main = find(record, lumo::record::kFileData.text);
  if (main && main->bytes) checkSize(main->path, main->bytes->size(), info.mainBytes, warnings);
  const RecordEntry* preview = find(record, lumo::record::kPreviewImageData.text);
  if (preview && preview->bytes) checkSize(preview->path, preview->bytes->size(), info.preview, warnings);
  checkPictures(record, info, warnings);
}

}  // namespace lumo::inspection
