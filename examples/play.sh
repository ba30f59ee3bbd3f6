#!/bin/sh
# Plays an app and the messenger against each other; two stores are the pasteboards between them:
# examples/play.sh [TOOL]
set -eu
cd "$(dirname "$0")/.."
tool=${1:-build/release/lumoapi}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

app() { echo "app        $*"; }
messenger() { echo "messenger  $*"; }
# The rest of a URL after a key's "=", up to the next pair.
value() { printf '%s\n' "$2" | sed -n "s/.*[?&]$1=\([^&]*\).*/\1/p"; }

url=$("$tool" encode --url examples/text-share.json 2>/dev/null)
app "sends a text: $url"
messenger "reads: $(value file_data "$url" | base64 -d)"
[ "$(value file_data "$url" | base64 -d)" = hello ]

url=$("$tool" encode --url --store "$work/out" examples/image.json 2>/dev/null)
app "sends a picture: $url"
"$tool" inspect --store "$work/out" --save "$work/seen" "$url" >/dev/null
messenger "finds beside it: $(ls -x "$work/seen")"
cmp "$work/seen"/file_data* examples/files/harbour-morning.jpg

reply="$(value callback_name "$url")://response_from_lumo/?error=0&error_description=$(printf sent | base64)"
messenger "answers: $reply"
result=$("$tool" decode "$reply" | sed -n 's/.*"errorDescription": "\(.*\)",/\1/p')
app "learns: $result"
[ "$result" = sent ]

messenger "asks for something: walks://request_from_lumo/pick?version=1"
"$tool" decode 'walks://request_from_lumo/pick?version=1' | grep -q '"type": 3'
url=$(echo '{"message": {"type": 4, "object": {"class": "LumoApiTextObject", "text": "the one by the pier"}}}' |
  "$tool" encode --url 2>/dev/null)
app "picks: $url"

request='walks://request_from_lumo/view?file_type=img&title=SGFyYm91cg=='
messenger "shows a picture, the one it was sent: $request"
"$tool" decode --store "$work/out" "$request" >"$work/message"
app "shows: $(sed -n 's/.*"title": //p' "$work/message"), $(sed -n 's/.*"\$data": "\(.*\)"/\1/p' "$work/message" | head -n 1 | base64 -d | wc -c) bytes"
sed -n 's/.*"\$data": "\(.*\)"/\1/p' "$work/message" | head -n 1 | base64 -d | cmp - examples/files/harbour-morning.jpg
