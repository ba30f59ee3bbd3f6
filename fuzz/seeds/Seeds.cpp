// Makes the inputs that the fuzzers start from, a folder for each door: real conversions, and mutations of
// them. Always the same ones.

#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "documents/ResultWriter.h"
#include "fuzz/Messages.h"
#include "fuzz/seeds/Pictures.h"
#include "platform/archive/KeyedArchiver.h"
#include "platform/values/JSON.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace lumo::fuzz {

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Inputs = std::vector<std::string>;

constexpr std::size_t kLeast = 240;     // of a door
constexpr std::size_t kMost = 400;      // of a door, before mutation
constexpr std::size_t kLargest = 8192;  // in bytes

std::mt19937 random(1);

std::size_t below(std::size_t count) { return random() % count; }

std::string randomBytes(std::size_t size) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

std::string piece(std::string_view bytes) {
  std::string made = {static_cast<char>(bytes.size() >> 8), static_cast<char>(bytes.size())};
  return made.append(bytes);
}

/// Bytes that make a message, with printable ones mostly, so that texts are texts.
std::string messageBytes(std::size_t contentClass) {
  std::string bytes = randomBytes(40 + below(300));
  for (char& byte : bytes) {
    if (below(3) > 0) byte = static_cast<char>(' ' + below(95));
  }
  bytes[0] = static_cast<char>(contentClass);
  return bytes;
}

/// What all doors that deal in messages start from.
struct Conversions {
  Inputs bytes;      // that made the messages
  Inputs urls;       // of those that were converted
  Inputs documents;  // requests to convert them
  Inputs archives;   // of what was staged
};

Conversions conversions() {
  Conversions made;
  LumoApiDatastore& store = LumoApiDatastore::instance();
  for (std::size_t i = 0; i < 1500; ++i) {
    const std::string bytes = messageBytes(i % 27);
    Input input(bytes);
    const LumoApiMessage message = fuzz::message(input);
    store.setValues(storeValues(input));
    store.setApiLargeData(nullptr);
    const auto url = LumoApiMessageAndUrlConverter::urlWithMessage(message);
    if (!url && i % 16 != 0) continue;
    if (made.bytes.size() < kMost) made.bytes.push_back(bytes);
    if (url && url->absoluteString().size() < kLargest) made.urls.emplace_back(url->absoluteString());
    const LumoApiLargeDataPtr record = store.getApiLargeData();
    const auto archive = record ? archivedData(*record) : std::nullopt;
    if (archive && archive->size() < kLargest) made.archives.emplace_back(archive->joined().view());
    const bool isLarge = archive && archive->size() > kLargest;
    if (!url || isLarge || made.documents.size() >= kMost / 2) continue;
    const auto document = writeJSON(Value::Dictionary{{"message", documents::documentOf(message)},
                                                      {"datastore", Value::Dictionary{{"scheme", "demo"}}}});
    if (document && document->size() < kLargest) made.documents.push_back(*document);
  }
  return made;
}

/// URLs that open the app.
Inputs appURLs() {
  const std::string kPairs[] = {"title=" + base64Encoded("Hi"),
                                "description=" + base64Encoded("\u4E2D\u6587"),
                                "url=" + base64Encoded("https://example.org/?a=b"),
                                "file_data=" + base64Encoded("hello"),
                                "video_assetURL=" + base64Encoded("assets-library://1"),
                                "extMap=" + base64Encoded("{\"a\":[1,null,\"\\u00e9\"]}"),
                                "appParameter=a%3Db%E4%B8%AD",
                                "NeedToGetData=true",
                                "error=7",
                                "error_description=" + base64Encoded("no"),
                                "error_extend_info=" + base64Encoded("{}"),
                                "x",
                                "=",
                                ""};
  Inputs urls;
  for (const char* target : {"request_from_lumo/view", "request_from_lumo/pick", "response_from_lumo/",
                             "maLaunchApp", "request_from_lumo/view", "elsewhere/view"}) {
    for (const char* kind :
         {"text", "img", "image", "nimbo", "audio", "video", "news", "url", "file", "common"}) {
      std::string url = "demo://"s + target + "?file_type=" + kind;
      for (const std::string& pair : kPairs) {
        if (below(3) > 0) url += "&" + pair;
      }
      urls.push_back(url);
    }
  }
  return urls;
}

Inputs archives() {
  Inputs made;
  while (made.size() < kLeast / 2) {
    const std::string bytes = messageBytes(below(256));
    Input input(bytes);
    const auto archive = archivedData(dictionary(input));
    if (archive && archive->size() < kLargest) made.emplace_back(archive->joined().view());
  }
  return made;
}

Inputs jsonTexts() {
  Inputs made;
  while (made.size() < kLeast / 2) {
    const std::string bytes = messageBytes(below(256));
    Input input(bytes);
    const auto text = writeJSON(value(input));
    if (text && text->size() < kLargest) made.push_back(*text);
  }
  return made;
}

Inputs files(const fs::path& folder, const std::string& extension) {
  Inputs contents;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() != extension) continue;
    std::ifstream stream(entry.path(), std::ios::binary);
    contents.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  }
  std::sort(contents.begin(), contents.end());  // folders have no order
  return contents;
}

