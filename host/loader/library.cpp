#include "host/loader/library.h"

#include <dlfcn.h>

#include <utility>

namespace sorvanix::host {

tl::expected<Library, std::string> Library::Open(const std::filesystem::path& path) {
  // All symbols at once, so that a missing one is an error here and not a crash in a render; and
  // none for others to see, so that two modules cannot mix.
  if (void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) return Library(handle);
  const char* reason = dlerror();
  return tl::unexpected(std::string(reason == nullptr ? "cannot be opened" : reason));
}

Library::Library(Library&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

Library& Library::operator=(Library&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

Library::~Library() {
  if (handle_ != nullptr) dlclose(handle_);
}

void* Library::Symbol(const char* name) const noexcept { return dlsym(handle_, name); }

}  // namespace sorvanix::host
