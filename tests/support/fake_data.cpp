#include "tests/support/fake_data.h"

#include <stdexcept>

#include "tests/support/fake_host.h"

namespace sorvanix::test {

namespace {

using Kind = StreamValue::Kind;

bool Same(const Vector& a, const Vector& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

// --- streams ---

FakeStream& StreamOf(HostStream* stream) { return *reinterpret_cast<FakeStream*>(stream); }

std::int32_t Append(HostStream* stream, StreamValue value) {
  if (IsDue(FakeHost::Current().failWrite)) return 0;
  StreamOf(stream).values.push_back(std::move(value));
  return 1;
}

// The next value when it has the kind asked for; counts a mismatch otherwise.
const StreamValue* Next(HostStream* handle, Kind kind) {
  FakeStream& stream = StreamOf(handle);
  if (IsDue(FakeHost::Current().failRead)) return nullptr;
  if (stream.position >= stream.values.size() || stream.values[stream.position].kind != kind) {
    ++stream.mismatches;
    return nullptr;
  }
  return &stream.values[stream.position++];
}

template <class Value, Value StreamValue::*member, Kind kind>
std::int32_t ReadAs(HostStream* stream, Value* value) noexcept {
  const StreamValue* next = Next(stream, kind);
  if (next == nullptr) return 0;
  *value = next->*member;
  return 1;
}

std::int32_t WriteLink(HostStream* stream, const ChannelLink* link) noexcept {
  StreamValue value{Kind::Link};
  if (link != nullptr) {
    value.link = std::make_shared<LinkContent>(ScriptedLink::Of(link).content);
    value.text = value.link->name;
  }
  return Append(stream, std::move(value));
}

std::int32_t ReadLink(HostStream* stream, ChannelLink* link) noexcept {
  const StreamValue* next = Next(stream, Kind::Link);
  if (next == nullptr || link == nullptr) return 0;
  ScriptedLink::Of(link).content = *next->link;
  return 1;
}

std::int32_t ReadText(HostStream* stream, HostString* text) noexcept {
  const StreamValue* next = Next(stream, Kind::String);
  if (next == nullptr) return 0;
  FakeTextOf(text) = next->text;
  return 1;
}

// --- containers ---

const FakeContainer& ContainerOf(const HostContainer* container) {
  static const FakeContainer empty;
  return container == nullptr ? empty : *reinterpret_cast<const FakeContainer*>(container);
}

template <class Value>
Value ValueOr(const HostContainer* container, std::int32_t key, Value def) {
  const FakeValue* value = ContainerOf(container).Find(key);
  const Value* typed = value == nullptr ? nullptr : std::get_if<Value>(value);
  return typed == nullptr ? def : *typed;
}

// Integers, bools and floats convert into one another.
template <class Number>
Number NumberOr(const HostContainer* container, std::int32_t key, Number def) {
  const FakeValue* value = ContainerOf(container).Find(key);
  if (value == nullptr) return def;
  if (const float* real = std::get_if<float>(value)) return static_cast<Number>(*real);
  if (const Word* word = std::get_if<Word>(value)) return static_cast<Number>(*word);
  if (const bool* flag = std::get_if<bool>(value)) return static_cast<Number>(*flag ? 1 : 0);
  return def;
}

void Put(HostContainer* container, std::int32_t key, FakeValue value) {
  if (container == nullptr || IsDue(FakeHost::Current().failContainerWrite)) return;
  reinterpret_cast<FakeContainer*>(container)->Set(key, std::move(value));
}

std::int32_t FindKey(const HostContainer* container, std::int32_t key) noexcept {
  const auto& entries = ContainerOf(container).entries;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i].key == key) return static_cast<std::int32_t>(i);
  }
  return -1;
}

std::int32_t KeyAt(const HostContainer* container, std::int32_t index) noexcept {
  const auto& entries = ContainerOf(container).entries;
  if (index < 0 || static_cast<std::size_t>(index) >= entries.size()) return -1;
  return entries[static_cast<std::size_t>(index)].key;
}

HostContainer* CreateContainer(std::int32_t) noexcept {
  FakeHost& host = FakeHost::Current();
  if (host.failContainers || IsDue(host.failContainer)) return nullptr;
  ++host.liveContainers;
  return (new FakeContainer)->handle();
}

void FreeContainer(HostContainer* container) noexcept {
  if (container == nullptr) return;
  --FakeHost::Current().liveContainers;
  delete reinterpret_cast<FakeContainer*>(container);
}

}  // namespace

StreamValue StreamValue::Link(std::string name) {
  auto content = std::make_shared<LinkContent>();
  content->name = name;
  return {Kind::Link, 0, 0, {}, std::move(name), std::move(content)};
}

bool operator==(const StreamValue& a, const StreamValue& b) {
  return a.kind == b.kind && a.integer == b.integer && a.real == b.real &&
         Same(a.vector, b.vector) && a.text == b.text && Same(a.matrix.off, b.matrix.off) &&
         Same(a.matrix.v1, b.matrix.v1) && Same(a.matrix.v2, b.matrix.v2) &&
         Same(a.matrix.v3, b.matrix.v3);
}

