// The outgoing entry: the checks that hold for every kind of content, and the choice of the converter.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Entries.h"
#include "LumoApi/internal/Skeleton.h"
#include "platform/text/ClassName.h"

#include <typeinfo>

namespace lumo {

namespace {

struct Row {
  bool (*matches)(const LumoApiObject& object) noexcept;
  Result<URL> (*convert)(LumoApiObject& object, Conversion& conversion);
};

enum class Match { Exact, Family };

template <class Object, Match match>
bool matches(const LumoApiObject& object) noexcept {
  if constexpr (match == Match::Exact) return typeid(object) == typeid(Object);
  return dynamic_cast<const Object*>(&object) != nullptr;
}

template <class Object, Match match, auto Convert>
constexpr Row row() {
  return {matches<Object, match>, [](LumoApiObject& object, Conversion& conversion) {
            return Convert(static_cast<Object&>(object), conversion);
          }};
}

using namespace converters;

// The first row that matches decides. An object of a class that an app derived from one of these matches
// none, save a link.
// clang-format off
constexpr Row kRows[] = {
    row<LumoApiTextObject,                        Match::Exact,  urlWithTextObject>(),
    row<LumoApiExtendObject,                      Match::Exact,  urlWithExtendObject>(),
    row<LumoApiImageObject,                       Match::Exact,  urlWithImageObject>(),
    row<LumoApiImageForLumoAvatarObject,          Match::Exact,  urlWithImageObjectForAvatar>(),
    row<LumoApiVideoForLumoAvatarObject,          Match::Exact,  urlWithVideoObjectForAvatar>(),
    row<LumoApiAuthObject,                        Match::Exact,  urlWithAuthObject>(),
    row<LumoApiCreateLumoGroupProObject,          Match::Exact,  urlWithCreateGroupProObject>(),
    row<LumoApiJoinLumoGroupProObject,            Match::Exact,  urlWithJoinGroupProObject>(),
    row<LumoApiImageArrayForFaceCollectionObject, Match::Exact,  urlWithImageObjectForFaceCollection>(),
    row<LumoApiImageArrayForNimboObject,          Match::Exact,  urlWithImageArrayForNimboObject>(),
    row<LumoApiVideoForNimboObject,               Match::Exact,  urlWithVideoForNimboObject>(),
    row<LumoApiWebImageObject,                    Match::Exact,  urlWithWebImageObject>(),
    row<LumoApiURLObject,                         Match::Family, urlWithURLObject>(),
    row<LumoApiCommonContentObject,               Match::Exact,  urlWithCommonContentObject>(),
    row<LumoApiExtraServiceObject,                Match::Exact,  urlWithExtraServiceObject>(),
    row<LumoApiCommonServiceObject,               Match::Exact,  urlWithCommonServiceObject>(),
    row<LumoApiFileObject,                        Match::Exact,  urlWithFileObject>(),
    row<LumoApiThirdAppBindGroupObject,           Match::Exact,  urlWithApiThirdAppBindGroupObject>(),
    row<LumoApiThirdAppJoinGroupObject,           Match::Exact,  urlWithApiThirdAppJoinGroupObject>(),
    row<LumoApiLaunchMiniProgramObject,           Match::Exact,  urlWithApiLaunchMiniProgramObject>(),
};
// clang-format on

/// What every kind of content must satisfy.
Check checked(const LumoApiMessage& message) {
  const LumoApiObject* object = message.object().get();
  if (!object) return missing("object", "param error: object is nil");
  if (message.isSupportKiva() && !message.kivaObject()) {
    return missing("kivaObject", "param error: kiva object is nil");
  }
  if (object->title() && exceeds(*object->title(), limits::kTitle)) {
    return tooLarge("title", *object->title(), limits::kTitle, "param error: title is too long");
  }
  if (object->description() && exceeds(*object->description(), limits::kDescription)) {
    return tooLarge("description", *object->description(), limits::kDescription,
                    "param error: description is too long");
  }
  return std::nullopt;
}

Result<URL> convertedMessage(const LumoApiMessage& message, Conversion& conversion) {
  if (Check refusal = checked(message)) return *refusal;
  LumoApiObject& object = *message.object();
  if (conversion.collaborators.isListening()) {
    conversion.collaborators.log("urlWithMessage, share with :%@", {className(typeid(object))});
  }
  for (const Row& row : kRows) {
    if (row.matches(object)) return row.convert(object, conversion);
  }
  return refused(LumoApiRefusal::Code::UnknownKind, "object", kSilent);
}

}  // namespace

std::optional<URL> entries::urlWithMessage(const std::optional<LumoApiMessage>& message,
                                           Collaborators& collaborators, LumoApiRefusal* refusal) noexcept {
  if (!message) return concluded<URL>(missing("message", kSilent), collaborators, refusal);
  Conversion conversion{.collaborators = collaborators,
                        .type = message->type(),
                        .kiva = message->isSupportKiva() ? message->kivaObject().get() : nullptr};
  return concluded(
      converted(conversion, [&message](Conversion& current) { return convertedMessage(*message, current); }),
      collaborators, refusal);
}

}  // namespace lumo

// urlWithMessage:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithMessage(
    const std::optional<LumoApiMessage>& message) noexcept {
  return urlWithMessage(message, nullptr);
}

std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithMessage(
    const std::optional<LumoApiMessage>& message, LumoApiRefusal* refusal) noexcept {
  return lumo::entries::urlWithMessage(message, lumo::processCollaborators(), refusal);
}
