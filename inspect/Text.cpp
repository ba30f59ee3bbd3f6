#include "inspect/Text.h"

#include "LumoApi/internal/Keys.h"
#include "inspect/Page.h"
#include "inspect/Printable.h"
#include "platform/values/JSON.h"

#include <algorithm>
#include <utility>

namespace lumo::inspection {

namespace {

using Lines = Page::Lines;
using Rows = std::vector<Page::Row>;

constexpr std::size_t kMostLines = 4;
constexpr std::size_t kMostJSONLines = 12;

/// A text on one line, its beginning where it is long. Of a very long one, no more is looked at.
std::string shortened(std::string_view text, std::size_t columns) {
  const std::string_view looked = text.substr(0, 4 * columns + 4);
  return cut(printable(looked), columns);
}

Lines textLines(std::string_view text, std::size_t columns, bool isFull) {
  if (text.empty()) return {"(empty)"};
  Lines lines = wrapped(printable(text), columns);
  if (!isFull && lines.size() > kMostLines) {
    lines.resize(kMostLines);
    lines.push_back("… " + grouped(charactersOf(text)) + " characters in all; --full shows them");
  }
  return lines;
}

Lines jsonLines(const Value& json, std::size_t columns, bool isFull) {
  const std::string text = writeJSON(json, {.escapeSolidus = false, .indent = 2}).value_or("?");
  Lines lines;
  std::size_t count = 0;
  for (std::size_t begin = 0; begin < text.size(); ++count) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const std::string_view line = std::string_view(text).substr(begin, end - begin);
    begin = end + 1;
    if (isFull) {
      for (std::string& part : wrapped(printable(line), columns)) lines.push_back(std::move(part));
    } else if (count < kMostJSONLines) {
      lines.push_back(shortened(line, columns));
    }
  }
  if (lines.size() < count) lines.push_back("… " + grouped(count) + " lines in all; --full shows them");
  return lines;
}

std::string described(const Content& content, std::size_t size) {
  if (size == 0) return "(empty)";
  std::string text(content.inWords);
  if (content.size) {
    text += ", " + std::to_string(content.size->width) + " × " + std::to_string(content.size->height);
  }
  return text + ", " + grouped(size) + (size == 1 ? " byte" : " bytes");
}

/// Who asks what of whom.
std::string sentenceOf(const Findings& findings) {
  const DestinationInfo* destination = findings.destination;
  if (!destination) return "Neither the messenger nor an app reads this URL.";
  if (!destination->isSentToMessenger()) return findings.asks();
  std::string sentence("An app");
  const std::string* name = findings.text(keys::kThirdAppDisplayName);
  if (name && !name->empty()) sentence += " that calls itself “" + shortened(*name, 40) + "”";
  sentence += " asks the ";
  if (findings.isForSibling) sentence += "sibling ";
  if (findings.isForMainAlone) sentence += "main ";
  return sentence + "messenger to " + findings.asks() +
         (destination->isSigned() ? ", with a signature." : ".");
}

void addSummary(Page& page, const Findings& findings) {
  page.addParagraph(sentenceOf(findings), Look::Heading);
  const std::string_view url = findings.url.absoluteString();
  page.add("\n  " + shortened(url.substr(0, url.find_first_of("?#")), 70));
  page.add(" (" + grouped(url.size()) + " characters in all)", Look::Quiet);
  page.add("\n");
}

Lines entryLines(const Entry& entry, const Findings& findings, std::size_t columns, bool isFull) {
  const Decoded& value = entry.value;
  if (value.json) return jsonLines(*value.json, columns, isFull);
  if (value.bytes && entry.encoding == Encoding::Record) {
    return {described({"archive", "plist"}, value.bytes->size()) + (findings.record ? ", see below" : "")};
  }
  if (value.bytes) return {described(contentOf(*value.bytes), value.bytes->size())};
  std::string text = value.text ? *value.text : std::string(entry.raw);
  if (entry.encoding == Encoding::Kind && findings.kind && entry.counts) {
    text += " (" + std::string(findings.kind->inWords) + ")";
  } else if (const auto gloss = glossOf(entry.key, text); gloss && !gloss->empty()) {
    text += " (" + std::string(*gloss) + ")";
  }
  return textLines(text, columns, isFull);
}

std::string_view meaningOf(const Entry& entry, const DestinationInfo* destination) noexcept {
  if (!entry.counts) return "(does not count)";
  if (entry.info) return entry.info->meaning;
  return destination && !destination->otherKeys().empty() ? destination->otherKeys() : "(not known)";
}

/// The headline of a record.
std::string_view placeOf(const Record& record) noexcept {
  if (!record.isInStore) return "Record, in the URL under “pasteboard”";
  return record.isAnnounced ? "Record, in the store" : "Record, in the store (the URL does not ask for it)";
}

void addEntries(Page& page, const Findings& findings, bool isFull) {
  if (findings.entries.empty()) return;
  Dictionary<bool, std::string_view> warned;
  for (const Warning& warning : findings.warnings.all()) warned.set(warning.key, true);
  Rows rows;
  for (const Entry& entry : findings.entries) {
    rows.push_back({warned.contains(entry.key), isFull ? printable(entry.key) : shortened(entry.key, 24),
                    std::string(meaningOf(entry, findings.destination))});
  }
  page.addHeading("Keys");
  page.addTable(rows, Look::Name, [&](std::size_t row, std::size_t columns) {
    return entryLines(findings.entries[row], findings, columns, isFull);
  });
  if (findings.entriesLeftOut != 0) {
    page.add("  … and " + grouped(findings.entriesLeftOut) + " more pairs; --full shows them", Look::Quiet);
    page.add("\n");
  }
}

void addRecord(Page& page, const Findings& findings, bool isFull) {
  if (!findings.record) return;
  const Record& record = *findings.record;
  Rows rows;
  for (const RecordEntry& entry : record.entries) {
    rows.push_back(
        {false, isFull ? printable(entry.path) : shortened(entry.path, 36), std::string(entry.meaning)});
  }
  page.addHeading(placeOf(record));
  if (rows.empty()) page.add("  (empty)\n");
  page.addTable(rows, Look::Name, [&](std::size_t row, std::size_t columns) {
    const RecordEntry& entry = record.entries[row];
    if (entry.bytes) return Lines{described(entry.content, entry.bytes->size())};
    return textLines(*entry.text, columns, isFull);
  });
  if (record.leftOut != 0) {
    page.add("  … and " + grouped(record.leftOut) + " more entries", Look::Quiet);
    page.add("\n");
  }
}

void addWarnings(Page& page, const Warnings& warnings) {
  if (warnings.all().empty()) return;
  Rows rows;
  for (const Warning& warning : warnings.all()) rows.push_back({true, std::string(warning.code), ""});
  page.addHeading("Warnings");
  page.addTable(rows, Look::Alarm, [&](std::size_t row, std::size_t columns) {
    const Warning& warning = warnings.all()[row];
    const std::string key = warning.key.empty() ? "" : shortened(warning.key, 36) + ": ";
    return wrapped(key + printable(warning.message), columns);
  });
  if (warnings.leftOut() != 0) {
    page.add("  … and " + grouped(warnings.leftOut()) + " more like these", Look::Quiet);
    page.add("\n");
  }
}

}  // namespace

