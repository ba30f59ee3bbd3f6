#include "inspect/Keys.h"

#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/internal/Keys.h"
#include "LumoApi/internal/Limits.h"

#include <algorithm>
#include <iterator>

namespace lumo::inspection {

namespace {

using enum Encoding;

// clang-format off
constexpr KeyInfo kKeys[] = {
    // Who asks, and how to answer.
    {keys::kSourceType,          "who asks",                    Word},
    {keys::kVersion,             "version of the format",       Word},
    {keys::kSource,              "where the app is",            Word},
    {keys::kCallbackType,        "how to answer",               Word},
    {keys::kCallbackName,        "scheme that opens the app",   Plain},
    {keys::kThirdAppDisplayName, "name of the app",             Text},
    {keys::kDisplayName,         "name of the group's app",     Text},
    {keys::kAppId,               "identifier of the app",       Plain},
    // What is sent, and where it is found.
    {keys::kFileType,            "kind of content",             Kind},
    {keys::kFileData,            "text",                        Text, limits::kText.largest},
    {keys::kFileName,            "name of the file",            Plain},
    {keys::kObjectLocation,      "where the bytes are",         Word},
    {keys::kPasteboard,          "bytes, as a record",          Record},
    {keys::kTitle,               "title",                       Text, limits::kTitle.largest},
    {keys::kDescription,         "description",                 Text, limits::kDescription.largest},
    {keys::kTagName,             "tag",                         Text, limits::kTagName.largest},
    {keys::kMessageExt,          "the app's own data",          Text, limits::kMessageExt.largest},
    {keys::kURL,                 "link",                        Link, limits::kURL.largest},
    {keys::kFlashURL,            "link to a player",            Link},
    {keys::kPreviewImageURL,     "link to a picture",           Link},
    {keys::kPreviewImageData,    "preview picture",             Bytes},
    {keys::kVideoAssetURL,       "video on the device",         Text},
    {keys::kExtMap,              "extra map",                   JSON},
    // Services, groups and mini-programs.
    {keys::kServiceId,           "identifier of the service",   Plain},
    {keys::kServiceUserInfo,     "details for the service",     JSON},
    {keys::kUnionId,             "identifier of the group",     Plain},
    {keys::kMiniAppId,           "mini-program",                Plain},
    {keys::kMiniPath,            "page to open in it",          Text},
    {keys::kMiniType,            "type of mini-program",        Number},
    {keys::kGuildAvatar,         "picture of the guild",        Escaped},
    {"sig",                      "signature of the keys",       Plain},
    // The common keys.
    {keys::kShareType,           "way of sharing",              Word},
    {keys::kMessageType,         "what the message is",         Word},
    {keys::kOpenId,              "open identifier of the user", Plain},
    {keys::kUin,                 "number of the user",          Plain},
    {keys::kGeneralPasteboard,   "general pasteboard works",    Word},
    {keys::kCflag,               "control flags",               Number},
    // What the messenger sends.
    {keys::kAppParameter,        "launch parameter",            Escaped},
    {keys::kNeedToGetData,       "message is in the store",     Word},
    {keys::kError,               "error value",                 Plain},
    {keys::kErrorDescription,    "error in words",              Text},
    {keys::kErrorExtendInfo,     "more about the error",        Text},
};

struct WordInfo {
  std::string_view key, word, gloss;
};
constexpr WordInfo kWords[] = {
    {keys::kSourceType,        "app",             ""},
    {keys::kVersion,           "1",               ""},
    {keys::kSource,            "external",        "outside the messenger"},
    {keys::kCallbackType,      "scheme",          "by the app's URL scheme"},
    {keys::kObjectLocation,    "pasteboard",      "beside the URL, in the store"},
    {keys::kObjectLocation,    "url",             "in the URL itself"},
    {keys::kShareType,         "1",               "message type 7"},
    {keys::kShareType,         "0",               "message type 5"},
    {keys::kMessageType,       "responsefromapp", "the app's answer to the messenger"},
    {keys::kGeneralPasteboard, "1",               "yes"},
    {keys::kNeedToGetData,     "true",            ""},
};

namespace record_ = lumo::record;
constexpr std::uint64_t kData = limits::kData.largest;
constexpr std::uint64_t kPreview = limits::kPreviewImage.largest;
constexpr std::string_view kMain = record_::kFileData.text;
constexpr RecordInfo kPreviewAlone{.preview = kPreview};
constexpr RecordInfo kDataRecord{.needed = kMain, .mainBytes = kData, .preview = kPreview};
constexpr RecordInfo kAvatarRecord{.needed = kMain, .mainBytes = kData};
constexpr RecordInfo kFeedRecord{.mainBytes = limits::kFeedVideo.largest, .pictures = limits::kFeedPictures.largest};
constexpr RecordInfo kFacesRecord{.needed = record_::kImageDataList.text,
                                  .pictures = limits::kFacePictures.largest,
                                  .picture = limits::kFacePicture.largest,
                                  .together = limits::kFacePicturesTogether.largest};

// Where an entry needs a word that other entries have too, the more particular one comes first.
constexpr KindInfo kKinds[] = {
    {"text",      "",                     "a text",                             true,  true,  keys::kFileData},
    {"img",       keys::kPreviewImageURL, "a picture on the web",               true,  false},
    {"img",       "",                     "a picture",                          true,  true,  "", kDataRecord},
    {"image",     "",                     "a picture",                          false, true,  "", kDataRecord},
    {"nimbo",     keys::kVideoAssetURL,   "a video for the social feed",        true,  true},
    {"nimbo",     "",                     "pictures or a video for the social feed", true, true, "", kFeedRecord},
    {"audio",     "",                     "a link to audio",                    true,  true,  keys::kURL, kPreviewAlone},
    {"video",     "",                     "a link to a video",                  true,  true,  keys::kURL, kPreviewAlone},
    {"news",      "",                     "a link to a news page",              true,  true,  keys::kURL, kPreviewAlone},
    {"url",       "",                     "a link to a web page",               true,  true,  keys::kURL, kPreviewAlone},
    {"unknown",   "",                     "a link of another kind",             true,  false, keys::kURL, kPreviewAlone},
    {"file",      "",                     "data of the app's own",              true,  true,  "", kDataRecord},
    {"localFile", "",                     "a file",                             true,  false, keys::kFileName, kDataRecord},
    {"common",    "",                     "a preview with a text or a picture", true,  true,  "", {.needed = kMain}},
};

namespace to = destinations;
constexpr Destination kGuildCreate{"mlumoguild", "mlumoguild", "mlumoguild", "/guild/create", false};
constexpr Destination kGuildJoin{"mlumoguild", "mlumoguild", "mlumoguild", "/guild/join", false};
constexpr Direction kOut = Direction::ToMessenger;
constexpr Direction kIn = Direction::ToApp;
constexpr std::array<std::string_view, 4> kSender{keys::kSourceType, keys::kVersion, keys::kCallbackType, keys::kFileType};
constexpr std::array<std::string_view, 4> kService{keys::kSourceType, keys::kVersion, keys::kServiceId, keys::kServiceUserInfo};
constexpr std::array<std::string_view, 4> kMini{keys::kSourceType, keys::kVersion, keys::kMiniAppId, keys::kMiniType};

constexpr DestinationInfo kDestinations[] = {
    {"share",             kOut, "share {}",                                    &to::kShareToFriend,  "", "", kSender},
    {"avatar-picture",    kOut, "set a profile picture",                       &to::kAvatarPicture,  "", "", kSender, "img", kAvatarRecord},
    {"avatar-video",      kOut, "set a moving profile picture",                &to::kAvatarVideo,    "", "", kSender, "video", kAvatarRecord},
    {"authorization",     kOut, "check the app's authorization",               &to::kAuth,           "", "", kSender, "video"},
    {"face-collection",   kOut, "add pictures to the face collection",         &to::kFaceCollection, "", "", kSender, "img", kFacesRecord},
    {"extra-service",     kOut, "open one of its extra services",              &to::kExtraService,   "", "", kService},
    {"common-service",    kOut, "open a service through the common channel",   &to::kCommonService,  "", "", kService},
    {"mini-program",      kOut, "launch a mini-program",                       &to::kMiniProgram,    "", "", kMini},
    {"bind-group",        kOut, "bind a group to the app",                     &to::kBindGroup,      "", ""},
    {"join-group",        kOut, "let the user join a group of the app",        &to::kJoinGroup,      "", ""},
    {"add-friend",        kOut, "add a friend",                                &to::kAddFriend,      "", ""},
    {"bind-game-group",   kOut, "bind a group to a game",                      &to::kBindGameGroup,  "", ""},
    {"show-card",         kOut, "show a card",                                 &to::kShowCard,       "", ""},
    {"create-guild",      kOut, "create a guild",                              &kGuildCreate,        "", "", {"sig"}},
    {"join-guild",        kOut, "let the user join a guild",                   &kGuildJoin,          "", "", {"sig"}},
    {"pick",              kIn,  "The messenger asks the app to let the user pick something.", nullptr, "request_from_lumo", "/pick"},
    {"view",              kIn,  "The messenger asks the app to show {}.",      nullptr, "request_from_lumo",  "/view", {keys::kFileType}},
    {"unknown-request",   kIn,  "The messenger asks the app for something that it does not know.", nullptr, "request_from_lumo", ""},
    {"response",          kIn,  "The messenger answers a request of the app.", nullptr, "response_from_lumo", ""},
    {"mini-app-launch",   kIn,  "The messenger opens the app from a mini-app.", nullptr, "maLaunchApp",       ""},
};
constexpr DestinationInfo kStoredMessage{
     "stored-message",    kIn,  "The messenger says that a message for the app is in the store.", nullptr, "", ""};

struct RecordKeyInfo {
  std::string_view key, meaning;
};
constexpr RecordKeyInfo kRecordKeys[] = {
    {record_::kPreviewImageData.text, "preview picture"},
    {record_::kFileData.text,         "main bytes"},
    {record_::kImageDataList.text,    "pictures"},
    {record_::kKivaData.text,         "card"},
    // Of the archived common content.
    {"previewImageData",              "preview picture"},
    {"textArray",                     "texts"},
    {"pictureDataArray",              "pictures"},
    {"title",                         "title"},
    {"description",                   "description"},
    {"tagName",                       "tag"},
    {"messageExt",                    "the app's own data"},
    {"shareDestType",                 "destination code"},
    {"cflag",                         "control flags"},
};
// clang-format on

template <auto& Table, auto Name>
std::span<const std::string_view> namesOf() noexcept {
  static const auto names = [] {
    std::array<std::string_view, std::size(Table)> all;
    std::transform(std::begin(Table), std::end(Table), all.begin(),
                   [](const auto& row) { return row.*Name; });
    return all;
  }();
  return names;
}

char lower(char letter) noexcept {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

}  // namespace

const KeyInfo* keyInfo(std::string_view key) noexcept {
  const auto* row =
      std::find_if(std::begin(kKeys), std::end(kKeys), [&](const auto& r) { return r.key == key; });
  return row == std::end(kKeys) ? nullptr : row;
}

std::span<const std::string_view> knownKeys() noexcept { return namesOf<kKeys, &KeyInfo::key>(); }

std::optional<std::string_view> glossOf(std::string_view key, std::string_view word) noexcept {
  for (const WordInfo& row : kWords) {
    if (row.key == key && row.word == word) return row.gloss;
  }
  return std::nullopt;
}

std::string expectedWords(std::string_view key) {
  std::string words;
  for (const WordInfo& row : kWords) {
    if (row.key != key) continue;
    ((words += words.empty() ? "“" : " or “") += row.word) += "”";
  }
  return words;
}

bool isSameScheme(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char left, char right) { return lower(left) == lower(right); });
}

