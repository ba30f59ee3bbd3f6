#include "bench/Cases.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace bench {

namespace {

constexpr int kRowHeight = 22;
constexpr int kTop = 64;
constexpr int kBarsLeft = 376;
constexpr int kUnitWidth = 110;  // of a margin of 1
constexpr double kWidest = 3;
constexpr int kWidth = 960;

constexpr std::string_view kStyle = R"(<style>
  text { font: 13px system-ui, sans-serif; fill: #1c1e21 }
  .head { font-size: 16px; font-weight: 600 }
  .note { fill: #5f6670 }
  .paper { fill: #ffffff } .reached { fill: #2f74c0 } .missed { fill: #d9822b }
  .target { stroke: #1c1e21; stroke-dasharray: 3 3 }
  @media (prefers-color-scheme: dark) {
    text { fill: #e6e8eb } .note { fill: #9aa3ad } .paper { fill: #15181c }
    .reached { fill: #5b9be0 } .missed { fill: #e89b4c } .target { stroke: #e6e8eb }
  }
</style>
)";

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text)
    result += c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '&' ? "&amp;" : std::string(1, c);
  return result;
}

std::string label(int x, int y, std::string_view kind, std::string_view text) {
  return "<text x='" + std::to_string(x) + "' y='" + std::to_string(y) + "' class='" + std::string(kind) +
         "'>" + escaped(text) + "</text>\n";
}

std::string bar(const Outcome& row, int y) {
  const double margin = std::isnan(row.measured) ? 0 : std::min(row.margin(), kWidest);
  const int width = static_cast<int>(margin * kUnitWidth);
  return label(16, y + 15, "", row.of->name) + "<rect x='" + std::to_string(kBarsLeft) + "' y='" +
         std::to_string(y + 3) + "' width='" + std::to_string(width) + "' height='16' rx='2' class='" +
         std::string(row.verdict()) + "'/>\n" +
         label(kBarsLeft + static_cast<int>(kWidest * kUnitWidth) + 12, y + 15, "",
               row.measuredText() + " (" + row.targetText() + ")");
}

}  // namespace

std::string chart(const std::vector<Outcome>& outcomes, std::string_view machine) {
  std::string rows;
  int y = kTop;
  for (const Outcome& row : outcomes) {
    if (row.of->bound == Bound::Shown) continue;
    rows += bar(row, y);
    y += kRowHeight;
  }
  const std::string target = std::to_string(kBarsLeft + kUnitWidth);
  return "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 " + std::to_string(kWidth) + " " +
         std::to_string(y + 16) + "'>\n" + std::string(kStyle) +
         "<rect width='100%' height='100%' class='paper'/>\n" +
         label(16, 26, "head", "How far beyond its target each case is") + label(16, 46, "note", machine) +
         label(kBarsLeft + kUnitWidth + 4, kTop - 4, "note", "target") + rows + "<line x1='" + target +
         "' x2='" + target + "' y1='" + std::to_string(kTop - 14) + "' y2='" + std::to_string(y) +
         "' class='target'/>\n</svg>\n";
}

}  // namespace bench
