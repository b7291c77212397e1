#include "host/bake/temporary_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "host/services/filenames.h"

namespace sorvanix::host {

namespace {

namespace fs = std::filesystem;

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// What links lead to, whether it is there or not; a link itself when there are too many, at which
// the system would give up too.
fs::path BehindLinks(fs::path file) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(file, error); ++i) {
    file = file.parent_path() / fs::read_symlink(file, error);
  }
  return file;
}

// Short, so that it fits wherever the target's name does. Each call answers another one.
fs::path NextName(const fs::path& folder) {
  static std::atomic<unsigned> counter = 0;
  return folder / fmt::format(".sorvanix-{}-{}", ::getpid(), counter++);
}

// Calls `make` with one name after the other until it answers anything but EEXIST: a name is taken
// when an earlier program of the same process number was killed.
template <class Make>
int WithFreeName(const fs::path& folder, fs::path& name, Make&& make) {
  int error = EEXIST;
  while (error == EEXIST) {
    name = NextName(folder);
    error = make(name) >= 0 ? 0 : errno;
  }
  return error;
}

constexpr mode_t kAnyNewFile = 0666;  // less what the process's mask takes away

}  // namespace

tl::expected<TemporaryFile, std::string> TemporaryFile::Create(const fs::path& target) {
  const Target meant = {target, BehindLinks(target)};
  std::error_code ignored;
  if (fs::is_directory(meant.file, ignored)) return tl::unexpected(Failed(meant, EISDIR));
  if (fs::is_symlink(meant.file, ignored)) return tl::unexpected(Failed(meant, ELOOP));
  const fs::path folder = FolderOf(meant.file);
#ifdef O_TMPFILE
  const int nameless = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kAnyNewFile);
  if (nameless >= 0) {
    TemporaryFile file(nameless, meant);
    file.path_ = fmt::format("/proc/self/fd/{}", nameless);
    if (fs::exists(file.path_, ignored)) return file;  // else a system without /proc
  }
#endif
  fs::path name;
  int descriptor = -1;
  const int error = WithFreeName(folder, name, [&](const fs::path& free) {
    return descriptor = ::open(free.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kAnyNewFile);
  });
  if (error != 0) return tl::unexpected(Failed(meant, error));
  TemporaryFile file(descriptor, meant);
  file.path_ = file.name_ = std::move(name);
  return file;
}

TemporaryFile::TemporaryFile(int descriptor, Target target)
    : descriptor_(descriptor), target_(std::move(target)) {}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)),
      path_(std::move(other.path_)),
      name_(std::exchange(other.name_, {})),
      target_(std::move(other.target_)) {}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  if (!name_.empty()) fs::remove(name_, ignored);
  if (descriptor_ >= 0) ::close(descriptor_);
}

tl::expected<void, std::string> TemporaryFile::Commit() {
  // Else a power failure could leave the name on an empty file.
  if (::fsync(descriptor_) != 0) return tl::unexpected(Failed(target_, errno));
  if (name_.empty()) {
    const int error = WithFreeName(FolderOf(target_.file), name_, [this](const fs::path& free) {
      return ::linkat(AT_FDCWD, path_.c_str(), AT_FDCWD, free.c_str(), AT_SYMLINK_FOLLOW);
    });
    if (error != 0) {
      name_.clear();
      return tl::unexpected(Failed(target_, error));
    }
  }
  if (std::rename(name_.c_str(), target_.file.c_str()) != 0)
    return tl::unexpected(Failed(target_, errno));
  name_.clear();
  return {};
}

std::string TemporaryFile::Failed(const Target& target, int error) {
  const std::string reason =
      error == EISDIR ? "it is a folder" : std::generic_category().message(error);
  return fmt::format("{}: cannot be written: {}", Utf8FromPath(target.asTold), reason);
}

}  // namespace sorvanix::host
