// URLs that are inspected: the first line of the input, with the rest as the archived record in the store.

#include "fuzz/Door.h"
#include "inspect/JSON.h"
#include "inspect/Text.h"
#include "inspect/URL.h"
#include "platform/archive/KeyedUnarchiver.h"
#include "platform/text/Text.h"
#include "platform/values/JSON.h"

#include <algorithm>
#include <string>

namespace lumo::fuzz {

namespace {

using namespace inspection;

/// What people and programs are shown obeys neither the URL nor its terminal.
void checkPage(std::string_view page) {
  require(isValidUTF8(page), "a page is UTF-8");
  require(std::none_of(page.begin(), page.end(),
                       [](unsigned char c) { return (c < 0x20 && c != '\n') || c == 0x7F; }),
          "nothing on a page moves the cursor");
  for (const char* mark : {"\u0085", "\u009B", "\u202E", "\u2066"}) {
    require(page.find(mark) == page.npos, "nothing on a page changes the order of letters");
  }
}

void checkFindings(const URL& url, const Store& store, bool all) {
  const Findings findings = findingsOf(url, store, all);
  const std::string page = textOf(findings, {.isColoured = false, .isFull = all});
  checkPage(page);
  require(!page.empty(), "there is always something to say");
  const std::string json = jsonOf(documentOf(findings));
  checkPage(json);
  require(parseJSON(json).has_value(), "the findings for programs are JSON");
}

}  // namespace

void door(std::string_view input) {
  const std::string_view line = input.substr(0, input.find('\n'));
  input.remove_prefix(std::min(line.size() + 1, input.size()));
  NoURL reason{};
  const std::optional<URL> url = launchURLOf(line, reason);
  if (!url) {
    require(reason.offset <= line.size() && !reason.reason.empty(), "a reason has a place");
    checkPage(textOf(line, reason));
    require(parseJSON(jsonOf(documentOf(line, reason))).has_value(), "for programs too");
    return;
  }
  const std::optional<Value> record = unarchivedValue(Data::copy(input));
  Store store{.isKnown = !input.empty(), .record = nullptr};
  if (record && record->asDictionary()) {
    store.record = std::make_shared<LumoApiLargeData>(*record->asDictionary());
  }
  for (const bool all : {false, true}) checkFindings(*url, store, all);
}

}  // namespace lumo::fuzz