std::string mutated(const Inputs& inputs) {
  std::string input = inputs[below(inputs.size())];
  for (std::size_t steps = 1 + below(4); steps > 0; --steps) {
    const std::size_t place = below(input.size() + 1);
    const std::string& other = inputs[below(inputs.size())];
    switch (below(5)) {
      case 0:
        if (place < input.size()) input[place] = static_cast<char>(input[place] ^ (1 << below(8)));
        break;
      case 1:
        if (place < input.size()) input[place] = "\0\xFF\x7F\x80&=%/?#\"{[\n"[below(14)];
        break;
      case 2:
        input.erase(place, 1 + below(8));
        break;
      case 3:
        input.insert(place, input.substr(below(input.size() + 1), below(32)));
        break;
      default:
        input.insert(place, other.substr(below(other.size() + 1), below(32)));
    }
  }
  return input;
}

class Folder {
 public:
  explicit Folder(fs::path root) : root_(std::move(root)) {}

  /// Writes the inputs of a door and as many mutations as it takes.
  void write(const std::string& door, Inputs inputs) const {
    if (inputs.size() > kMost) inputs.resize(kMost);
    const Inputs originals = inputs;
    while (inputs.size() < kLeast || inputs.size() < originals.size() + kLeast / 4) {
      inputs.push_back(mutated(originals));
    }
    fs::remove_all(root_ / door);
    fs::create_directories(root_ / door);
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      std::ofstream(root_ / door / std::to_string(i), std::ios::binary) << inputs[i];
    }
  }

 private:
  fs::path root_;
};

Inputs together(std::initializer_list<Inputs> lists) {
  Inputs all;
  for (const Inputs& list : lists) all.insert(all.end(), list.begin(), list.end());
  return all;
}

/// As many as asked for, spread over the list.
Inputs some(const Inputs& inputs, std::size_t count) {
  Inputs chosen;
  for (std::size_t i = 0; i < count && i < inputs.size(); ++i) {
    chosen.push_back(inputs[i * inputs.size() / std::min(count, inputs.size())]);
  }
  return chosen;
}

template <class Change>
Inputs each(Inputs inputs, const Change& change) {
  for (std::string& input : inputs) input = change(input);
  return inputs;
}

const Inputs kTexts = {"hello", "\u4E2D\u6587", "\U0001F600 caf\u00E9", "a%20b%E4%B8%AD", "50%",
                       "a&b=c", "\xED\xA0\x80", "\xF4\x90\x80\x80",     "\xC0\x80",       "aGVsbG8=",
                       "AAAA",  "/+==",         std::string(70, 'x')};

const Inputs kURLs = {"x://[::1]:80/p?q#f",
                      "//u:p@h:1/",
                      "//1.2.3.4/",
                      "[v1.a]",
                      "//[v1.a:b]",
                      "x:y:z",
                      "./a:b",
                      "?",
                      "#",
                      "",
                      "x://\u4E2D",
                      "/\u4E2D?\u00E9#\U0001F600",
                      "//[1:2::1.2.3.4]"};

void writeAll(const fs::path& root, const fs::path& examples) {
  const Folder folder(root);
  const Conversions made = conversions();
  const Inputs toApp = appURLs(), records = together({made.archives, archives()});
  const Inputs urls = together({toApp, some(made.urls, 240)});
  const auto queryOf = [](const std::string& url) {
    return url.substr(std::min(url.find('?') + 1, url.size()));
  };
  const auto anyRecord = [&] { return records[below(records.size())]; };

  folder.write("url", together({kURLs, urls}));
  folder.write("query", together({each(urls, queryOf), each(some(urls, 60), [&](const std::string& url) {
                                    std::string lines = queryOf(url);
                                    std::replace(lines.begin(), lines.end(), '&', '\n');
                                    std::replace(lines.begin(), lines.end(), '=', '\t');
                                    return lines;
                                  })}));
  folder.write("percent-encoding", together({kTexts, some(urls, 120)}));
  folder.write("base64",
               together({kTexts, each(kTexts, base64Encoded), each(some(urls, 60), base64Encoded)}));
  folder.write("json", together({jsonTexts(), files(examples, ".json")}));
  folder.write("archive", some(records, 240));
  folder.write("archive-values",
               each(Inputs(kLeast), [](const std::string&) { return messageBytes(below(256)); }));
  folder.write("incoming", each(urls, [&](const std::string& url) {
                 return static_cast<char>(below(16)) + piece(anyRecord()) + url;
               }));
  folder.write("outgoing", made.bytes);
  folder.write("picture", each(pictures(), [](const std::string& picture) { return "\xC0" + picture; }));
  const auto request = [](const std::string& url) {
    return writeJSON(Value::Dictionary{{"url", url}}).value_or("");
  };
  folder.write("document",
               together({files(examples, ".json"), some(made.documents, 160), each(toApp, request)}));
  folder.write("inspect", each(urls, [&](const std::string& url) {
                 return below(2) == 0 ? url : url + "\n" + anyRecord();
               }));
  folder.write(
      "kernels",
      together({each(kTexts, [](const std::string& text) { return "\x40" + text; }),
                each(some(urls, 120), [&](const std::string& url) { return "\5" + queryOf(url); })}));
}

}  // namespace

}  // namespace lumo::fuzz

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("usage: lumoapi_fuzz_seeds FOLDER EXAMPLES\n", stderr);
    return 2;
  }
  LumoApiLog::silence();
  lumo::fuzz::writeAll(arguments[1], arguments[2]);
  return 0;
}
