#include "cli/Commands.h"

#include "cli/Console.h"
#include "cli/Decode.h"
#include "cli/Encode.h"
#include "cli/Inspect.h"
#include "cli/NearestName.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string_view>

namespace lumo::cli {

namespace {

constexpr std::string_view kToolHelp =
    R"(Turns messages into URLs that launch the messenger, and URLs that opened the app into messages.

  $ lumoapi encode share.json              the launch URL, and all else that the conversion did
  $ lumoapi encode --url share.json        the launch URL alone
  $ lumoapi encode --lines < shares.jsonl  one request a line, one result a line
  $ lumoapi decode 'demo://…'              the message of a URL that opened the app
  $ lumoapi inspect 'mlumoapi://…'         what any launch URL says, and what looks wrong in it

Usage: lumoapi COMMAND [OPTION]... [FILE]

Commands:
  encode       turn a message into its launch URL
  decode       turn a URL that opened the app into its message
  inspect      explain a launch URL of either direction

Options:
  -h, --help   show this text; after a command, the command's
  --version    show the version

Exit status: 0 a result came out, 1 refused or no message, 2 wrong usage, 3 a document in error,
4 a file that cannot be read or written.
)";

constexpr std::string_view kEncodeHelp = R"(Turns a message into the URL that launches the messenger with it.

  $ echo '{"message": {"object": {"class": "LumoApiTextObject", "text": "hello"}}}' | lumoapi encode --url
  mlumoapi://share/to_fri?src_type=app&version=1&file_type=text&callback_type=scheme&file_data=aGVsbG8=

  $ lumoapi encode share.json              the result: URL, log, staged bytes, content object
  $ lumoapi encode --store F image.json    the same with the staged bytes in a file, for others
  $ lumoapi encode --lines < shares.jsonl  the result of each line, for a program behind a pipe

Usage: lumoapi encode [--url] [--store FILE] [--lines] [FILE]

  FILE          the request, a JSON document; standard input without one, or with -
  --url         write the URL alone (nothing where the request is refused)
  --store FILE  keep the large-data record in FILE, where lumoapi decode --store FILE finds it. A
                record in the request goes there first, then what is staged; without either, FILE
                keeps its own. A file that holds anything else is left alone. Not with --lines
  --lines       read one request a line and write one result a line, in order; a line in error gives
                {"error": "..."}. With --url: one URL a line, empty where there is none (the reason
                is on standard error)
  -h, --help    show this text

A request holds "message", and what surrounds it: "datastore", "currentObject", "webView". Bytes are
{"$data": base64} or {"$file": path beside the document}.

Exit status: 0 a URL came out, 1 refused (the reason is on standard error), 2 wrong usage, 3 a
document in error, 4 a file that cannot be read or written. With --lines: 0, unless a line was in
error (3).
)";

constexpr std::string_view kDecodeHelp = R"(Turns a URL that opened the app into its message.

  $ lumoapi decode 'demo://request_from_lumo/view?file_type=text&file_data=aGVsbG8='
  {
    "message": {
      "type": 1,
      "object": {
        "class": "LumoApiTextObject",
        "text": "hello"
      }
    },
    "log": []
  }

  $ lumoapi decode opened.json             the same for a URL and what surrounds its conversion
  $ lumoapi decode --store F 'demo://…'    with the bytes that lumoapi encode --store F staged
  $ lumoapi decode --lines < opened.jsonl  the result of each line, for a program behind a pipe

Usage: lumoapi decode [--store FILE] [--lines] [URL | FILE]

  URL           the URL itself: what has a ":" and is not the name of a file
  FILE          the request, a JSON document; standard input without one, or with -
  --store FILE  take the large-data record from FILE, which need not exist. A record in the request
                goes there first. Not with --lines
  --lines       read one request a line (from FILE, too) and write one result a line, in order; a
                line in error gives {"error": "..."}
  -h, --help    show this text

