#include "cli/Commands.h"

#include "cli/Console.h"
#include "cli/Encode.h"
#include "cli/NearestName.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string_view>

namespace lumo::cli {

namespace {

constexpr std::string_view kToolHelp = R"(Turns messages into the URLs that launch the messenger.

  $ lumoapi encode share.json              the launch URL, and all else that the conversion did
  $ lumoapi encode --url share.json        the launch URL alone
  $ lumoapi encode --lines < shares.jsonl  one request a line, one result a line

Usage: lumoapi COMMAND [OPTION]... [FILE]

Commands:
  encode       turn a message into its launch URL

Options:
  -h, --help   show this text; after a command, the command's
  --version    show the version

Exit status: 0 a result came out, 1 refused, 2 wrong usage, 3 a document in error, 4 a file that cannot be
read or written.
)";

constexpr std::string_view kEncodeHelp = R"(Turns a message into the URL that launches the messenger with it.

  $ echo '{"message": {"object": {"class": "LumoApiTextObject", "text": "hello"}}}' | lumoapi encode --url
  mlumoapi://share/to_fri?src_type=app&version=1&file_type=text&callback_type=scheme&file_data=aGVsbG8=

  $ lumoapi encode share.json              the result: URL, log lines, staged bytes, content object
  $ lumoapi encode --lines < shares.jsonl  the result of each line, for a program at the other end of a pipe

Usage: lumoapi encode [--url] [--lines] [FILE]

  FILE         the request, a JSON document; standard input without one, or with -
  --url        write the URL alone (nothing where the request is refused)
  --lines      read one request a line and write one result a line, in order; a line in error gives
               {"error": "..."}. With --url: one URL a line, empty where there is none (the reason is on
               standard error)
  -h, --help   show this text

A request holds "message", and what surrounds it: "datastore", "currentObject", "webView". Bytes are
{"$data": base64} or {"$file": path beside the document}.

Exit status: 0 a URL came out, 1 refused (the reason is on standard error), 2 wrong usage, 3 a document in
error, 4 a file that cannot be read or written. With --lines: 0, unless a line was in error (3).
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

int runEncode(const Arguments& arguments) {
  EncodeOptions chosen;
  CLI::App options;
  options.add_option("file", chosen.file);
  options.add_flag("--url", chosen.urlAlone);
  options.add_flag("--lines", chosen.lines);
  const std::optional<int> status = parsed(options, arguments, kEncodeHelp);
  return status ? *status : encode(chosen);
}

struct Command {
  std::string_view name;
  int (*run)(const Arguments& arguments);
};

constexpr Command kCommands[] = {
    {"encode", runEncode},
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
