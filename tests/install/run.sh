#!/bin/sh
# Builds the example apps in empty folders, in every way that the library is meant to be used, and runs them:
#   run.sh BUILD         against what BUILD installs, and with the library as a part of the project
#   run.sh --deb FOLDER  against the Debian packages in FOLDER, installed and removed again (root only)
set -eu
source=$(cd "$(dirname "$0")/../.." && pwd)
apps=$source/examples/apps
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi

fail() {
  echo "run.sh: $*" >&2
  exit 1
}

# PROJECT FOLDER [OPTION…]: configures and builds.
make_project() {
  project=$1 folder=$work/$2
  shift 2
  { cmake -S "$project" -B "$folder" -G Ninja "$@" && cmake --build "$folder"; } >"$work/log" 2>&1 ||
    { cat "$work/log" >&2; fail "$project does not build: $*"; }
}

# HOW PROGRAM shared|static: the sender prints a launch URL, and stands on the form of the library that it should.
check() {
  case $("$2" hello) in
    'mlumoapi://share/to_fri?'*'&file_data=aGVsbG8='*) ;;
    *) fail "$1: no launch URL" ;;
  esac
  form=static
  if ldd "$2" | grep -q 'liblumoapi\.so\.[0-9]* => /'; then form=shared; fi
  [ "$form" = "$3" ] || fail "$1: linked with the $form library"
  echo "ok: $1"
}

if [ "$1" = --deb ]; then
  dpkg -i "$2"/*.deb >"$work/log"
  packages=$(for deb in "$2"/*.deb; do dpkg-deb -f "$deb" Package; done)
  # shellcheck disable=SC2064,SC2086 # the names as they are now
  trap "dpkg -P $(echo $packages) >'$work/log'; rm -rf '$work'" EXIT
  make_project "$apps/sender" sender
  check "Debian package, find_package" "$work/sender/sender" shared
  # shellcheck disable=SC2046 # words
  g++ -std=c++20 "$apps/sender/main.cpp" -o "$work/by-pkg-config" $(pkg-config --cflags --libs lumoapi)
  check "Debian package, pkg-config" "$work/by-pkg-config" shared
  lumoapi new text | lumoapi encode --url 2>/dev/null | grep -q '^mlumoapi://share/' || fail "the tool does not work"
  for file in share/man/man1/lumoapi.1 share/bash-completion/completions/lumoapi; do
    [ -s "/usr/$file" ] || fail "no /usr/$file"
  done
  dpkg-deb -f "$2"/liblumoapi0_*.deb Depends | grep -q 'libboost-json.*libc6.*libpng' || fail "Depends is incomplete"
  # shellcheck disable=SC2086
  dpkg -P $packages >"$work/log"
  trap 'rm -rf "$work"' EXIT
  ! ls -d /usr/include/LumoApi /usr/bin/lumoapi /usr/lib/*/liblumoapi* 2>/dev/null || fail "not all removed"
  echo "ok: Debian packages removed"
  exit
fi

prefix=$work/prefix
cmake --install "$1" --prefix "$prefix" >"$work/log"
PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name lumoapi.pc)")
export PKG_CONFIG_PATH CMAKE_PREFIX_PATH="$prefix"

cd "$prefix/include"
! grep -rE '#include <.*[./]' . || fail "a header needs another library"
find . -name '*.h' | sed 's|.*|#include "&"|' | while read -r include; do
  echo "$include" | g++ -std=c++20 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -I. -fsyntax-only -x c++ - ||
    fail "$include does not compile alone"
done
echo "ok: $(find . -name '*.h' | wc -l) headers, each alone"

for form in shared static; do
  make_project "$apps/sender" "$form" -DBUILD_SHARED_LIBS="$([ $form = static ] || echo ON)"
  check "find_package, $form" "$work/$form/sender" $form
  make_project "$source/tests/install" embedded -DBUILD_SHARED_LIBS="$([ $form = static ] || echo ON)"
  check "part of the project, $form" "$work/embedded/sender" $form
done
ctest --test-dir "$work/embedded" -N | grep -q 'Total Tests: 0' || fail "a part brings its tests along"
cmake --install "$work/embedded" --prefix "$work/none" >"$work/log"
[ ! -e "$work/none" ] || fail "a part installs something"

lib=$(pkg-config --variable=libdir lumoapi)
# shellcheck disable=SC2046 # words
g++ -std=c++20 "$apps/sender/main.cpp" -o "$work/with-so" $(pkg-config --cflags --libs lumoapi) -Wl,-rpath,"$lib"
check "pkg-config, shared" "$work/with-so" shared
# shellcheck disable=SC2046
g++ -std=c++20 "$apps/sender/main.cpp" -o "$work/with-a" $(pkg-config --static --cflags --libs lumoapi |
  sed 's/-llumoapi/-l:liblumoapi.a/')
check "pkg-config, static" "$work/with-a" static

make_project "$apps/receiver" receiver
url=$("$work/shared/sender" --picture "$source/examples/files/harbour-morning.jpg" "$work/store")
case $url in *objectlocation=pasteboard*) ;; *) fail "the picture is not beside the URL" ;; esac
while IFS='|' read -r url expected; do
  got=$("$work/receiver/receiver" "$url" "$work/store") || true
  case $got in $expected) ;; *) fail "$url: $got" ;; esac
done <<'END'
receiver://request_from_lumo/view?file_type=img&title=SGk=|picture: 6809 bytes, Hi
receiver://request_from_lumo/view?file_type=text&file_data=aGVsbG8=|text: hello
receiver://request_from_lumo/pick?version=1|mlumoapi://*messagetype=responsefromapp*
receiver://response_from_lumo/?error=0&error_description=c2VudA==|error 0: sent
receiver://elsewhere/view?file_type=img|
END
echo "ok: the receiving app"
