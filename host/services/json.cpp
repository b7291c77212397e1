#include "host/services/json.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>

namespace sorvanix::host {

namespace {

// Feeds the parser character by character and tells how far it has read.
class CountingIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CountingIterator(const char* at, const char** furthest) : at_(at), furthest_(furthest) {}

  reference operator*() const { return *at_; }
  CountingIterator& operator++() {
    *furthest_ = ++at_;
    return *this;
  }
  CountingIterator operator++(int) {
    const CountingIterator former = *this;
    ++*this;
    return former;
  }
  friend bool operator==(const CountingIterator& a, const CountingIterator& b) {
    return a.at_ == b.at_;
  }
  friend bool operator!=(const CountingIterator& a, const CountingIterator& b) { return !(a == b); }

 private:
  const char* at_;
  const char** furthest_;
};

// Builds the values while the parser reads. An event comes when its token has been read; where the
// token began is found by skipping, from the end of the one before, what may stand between two.
class Builder final : public nlohmann::json_sax<nlohmann::json> {
 public:
  explicit Builder(std::string_view text) : text_(text), furthest_(text.data()) {}

  tl::expected<Json, JsonError> Build() && {
    const CountingIterator first(text_.data(), &furthest_);
    const CountingIterator last(text_.data() + text_.size(), &furthest_);
    if (!nlohmann::json::sax_parse(first, last, this)) return tl::unexpected(error_);
    return std::move(root_);
  }

  bool null() override { return Add(nullptr); }
  bool boolean(bool value) override { return Add(value); }
  bool number_integer(std::int64_t value) override { return Add(value); }
  bool number_unsigned(std::uint64_t value) override {
    if (std::in_range<std::int64_t>(value)) return Add(static_cast<std::int64_t>(value));
    return Add(static_cast<double>(value));
  }
  bool number_float(double value, const std::string& /*digits*/) override { return Add(value); }
  bool string(std::string& value) override { return Add(std::move(value)); }
  bool binary(nlohmann::json::binary_t& /*value*/) override { return Fail("no JSON"); }
  bool key(std::string& name) override {
    std::get<Json::Object>(open_.back()->value).push_back({std::move(name), Json()});
    NextToken();
    return true;
  }
  bool start_object(std::size_t /*size*/) override { return Open(Json::Object()); }
  bool start_array(std::size_t /*size*/) override { return Open(Json::Array()); }
  bool end_array() override {
    open_.pop_back();
    NextToken();
    return true;
  }
  bool end_object() override {
    if (const JsonMember* repeated = FindRepeated(std::get<Json::Object>(open_.back()->value))) {
      error_ = {"the name \"" + Excerpt(repeated->name) + "\" stands here twice",
                repeated->value.offset, PointerBelow(Pointer(open_.size() - 1), repeated->name)};
      return false;
    }
    return end_array();
  }
  bool parse_error(std::size_t position, const std::string& /*token*/,
                   const nlohmann::detail::exception& problem) override {
    error_ = {Plain(problem.what()), position == 0 ? 0 : position - 1};
    return false;
  }

 private:
  // Where the token of this event begins; the next one is looked for behind it.
  std::size_t NextToken() {
    const std::size_t begin =
        std::min(text_.find_first_not_of(" \t\r\n,:\xEF\xBB\xBF", end_), text_.size());
    end_ = static_cast<std::size_t>(furthest_ - text_.data());
    return begin;
  }

  // Where the next value belongs: behind the last name of an object, at the end of an array.
  Json& Place() {
    if (open_.empty()) return root_;
    if (auto* array = std::get_if<Json::Array>(&open_.back()->value)) return array->emplace_back();
    return std::get<Json::Object>(open_.back()->value).back().value;
  }

  bool Add(Json::Value value) {
    Json& place = Place();
    place.offset = NextToken();
    place.value = std::move(value);
    return true;
  }

