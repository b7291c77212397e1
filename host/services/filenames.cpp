#include "host/services/filenames.h"

#include <system_error>

#include "host/services/strings.h"

namespace sorvanix::host {

namespace {

// What `make` answers, as a new filename; the shared empty one when that is empty.
template <class Make>
HostFilename* NewFilenameFrom(Make&& make) noexcept {
  return Guarded(EmptyFilename(), [&] {
    std::string path = make();
    return path.empty() ? EmptyFilename() : (new Filename(std::move(path)))->Handle();
  });
}

// A zero byte would end the path for the system and name another file than the text does.
bool CanBePath(std::string_view text) noexcept { return text.find('\0') == std::string_view::npos; }

HostFilename* Create() noexcept {
  return Guarded(EmptyFilename(), [] { return (new Filename)->Handle(); });
}

HostFilename* FromString(const HostString* path) noexcept {
  return NewFilenameFrom([&] { return std::string(CanBePath(TextOf(path)) ? TextOf(path) : ""); });
}

HostFilename* Copy(const HostFilename* filename) noexcept {
  return NewFilenameFrom([&] { return Utf8FromPath(PathOf(filename)); });
}

void Free(HostFilename* filename) noexcept {
  if (filename != EmptyFilename()) delete Filename::From(filename);
}

HostFilename* Directory(const HostFilename* filename) noexcept {
  return NewFilenameFrom([&] { return Utf8FromPath(PathOf(filename).parent_path()); });
}

HostFilename* Append(const HostFilename* filename, const HostString* component) noexcept {
  return NewFilenameFrom([&] {
    const std::filesystem::path folder = PathOf(filename);
    if (!CanBePath(TextOf(component))) return Utf8FromPath(folder);
    // A component with a root would otherwise take the place of the whole path.
    return Utf8FromPath(folder / PathFromUtf8(TextOf(component)).relative_path());
  });
}

std::int32_t FileExists(const HostFilename* filename) noexcept {
  return Guarded(0, [&] {
    std::error_code unreadable;
    return std::filesystem::exists(PathOf(filename), unreadable) ? 1 : 0;
  });
}

}  // namespace

std::string_view WrongInFilename(std::string_view text) noexcept {
  constexpr std::size_t kLongest = 4095;  // of a path of Linux
  if (!CanBePath(text)) return "the name of a file cannot hold a zero character";
  if (text.size() > kLongest) return "the name of a file cannot be longer than 4095 bytes";
  return {};
}

std::filesystem::path PathFromUtf8(std::string_view text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string Utf8FromPath(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
}

HostFilename* EmptyFilename() noexcept {
  // Never destroyed, since a module may still hold it while the process ends; and no counted block.
  static Filename* const empty = ::new Filename;
  return empty->Handle();
}

std::filesystem::path PathOf(const HostFilename* filename) {
  if (filename == nullptr) return {};
  return PathFromUtf8(Filename::From(filename)->path);
}

void InstallFilenames(FilenameTable& table) noexcept {
  table.empty = EmptyFilename();
  table.create = Create;
  table.fromString = FromString;
  table.copy = Copy;
  table.free = Free;
  table.directory = Directory;
  table.append = Append;
}

void InstallFileQueries(GeneralTable& table) noexcept { table.fileExists = FileExists; }

}  // namespace sorvanix::host
