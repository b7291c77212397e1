#include "host/bake/temporary_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <system_error>
#include <utility>

namespace sorvanix::host {

namespace {

namespace fs = std::filesystem;

// Makes a new file with the permissions that any new file gets; the answer is 0 or an errno.
int MakeNew(const fs::path& path) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor < 0) return errno;
  ::close(descriptor);
  return 0;
}

}  // namespace

tl::expected<TemporaryFile, std::string> TemporaryFile::Create(const fs::path& target) {
  const auto fail = [&target](const std::string& reason) {
    return tl::unexpected(fmt::format("{}: cannot be written: {}", target.string(), reason));
  };
  std::error_code ignored;
  if (fs::is_directory(target, ignored)) return fail("it is a folder");
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");

  // Short, so that it fits wherever the target's name does. A name is taken when an earlier program
  // of the same process number was killed.
  static std::atomic<unsigned> counter = 0;
  for (;;) {
    fs::path path = folder / fmt::format(".sorvanix-{}-{}", ::getpid(), counter++);
    const int error = MakeNew(path);
    if (error == 0) return TemporaryFile(std::move(path), target);
    if (error != EEXIST) return fail(std::generic_category().message(error));
  }
}

TemporaryFile::TemporaryFile(fs::path path, fs::path target)
    : path_(std::move(path)), target_(std::move(target)) {}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept
    : path_(std::exchange(other.path_, {})), target_(std::move(other.target_)) {}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  if (!path_.empty()) fs::remove(path_, ignored);
}

tl::expected<void, std::string> TemporaryFile::Commit() {
  std::error_code error;
  fs::rename(path_, target_, error);
  if (error) {
    return tl::unexpected(
        fmt::format("{}: cannot be written: {}", target_.string(), error.message()));
  }
  path_.clear();
  return {};
}

}  // namespace sorvanix::host
