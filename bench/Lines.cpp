// Prints how many text shares a second the tool converts, in processor time: lumoapi_bench_lines TOOL
// DIRECTORY

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string>

extern char** environ;

namespace {

constexpr int kLines = 200'000;

void write(const std::string& path) {
  std::ofstream lines(path);
  for (int i = 0; i < kLines; ++i) {
    lines << R"({"message": {"type": 7, "object": {"class": "LumoApiTextObject", "text": "hello number )" << i
          << R"(", "title": "Hi"}}, "datastore": {"scheme": "demo", "appName": "Demo", "openId": "o1"}})"
          << '\n';
  }
}

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// The seconds of processor time that the tool takes for the lines; 0 where it fails.
double run(const std::string& tool, const std::string& lines) {
  std::string path = tool, encode = "encode", option = "--lines", input = lines;
  std::array<char*, 5> arguments{path.data(), encode.data(), option.data(), input.data(), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int failed = posix_spawn(&child, path.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  rusage usage{};
  if (failed != 0 || wait4(child, &status, 0, &usage) != child || status != 0) return 0;
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::string lines = std::string(argv[2]) + "/lines.jsonl";
  write(lines);
  std::array<double, 5> times{};
  for (double& time : times) time = run(argv[1], lines);
  std::remove(lines.c_str());
  std::sort(times.begin(), times.end());
  if (times.front() <= 0) {
    std::fprintf(stderr, "%s does not convert the lines\n", argv[1]);
    return 1;
  }
  std::printf("lines/a second %.0f\n", kLines / times[times.size() / 2]);
}
