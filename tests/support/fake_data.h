// Streams and containers in memory, as a host for tests serves them.
#pragma once

#include <sorvanix/host_api.h>

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace sorvanix::test {

struct LinkContent;

/// A typed value as a stream holds it; the constructors spell the type at the call.
struct StreamValue {
  enum class Kind { Int, Float, Bool, Vector, String, Link, Matrix } kind;
  std::int32_t integer = 0;
  float real = 0;
  Vector vector = {};
  std::string text = {};                   ///< of a String; the name of what a Link holds
  std::shared_ptr<LinkContent> link = {};  ///< what a Link holds
  Matrix matrix = {};

  static StreamValue Int(std::int32_t value) { return {Kind::Int, value}; }
  static StreamValue Float(float value) { return {Kind::Float, 0, value}; }
  static StreamValue Bool(bool value) { return {Kind::Bool, value ? 1 : 0}; }
  static StreamValue Vec(float x, float y, float z) { return {Kind::Vector, 0, 0, {x, y, z}}; }
  static StreamValue String(std::string text) { return {Kind::String, 0, 0, {}, std::move(text)}; }
  /// A link to something with this name.
  static StreamValue Link(std::string name);
  static StreamValue Mat(const Matrix& value) {
    StreamValue made = {Kind::Matrix};
    made.matrix = value;
    return made;
  }
  friend bool operator==(const StreamValue& a, const StreamValue& b);
};

/// A stream in memory: what Write stored, or what Read shall find.
struct FakeStream {
  std::vector<StreamValue> values;
  std::size_t position = 0;  ///< of the next read
  int mismatches = 0;        ///< reads of another type than the one stored, or past the end

  HostStream* handle() { return reinterpret_cast<HostStream*>(this); }
};

struct FakeContainer;

/// One value of a fake container, by the operation that stored it.
using FakeValue =
    std::variant<float, bool, Vector, Word, std::string, std::shared_ptr<FakeContainer>>;

/// A container in memory, in the order of its keys' first setting.
struct FakeContainer {
  struct Entry {
    std::int32_t key;
    FakeValue value;
  };
  std::vector<Entry> entries;

  HostContainer* handle() { return reinterpret_cast<HostContainer*>(this); }
  const FakeValue* Find(std::int32_t key) const;
  void Set(std::int32_t key, FakeValue value);
  /// The container under a key; fails the test when there is none.
  FakeContainer& Inner(std::int32_t key) const;
};

/// Same type and same value, floats exactly.
bool SameValue(const FakeValue& a, const FakeValue& b);

const StreamTable& FakeStreamTable();
const ContainerTable& FakeContainerTable();

}  // namespace sorvanix::test
