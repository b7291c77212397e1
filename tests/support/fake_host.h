// A host for tests: records every call of the module, answers as scripted, and fails on demand.
//
// Only contract headers: it stands behind the module as any host would. One FakeHost is current at
// a time; it must outlive the module that it is attached to.
#pragma once

#include <sorvanix/host_api.h>

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace sorvanix::test {

/// One value of a fake container or stream, by the operation that stored it.
using FakeValue = std::variant<float, bool, Vector, Word>;

/// A typed value as a stream holds it; the constructors spell the type at the call.
struct StreamValue {
  enum class Kind { Int, Float, Bool, Vector } kind;
  std::int32_t integer = 0;
  float real = 0;
  Vector vector = {};

  static StreamValue Int(std::int32_t value) { return {Kind::Int, value, 0, {}}; }
  static StreamValue Float(float value) { return {Kind::Float, 0, value, {}}; }
  static StreamValue Bool(bool value) { return {Kind::Bool, value ? 1 : 0, 0, {}}; }
  static StreamValue Vec(float x, float y, float z) { return {Kind::Vector, 0, 0, {x, y, z}}; }
  friend bool operator==(const StreamValue& a, const StreamValue& b);
};

/// A stream in memory: what Write stored, or what Read shall find.
struct FakeStream {
  std::vector<StreamValue> values;
  std::size_t position = 0;  ///< of the next read
  int mismatches = 0;        ///< reads of another type than the one stored, or past the end

  HostStream* handle() { return reinterpret_cast<HostStream*>(this); }
};

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
};

/// What the module handed over at one registration.
struct Registration {
  std::int32_t api, type, id;
  std::string name;
  ShaderRecord record;
  std::int32_t size;
};

class FakeHost {
 public:
  explicit FakeHost(Word version = 7300);
  ~FakeHost();
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  HostApi api = {};         ///< to be handed to the entry; tables may be taken out before
  RenderTable render = {};  ///< CPUs are served; noise is what a test installs

  std::vector<std::string> calls;  ///< every call but stream and container ones, with arguments
  std::vector<Registration> registrations;    ///< also the refused one
  std::vector<std::string> messages;          ///< texts of message dialogs, in order
  std::map<std::int32_t, std::string> texts;  ///< resource texts by id

  int refuseRegistration = 0;  ///< 1 refuses the first registration, 2 the second, ...
  int failAllocation = 0;      ///< 1 fails the next allocation, 2 the one after, ...
  bool failResources = false;

  std::int32_t cpuCount = 1;
  /// Index that hostCpuIndex answers on the calling thread.
  static thread_local std::int32_t cpuIndex;

  int liveBlocks() const { return liveBlocks_; }
  int liveTexts() const { return liveTexts_; }  ///< strings and filenames

  static FakeHost& Current();

 private:
  friend struct FakeTables;
  int liveBlocks_ = 0;
  int liveTexts_ = 0;
};

}  // namespace sorvanix::test
