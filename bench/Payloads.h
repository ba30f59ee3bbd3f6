#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/LumoApiURLObjects.h"
#include "LumoApi/Value.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

/// What the benchmarks convert; the same in every program and every run.
namespace bench {

inline constexpr std::size_t KiB = 1024;
inline constexpr std::size_t MiB = 1024 * KiB;

/// "64 KiB", "5 MiB".
std::string sizeName(std::size_t size);

/// Bytes that no encoder can guess.
std::string randomBytes(std::size_t size);
lumo::Data randomData(std::size_t size);

std::string letters(std::size_t count);
/// Ideographs, three bytes each.
std::string ideographs(std::size_t count);

/// Silences the log and fills the datastore with the values that it gives: those of an app whose messenger
/// reads everything from the URL.
LumoApiDatastore::Values useStore();

std::optional<LumoApiMessage> textMessage(std::string text);
std::optional<LumoApiMessage> linkMessage(std::size_t previewSize);
std::optional<LumoApiMessage> videoMessage(std::size_t size);

/// A large-data record with one picture in it.
lumo::Value record(std::size_t pictureSize);

/// A request of the messenger to show a news page, about 300 bytes; with a staged record of this size in it.
std::string incomingURL(std::size_t recordSize = 0);

/// A document of some 150 bytes; a list of them of some 100 KB.
lumo::Value smallDocument();
lumo::Value largeDocument();

/// A camera's picture: baseline JPEG, 4:2:0, fine grain.
lumo::Data cameraPicture(unsigned width, unsigned height, int quality);
// Too long for a profile, and not so long as to be refused.
inline lumo::Data picture12() { return cameraPicture(4000, 3000, 97); }
inline lumo::Data picture48() { return cameraPicture(8000, 6000, 90); }
/// What such a picture is re-encoded with.
double profileQuality(const lumo::Data& picture);

}  // namespace bench
