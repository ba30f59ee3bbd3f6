#include "cli/CommandTable.h"

#include "cli/Decode.h"
#include "cli/Encode.h"
#include "cli/Inspect.h"
#include "cli/Lint.h"
#include "cli/NewDocument.h"
#include "cli/QR.h"

#include <limits>

namespace lumo::cli {

namespace {

std::vector<std::string> colourWords() { return {"auto", "always", "never"}; }

// --- encode ---

constexpr Example kEncodeExamples[] = {
    {R"(echo '{"message": {"object": {"class": "LumoApiTextObject", "text": "hello"}}}' | lumoapi encode --url)",
     "",
     "mlumoapi://share/to_fri?src_type=app&version=1&file_type=text&callback_type=scheme&file_data=aGVsbG8="},
    {"lumoapi encode share.json", "the result: URL, log, staged bytes, content object"},
    {"lumoapi encode --store F image.json", "the same with the staged bytes in a file, for others"},
    {"lumoapi encode --lines < shares.jsonl", "the result of each line, for a program behind a pipe"},
};

constexpr Operand kEncodeOperands[] = {
    {"FILE", "the request, a JSON document; standard input without one, or with -", Completion::File},
};

constexpr Option kEncodeOptions[] = {
    {"--url", "", "write the URL alone (nothing where the request is refused)", &Choices::urlAlone},
    {"--store", "FILE",
     "keep the large-data record in FILE, where lumoapi decode --store FILE finds it. A record in the "
     "request "
     "goes there first, then what is staged; without either, FILE keeps its own. A file that holds anything "
     "else is left alone. Not with --lines",
     &Choices::store, Completion::File},
    {"--lines", "",
     "read one request a line and write one result a line, in order; a line in error gives {\"error\": "
     "\"...\"}. With --url: one URL a line, empty where there is none (the reason is on standard error)",
     &Choices::lines, Completion::None, nullptr, "", "--store"},
};

// --- decode ---

constexpr Example kDecodeExamples[] = {
    {"lumoapi decode 'demo://request_from_lumo/view?file_type=text&file_data=aGVsbG8='", "", R"({
  "message": {
    "type": 1,
    "object": {
      "class": "LumoApiTextObject",
      "text": "hello"
    }
  },
  "log": []
})"},
    {"lumoapi decode opened.json", "the same for a URL and what surrounds its conversion"},
    {"lumoapi decode --store F 'demo://…'", "with the bytes that lumoapi encode --store F staged"},
    {"lumoapi decode --lines < opened.jsonl", "the result of each line, for a program behind a pipe"},
};

constexpr Operand kDecodeOperands[] = {
    {"URL", "the URL itself: what has a “:” and is not the name of a file"},
    {"FILE", "the request, a JSON document; standard input without one, or with -", Completion::File},
};

constexpr Option kDecodeOptions[] = {
    {"--store", "FILE",
     "take the large-data record from FILE, which need not exist. A record in the request goes there first. "
     "Not with --lines",
     &Choices::store, Completion::File},
    {"--lines", "",
     "read one request a line (from FILE, too) and write one result a line, in order; a line in error gives "
     "{\"error\": \"...\"}",
     &Choices::lines, Completion::None, nullptr, "", "--store"},
};

// --- inspect ---

constexpr Example kInspectExamples[] = {
    {"lumoapi inspect 'mlumoapi://share/to_fri?…'", "who asks what of whom, key by key"},
    {"lumoapi encode --url share.json | lumoapi inspect", "the same for a message"},
    {"lumoapi inspect --store F 'demo://…'", "with the bytes beside the URL"},
    {"lumoapi inspect --save pictures 'mlumoapi://…'", "the bytes as files"},
};

constexpr Operand kInspectOperands[] = {
    {"URL", "of either direction; without one, or with -, the first line of standard input"},
};

constexpr Option kInspectOptions[] = {
    {"--json", "",
     "write the same for programs: \"destination\", \"kind\", \"entries\", \"record\", \"warnings\"; the "
     "codes of "
     "the warnings never change",
     &Choices::json},
    {"--full", "", "show all of long values, and all of very many pairs", &Choices::full},
    {"--store", "FILE", "look for the large-data record in FILE, where lumoapi encode --store FILE put it",
     &Choices::store, Completion::File},
    {"--save", "DIR",
     "write the record's bytes, and those in the URL, as files into DIR, which is made where there is none; "
     "no file is replaced",
     &Choices::folder, Completion::Folder},
    {"--color", "WHEN", "colour the text: auto (on a terminal, unless NO_COLOR is set), always or never",
     &Choices::colour, Completion::Word, colourWords},
};

// --- qr ---

constexpr Example kQRExamples[] = {
    {"lumoapi qr 'mlumoapi://share/to_fri?…'", "in the terminal, for a phone's camera"},
    {"lumoapi encode share.json | lumoapi qr", "the URL of a result"},
    {"lumoapi qr --png share.png share.json", "the URL of a message, as a picture"},
};

constexpr Operand kQROperands[] = {
    {"URL", "the URL itself: what has a “:” and is not the name of a file"},
    {"FILE",
     "a file with the URL on its first line, a result of lumoapi encode or a request; standard input without "
     "one, or with -",
     Completion::File},
};

constexpr Option kQROptions[] = {
    {"--png", "FILE", "write a PNG picture, 8 pixels a module, instead; - is standard output", &Choices::png,
     Completion::File},
    {"--svg", "FILE", "write an SVG picture instead", &Choices::svg, Completion::File},
    {"--color", "WHEN",
     "dark on light, whatever the terminal's colours: auto (on a terminal, unless NO_COLOR is set), always "
     "or "
     "never, which is for terminals with a dark background",
     &Choices::colour, Completion::Word, colourWords},
};

// --- lint ---

constexpr Example kLintExamples[] = {
    {R"(echo '{"message": {"object": {"class": "LumoApiTextObject", "text": ""}}}' | lumoapi lint)", "",
     "standard input: missing: text: missing or empty"},
    {"lumoapi lint examples/*.json urls.txt", "documents, and a file with a URL on each line"},
    {"lumoapi lint --lines shares.jsonl", "a document on each line"},
    {"lumoapi lint --json 'demo://…'", "the findings for a program"},
};

constexpr Operand kLintOperands[] = {
    {"URL", "a URL of either direction: what has a “:” and is not the name of a file"},
    {"FILE",
     "a request for lumoapi encode or lumoapi decode, or URLs, one a line; standard input without one, or "
     "with -",
     Completion::File},
};

constexpr Option kLintOptions[] = {
    {"--json", "",
     "write the findings as an array of objects with \"file\", \"line\", \"code\", \"key\" and \"message\"; "
     "the "
     "codes never change",
     &Choices::json},
    {"--lines", "", "each line is a text of its own, of documents too", &Choices::lines},
};

// --- new ---

constexpr Example kNewExamples[] = {
    {"lumoapi new text > share.json", "a document to change and to encode"},
    {"lumoapi new image | lumoapi encode --url", "what a picture's URL looks like"},
    {"lumoapi new -o walk.json news", "written to a file, which must not be there yet"},
};

constexpr Operand kNewOperands[] = {
    {"KIND", "the kind of content", Completion::Word, contentKinds},
};

constexpr Option kNewOptions[] = {
    {"--output", "FILE", "write to FILE; - is standard output", &Choices::output, Completion::File, nullptr,
     "-o"},
};

// clang-format off
constexpr Command kCommands[] = {
    {
        "encode", "turn a message into its launch URL",
        "Turns a message into the URL that launches the messenger with it.", kEncodeExamples,
        "[FILE]", kEncodeOperands, 0, 1, kEncodeOptions,
        "A request holds \"message\", and what surrounds it: \"datastore\", \"currentObject\", \"webView\". "
        "Bytes are {\"$data\": base64} or {\"$file\": path beside the document}.",
        "0 a URL came out, 1 refused (the reason is on standard error), 2 wrong usage, 3 a document in error, "
        "4 a file that cannot be read or written. With --lines: 0, unless a line was in error (3).",
        encode,
    },
    {
        "decode", "turn a URL that opened the app into its message",
        "Turns a URL that opened the app into its message.", kDecodeExamples,
        "[URL | FILE]", kDecodeOperands, 0, 1, kDecodeOptions,
        "A request holds \"url\", \"entry\" (\"messageWithUrl\", \"messageWithUrlNoClipboard\" or "
        "\"messageWithUrlUsedClipboard\": the operation that is called), and what surrounds it: \"datastore\", "
        "\"currentObject\", \"webView\". Nothing in a URL is verified: any app may have made it.",
        "0 a message came out, 1 the URL yields none (the reason is on standard error), 2 wrong usage, 3 a "
        "document in error or a URL that is not valid, 4 a file that cannot be read or written. With --lines: "
        "0, unless a line was in error (3).",
        decode,
    },
    {
        "inspect", "explain a launch URL of either direction",
        "Explains a launch URL: what it asks of whom, what each key says, and what looks wrong.",
        kInspectExamples,
        "[URL]", kInspectOperands, 0, 1, kInspectOptions,
        "Nothing in a URL is verified: any app could have made it.",
        "0 explained, warnings or not, 1 a URL that neither the messenger nor an app reads, 2 wrong usage, "
        "3 not a URL, 4 a file that cannot be read or written.",
        inspect,
    },
    {
        "lint", "list what would be refused and what looks wrong",
        "Lists what is wrong with messages and launch URLs, one finding a line as \"file: code: text\": what "
        "lumoapi encode and lumoapi decode would refuse, and what lumoapi inspect warns about.",
        kLintExamples,
        "[URL | FILE]...", kLintOperands, 0, std::numeric_limits<std::size_t>::max(), kLintOptions,
        "That bytes are expected beside a URL is no finding.",
        "0 nothing found, 1 something found, 2 wrong usage, 4 a file that cannot be read or written.",
        lint,
    },
    {
        "new", "write a document of a kind of content to begin with",
        "Writes a document of a kind of content, with every field filled, that lumoapi encode accepts as it "
        "stands.",
        kNewExamples,
        "KIND", kNewOperands, 1, 1, kNewOptions,
        "",
        "0 written, 2 wrong usage, 4 a file that cannot be written, or that is there already.",
        newDocument,
    },
    {
        "qr", "show a launch URL as a QR code",
        "Shows a launch URL as a QR code, or writes it as a picture.", kQRExamples,
        "[URL | FILE]", kQROperands, 0, 1, kQROptions,
        "A code holds at most 2,953 bytes. The bytes beside a URL, of a picture for example, are not in it.",
        "0 shown or written, 1 refused, or too long for a code or for the terminal, 2 wrong usage, 3 a document "
        "in error or not a URL, 4 a file that cannot be read or written.",
        qr,
    },
};
// clang-format on

}  // namespace

std::span<const Command> commands() { return kCommands; }

}  // namespace lumo::cli
