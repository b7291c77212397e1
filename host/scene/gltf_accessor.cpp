#include "host/scene/gltf_accessor.h"

#include <tiny_gltf.h>

#include <cstdint>
#include <cstring>
#include <limits>

namespace sorvanix::host {
namespace {

template <class Value>
double Load(const unsigned char* bytes, bool normalized) noexcept {
  Value value;
  std::memcpy(&value, bytes, sizeof value);
  const auto number = static_cast<double>(value);
  return normalized ? number / static_cast<double>(std::numeric_limits<Value>::max()) : number;
}

}  // namespace

tl::expected<GltfAccessor, std::string> GltfAccessor::Open(const tinygltf::Model& model,
                                                           int index) {
  const auto refused = [](const char* why) { return tl::unexpected(std::string(why)); };
  const auto isIn = [](const auto& list, int i) {
    return i >= 0 && static_cast<std::size_t>(i) < list.size();
  };
  if (!isIn(model.accessors, index)) return refused("an accessor is missing");
  const tinygltf::Accessor& source = model.accessors[static_cast<std::size_t>(index)];
  if (source.sparse.isSparse) return refused("sparse accessors are not supported");
  if (!isIn(model.bufferViews, source.bufferView)) return refused("an accessor has no buffer view");
  const tinygltf::BufferView& view = model.bufferViews[static_cast<std::size_t>(source.bufferView)];
  if (!isIn(model.buffers, view.buffer)) return refused("a buffer view has no buffer");
  const auto& bytes = model.buffers[static_cast<std::size_t>(view.buffer)].data;

  GltfAccessor accessor;
  const int componentSize =
      tinygltf::GetComponentSizeInBytes(static_cast<std::uint32_t>(source.componentType));
  const int components = tinygltf::GetNumComponentsInType(static_cast<std::uint32_t>(source.type));
  if (componentSize <= 0 || components <= 0) return refused("an accessor has an unknown type");
  accessor.componentSize_ = static_cast<std::size_t>(componentSize);
  accessor.components_ = static_cast<std::size_t>(components);
  const std::size_t itemSize = accessor.componentSize_ * accessor.components_;
  accessor.count_ = source.count;
  accessor.stride_ = view.byteStride != 0 ? view.byteStride : itemSize;
  accessor.type_ = source.componentType;
  accessor.normalized_ = source.normalized;

  // Each comparison leaves room for the next one, so that no sum overflows.
  if (view.byteOffset > bytes.size() || view.byteLength > bytes.size() - view.byteOffset ||
      source.byteOffset > view.byteLength) {
    return refused("a buffer is too short");
  }
  const std::size_t room = view.byteLength - source.byteOffset;
  if (accessor.count_ > 0 &&
      (itemSize > room || accessor.count_ - 1 > (room - itemSize) / accessor.stride_)) {
    return refused("a buffer is too short");
  }
  accessor.data_ = bytes.data() + view.byteOffset + source.byteOffset;
  return accessor;
}

bool GltfAccessor::IsFloat() const noexcept { return type_ == TINYGLTF_COMPONENT_TYPE_FLOAT; }

bool GltfAccessor::IsIndex() const noexcept {
  return components_ == 1 && (type_ == TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE ||
                              type_ == TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT ||
                              type_ == TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT);
}

double GltfAccessor::Number(std::size_t item, std::size_t component) const noexcept {
  const unsigned char* bytes = data_ + item * stride_ + component * componentSize_;
  switch (type_) {
    case TINYGLTF_COMPONENT_TYPE_BYTE:
      return Load<std::int8_t>(bytes, normalized_);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
      return Load<std::uint8_t>(bytes, normalized_);
    case TINYGLTF_COMPONENT_TYPE_SHORT:
      return Load<std::int16_t>(bytes, normalized_);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
      return Load<std::uint16_t>(bytes, normalized_);
    case TINYGLTF_COMPONENT_TYPE_INT:
      return Load<std::int32_t>(bytes, normalized_);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT:
      return Load<std::uint32_t>(bytes, normalized_);
    case TINYGLTF_COMPONENT_TYPE_FLOAT:
      return Load<float>(bytes, false);
    default:
      return Load<double>(bytes, false);
  }
}

}  // namespace sorvanix::host
