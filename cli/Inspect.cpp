#include "cli/Inspect.h"

#include "cli/Console.h"
#include "cli/Files.h"
#include "cli/InspectJSON.h"
#include "cli/InspectSave.h"
#include "cli/InspectText.h"
#include "cli/InspectURL.h"
#include "cli/Lines.h"
#include "model/LumoApiFilePasteboard.h"

#include <unistd.h>

#include <cstdlib>

namespace lumo::cli {

const std::string_view kInspectHelp =
    R"(Explains a launch URL: what it asks of whom, what each key says, and what looks wrong.

  $ lumoapi inspect 'mlumoapi://share/to_fri?…'
  $ lumoapi encode --url share.json | lumoapi inspect
  $ lumoapi inspect --store F 'demo://request_from_lumo/view?…'   with the bytes beside the URL
  $ lumoapi inspect --save pictures 'mlumoapi://share/to_fri?…'   the bytes as files

Usage: lumoapi inspect [OPTION]... [URL]

  URL           of either direction; without one, or with -, the first line of standard input
  --json        the same for programs: "destination", "kind", "entries", "record", "warnings"; the
                codes of the warnings never change
  --full        show all of long values, and all of very many pairs
  --store FILE  look for the large-data record in FILE, where lumoapi encode --store FILE put it
  --save DIR    write the record's bytes, and those in the URL, as files into DIR, which is made
                where there is none; no file is replaced
  --color WHEN  auto (on a terminal, unless NO_COLOR is set), always, never
  -h, --help    show this text

Nothing in a URL is verified: any app could have made it.

Exit status: 0 explained, warnings or not, 1 a URL that neither the messenger nor an app reads,
2 wrong usage, 3 not a URL, 4 a file that cannot be read or written.
)";

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view trimmed(std::string_view text) noexcept {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

std::string readText(const std::string& url) {
  if (url != "-") return std::string(trimmed(url));
  const Input input(url);
  LineReader lines(input);
  Output none;
  return std::string(trimmed(lines.next(none).value_or("")));
}

inspection::Store readStore(const std::optional<std::string>& file) {
  if (!file) return {};
  LumoApiFilePasteboard pasteboard(*file);
  inspection::Store store{.isKnown = true, .record = pasteboard.read()};
  if (const std::string error = pasteboard.lastError(); !error.empty()) throw FileError(error);
  return store;
}

bool isColoured(const std::string& when) {
  if (when != "auto") return when == "always";
  const char* refused = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return ::isatty(STDOUT_FILENO) == 1 && (!refused || *refused == '\0') &&
         !(terminal && std::string_view(terminal) == "dumb");
}

void print(std::string text) {
  Output output;
  output.buffer() = std::move(text);
  output.flush();
}

int explain(const InspectOptions& options) {
  const std::string text = readText(options.url);
  inspection::NoURL reason{};
  const std::optional<URL> url = inspection::launchURLOf(text, reason);
  if (!url) {
    if (options.json) print(jsonOf(text, reason));
    complain(textOf(text, reason));
    return kDocumentError;
  }
  const inspection::Findings findings = findingsOf(*url, readStore(options.store), options.full);
  inspection::Saved saved;
  if (options.folder) saved = save(findings, *options.folder);
  print(options.json ? jsonOf(findings, saved)
                     : textOf(findings, saved, {isColoured(options.colour), options.full}));
  return findings.destination ? kDone : kRefused;
}

}  // namespace

int inspect(const InspectOptions& options) {
  try {
    return explain(options);
  } catch (const FileError& error) {
    if (!error.isBrokenPipe()) complain(error.what());
    return kFileError;
  }
}

}  // namespace lumo::cli
