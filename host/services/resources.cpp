#include "host/services/resources.h"

#include <charconv>
#include <optional>

#include "host/services/filenames.h"
#include "host/services/json.h"
#include "host/services/strings.h"
#include "host/services/text_file.h"

namespace sorvanix::host {

namespace {

using Texts = std::map<std::int32_t, std::string>;

std::optional<std::int32_t> NumberIn(std::string_view name) {
  std::int32_t number = 0;
  const char* end = name.data() + name.size();
  const auto parsed = std::from_chars(name.data(), end, number);
  if (parsed.ec != std::errc() || parsed.ptr != end) return {};
  return number;
}

// Nothing unless the whole file is as it should be: half of the texts would be worse than none.
std::optional<Texts> ReadTexts(const std::filesystem::path& file) {
  const std::optional<std::string> content = ReadTextFile(file);
  if (!content) return {};
  const auto json = ParseJson(*content);
  const auto* members = json ? std::get_if<Json::Object>(&json->value) : nullptr;
  if (members == nullptr) return {};
  Texts texts;
  for (const JsonMember& member : *members) {
    const std::optional<std::int32_t> id = NumberIn(member.name);
    const auto* text = std::get_if<std::string>(&member.value.value);
    if (!id || text == nullptr) return {};
    texts[*id] = *text;
  }
  return texts;
}

HostResources* Open(const HostFilename* directory) noexcept {
  return Guarded<HostResources*>(nullptr, [&]() -> HostResources* {
    if (PathOf(directory).empty()) return nullptr;
    std::filesystem::path folder = PathOf(directory) / "Resources";
    std::optional<Texts> texts = ReadTexts(folder / "strings.json");
    if (!texts) return nullptr;
    return (new Resources(std::move(folder), *std::move(texts)))->Handle();
  });
}

void Close(HostResources* resources) noexcept { delete Resources::From(resources); }

HostString* LoadString(HostResources* resources, std::int32_t id, std::int32_t /*flag*/) noexcept {
  const std::string* text = resources == nullptr ? nullptr : Resources::From(resources)->Find(id);
  return text == nullptr ? EmptyText() : NewText(*text);
}

}  // namespace

const std::string* Resources::Find(std::int32_t id) const noexcept {
  const auto found = texts_.find(id);
  return found == texts_.end() ? nullptr : &found->second;
}

void InstallResources(ResourceTable& table) noexcept {
  table.open = Open;
  table.close = Close;
  table.loadString = LoadString;
}

}  // namespace sorvanix::host