A request holds "url", "entry" ("messageWithUrl", "messageWithUrlNoClipboard" or
"messageWithUrlUsedClipboard": the operation that is called), and what surrounds it: "datastore",
"currentObject", "webView". Nothing in a URL is verified: any app may have made it.

Exit status: 0 a message came out, 1 the URL yields none (the reason is on standard error), 2 wrong
usage, 3 a document in error or a URL that is not valid, 4 a file that cannot be read or written.
With --lines: 0, unless a line was in error (3).
)";

using Arguments = std::vector<std::string>;

void print(std::string_view text, std::FILE* stream) {
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stream));
}

int printed(std::string_view text) {
  print(text, stdout);
  return std::fflush(stdout) == 0 ? kDone : kFileError;
}

int wrongUsage(std::string_view complaint, std::string_view help) {
  if (!complaint.empty()) {
    complain(complaint);
    print("\n", stderr);
  }
  print(help, stderr);
  return kWrongUsage;
}

/// Null where the command is to run; otherwise its exit status.
std::optional<int> parsed(CLI::App& options, const Arguments& arguments, std::string_view help) {
  try {
    options.parse(Arguments(arguments.rbegin(), arguments.rend()));  // taken from the end
    return std::nullopt;
  } catch (const CLI::CallForHelp&) {
    return printed(help);
  } catch (const CLI::ParseError& error) {
    return wrongUsage(error.what(), help);
  }
}

/// What all conversions take. Nothing is carried from one line to the next, so lines have no store.
template <class Chosen>
void addConversionOptions(CLI::App& options, Chosen& chosen) {
  options.add_option("file", chosen.file);
  CLI::Option* store = options.add_option("--store", chosen.store);
  options.add_flag("--lines", chosen.lines)->excludes(store);
}

int runEncode(const Arguments& arguments) {
  EncodeOptions chosen;
  CLI::App options;
  addConversionOptions(options, chosen);
  options.add_flag("--url", chosen.urlAlone);
  const std::optional<int> status = parsed(options, arguments, kEncodeHelp);
  return status ? *status : encode(chosen);
}

int runDecode(const Arguments& arguments) {
  DecodeOptions chosen;
  CLI::App options;
  addConversionOptions(options, chosen);
  const std::optional<int> status = parsed(options, arguments, kDecodeHelp);
  return status ? *status : decode(chosen);
}

int runInspect(const Arguments& arguments) {
  InspectOptions chosen;
  CLI::App options;
  options.add_option("url", chosen.url);
  options.add_option("--store", chosen.store);
  options.add_option("--save", chosen.folder);
  options.add_option("--color", chosen.colour)->check(CLI::IsMember({"auto", "always", "never"}));
  options.add_flag("--json", chosen.json);
  options.add_flag("--full", chosen.full);
  const std::optional<int> status = parsed(options, arguments, kInspectHelp);
  return status ? *status : inspect(chosen);
}

struct Command {
  std::string_view name;
  int (*run)(const Arguments& arguments);
};

constexpr Command kCommands[] = {
    {"encode", runEncode},
    {"decode", runDecode},
    {"inspect", runInspect},
};

int noSuchCommand(const std::string& name) {
  std::vector<std::string_view> names;
  std::transform(std::begin(kCommands), std::end(kCommands), std::back_inserter(names),
                 [](const Command& command) { return command.name; });
  const std::string kind = name.starts_with('-') ? "option " : "command ";
  return wrongUsage("no " + kind + name + suggestion(name, names), kToolHelp);
}

}  // namespace

int runTool(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return wrongUsage("", kToolHelp);
  const std::string& name = arguments.front();
  if (name == "--help" || name == "-h") return printed(kToolHelp);
  if (name == "--version") return printed("lumoapi " LUMOAPI_VERSION "\n");
  for (const Command& command : kCommands) {
    if (command.name == name) return command.run({arguments.begin() + 1, arguments.end()});
  }
  return noSuchCommand(name);
}

}  // namespace lumo::cli
