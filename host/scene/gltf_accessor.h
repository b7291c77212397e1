// Numbers out of the buffers of a glTF model, checked against the buffers' sizes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <tl/expected.hpp>

namespace tinygltf {
class Model;
}

namespace sorvanix::host {

/// One accessor of a model, which must outlive it: `Count()` items of `Components()` numbers.
class GltfAccessor {
 public:
  /// Refused when the index, or any byte that could be asked for, is outside the model.
  static tl::expected<GltfAccessor, std::string> Open(const tinygltf::Model& model, int index);

  std::size_t Count() const noexcept { return count_; }
  std::size_t Components() const noexcept { return components_; }
  bool IsFloat() const noexcept;
  /// A whole number without sign, as indices are.
  bool IsIndex() const noexcept;

  /// As it stands, but normalised integers as their share of the largest one.
  double Number(std::size_t item, std::size_t component) const noexcept;

 private:
  GltfAccessor() = default;

  const unsigned char* data_ = nullptr;
  std::size_t count_ = 0, stride_ = 0, components_ = 0, componentSize_ = 0;
  int type_ = 0;
  bool normalized_ = false;
};

}  // namespace sorvanix::host