  bool Open(Json::Value value) {
    constexpr std::size_t kDeepest = 256;
    if (open_.size() == kDeepest) {
      return Fail("nested more than " + std::to_string(kDeepest) + " levels deep");
    }
    Json& place = Place();
    place.offset = NextToken();
    place.value = std::move(value);
    open_.push_back(&place);  // stays where it is: nothing is added around it until it is closed
    return true;
  }

  bool Fail(std::string message) {
    error_ = {std::move(message), NextToken(), Pointer(open_.size())};
    return false;
  }

  // To what is being read inside the first `depth` of the open values.
  std::string Pointer(std::size_t depth) const {
    std::string pointer;
    for (std::size_t i = 0; i < depth; ++i) {
      if (const auto* array = std::get_if<Json::Array>(&open_[i]->value)) {
        // In the last one the next element is still to be added.
        const bool isNext = i + 1 == open_.size();
        pointer = PointerBelow(pointer, std::to_string(array->size() - (isNext ? 0 : 1)));
      } else if (const auto& object = std::get<Json::Object>(open_[i]->value); !object.empty()) {
        pointer = PointerBelow(pointer, object.back().name);
      }
    }
    return pointer;
  }

  // The second of two members with one name, or null. By sorting: an object may be long.
  static const JsonMember* FindRepeated(const Json::Object& object) {
    std::vector<const JsonMember*> members;
    for (const JsonMember& member : object) members.push_back(&member);
    std::stable_sort(members.begin(), members.end(),
                     [](const auto* a, const auto* b) { return a->name < b->name; });
    const auto same =
        std::adjacent_find(members.begin(), members.end(),
                           [](const auto* a, const auto* b) { return a->name == b->name; });
    return same == members.end() ? nullptr : *std::next(same);
  }

  // The parser's words without its class, line and column: "[class] parse error at ...: words", and
  // without what it read last, which may be long, broken over lines, or no text at all.
  static std::string Plain(std::string_view words) {
    if (const auto end = words.find("] "); end != words.npos) words.remove_prefix(end + 2);
    if (words.starts_with("parse error")) {
      if (const auto end = words.find(": "); end != words.npos) words.remove_prefix(end + 2);
    }
    return std::string(words.substr(0, words.find("; last read")));
  }

  std::string_view text_;
  const char* furthest_;
  std::size_t end_ = 0;
  Json root_;
  std::vector<Json*> open_;
  JsonError error_;
};

nlohmann::ordered_json ToTree(const Json& json) {
  if (const auto* array = std::get_if<Json::Array>(&json.value)) {
    auto tree = nlohmann::ordered_json::array();
    for (const Json& element : *array) tree.push_back(ToTree(element));
    return tree;
  }
  if (const auto* object = std::get_if<Json::Object>(&json.value)) {
    auto tree = nlohmann::ordered_json::object();
    for (const JsonMember& member : *object) tree[member.name] = ToTree(member.value);
    return tree;
  }
  return std::visit(
      [](const auto& value) -> nlohmann::ordered_json {
        if constexpr (std::is_constructible_v<nlohmann::ordered_json, decltype(value)>) {
          return value;
        } else {
          return nullptr;
        }
      },
      json.value);
}

}  // namespace

const Json* Json::Find(std::string_view name) const noexcept {
  const auto* object = std::get_if<Object>(&value);
  if (object == nullptr) return nullptr;
  const auto found = std::find_if(object->begin(), object->end(),
                                  [&](const JsonMember& member) { return member.name == name; });
  return found == object->end() ? nullptr : &found->value;
}

std::string Excerpt(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  if (text.size() <= kLongest) return std::string(text);
  std::size_t end = kLongest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;  // whole letters
  return std::string(text.substr(0, end)) + "...";
}

std::string PointerBelow(const std::string& pointer, std::string_view name) {
  std::string below = pointer + '/';
  for (const char c : Excerpt(name)) {
    if (c == '~' || c == '/') {
      below += c == '~' ? "~0" : "~1";
    } else {
      below += c;
    }
  }
  return below;
}

tl::expected<Json, JsonError> ParseJson(std::string_view text) { return Builder(text).Build(); }

std::string WriteJson(const Json& json, int indent) {
  return ToTree(json).dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace sorvanix::host
