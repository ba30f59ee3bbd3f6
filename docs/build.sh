#!/bin/sh
# Builds the documentation site, and fails where it would be wrong: docs/build.sh TOOL OUT
# OUT/parts holds what the code says of itself, OUT/src the pages with that in them, OUT/site the site.
set -eu
cd "$(dirname "$0")/.."
tool=$1
out=$2
rm -rf "$out"
mkdir -p "$out"
out=$(cd "$out" && pwd)
tool=$(cd "$(dirname "$tool")" && pwd)/$(basename "$tool")
parts=$out/parts
for sort in key limit refusal class table fields example url keys destination help file bench used; do mkdir -p "$parts/$sort"; done

# What the code says of itself.
awk -v out="$parts" -f docs/parts.awk inspect/Keys.cpp inspect/Warnings.h LumoApi/internal/*.h LumoApi/LumoApiRefusal.h model/*.h

# What the tool makes of each example: the document, its URL, and what the tool says of that URL.
for document in examples/*.json; do
  name=$(basename "$document" .json)
  store=$out/store
  rm -f "$store"
  url=$("$tool" encode --url --store "$store" "$document" 2>/dev/null)
  {
    printf '%s\n' '```json title="examples/'"$name"'.json"'
    cat "$document"
    printf '```\n\n```text title="Launch URL"\n%s\n```\n\n' "$url"
    printf '??? note "What it says, by `lumoapi inspect`"\n    ```text\n'
    # The last paragraph says the same of every URL.
    "$tool" inspect --store "$store" "$url" | sed -e '/^Nothing in a URL is verified/d' | awk 'NF { while (gap) { print ""; --gap } print "    " $0; next } { ++gap }'
    printf '    ```\n'
  } >"$parts/example/$name"
  printf '%s\n' "$url" >"$parts/url/$name"
done
rm -f "$out/store"

# Every key that a kind can carry, found by converting a document with every field filled.
for kind in $("$tool" new 2>&1 | awk '/^  KIND / { on = 1 } /^  -o/ { on = 0 } on' | sed 's/.*: //; s/,/ /g'); do
  url=$("$tool" new "$kind" | sed 's/"scheme": /"appId": "1", "openId": "o", "uin": 1, "isLumoSupportApiGeneralPastboard": true, &/' |
    "$tool" encode --url 2>/dev/null)
  printf '`%s`\n' "${url%%\?*}" >"$parts/destination/$kind"
  "$tool" inspect --json "$url" | awk '
    function text(line) { sub(/^[^:]*: "/, "", line); sub(/",?$/, "", line); return line }
    /^      "key": / { key = text($0) }
    /^      "meaning": / { meaning = text($0) }
    /^      "value": / { value = $0 ~ /": "/ ? text($0) : "" }
    /^      "encoding": / { encoding = text($0) }
    /^      "counts": / { print "    | `" key "` | " meaning " | " encoding " |" }' |
    {
      printf '??? abstract "Query keys, with every field filled"\n    | Key | What it says | Written |\n    |---|---|---|\n'
      cat
    } >"$parts/keys/$kind"
done

# What the tool says of itself.
for command in encode decode inspect lint qr new; do
  { printf '```text\n'; "$tool" "$command" --help; printf '```\n'; } >"$parts/help/$command"
done

# Pages that the repository has already.
sed -e '1d' -e 's,(docs/bounds\.md),(bounds.md),' SECURITY.md >"$parts/file/SECURITY"
sed -e '1d' CHANGELOG.md >"$parts/file/CHANGELOG"
{ printf '![How far beyond its target each case is](img/bench.svg)\n\n'; cat docs/img/bench.md; } >"$parts/bench/chart"
mkdir -p "$out/src"
(cd docs && find . \( -name '*.md' ! -path './img/*' -o -name '*.css' -o -name '*.svg' \) -print) | while read -r page; do
  mkdir -p "$out/src/$(dirname "$page")"
  case $page in
    *.md) awk -v parts="$parts" -f docs/fill.awk "docs/$page" >"$out/src/$page" ;;
    *) cp "docs/$page" "$out/src/$page" ;;
  esac
done
# The commands on the pages give what the pages say.
ln -s "$PWD/examples" "$out/examples"
for page in $(grep -l '^```console' "$out"/src/*.md); do
  cp "$page" "$out/page.md"
  tests/readme/console.sh "$out/page.md" "$tool" || { echo "build.sh: in $page" >&2; exit 1; }
done
rm "$out/page.md" "$out/examples"

# A code of refusal, an example or a kind that no page tells of is a gap.
for sort in refusal example keys; do
  for part in "$parts/$sort"/*; do
    if ! grep -qx "$sort:$(basename "$part")" "$parts/used/$sort" 2>/dev/null; then
      echo "build.sh: no page shows {{$sort:$(basename "$part")}}" >&2
      exit 1
    fi
  done
done

# The API reference: the chief header and what it includes, without the library's own helpers.
headers=$(c++ -std=c++20 -I "$(dirname "$tool")/include" -MM LumoApi/LumoApiMessageAndUrlConverter.h | sed -e 's/^[^:]*: *//' -e 's/\\$//' | tr '\n' ' ' |
  sed -e 's,[^ ]*/CopyText\.h,,' -e 's,[^ ]*/Field\.h,,')
{
  cat docs/Doxyfile
  echo "INPUT = docs/lumo.dox $headers"
  echo "OUTPUT_DIRECTORY = $out/src"
} >"$out/Doxyfile"
doxygen "$out/Doxyfile"

mkdocs build --quiet --strict --config-file mkdocs.yml --site-dir "$out/site"
(cd "$out/site" && find . -type f | awk -f "$OLDPWD/docs/links.awk")
if grep -rlE '(src|href)="(https?:)?//(fonts|cdn|unpkg|www\.google)' "$out/site" --include='*.html'; then
  echo "build.sh: a page takes something from the network" >&2
  exit 1
fi
