// Filenames: paths in UTF-8 behind the HostFilename of the contract, over std::filesystem.
#pragma once

#include <sorvanix/host_services.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "host/services/handle.h"

namespace sorvanix::host {

class Filename : public Handled<Filename, HostFilename> {
 public:
  Filename() = default;
  explicit Filename(std::string value) : path(std::move(value)) {}

  friend bool operator==(const Filename& a, const Filename& b) { return a.path == b.path; }

  std::string path;  ///< UTF-8, never with a zero byte inside
};

/// Paths are UTF-8 at every border of the host, whatever the system's locale says.
std::filesystem::path PathFromUtf8(std::string_view text);
std::string Utf8FromPath(const std::filesystem::path& path);

/// Why a text cannot name a file, in words; empty for one that can, whether it is there or not.
std::string_view WrongInFilename(std::string_view text) noexcept;

/// The shared empty filename, which is never freed.
HostFilename* EmptyFilename() noexcept;

/// What a handle holds; the empty path for null.
std::filesystem::path PathOf(const HostFilename* filename);

void InstallFilenames(FilenameTable& table) noexcept;
/// Puts the test for existence into the general table.
void InstallFileQueries(GeneralTable& table) noexcept;

}  // namespace sorvanix::host
