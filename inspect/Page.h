#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo::inspection {

inline constexpr std::size_t kPageColumns = 100;

enum class Look { Plain, Heading, Name, Quiet, Alarm };

/// A text for people while it is written: headings and tables in lines of at most kPageColumns.
class Page {
 public:
  explicit Page(bool isColoured) noexcept : isColoured_(isColoured) {}

  using Lines = std::vector<std::string>;

  /// A line of a table, but for its last cell.
  struct Row {
    bool isMarked;
    std::string name;
    std::string meaning;
  };

  void add(std::string_view text, Look look = Look::Plain);
  /// In as many lines as it takes.
  void addParagraph(std::string_view text, Look look);
  void addHeading(std::string_view text);
  /// `content(row, columns)` gives the lines of the last cell, which has that many columns.
  void addTable(const std::vector<Row>& rows, Look nameLook,
                const std::function<Lines(std::size_t, std::size_t)>& content);

  const std::string& text() const noexcept { return text_; }

 private:
  void addCell(std::string_view text, std::size_t columns, Look look);
  void addLines(const Lines& lines, std::size_t indent);

  const bool isColoured_;
  std::string text_;
};

}  // namespace lumo::inspection
