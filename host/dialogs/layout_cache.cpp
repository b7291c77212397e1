#include "host/dialogs/layout_cache.h"

#include <fmt/format.h>
#include <sorvanix/ids.h>

#include <map>
#include <mutex>
#include <string>
#include <system_error>
#include <utility>

#include "host/services/filenames.h"
#include "host/services/messages.h"

namespace sorvanix::host {

namespace {

using Layout = std::shared_ptr<const DialogLayout>;

// An import opens a dialog for each shader, so that a batch would read each file many thousand
// times.
std::mutex mutex;
std::map<std::pair<std::filesystem::path, std::int32_t>, Layout>& Known() {
  static std::map<std::pair<std::filesystem::path, std::int32_t>, Layout> known;
  return known;
}

tl::expected<Layout, std::string> Load(const std::filesystem::path& file, std::int32_t id) {
  auto layout = LoadDialogLayout(file);
  if (!layout) return tl::unexpected(layout.error());
  if (layout->id != id) {
    return tl::unexpected(fmt::format("{}: /id: expected {}, as the file's name says, found {}",
                                      Utf8FromPath(file), id, layout->id));
  }
  return std::make_shared<const DialogLayout>(*std::move(layout));
}

}  // namespace

Layout FindDialogLayout(const std::filesystem::path& resources, std::int32_t id) {
  const std::lock_guard lock(mutex);
  if (const auto found = Known().find({resources, id}); found != Known().end()) {
    return found->second;
  }
  const std::filesystem::path file = resources / "dialogs" / fmt::format("{}.json", id);
  std::error_code error;
  if (!std::filesystem::exists(file, error)) return nullptr;
  auto layout = Load(file, id);
  if (!layout) {
    ShowMessage(layout.error(), MessageDialogFlags);
    return nullptr;
  }
  Known()[{resources, id}] = *layout;
  return *layout;
}

}  // namespace sorvanix::host
