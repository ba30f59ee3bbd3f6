#include "LumoApi/LumoApiObject.h"

#include "model/ContentClasses.h"

LumoApiObject::~LumoApiObject() = default;

namespace {

template <class... Fields, std::size_t... I>
bool sameFields(const std::tuple<Fields...>& a, const std::tuple<Fields...>& b, std::index_sequence<I...>) {
  return ((std::get<I>(a).value == std::get<I>(b).value) && ...);
}

}  // namespace

bool operator==(const LumoApiObject& a, const LumoApiObject& b) {
  if (&a == &b) return true;
  if (typeid(a) != typeid(b)) return false;
  bool same = false;
  lumo::visitContent(a, [&](const char*, const auto& left) {
    using Exact = std::remove_cvref_t<decltype(left)>;
    const auto fields = Exact::fields(left);
    same = sameFields(fields, Exact::fields(static_cast<const Exact&>(b)),
                      std::make_index_sequence<std::tuple_size_v<decltype(fields)>>());
  });
  return same;
}
