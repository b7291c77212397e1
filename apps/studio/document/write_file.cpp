#include "apps/studio/document/write_file.h"

#include <fmt/format.h>

#include <fstream>

#include "host/bake/temporary_file.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace {

namespace fs = std::filesystem;

bool IsWriteProtected(const fs::path& file) {
  constexpr fs::perms kAnyWrite =
      fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  std::error_code error;
  const fs::file_status status = fs::status(file, error);
  return fs::is_regular_file(status) && (status.permissions() & kAnyWrite) == fs::perms::none;
}

}  // namespace

tl::expected<void, std::string> WriteFile(const std::filesystem::path& file,
                                          std::string_view text) {
  // Renaming would replace it all the same.
  if (IsWriteProtected(file)) {
    return tl::unexpected(fmt::format("{}: is write-protected", host::Utf8FromPath(file)));
  }
  auto temporary = host::TemporaryFile::Create(file);
  if (!temporary) return tl::unexpected(temporary.error());
  std::ofstream stream(temporary->Path(), std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) {
    return tl::unexpected(fmt::format("{}: cannot be written", host::Utf8FromPath(file)));
  }
  return temporary->Commit();
}

}  // namespace sorvanix::studio
