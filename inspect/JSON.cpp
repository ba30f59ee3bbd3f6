#include "inspect/JSON.h"

#include "inspect/Printable.h"
#include "platform/text/Text.h"
#include "platform/values/JSON.h"

#include <utility>

namespace lumo::inspection {

namespace {

using Object = Value::Dictionary;

/// A text that JSON can hold: what is no UTF-8 stands there as it is printed.
Value textValue(std::string_view text) { return isValidUTF8(text) ? std::string(text) : printable(text); }

Value textOrNull(std::optional<std::string_view> text) { return text ? textValue(*text) : Value(); }

std::string_view nameOf(Encoding encoding) noexcept {
  switch (encoding) {
    case Encoding::Plain:
    case Encoding::Word:
    case Encoding::Kind:
      return "plain";
    case Encoding::Escaped:
      return "escaped";
    case Encoding::Number:
      return "number";
    case Encoding::Text:
      return "base64-text";
    case Encoding::Link:
      return "base64-url";
    case Encoding::JSON:
      return "base64-json";
    case Encoding::Bytes:
      return "base64-bytes";
    case Encoding::Record:
      return "base64-record";
  }
  return "";
}

Value::Dictionary contentValue(const Content& content, std::size_t size) {
  Object value{{"content", content.inWords}, {"size", size}};
  if (content.size) {
    value.set("width", content.size->width);
    value.set("height", content.size->height);
  }
  return value;
}

/// Whether the value may stand in an entry, which is three levels down.
bool isShallow(const Value& value) {
  return writeJSON(Value::Array{Value::Array{Value::Array{value}}}).has_value();
}

Value valueOf(const Decoded& decoded, Encoding encoding) {
  if (decoded.json && isShallow(*decoded.json)) return *decoded.json;
  if (decoded.bytes) return contentValue(contentOf(*decoded.bytes), decoded.bytes->size());
  if (!decoded.text) return {};
  if (encoding == Encoding::Number && decoded.fault.empty()) {
    if (std::optional<Value> number = parseJSON(*decoded.text)) return *std::move(number);
  }
  return textValue(*decoded.text);
}

Value entriesOf(const Findings& findings) {
  Value::Array entries;
  for (const Entry& entry : findings.entries) {
    entries.emplace_back(Object{{"key", textValue(entry.key)},
                                {"meaning", entry.info ? Value(entry.info->meaning) : Value()},
                                {"encoding", nameOf(entry.encoding)},
                                {"raw", textValue(entry.raw)},
                                {"value", valueOf(entry.value, entry.encoding)},
                                {"counts", entry.counts}});
  }
  return entries;
}

Value destinationOf(const Findings& findings) {
  const DestinationInfo* destination = findings.destination;
  if (!destination) return {};
  Object value{{"name", destination->name}, {"asks", findings.asks()}};
  value.set("direction", destination->isSentToMessenger() ? "to-messenger" : "to-app");
  value.set("messenger", findings.isForSibling     ? "sibling"
                         : findings.isForMainAlone ? Value("main")
                                                   : Value());
  return value;
}

Value kindOf(const Findings& findings) {
  if (!findings.kindWord) return {};
  return Object{{"word", textValue(*findings.kindWord)},
                {"meaning", findings.kind ? Value(findings.kind->inWords) : Value()}};
}

Value recordValue(const std::optional<Record>& record) {
  if (!record) return {};
  Value::Array entries;
  for (const RecordEntry& entry : record->entries) {
    Object value{{"path", textValue(entry.path)}, {"meaning", entry.meaning}};
    if (entry.bytes) {
      for (const auto& [key, held] : contentValue(entry.content, entry.bytes->size())) value.set(key, held);
    } else {
      value.set("text", textOrNull(entry.text));
    }
    entries.emplace_back(std::move(value));
  }
  return Object{{"place", record->isInStore ? "store" : "url"},
                {"announced", record->isAnnounced},
                {"entries", std::move(entries)},
                {"leftOut", record->leftOut}};
}

Value warningOf(const Warning& warning) {
  return Object{{"code", warning.code},
                {"key", warning.key.empty() ? Value() : textValue(warning.key)},
                {"message", textValue(warning.message)}};
}

}  // namespace

Value::Dictionary documentOf(const Findings& findings) {
  const URL& url = findings.url;
  Object document{{"url", textValue(url.absoluteString())}};
  document.set("parts", Object{{"scheme", textOrNull(url.scheme())},
                               {"host", textOrNull(url.host())},
                               {"path", textValue(url.path())}});
  document.set("destination", destinationOf(findings));
  document.set("kind", kindOf(findings));
  document.set("entries", entriesOf(findings));
  document.set("entriesLeftOut", findings.entriesLeftOut);
  document.set("record", recordValue(findings.record));
  Value::Array warnings;
  for (const Warning& warning : findings.warnings.all()) warnings.push_back(warningOf(warning));
  document.set("warnings", std::move(warnings));
  document.set("warningsLeftOut", findings.warnings.leftOut());
  document.set("saved", Value());
  document.set("verified", false);
  return document;
}

Value::Dictionary documentOf(std::string_view text, const NoURL& reason) {
  const Warning warning{codes::kNotAURL, "",
                        "byte " + std::to_string(reason.offset + 1) + ": " + reason.reason};
  return {{"url", textValue(text)}, {"destination", Value()}, {"warnings", Value::Array{warningOf(warning)}}};
}

Value documentOf(const std::vector<LintFinding>& findings) {
  Value::Array list;
  for (const LintFinding& finding : findings) {
    list.emplace_back(Object{{"file", textValue(finding.place.file)},
                             {"line", finding.place.line == 0 ? Value() : Value(finding.place.line)},
                             {"code", finding.code},
                             {"key", finding.key.empty() ? Value() : textValue(finding.key)},
                             {"message", textValue(finding.message)}});
  }
  return list;
}

Value textArray(const std::vector<std::string>& texts) {
  Value::Array list;
  for (const std::string& text : texts) list.push_back(textValue(text));
  return list;
}

std::string jsonOf(const Value& document) {
  return printableJSON(writeJSON(document, {.escapeSolidus = false, .indent = 2}).value_or("null")) + "\n";
}

}  // namespace lumo::inspection
