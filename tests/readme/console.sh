#!/bin/sh
# Runs the `$ lumoapi` commands of the README's console blocks and holds each output against what stands there:
#   console.sh README TOOL
set -eu
readme=$1
PATH=$(dirname "$2"):$PATH
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/clone"
ln -s "$(cd "$(dirname "$readme")" && pwd)/examples" "$work/clone/examples"

awk -v work="$work" '
  /^```/ { inside = ($0 == "```console"); file = ""; next }
  inside && /^\$ / { file = sprintf("%s/%03d", work, ++count); print substr($0, 3) > (file ".command"); printf "" > (file ".expected"); next }
  inside && file { print > (file ".expected") }' "$readme"

cd "$work/clone"
failed=0
for command in "$work"/*.command; do
  expected=${command%.command}.expected
  sh "$command" 2>&1 | diff -u "$expected" - || { echo "differs: $(cat "$command")"; failed=1; }
done
exit "$failed"