const DestinationInfo* destinationInfo(std::string_view scheme, std::string_view host,
                                       std::string_view path) noexcept {
  const auto matches = [&](const DestinationInfo& row) {
    if (!row.messenger) return row.host == host && (row.path.empty() || row.path == path);
    const Destination& messenger = *row.messenger;
    return messenger.host.text() == host && messenger.path.text() == path &&
           (isSameScheme(messenger.scheme, scheme) || isSameScheme(messenger.siblingScheme, scheme));
  };
  const auto* row = std::find_if(std::begin(kDestinations), std::end(kDestinations), matches);
  return row == std::end(kDestinations) ? nullptr : row;
}

const DestinationInfo& storedMessage() noexcept { return kStoredMessage; }

std::vector<std::string> knownDestinations() {
  std::vector<std::string> all;
  for (const DestinationInfo& row : kDestinations) {
    if (!row.messenger) continue;
    const auto add = [&](FixedWord scheme) {
      all.push_back(
          (std::string(scheme.text()) + "://").append(row.messenger->host).append(row.messenger->path));
    };
    add(row.messenger->scheme);
    if (row.messenger->siblingScheme.text() != row.messenger->scheme.text())
      add(row.messenger->siblingScheme);
  }
  return all;
}

const KindInfo* kindInfo(std::string_view word, const Query& query) noexcept {
  for (const KindInfo& row : kKinds) {
    if (row.word == word && (row.with.empty() || query.has(row.with))) return &row;
  }
  return nullptr;
}

std::span<const std::string_view> knownKinds() noexcept { return namesOf<kKinds, &KindInfo::word>(); }

std::string_view recordMeaning(std::string_view key) noexcept {
  for (const RecordKeyInfo& row : kRecordKeys) {
    if (row.key == key) return row.meaning;
  }
  return "";
}

}  // namespace lumo::inspection
