#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/LumoApiModel.h"
#include "LumoApi/LumoApiQueryDictionary.h"
#include "LumoApi/URL.h"
#include "LumoApi/internal/Collaborators.h"
#include "LumoApi/internal/Destinations.h"
#include "LumoApi/internal/Refusal.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the conversions of all kinds share: the steps that each of them calls in order, and the frame around
// one conversion. Nothing here is seen by users.

namespace lumo {

/// A text that is put into a query, with whatever keeps it alive.
using Text = std::optional<Data>;

/// What a conversion knows of its surroundings, and what it leaves behind.
struct Conversion {
  Collaborators& collaborators = processCollaborators();
  std::int32_t type = 0;
  const LumoApiKivaObject* kiva = nullptr;
  /// The store's values, read once.
  StoreValues store = collaborators.values();
  /// The record to hand over once the URL stands; null: the store keeps what it has.
  LumoApiLargeDataPtr staged = nullptr;
};

/// The bulky parts of a request; a null pointer is a part that it does not have.
struct LargeDataParts {
  const std::optional<Data>* previewImage = nullptr;
  const std::optional<Data>* fileData = nullptr;
  const std::optional<std::vector<Data>>* imageList = nullptr;
  const std::optional<std::string>* kivaData = nullptr;
};

// --- The steps, in the order in which a conversion takes them ---

/// Refuses a preview that is too long; none at all is fine.
Check checkedPreview(const std::optional<Data>& preview);

/// Refuses data that is absent, empty or too long, in the kind's own words, and then a preview that is.
Check checkedData(const std::optional<Data>& data, const std::optional<Data>& preview, std::string_view isNil,
                  std::string_view isTooBig);

/// A new query: the sending side, the kind word, how the messenger calls back.
LumoApiQueryDictionary fixedEntries(FixedWord kindWord);

/// The same, with the object to be found in the large-data record.
LumoApiQueryDictionary fixedEntriesWithPasteboard(FixedWord kindWord);

/// The user's open identifier and the app's own, each where the store has it.
void setIdentifiers(LumoApiQueryDictionary& query, const Conversion& conversion);

/// The scheme under which the messenger opens the app again, where the store has one.
void setCallbackName(LumoApiQueryDictionary& query, const Conversion& conversion);

/// Tag name, then message extension; each may be refused for its length, and is left out where it is not
/// UTF-8.
Check setTagNameAndMessageExt(LumoApiQueryDictionary& query, const TaggedObject& object);

/// Title, description and the app's display name, each left out where it is absent or not UTF-8.
void setTitles(LumoApiQueryDictionary& query, const LumoApiObject& object, const Conversion& conversion);

/// Prepares the record for the datastore and logs its count. An empty record is not handed over.
void stage(const LargeDataParts& parts, Conversion& conversion);

/// Writes the archived record into the query where its "objectlocation" is "url"; stages it otherwise.
void stageByLocation(const LargeDataParts& parts, LumoApiQueryDictionary& query, Conversion& conversion);

/// The launch URL, with the common keys where the destination carries them.
Result<URL> route(const Destination& destination, LumoApiQueryDictionary& query, const Conversion& conversion,
                  std::uint64_t shareDestType);

/// The signed group URL.
Result<URL> routeSigned(const LumoApiQueryDictionary& query, std::string_view path,
                        std::string_view signature, Collaborators& collaborators);

// --- Pieces of the steps ---

/// An object's text without a copy, for a query that lives no longer than the object.
inline Text unowned(const std::optional<std::string>& text) noexcept {
  return text ? Text(Data::unowned(*text)) : std::nullopt;
}

/// One of the store's texts as it is, where the store has it. It is not copied, and keeps the values alive
/// that it came with.
void setStoreText(LumoApiQueryDictionary& query, FixedWord key, const StoreValues& store,
                  const std::optional<std::string>& text);

/// The key with the base64 of the text; nothing where the text is null or not UTF-8.
void setBase64(LumoApiQueryDictionary& query, QueryKey key, Text text);

/// The same for a text of the object's or the store's, which outlives the query and is not copied.
void setUnownedBase64(LumoApiQueryDictionary& query, FixedWord key, const std::optional<std::string>& text);

/// The key with the base64 of the URL's text; nothing where there is none. The text is not copied.
void setURL(LumoApiQueryDictionary& query, QueryKey key, const std::optional<URL>& url);

/// The key with the base64 of the value's JSON text; a refusal of `field` where it is no dictionary and no
/// list, or holds what JSON cannot.
Check setJSON(LumoApiQueryDictionary& query, FixedWord key, const Value& value, std::string_view field);

/// The card's text, or null.
const std::optional<std::string>* kivaDataOf(const Conversion& conversion) noexcept;

/// The record of the parts, perhaps empty.
std::shared_ptr<LumoApiLargeData> largeData(const LargeDataParts& parts);

/// The common keys.
void setCommonKeys(LumoApiQueryDictionary& query, const Conversion& conversion);

// --- The frame ---

/// Runs `convert(conversion)` and hands its record over if a URL came out.
template <std::invocable<Conversion&> Convert>
Result<URL> converted(Conversion& conversion, const Convert& convert) noexcept {
  return guarded([&]() -> Result<URL> {
    Result<URL> url = convert(conversion);
    if (url && conversion.staged && !conversion.collaborators.setRecord(std::move(conversion.staged))) {
      url = refused(LumoApiRefusal::Code::PasteboardFailed, "apiLargeData", kSilent);
    }
    return url;
  });
}

/// A public converter operation: `Convert` for one object.
template <auto Convert, class Object>
std::optional<URL> convertedObject(Object& object, std::int32_t type,
                                   const LumoApiKivaObject* kiva = nullptr) noexcept {
  Conversion conversion{.type = type, .kiva = kiva};
  return concluded(converted(conversion, [&object](Conversion& current) { return Convert(object, current); }),
                   conversion.collaborators);
}

}  // namespace lumo
