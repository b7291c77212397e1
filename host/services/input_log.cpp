#include "host/services/input_log.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace sorvanix::host {

namespace {

constinit thread_local InputLog* current = nullptr;

}  // namespace

InputLog::InputLog() noexcept : outer_(std::exchange(current, this)) {}

InputLog::~InputLog() { current = outer_; }

bool InputLog::Holds(const std::filesystem::path& file) const {
  std::error_code error;
  if (!std::filesystem::exists(file, error)) return false;
  return std::any_of(files_.begin(), files_.end(), [&](const std::filesystem::path& noted) {
    return std::filesystem::equivalent(file, noted, error);
  });
}

void InputLog::Note(const std::filesystem::path& file) {
  if (current != nullptr) current->files_.insert(file);
}

}  // namespace sorvanix::host
