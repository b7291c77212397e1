// Containers: typed values under integer keys, in the order in which the keys were first set.
//
// The unit of exchange between host and module: parameters, their types, a graph of shaders.
#pragma once

#include <sorvanix/host_services.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <variant>
#include <vector>

#include "host/services/filenames.h"
#include "host/services/handle.h"
#include "host/services/strings.h"

namespace sorvanix::host {

class Container;

/// A container inside a container: copied with everything in it.
class NestedContainer {
 public:
  explicit NestedContainer(const Container& container);
  NestedContainer(const NestedContainer& other);
  NestedContainer(NestedContainer&&) noexcept = default;
  NestedContainer& operator=(NestedContainer other) noexcept;
  ~NestedContainer();

  Container& operator*() const noexcept { return *container_; }
  friend bool operator==(const NestedContainer& first, const NestedContainer& second);

 private:
  std::unique_ptr<Container> container_;
};

/// One value. Its type is the alternative it holds.
using ContainerValue = std::variant<bool, Word, float, Vector, Text, Filename, NestedContainer>;

class Container : public Handled<Container, HostContainer> {
 public:
  struct Entry {
    std::int32_t key;
    ContainerValue value;
  };

  explicit Container(std::int32_t id = 0) : id_(id) {}

  std::int32_t Id() const noexcept { return id_; }
  std::size_t Size() const noexcept { return entries_.size(); }

  /// In the order in which the keys were first set: `for (const auto& [key, value] : container)`.
  auto begin() const noexcept { return entries_.begin(); }
  auto end() const noexcept { return entries_.end(); }
  const Entry& At(std::size_t index) const noexcept { return entries_[index]; }

  /// The index of a key, or -1.
  std::int32_t IndexOf(std::int32_t key) const noexcept;
  /// The value of a key, or null.
  const ContainerValue* Find(std::int32_t key) const noexcept;
  /// Stores a value; a key that is there keeps its place, whatever type it had.
  void Set(std::int32_t key, ContainerValue value);

  /// Numbers and truths convert into one another: to an integer by cutting the fraction off,
  /// limited to what a Word holds, NaN to 0; to a truth by comparing with 0. The answer is the
  /// default when the key is absent or of a type that does not convert. HoldsNumber tells
  /// beforehand.
  bool HoldsNumber(std::int32_t key) const noexcept;
  bool GetBool(std::int32_t key, bool fallback = false) const noexcept;
  Word GetInt(std::int32_t key, Word fallback = 0) const noexcept;
  float GetFloat(std::int32_t key, float fallback = 0) const noexcept;
  Vector GetVector(std::int32_t key, const Vector& fallback = {}) const noexcept;
  /// Null when the key is absent or of another type. The object is the container's own: it stands
  /// until its key is set again.
  const Text* GetText(std::int32_t key) const noexcept;
  const Filename* GetFilename(std::int32_t key) const noexcept;
  Container* GetContainer(std::int32_t key) const noexcept;

  /// Takes the values of another container, deeply copied; the id stays.
  void Assign(const Container& source);

  /// Equal ids, and equal keys with equal types and values in equal order. NaN differs from itself.
  friend bool operator==(const Container& first, const Container& second);

 private:
  std::int32_t id_;
  std::vector<std::int32_t> keys_;  // of entries_, side by side, so that a search is quick
  std::deque<Entry> entries_;       // a deque, so that objects handed out stay where they are
};

}  // namespace sorvanix::host