std::string textOf(const Findings& findings, TextStyle style, const std::vector<Section>& more) {
  Page page(style.isColoured);
  addSummary(page, findings);
  addEntries(page, findings, style.isFull);
  addRecord(page, findings, style.isFull);
  for (const Section& section : more) {
    page.addHeading(section.heading);
    for (const std::string& line : section.lines) page.add("  " + printable(line) + "\n");
  }
  addWarnings(page, findings.warnings);
  page.add("\n");
  page.add("Nothing in a URL is verified: any app could have made it.", Look::Quiet);
  page.add("\n");
  return page.text();
}

std::string textOf(const std::vector<LintFinding>& findings) {
  std::string text;
  for (const LintFinding& finding : findings) {
    const std::string line = finding.place.line == 0 ? "" : ":" + std::to_string(finding.place.line);
    text += printable(finding.place.file + line + ": " + finding.code + ": " + finding.message) + "\n";
  }
  return text;
}

std::string textOf(std::string_view text, const NoURL& reason) {
  constexpr std::size_t kBefore = 60, kAfter = 30;
  std::size_t begin = reason.offset > kBefore ? reason.offset - kBefore : 0;
  while (begin > 0 && (static_cast<unsigned char>(text[begin]) & 0xC0) == 0x80) --begin;
  const std::string before = printable(text.substr(begin, reason.offset - begin));
  const std::string after = printable(text.substr(reason.offset, kAfter));
  const std::string mark = begin == 0 ? "" : "…";
  return "not a URL: byte " + std::to_string(reason.offset + 1) + ": " + printable(reason.reason) + "\n  " +
         mark + before + after + "\n  " + std::string(columnsOf(mark) + columnsOf(before), ' ') + "^";
}

}  // namespace lumo::inspection