const FakeValue* FakeContainer::Find(std::int32_t key) const {
  for (const Entry& entry : entries) {
    if (entry.key == key) return &entry.value;
  }
  return nullptr;
}

void FakeContainer::Set(std::int32_t key, FakeValue value) {
  for (Entry& entry : entries) {
    if (entry.key == key) {
      entry.value = std::move(value);
      return;
    }
  }
  entries.push_back({key, std::move(value)});
}

FakeContainer& FakeContainer::Inner(std::int32_t key) const {
  const FakeValue* value = Find(key);
  const auto* inner =
      value == nullptr ? nullptr : std::get_if<std::shared_ptr<FakeContainer>>(value);
  if (inner == nullptr) throw std::runtime_error("no container under " + std::to_string(key));
  return **inner;
}

bool SameValue(const FakeValue& a, const FakeValue& b) {
  if (const Vector* v = std::get_if<Vector>(&a)) {
    return std::holds_alternative<Vector>(b) && Same(*v, std::get<Vector>(b));
  }
  if (a.index() != b.index()) return false;
  if (const float* real = std::get_if<float>(&a)) return *real == std::get<float>(b);
  if (const bool* flag = std::get_if<bool>(&a)) return *flag == std::get<bool>(b);
  if (const Word* word = std::get_if<Word>(&a)) return *word == std::get<Word>(b);
  if (const std::string* text = std::get_if<std::string>(&a)) {
    return *text == std::get<std::string>(b);
  }
  return false;
}

const StreamTable& FakeStreamTable() {
  static const StreamTable table = [] {
    StreamTable t = {};
    t.writeInt = [](HostStream* s, std::int32_t v) noexcept {
      return Append(s, StreamValue::Int(v));
    };
    t.writeFloat = [](HostStream* s, float v) noexcept { return Append(s, StreamValue::Float(v)); };
    t.writeBool = [](HostStream* s, std::int32_t v) noexcept {
      return Append(s, StreamValue::Bool(v != 0));
    };
    t.writeVector = [](HostStream* s, const Vector* v) noexcept {
      return Append(s, StreamValue::Vec(v->x, v->y, v->z));
    };
    t.writeString = [](HostStream* s, const HostString* v) noexcept {
      return Append(s, StreamValue::String(FakeTextOf(v)));
    };
    t.writeChannelLink = WriteLink;
    t.writeMatrix = [](HostStream* s, const Matrix* v) noexcept {
      return Append(s, StreamValue::Mat(*v));
    };
    t.readMatrix = ReadAs<Matrix, &StreamValue::matrix, Kind::Matrix>;
    t.readInt = ReadAs<std::int32_t, &StreamValue::integer, Kind::Int>;
    t.readFloat = ReadAs<float, &StreamValue::real, Kind::Float>;
    t.readBool = ReadAs<std::int32_t, &StreamValue::integer, Kind::Bool>;
    t.readVector = ReadAs<Vector, &StreamValue::vector, Kind::Vector>;
    t.readString = ReadText;
    t.readChannelLink = ReadLink;
    return t;
  }();
  return table;
}

const ContainerTable& FakeContainerTable() {
  using In = const HostContainer*;
  using Out = HostContainer*;
  using Key = std::int32_t;
  static const ContainerTable table = [] {
    ContainerTable t = {};
    t.create = CreateContainer;
    t.free = FreeContainer;
    t.find = FindKey;
    t.keyAt = KeyAt;
    t.getBool = [](In c, Key k, std::int32_t d) noexcept { return NumberOr(c, k, d) != 0 ? 1 : 0; };
    t.getInt = [](In c, Key k, Word d) noexcept { return NumberOr(c, k, d); };
    t.getFloat = [](In c, Key k, float d) noexcept { return NumberOr(c, k, d); };
    t.getVector = [](In c, Key k, const Vector* d, Vector* v) noexcept { *v = ValueOr(c, k, *d); };
    t.getString = [](In c, Key k, const HostString* d) noexcept {
      const FakeValue* value = ContainerOf(c).Find(k);
      const auto* text = value == nullptr ? nullptr : std::get_if<std::string>(value);
      return text == nullptr ? d : reinterpret_cast<const HostString*>(text);
    };
    t.getContainer = [](In c, Key k, Out d) noexcept {
      const auto inner = ValueOr(c, k, std::shared_ptr<FakeContainer>());
      return inner == nullptr ? d : inner->handle();
    };
    t.setBool = [](Out c, Key k, std::int32_t v) noexcept { Put(c, k, v != 0); };
    t.setInt = [](Out c, Key k, Word v) noexcept { Put(c, k, v); };
    t.setFloat = [](Out c, Key k, float v) noexcept { Put(c, k, v); };
    t.setVector = [](Out c, Key k, const Vector* v) noexcept { Put(c, k, *v); };
    t.setString = [](Out c, Key k, const HostString* v) noexcept { Put(c, k, FakeTextOf(v)); };
    t.setContainer = [](Out c, Key k, In v) noexcept {
      Put(c, k, std::make_shared<FakeContainer>(ContainerOf(v)));
    };
    return t;
  }();
  return table;
}

}  // namespace sorvanix::test
