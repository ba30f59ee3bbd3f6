// Lets files in through a door, one after the other: all files of the folders on the command line.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void replay(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  const std::string content{std::istreambuf_iterator<char>(stream), {}};
  const auto bytes = std::make_unique<std::uint8_t[]>(content.size());  // no byte more, so that ends are ends
  std::copy(content.begin(), content.end(), bytes.get());
  LLVMFuzzerTestOneInput(bytes.get(), content.size());
}

}  // namespace

int main(int count, char** arguments) {
  int replayed = 0;
  for (int i = 1; i < count; ++i) {
    for (const auto& entry : fs::directory_iterator(arguments[i])) {
      const std::string name = entry.path().string();
      std::fprintf(stderr, "%s\n", name.c_str());
      replay(entry.path());
      ++replayed;
    }
  }
  std::printf("%d inputs\n", replayed);
  return replayed > 0 ? 0 : 1;
}
