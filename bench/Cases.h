#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// What the programs measured, by name: times in nanoseconds, counts, bytes.
using Figures = std::map<std::string, double, std::less<>>;

enum class Bound { AtMost, AtLeast, Shown };

/// A row of the table: a figure, or the ratio of two, and what is asked of it.
struct Case {
  std::string_view name;
  std::string_view figure;
  std::string_view per;  ///< empty: the figure itself
  std::string_view unit;
  Bound bound;
  double target;
  double targetAVX2 = target;  ///< on a processor without AVX-512 VBMI
};

struct Outcome {
  const Case* of;
  double measured;  ///< NaN where a figure is missing
  double target;

  bool reached() const;
  /// How many times better than asked: 1 is just reached.
  double margin() const;
  std::string measuredText() const;
  std::string targetText() const;
  std::string_view verdict() const;
};

std::vector<Outcome> outcomes(const Figures& figures, bool hasVBMI);

/// The outcomes that have a target as a bar chart, as SVG text.
std::string chart(const std::vector<Outcome>& outcomes, std::string_view machine);

}  // namespace bench
