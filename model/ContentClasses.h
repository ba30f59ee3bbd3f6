#pragma once

#include "LumoApi/LumoApiModel.h"

#include <memory>
#include <string_view>
#include <type_traits>
#include <typeinfo>

namespace lumo {

/// A content class, to be named in a list.
template <class T>
struct ContentClass {
  using Type = T;
  const char* name;
};

/// Calls `visit` with the ContentClass of every class of the model, the base included, until one gives true.
template <class Visitor>
bool anyContentClass(Visitor&& visit) {
  return visit(ContentClass<LumoApiTextObject>{"LumoApiTextObject"}) ||
         visit(ContentClass<LumoApiExtendObject>{"LumoApiExtendObject"}) ||
         visit(ContentClass<LumoApiImageObject>{"LumoApiImageObject"}) ||
         visit(ContentClass<LumoApiWebImageObject>{"LumoApiWebImageObject"}) ||
         visit(ContentClass<LumoApiFileObject>{"LumoApiFileObject"}) ||
         visit(ContentClass<LumoApiURLObject>{"LumoApiURLObject"}) ||
         visit(ContentClass<LumoApiNewsObject>{"LumoApiNewsObject"}) ||
         visit(ContentClass<LumoApiAudioObject>{"LumoApiAudioObject"}) ||
         visit(ContentClass<LumoApiVideoObject>{"LumoApiVideoObject"}) ||
         visit(ContentClass<LumoApiCommonContentObject>{"LumoApiCommonContentObject"}) ||
         visit(ContentClass<LumoApiImageForLumoAvatarObject>{"LumoApiImageForLumoAvatarObject"}) ||
         visit(ContentClass<LumoApiVideoForLumoAvatarObject>{"LumoApiVideoForLumoAvatarObject"}) ||
         visit(ContentClass<LumoApiImageArrayForFaceCollectionObject>{
             "LumoApiImageArrayForFaceCollectionObject"}) ||
         visit(ContentClass<LumoApiAuthObject>{"LumoApiAuthObject"}) ||
         visit(ContentClass<LumoApiImageArrayForNimboObject>{"LumoApiImageArrayForNimboObject"}) ||
         visit(ContentClass<LumoApiVideoForNimboObject>{"LumoApiVideoForNimboObject"}) ||
         visit(ContentClass<LumoApiExtraServiceObject>{"LumoApiExtraServiceObject"}) ||
         visit(ContentClass<LumoApiCommonServiceObject>{"LumoApiCommonServiceObject"}) ||
         visit(ContentClass<LumoApiThirdAppBindGroupObject>{"LumoApiThirdAppBindGroupObject"}) ||
         visit(ContentClass<LumoApiThirdAppJoinGroupObject>{"LumoApiThirdAppJoinGroupObject"}) ||
         visit(ContentClass<LumoApiCreateLumoGroupProObject>{"LumoApiCreateLumoGroupProObject"}) ||
         visit(ContentClass<LumoApiJoinLumoGroupProObject>{"LumoApiJoinLumoGroupProObject"}) ||
         visit(ContentClass<LumoApiLaunchMiniProgramObject>{"LumoApiLaunchMiniProgramObject"}) ||
         visit(ContentClass<LumoApiMiniProgramLaunchObject>{"LumoApiMiniProgramLaunchObject"}) ||
         visit(ContentClass<LumoApiResultObject>{"LumoApiResultObject"}) ||
         visit(ContentClass<LumoApiObject>{"LumoApiObject"});
}

/// Calls `visit(className, object)` with the object as its own class, const or not as given. False for an
/// object of a class that is not the model's (an app's own, derived from one of the model's).
template <class Object, class Visitor>
bool visitContent(Object& object, Visitor&& visit) {
  return anyContentClass([&](auto contentClass) {
    using Exact = typename decltype(contentClass)::Type;
    if (typeid(object) != typeid(Exact)) return false;
    visit(contentClass.name,
          static_cast<std::conditional_t<std::is_const_v<Object>, const Exact, Exact>&>(object));
    return true;
  });
}

/// A new object of the class with that name; null where the model has no such class.
inline std::shared_ptr<LumoApiObject> newContentObject(std::string_view name) {
  std::shared_ptr<LumoApiObject> made;
  anyContentClass([&](auto contentClass) {
    if (name != contentClass.name) return false;
    made = std::make_shared<typename decltype(contentClass)::Type>();
    return true;
  });
  return made;
}

}  // namespace lumo
