#include "cli/SavedBytes.h"

#include "LumoApi/Dictionary.h"
#include "cli/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace lumo::cli {

namespace {

struct Descriptor {
  int number;
  ~Descriptor() {
    if (number >= 0) ::close(number);
  }
};

/// A name of letters, digits, "_" and single "-" alone, which so is no path and no hidden file.
std::string stemOf(std::string_view path) {
  constexpr std::string_view kKept = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
  constexpr std::size_t kLongest = 100;
  std::string name;
  for (const char c : path.substr(0, kLongest)) {
    if (kKept.find(c) != std::string_view::npos) {
      name += c;
    } else if (!name.empty() && name.back() != '-') {
      name += '-';
    }
  }
  while (name.ends_with('-')) name.pop_back();
  return name.empty() ? "entry" : name;
}

void writeAll(int file, std::string_view bytes, const std::string& name) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(file, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) throw FileError(name, errno);
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

struct File {
  std::string name;
  Data bytes;
};

/// What is to be written, under names that differ.
class Files {
 public:
  void add(std::string_view path, std::string_view extension, const Data& bytes) {
    const std::string stem = stemOf(path);
    std::string name = stem;
    for (int copy = 2; names_.contains(name); ++copy) name = stem + "-" + std::to_string(copy);
    names_.set(name, true);
    all_.push_back({name + "." + std::string(extension), bytes});
  }
  const std::vector<File>& all() const noexcept { return all_; }

 private:
  Dictionary<bool> names_;
  std::vector<File> all_;
};

Files filesOf(const inspection::Findings& findings) {
  Files files;
  for (const inspection::Entry& entry : findings.entries) {
    if (!entry.counts || entry.encoding != inspection::Encoding::Bytes || !entry.value.bytes) continue;
    files.add(entry.key, inspection::contentOf(*entry.value.bytes).extension, *entry.value.bytes);
  }
  if (!findings.record) return files;
  for (const inspection::RecordEntry& entry : findings.record->entries) {
    if (entry.bytes) files.add(entry.path, entry.content.extension, *entry.bytes);
  }
  return files;
}

void write(int folder, const File& file, const std::string& name) {
  const Descriptor descriptor{
      ::openat(folder, file.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600)};
  if (descriptor.number < 0) throw FileError(name, errno);
  writeAll(descriptor.number, file.bytes.view(), name);
}

}  // namespace

std::vector<std::string> save(const inspection::Findings& findings, const std::string& folder) {
  const Files files = filesOf(findings);
  std::vector<std::string> names;
  if (files.all().empty()) return names;
  if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) throw FileError(folder, errno);
  const Descriptor opened{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
  if (opened.number < 0) throw FileError(folder, errno);
  for (const File& file : files.all()) {
    const std::string& name = names.emplace_back(folder + "/" + file.name);
    write(opened.number, file, name);
  }
  return names;
}

}  // namespace lumo::cli
