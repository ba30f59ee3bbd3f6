#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

/// A door is a place where bytes of strangers come in. Each has a source of its own that defines door(); the
/// fuzzer and the replay of kept inputs both go through it.
namespace lumo::fuzz {

/// Lets the input in and requires of everything that comes of it what always holds. What the input needs to
/// be read must not go past its end: the memory after it is watched.
void door(std::string_view input);

/// Ends the program, as a fuzzer wants it, where something that always holds does not.
inline void require(bool holds, const char* what, const char* file = __builtin_FILE(),
                    int line = __builtin_LINE()) {
  if (holds) return;
  std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, what);
  std::abort();
}

}  // namespace lumo::fuzz
