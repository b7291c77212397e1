// Resources: the texts in the folder "Resources" beside a module.
//
// strings.json there is one object with the texts under their numbers: { "10001": "a title" }.
#pragma once

#include <sorvanix/host_services.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "host/services/handle.h"

namespace sorvanix::host {

class Resources : public Handled<Resources, HostResources> {
 public:
  Resources(std::filesystem::path folder, std::map<std::int32_t, std::string> texts)
      : folder_(std::move(folder)), texts_(std::move(texts)) {}

  /// The folder "Resources" itself.
  const std::filesystem::path& Folder() const noexcept { return folder_; }
  /// A text, or null for an unknown number.
  const std::string* Find(std::int32_t id) const noexcept;

 private:
  std::filesystem::path folder_;
  std::map<std::int32_t, std::string> texts_;
};

void InstallResources(ResourceTable& table) noexcept;

}  // namespace sorvanix::host
