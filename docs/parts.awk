# Cuts the code's own tables into the parts that the pages show, so that no page can tell another story:
#   awk -v out=DIR -f docs/parts.awk HEADER...
# Each part is a file out/SORT/NAME, which stands in a page as {{SORT:NAME}}.

function part(sort, name, text) { printf "%s\n", text > (out "/" sort "/" name) }
function quoted(line) { return match(line, /"[^"]*"/) ? substr(line, RSTART + 1, RLENGTH - 2) : "" }
function after(text, marker) { return substr(text, index(text, marker) + length(marker)) }

FNR == 1 { doc = ""; class = ""; heading = "" }

# --- inspect/Keys.cpp (read before Keys.h): what each key means and how its value is written.
FILENAME ~ /inspect\/Keys\.cpp$/ && /^ *\{keys::k[A-Za-z]+, +"/ {
  constant = $1
  gsub(/[{,]|keys::/, "", constant)
  if (constant in meaning) next  # the table of words comes later
  meaning[constant] = quoted($0)
  rest = after($0, quoted($0) "\"")
  gsub(/[ }]/, "", rest)
  split(rest, word, ",")
  form[constant] = word[2]
}
FILENAME ~ /inspect\/Keys\.cpp$/ && /^ *\{record_::k[A-Za-z]+\.text, +"/ {
  constant = $1
  gsub(/[{,]|record_::|\.text/, "", constant)
  recordMeaning[constant] = quoted($0)
}

# --- inspect/Warnings.h
FILENAME ~ /inspect\/Warnings\.h$/ && /^\/\/ / { heading = substr($0, 4); sub(/\.$/, "", heading) }
FILENAME ~ /inspect\/Warnings\.h$/ && /^inline constexpr std::string_view k/ {
  warnings = warnings (heading == lastHeading ? ", " : (warnings ? " |\n| " : "| ") heading " | ") "`" quoted($0) "`"
  lastHeading = heading
}

# --- Keys.h
FILENAME ~ /internal\/Keys\.h$/ && /^\/\/ / { heading = substr($0, 4); sub(/\.$/, "", heading) }
FILENAME ~ /internal\/Keys\.h$/ && /^inline constexpr FixedWord k/ {
  constant = $4
  sub(/\{.*/, "", constant)
  key = quoted($0)
  part("key", constant, "`" key "`")
  if (!(constant in meaning)) {
    if (!index($0, "//")) fail("no meaning of " constant)
    next
  }
  if (!(heading in keyRows)) keyHeadings[++headings] = heading
  keyRows[heading] = keyRows[heading] "| `" key "` | " meaning[constant] " | " spelled(form[constant]) " |\n"
}
function spelled(f) {
  if (f == "Word" || f == "Kind") return "one of a few words"
  if (f == "Plain") return "as it is"
  if (f == "Text" || f == "Link") return "base64 of the UTF-8 text"
  if (f == "Bytes") return "base64 of the bytes"
  if (f == "Record") return "base64 of the archive"
  if (f == "JSON") return "base64 of the JSON text"
  if (f == "Number") return "a number"
  if (f == "Escaped") return "percent-escaped once more"
  fail("no word for the form " f)
}

# --- Limits.h
FILENAME ~ /internal\/Limits\.h$/ && /^inline constexpr (CodeUnits|Bytes|Entries) k/ {
  constant = $4
  sub(/\{.*/, "", constant)
  number = after($0, "{")
  gsub(/[^0-9]/, "", number)
  digits = number
  for (grouped = ""; length(digits) > 3; digits = substr(digits, 1, length(digits) - 3)) {
    grouped = "," substr(digits, length(digits) - 2) grouped
  }
  unit = $3 == "CodeUnits" ? "UTF-16 code units" : tolower($3)
  if (number == 1) unit = "entry"
  part("limit", constant, digits grouped " " unit)
  known[number] = 1
  if (number > 1000000) known[number / 1048576] = 1
}

# --- Destinations.h
FILENAME ~ /internal\/Destinations\.h$/ && /^inline constexpr Destination k/ {
  line = $0
  gsub(/"/, "", line)
  split(substr(line, index(line, "{") + 1), cell, /, */)
  gsub(/ /, "", cell[1])
  destinations = destinations "| `" cell[2] "://" cell[3] cell[4] "` | " \
    (cell[1] == cell[2] ? "the same" : "`" cell[1] "://" cell[3] cell[4] "`") " | " (cell[5] ~ /true/ ? "yes" : "no") " |\n"
}
FILENAME ~ /internal\/Destinations\.h$/ && /kGroupProBase = / {
  destinations = destinations "| `" quoted($0) "/create`, `…/join` | the same | no |\n"
}

# --- LumoApiRefusal.h
FILENAME ~ /LumoApiRefusal\.h$/ && /^    [A-Z][A-Za-z0-9]+, +\/\/\/< / {
  code = $1
  sub(/,/, "", code)
  text = after($0, "///< ")
  part("refusal", code, text)
}

# --- LumoApiLargeData.h
FILENAME ~ /LumoApiLargeData\.h$/ && /^inline constexpr RecordKey k/ {
  record = record "| `" quoted($0) "` | " doc " |\n"
}

# --- Content classes: a field is a getter, and its comment.
/^class LUMOAPI_EXPORT [A-Za-z]+( :|\{| \{)/ || /^struct LUMOAPI_EXPORT / {
  class = $3
  parents[class] = ""
  if (index($0, " : ")) {
    parents[class] = after($0, " : ")
    gsub(/public|lumo::|[<>{,]/, " ", parents[class])
  }
  part("class", class, "`" class "`")
  doc = ""
}
/^ *\/\/\/ / {
  line = $0
  sub(/^ *\/\/\/ /, "", line)
  doc = doc == "" ? line : doc " " line
  next
}
class && /^  (const )?(std::optional<.*>&|std::uint64_t) [a-zA-Z]+\(\) const noexcept/ {
  name = $0
  sub(/\(\) const noexcept.*/, "", name)
  type = name
  sub(/.* /, "", name)
  if (doc == "") doc = "–"
  while (match(doc, /[0-9][0-9,]*[0-9]/)) {  # a number that is no limit is an old one
    number = substr(doc, RSTART, RLENGTH)
    plain = number
    gsub(/,/, "", plain)
    if (plain + 0 > 100 && !(plain in known)) fail(FILENAME ": " class "." name ": no limit is " number)
    seen = seen substr(doc, 1, RSTART + RLENGTH - 1)
    doc = substr(doc, RSTART + RLENGTH)
  }
  doc = seen doc
  seen = ""
  fields[class] = fields[class] "| `" name "` | " typeOf(type) " | " doc " |\n"
}
!/^ *\/\/\/ / { doc = "" }

function typeOf(type) {
  if (type ~ /vector<std::string>/) return "list of texts"
  if (type ~ /vector<.*Data>/) return "list of bytes"
  if (type ~ /StringDictionary/) return "texts by their names"
  if (type ~ /string/) return "text"
  if (type ~ /Data/) return "bytes"
  if (type ~ /URL/) return "URL"
  if (type ~ /Value/) return "any value"
  return "number"
}

function fieldsOf(class,    all, parent, count, i) {
  all = fields[class]
  count = split(parents[class], parent, " ")
  for (i = 1; i <= count; ++i) {
    if (parent[i] in parents && parent[i] != "LumoApiObject" && parent[i] != class) all = all fieldsOf(parent[i])
  }
  return all
}

function fail(why) { print "parts.awk: " why > "/dev/stderr"; failed = 1; exit 1 }

END {
  if (failed) exit 1
  for (i = 1; i <= headings; ++i) {
    keys = keys "\n**" keyHeadings[i] "**\n\n| Key | What it says | Written |\n|---|---|---|\n" keyRows[keyHeadings[i]]
  }
  part("table", "keys", keys)
  part("table", "warnings", "| About | Codes |\n|---|---|\n" warnings " |")
  part("table", "destinations", "| Destination | Sibling messenger | Common keys |\n|---|---|---|\n" destinations)
  part("table", "record", "| Entry | Holds |\n|---|---|\n" record)
  for (class in parents) {
    all = fieldsOf(class)
    if (all != "") part("fields", class, "| Field | Type | |\n|---|---|---|\n" all)
  }
}
