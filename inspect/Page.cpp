#include "inspect/Page.h"

#include "inspect/Printable.h"

#include <algorithm>
#include <utility>

namespace lumo::inspection {

namespace {

constexpr std::size_t kWidestName = 36;  // a wider one pushes what follows aside

std::string_view codeOf(Look look) noexcept {
  switch (look) {
    case Look::Heading:
      return "\x1b[1m";
    case Look::Name:
      return "\x1b[36m";
    case Look::Quiet:
      return "\x1b[2m";
    case Look::Alarm:
      return "\x1b[33m";
    case Look::Plain:
      break;
  }
  return "";
}

}  // namespace

void Page::add(std::string_view text, Look look) {
  const std::string_view code = isColoured_ ? codeOf(look) : "";
  text_.append(code).append(text).append(code.empty() ? "" : "\x1b[0m");
}

void Page::addParagraph(std::string_view text, Look look) {
  for (const std::string& line : wrapped(text, kPageColumns)) {
    add(line, look);
    text_ += '\n';
  }
}

void Page::addHeading(std::string_view text) {
  text_ += '\n';
  add(text, Look::Heading);
  text_ += '\n';
}

void Page::addTable(const std::vector<Row>& rows, Look nameLook,
                    const std::function<Lines(std::size_t, std::size_t)>& content) {
  std::size_t names = 0, meanings = 0;
  for (const Row& row : rows) {
    names = std::max(names, std::min(columnsOf(row.name), kWidestName));
    meanings = std::max(meanings, columnsOf(row.meaning));
  }
  const std::size_t indent = 2 + names + 2 + (meanings == 0 ? 0 : meanings + 2);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    add(rows[i].isMarked ? "! " : "  ", rows[i].isMarked ? Look::Alarm : Look::Plain);
    addCell(rows[i].name, names + 2, nameLook);
    if (meanings != 0) addCell(rows[i].meaning, meanings + 2, Look::Quiet);
    addLines(content(i, kPageColumns - indent), indent);
  }
}

void Page::addCell(std::string_view text, std::size_t columns, Look look) {
  add(text, look);
  const std::size_t used = columnsOf(text);
  text_.append(used < columns ? columns - used : 2, ' ');
}

void Page::addLines(const Lines& lines, std::size_t indent) {
  bool isFirst = true;
  for (const std::string& line : lines) {
    if (!std::exchange(isFirst, false)) text_.append(indent, ' ');
    (text_ += line) += '\n';
  }
}

}  // namespace lumo::inspection
