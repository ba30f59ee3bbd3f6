#!/bin/sh
# Converts every example and shows its URL and what is staged beside it: examples/run.sh [TOOL]
set -u
examples=$(dirname "$0")
tool=${1:-$examples/../build/release/lumoapi}
if ! command -v "$tool" >/dev/null; then
  echo "run.sh: no tool at $tool; ./dev build makes it" >&2
  exit 2
fi

# Folds the URL of a result to 100 columns and adds up the staged bytes.
show() {
  awk '
    function printFolded(url,    pairs, count, i, line) {
      count = split(url, pairs, "&")
      line = "  " pairs[1]
      for (i = 2; i <= count; ++i) {
        if (length(line) + 1 + length(pairs[i]) > 100) { print line; line = "    " }
        line = line "&" pairs[i]
        while (length(line) > 100) { print substr(line, 1, 100); line = "    " substr(line, 101) }
      }
      print line
    }
    # How many bytes a quoted base64 text stands for.
    function bytes(quoted) { return (length(quoted) - 2) / 4 * 3 - (quoted ~ /=/) - (quoted ~ /==/) }
    function add(name, size, unit) {
      if (name == names[entries]) {
        sizes[entries] = sizes[entries] " + " size
      } else {
        names[++entries] = name
        sizes[entries] = size
        units[entries] = unit
      }
    }
    /^  "url": / { printFolded(substr($2, 2, length($2) - 3)) }
    /^  "/ { isRecord = $1 == "\"apiLargeData\":" }
    isRecord && /^    "/ { name = substr($1, 2, length($1) - 3) }
    isRecord && $1 == "\"$data\":" { add(name, bytes($2), "bytes") }
    isRecord && /^    ".*"$/ { add(name, length($2) - 2, "characters") }
    END {
      staged = entries ? "" : "nothing"
      for (i = 1; i <= entries; ++i)
        staged = staged (i > 1 ? ", " : "") names[i] " " sizes[i] " " units[i]
      print "  staged: " staged
    }'
}

converted=0
refused=0
for document in "$examples"/*.json; do
  basename "$document"
  if result=$("$tool" encode "$document"); then
    printf '%s\n' "$result" | show
    converted=$((converted + 1))
  else
    refused=$((refused + 1))
  fi
  echo
done
echo "$converted examples converted, $refused refused"
[ "$refused" = 0 ]
