// Prints the table and writes results.json and chart.svg beside the measurements:
// lumoapi_bench_report DIRECTORY, which holds timings.json and figures.txt.

#include "bench/Cases.h"
#include "platform/values/JSON.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <thread>

namespace {

using bench::Figures;
using lumo::Value;

std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

double numberOf(const Value* value) {
  if (value && value->asInteger()) return static_cast<double>(*value->asInteger());
  return value && value->asDouble() ? *value->asDouble() : 0;
}

/// The medians of the processor times, in nanoseconds.
bool readTimings(const std::string& path, Figures& figures) {
  const auto document = lumo::parseJSON(contentsOf(path));
  const auto* top = document ? document->asDictionary() : nullptr;
  const Value* list = top ? top->find("benchmarks") : nullptr;
  if (!list || !list->asArray()) return false;
  for (const Value& element : *list->asArray()) {
    const auto& run = *element.asDictionary();
    const Value* aggregate = run.find("aggregate_name");
    if (!aggregate || *aggregate != Value("median")) continue;
    const std::string& name = *run.find("run_name")->asString();
    figures[name.substr(0, name.find("/repeats:"))] = numberOf(run.find("cpu_time"));
  }
  return true;
}

/// Lines of a name and, after the last blank, its figure.
void readFigures(const std::string& path, Figures& figures) {
  std::ifstream lines(path);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t blank = line.rfind(' ');
    if (blank != std::string::npos) figures[line.substr(0, blank)] = std::stod(line.substr(blank));
  }
}

bool hasVBMI() {
#ifdef __x86_64__
  return __builtin_cpu_supports("avx512vbmi");
#else
  return false;
#endif
}

std::string processor() {
  std::ifstream lines("/proc/cpuinfo");
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
  }
  return "unknown processor";
}

std::string machine() {
  const std::string load = contentsOf("/proc/loadavg");
  return processor() + ", " + std::to_string(std::thread::hardware_concurrency()) + " cores, " +
         (hasVBMI() ? "AVX-512 VBMI" : "no AVX-512 VBMI") + ", compiler " + __VERSION__ + ", load " +
         load.substr(0, load.find(' '));
}

Value documentOf(const std::vector<bench::Outcome>& outcomes, const Figures& figures) {
  Value::Array cases;
  for (const bench::Outcome& row : outcomes) {
    cases.push_back(
        Value::Dictionary{{"case", row.of->name},
                          {"measured", row.measured == row.measured ? Value(row.measured) : Value()},
                          {"unit", row.of->unit},
                          {"target", row.targetText()},
                          {"verdict", row.verdict()}});
  }
  Value::Dictionary all;
  for (const auto& [name, figure] : figures) all.set(name, figure);
  return Value::Dictionary{{"machine", machine()}, {"cases", cases}, {"figures", all}};
}

void print(const std::vector<bench::Outcome>& outcomes) {
  const char* form = "%-54s %20s  %-12s %s\n";
  std::printf(form, "case", "measured", "target", "verdict");
  for (const bench::Outcome& row : outcomes) {
    std::printf(form, std::string(row.of->name).c_str(), row.measuredText().c_str(), row.targetText().c_str(),
                std::string(row.verdict()).c_str());
  }
  std::printf("%s\n", machine().c_str());
}

/// The table as it stands in the documentation.
std::string page(const std::vector<bench::Outcome>& outcomes) {
  std::string text = "| Case | Measured | Target | |\n|---|--:|--:|---|\n";
  for (const bench::Outcome& row : outcomes) {
    text.append("| ").append(row.of->name).append(" | ").append(row.measuredText()).append(" | ");
    text.append(row.targetText()).append(" | ").append(row.verdict()).append(" |\n");
  }
  return text.append("\nMeasured on: ").append(machine()).append("\n");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string directory = argv[1];
  Figures figures;
  if (!readTimings(directory + "/timings.json", figures)) {
    std::cerr << "no timings in " << directory << '\n';
    return 1;
  }
  readFigures(directory + "/figures.txt", figures);
  const std::vector<bench::Outcome> outcomes = bench::outcomes(figures, hasVBMI());
  print(outcomes);
  const auto json = lumo::writeJSON(documentOf(outcomes, figures), {.escapeSolidus = false, .indent = 2});
  std::ofstream(directory + "/results.json") << json.value_or("") << '\n';
  std::ofstream(directory + "/chart.svg") << bench::chart(outcomes, machine());
  std::ofstream(directory + "/table.md") << page(outcomes);
}
