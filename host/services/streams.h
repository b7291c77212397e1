// Streams: the typed values that a shader's Write leaves in a document and its Read takes back, in
// order.
#pragma once

#include <sorvanix/host_services.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "host/services/handle.h"

namespace sorvanix::host {

struct StreamValue;

/// What a channel link persists: the shader that it holds with that shader's own values, or a
/// bitmap. A reader that does not know the shader steps over it and can keep it as it is.
struct StreamLink {
  static constexpr std::int32_t kEmpty = -1;
  static constexpr std::int32_t kBitmap = 0;

  std::int32_t pluginId = kEmpty;   ///< of the shader, or kBitmap, or kEmpty
  std::string filename;             ///< of the bitmap, UTF-8
  std::vector<StreamValue> values;  ///< of the shader

  friend bool operator==(const StreamLink& first, const StreamLink& second);
};

/// One value; its type is the alternative it holds.
struct StreamValue {
  std::variant<std::int32_t, float, bool, Vector, Matrix, std::string, StreamLink> value;
};

/// Equal types and equal bits: a NaN equals itself, and 0 differs from -0. What was stored must
/// come back as it was.
bool operator==(const StreamValue& first, const StreamValue& second);

class Stream : public Handled<Stream, HostStream> {
 public:
  Stream() = default;
  explicit Stream(std::vector<StreamValue> values) : values_(std::move(values)) {}

  const std::vector<StreamValue>& Values() const noexcept { return values_; }
  /// The index of the value that is read next.
  std::size_t Position() const noexcept { return position_; }
  bool AtEnd() const noexcept { return position_ == values_.size(); }
  void Rewind() noexcept { position_ = 0; }

  /// Adds a value at the end, of one of StreamValue's types.
  template <class Type>
  void Write(Type value) {
    values_.emplace_back().value.template emplace<Type>(std::move(value));
  }

  /// The next value when it is of this type, else null: then the stream stays where it is.
  template <class Type>
  const Type* Read() noexcept {
    const Type* value = Peek<Type>();
    if (value != nullptr) ++position_;
    return value;
  }
  /// The same without going on to the value behind it.
  template <class Type>
  const Type* Peek() const noexcept {
    return AtEnd() ? nullptr : std::get_if<Type>(&values_[position_].value);
  }

 private:
  std::vector<StreamValue> values_;
  std::size_t position_ = 0;
};

/// Puts all but the channel links into the table: those come with the service that knows links.
void InstallStreams(StreamTable& table) noexcept;

}  // namespace sorvanix::host
