#!/bin/sh
# Compares the shared library of this tree with that of another commit, the last tag unless one is named:
# abi.sh BUILD [COMMIT]. Fails where programs built against the old one would break, and the major number is the same.
set -eu
build=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
old=${2:-$(git describe --tags --abbrev=0 2>/dev/null || true)}
if [ -z "$old" ]; then
  echo "No tag yet: there is no released library to compare with. Another commit can be named: ./dev abi COMMIT" >&2
  exit 0
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The library and its headers, installed from a build.
installed() {
  for component in runtime development; do cmake --install "$1" --component $component --prefix "$2"; done
}
{
  installed "$build" "$work/new"
  mkdir "$work/source"
  git archive "$old" | tar -x -C "$work/source"
  (cd "$work/source" && cmake --preset release -DLUMOAPI_BUILD_TESTS=OFF -DLUMOAPI_BUILD_TOOL=OFF)
  cmake --build "$work/source/build/release"
  installed "$work/source/build/release" "$work/old"
} >"$work/log" 2>&1 || { tail -n 40 "$work/log" >&2; exit 2; }

soname() { basename "$(find "$1" -name 'liblumoapi.so.[0-9]' -o -name 'liblumoapi.so.[0-9][0-9]')"; }
echo "$old → this tree: $(soname "$work/old") → $(soname "$work/new")"
status=0
abidiff --headers-dir1 "$work/old/include" --headers-dir2 "$work/new/include" \
  "$work"/old/lib*/"$(soname "$work/old")" "$work"/new/lib*/"$(soname "$work/new")" || status=$?
[ $((status & 3)) = 0 ] || exit 2  # could not be compared
[ $((status & 4)) != 0 ] || echo "No difference."
# What is changed or removed breaks programs; what is only added does not (bit 8 tells).
[ $((status & 8)) = 0 ] || [ "$(soname "$work/old")" != "$(soname "$work/new")" ]
