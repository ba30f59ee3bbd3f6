#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Value.h"
#include "inspect/Content.h"
#include "inspect/Keys.h"
#include "inspect/Warnings.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo::inspection {

/// An entry of a large-data record, or a part of one.
struct RecordEntry {
  std::string path;  ///< "image_data_list[0]", "file_data.textArray[0]"
  std::string_view meaning;
  std::optional<Data> bytes;
  Content content{};                ///< of the bytes
  std::optional<std::string> text;  ///< a text; of anything else that is not bytes, what it is
};

/// A large-data record, with all parts in one list: a list before its elements, archived common content
/// before its fields.
struct Record {
  bool isInStore = false;
  bool isAnnounced = true;  ///< whether the URL refers to it
  std::vector<RecordEntry> entries;
  std::size_t leftOut = 0;
};

Record recordOf(const Value::Dictionary& dictionary);

/// The record in an archive; null where it is none.
std::optional<Record> archivedRecord(const Data& archive);

/// Warns of what the record lacks, or has more of than the messenger accepts.
void checkRecord(const Record& record, const RecordInfo& info, Warnings& warnings);

}  // namespace lumo::inspection
