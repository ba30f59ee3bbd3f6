#pragma once

#include "LumoApi/LumoApiRefusal.h"
#include "LumoApi/internal/Collaborators.h"
#include "LumoApi/internal/Limits.h"

#include <optional>
#include <string_view>
#include <utility>
#include <variant>

namespace lumo {

/// What an operation came to: a value, or why there is none.
template <class T>
class Result {
 public:
  Result(T&& value) : content_(std::move(value)) {}
  Result(LumoApiRefusal refusal) noexcept : content_(refusal) {}

  explicit operator bool() const noexcept { return content_.index() == 0; }
  T& operator*() & noexcept { return *std::get_if<T>(&content_); }
  T&& operator*() && noexcept { return std::move(*std::get_if<T>(&content_)); }
  const LumoApiRefusal& refusal() const noexcept { return *std::get_if<LumoApiRefusal>(&content_); }

 private:
  std::variant<T, LumoApiRefusal> content_;
};

/// A refusal where there is one.
using Check = std::optional<LumoApiRefusal>;

using LogText = std::optional<std::string_view>;
inline constexpr LogText kSilent = std::nullopt;

/// A refusal that no size explains. The log text stands whole at the check that calls this.
inline LumoApiRefusal refused(LumoApiRefusal::Code code, std::string_view field, LogText logText,
                              int line = __builtin_LINE()) noexcept {
  return {code, field, std::nullopt, std::nullopt, LumoApiRefusal::Unit::None, logText, line};
}

inline LumoApiRefusal missing(std::string_view field, LogText logText, int line = __builtin_LINE()) noexcept {
  return refused(LumoApiRefusal::Code::Missing, field, logText, line);
}

/// A refusal of something past its limit.
template <LumoApiRefusal::Unit U, class Sized>
LumoApiRefusal tooLarge(std::string_view field, const Sized& sized, Limit<U> limit, LogText logText,
                        int line = __builtin_LINE()) noexcept {
  using Unit = LumoApiRefusal::Unit;
  using Code = LumoApiRefusal::Code;
  constexpr Code kCode = U == Unit::CodeUnits ? Code::TooLong
                         : U == Unit::Bytes   ? Code::TooBig
                                              : Code::TooMany;
  return {kCode, field, sizeIn(limit, sized), limit.largest, U, logText, line};
}

// --- The frame around every public operation ---

/// Runs `operate()` and makes a refusal of everything that it throws.
template <class Operate>
auto guarded(const Operate& operate) noexcept -> decltype(operate()) {
  try {
    return operate();
  } catch (...) {
    return refused(LumoApiRefusal::Code::OutOfMemory, "", kSilent);
  }
}

/// The one place where a refusal becomes its log line and a null result.
template <class T>
std::optional<T> concluded(Result<T> result, Collaborators& collaborators,
                           LumoApiRefusal* reason = nullptr) noexcept {
  if (reason) *reason = result ? LumoApiRefusal() : result.refusal();
  if (result) return *std::move(result);
  const LumoApiRefusal& refusal = result.refusal();
  if (refusal.logText) collaborators.log(*refusal.logText, {}, refusal.line);
  return std::nullopt;
}

}  // namespace lumo
