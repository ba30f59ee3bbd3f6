#!/bin/sh
# What leaves the shared library is what the public headers declare, all of it and nothing else:
# symbols.sh SHARED STATIC HEADER…
set -eu
shared=$1
static=$2
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The names of classes and functions at the left margin of a header.
sed -nE 's/^(class|struct) (LUMOAPI_EXPORT )?(\w+).*/\3/p; s/^[A-Za-z][^(]* ([a-zA-Z0-9_]+|operator[^( ]+)\(.*/\1/p' "$@" |
  sort -u >"$work/declared"

# "Name symbol" of each demangled symbol, by the class or function that it belongs to.
names() {
  sed -E 's/@@.*//; h; s/.* for //; s/.* thunk to //; s/^lumo:://; s/^(operator[^(]+|\w+).*/\1/; G; s/\n/ /' | sort -u
}
nm -DC --defined-only "$shared" | grep -v ' A ' | cut -c 20- | names >"$work/exported"
nm -C --defined-only "$static" 2>/dev/null | grep '^[0-9a-f]* T ' | cut -c 20- | names >"$work/compiled"

join -v 1 "$work/exported" "$work/declared" >"$work/leaked"
join "$work/compiled" "$work/declared" | sort | comm -23 - "$work/exported" >"$work/missing"
sed 's/^/not in a public header, but visible: /' "$work/leaked"
sed 's/^/in a public header, but not visible: /' "$work/missing"
[ -s "$work/exported" ] && [ ! -s "$work/leaked" ] && [ ! -s "$work/missing" ]
