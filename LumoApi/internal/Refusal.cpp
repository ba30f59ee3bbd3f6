#include "LumoApi/internal/Refusal.h"

#include "LumoApi/LumoApiLog.h"

void lumo::log(const LumoApiRefusal& refusal) noexcept {
  if (refusal.logText) LumoApiLog::log(*refusal.logText, {}, refusal.line);
}
