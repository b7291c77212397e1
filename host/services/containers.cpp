#include "host/services/containers.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace sorvanix::host {

namespace {

// A number as an integer: the fraction cut off, what is too large limited, NaN 0.
Word ToWord(float value) noexcept {
  constexpr Word kLeast = std::numeric_limits<Word>::min();
  constexpr Word kMost = std::numeric_limits<Word>::max();
  constexpr double kLimit = -static_cast<double>(kLeast);  // a power of two, exact
  if (!(value == value)) return 0;
  if (value >= kLimit) return kMost;
  if (value < -kLimit) return kLeast;
  return static_cast<Word>(value);
}

// The value of a key when it is of this type, else null.
template <class Type>
const Type* FindAs(const Container& container, std::int32_t key) noexcept {
  const ContainerValue* value = container.Find(key);
  return value == nullptr ? nullptr : std::get_if<Type>(value);
}

// The value of a key, converted, when it is a number or a truth; else the default.
template <class Result, class Convert>
Result NumberOf(const Container& container, std::int32_t key, Result fallback,
                Convert convert) noexcept {
  if (const Word* integer = FindAs<Word>(container, key)) return convert(*integer);
  if (const float* real = FindAs<float>(container, key)) return convert(*real);
  if (const bool* truth = FindAs<bool>(container, key)) return convert(Word{*truth});
  return fallback;
}

bool operator==(const Vector& a, const Vector& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

// Comparing two variants needs the operators of all alternatives, and Vector, a C type of the
// contract, has none that can be found from there.
bool AreEqual(const ContainerValue& first, const ContainerValue& second) {
  return first.index() == second.index() &&
         std::visit(
             [&](const auto& value) {
               return value == std::get<std::decay_t<decltype(value)>>(second);
             },
             first);
}

}  // namespace

NestedContainer::NestedContainer(const Container& container)
    : container_(std::make_unique<Container>(container)) {}
NestedContainer::NestedContainer(const NestedContainer& other)
    : container_(std::make_unique<Container>(*other)) {}
NestedContainer& NestedContainer::operator=(NestedContainer other) noexcept {
  container_ = std::move(other.container_);
  return *this;
}
NestedContainer::~NestedContainer() = default;

bool operator==(const NestedContainer& first, const NestedContainer& second) {
  return *first == *second;
}

std::int32_t Container::IndexOf(std::int32_t key) const noexcept {
  const auto found = std::find(keys_.begin(), keys_.end(), key);
  return found == keys_.end() ? -1 : static_cast<std::int32_t>(found - keys_.begin());
}

const ContainerValue* Container::Find(std::int32_t key) const noexcept {
  const std::int32_t index = IndexOf(key);
  return index < 0 ? nullptr : &entries_[static_cast<std::size_t>(index)].value;
}

void Container::Set(std::int32_t key, ContainerValue value) {
  const std::int32_t index = IndexOf(key);
  if (index >= 0) {
    entries_[static_cast<std::size_t>(index)].value = std::move(value);
    return;
  }
  entries_.push_back({key, std::move(value)});
  try {
    keys_.push_back(key);
  } catch (...) {
    entries_.pop_back();  // both stay of one length
    throw;
  }
}

bool Container::HoldsNumber(std::int32_t key) const noexcept {
  return NumberOf(*this, key, false, [](auto) { return true; });
}

bool Container::GetBool(std::int32_t key, bool fallback) const noexcept {
  return NumberOf(*this, key, fallback, [](auto number) { return number != 0; });
}

Word Container::GetInt(std::int32_t key, Word fallback) const noexcept {
  return NumberOf(*this, key, fallback, [](auto number) {
    if constexpr (std::is_same_v<decltype(number), float>) return ToWord(number);
    return static_cast<Word>(number);
  });
}

float Container::GetFloat(std::int32_t key, float fallback) const noexcept {
  return NumberOf(*this, key, fallback, [](auto number) { return static_cast<float>(number); });
}

Vector Container::GetVector(std::int32_t key, const Vector& fallback) const noexcept {
  const Vector* value = FindAs<Vector>(*this, key);
  return value == nullptr ? fallback : *value;
}

const Text* Container::GetText(std::int32_t key) const noexcept { return FindAs<Text>(*this, key); }

const Filename* Container::GetFilename(std::int32_t key) const noexcept {
  return FindAs<Filename>(*this, key);
}

Container* Container::GetContainer(std::int32_t key) const noexcept {
  const NestedContainer* nested = FindAs<NestedContainer>(*this, key);
  return nested == nullptr ? nullptr : &**nested;
}

void Container::Assign(const Container& source) {
  // Copied before anything is given up: the source may be a part of this container.
  auto keys = source.keys_;
  auto entries = source.entries_;
  keys_.swap(keys);
  entries_.swap(entries);
}

bool operator==(const Container& first, const Container& second) {
  return first.id_ == second.id_ && first.keys_ == second.keys_ &&
         std::equal(first.begin(), first.end(), second.begin(),
                    [](const auto& a, const auto& b) { return AreEqual(a.value, b.value); });
}

}  // namespace sorvanix::host
