#include "host/services/stream_json.h"

#include <array>
#include <utility>

#include "host/services/filenames.h"
#include "host/services/json_numbers.h"

namespace sorvanix::host {

namespace {

using Alternatives = decltype(StreamValue::value);
using Failure = std::optional<JsonError>;
using host::JsonOf;

// The tag of each alternative, in their order.
constexpr std::array<std::string_view, std::variant_size_v<Alternatives>> kTags = {
    "int", "float", "bool", "vector", "matrix", "string", "link"};
constexpr std::string_view kShader = "shader", kValues = "values", kBitmap = "bitmap";

Json Tagged(std::string_view tag, Json value) {
  return Json(Json::Object{{std::string(tag), std::move(value)}});
}

Json JsonOf(bool value) { return Json(value); }
Json JsonOf(const std::string& value) { return Json(value); }
Json JsonOf(const Matrix& value) {
  return Json(Json::Array{JsonOf(value.off), JsonOf(value.v1), JsonOf(value.v2), JsonOf(value.v3)});
}
Json JsonOf(const StreamLink& link) {
  if (link.pluginId == StreamLink::kEmpty) return Json();
  if (link.pluginId == StreamLink::kBitmap) return Tagged(kBitmap, JsonOf(link.filename));
  return Json(Json::Object{{std::string(kShader), JsonOf(link.pluginId)},
                           {std::string(kValues), StreamToJson(link.values)}});
}

// Stores what an optional holds; otherwise tells what was expected.
template <class Type>
Failure Take(std::optional<Type> found, Type& value, const Json& json, const char* expected) {
  if (!found) return JsonError{std::string("expected ") + expected, json.offset};
  value = *std::move(found);
  return {};
}

template <class Type>
std::optional<Type> Exactly(const Json& json) {
  const Type* value = std::get_if<Type>(&json.value);
  return value == nullptr ? std::nullopt : std::optional<Type>(*value);
}

Failure Read(const Json& json, std::int32_t& value) {
  return Take(IntegerIn(json), value, json, "an integer of 32 bits");
}
Failure Read(const Json& json, float& value) {
  return Take(FloatIn(json), value, json, "a number that a float can hold");
}
Failure Read(const Json& json, bool& value) {
  return Take(Exactly<bool>(json), value, json, "true or false");
}
Failure Read(const Json& json, Vector& value) {
  return Take(VectorIn(json), value, json, "three numbers");
}
Failure Read(const Json& json, std::string& value) {
  return Take(Exactly<std::string>(json), value, json, "a text");
}

Failure Read(const Json& json, Matrix& value) {
  const auto* rows = std::get_if<Json::Array>(&json.value);
  if (rows == nullptr || rows->size() != 4) return JsonError{"expected four rows", json.offset};
  Vector* const parts[] = {&value.off, &value.v1, &value.v2, &value.v3};
  for (std::size_t i = 0; i < rows->size(); ++i) {
    if (Failure failure = Read((*rows)[i], *parts[i])) return failure;
  }
  return {};
}

Failure Read(const Json& json, StreamLink& link) {
  if (std::holds_alternative<std::nullptr_t>(json.value)) return {};
  const auto* members = std::get_if<Json::Object>(&json.value);
  const Json* bitmap = json.Find(kBitmap);
  if (bitmap != nullptr && members->size() == 1) {
    link.pluginId = StreamLink::kBitmap;
    if (Failure failure = Read(*bitmap, link.filename)) return failure;
    const std::string_view wrong = WrongInFilename(link.filename);
    if (!wrong.empty()) return JsonError{std::string(wrong), bitmap->offset};
    return {};
  }
  const Json* shader = json.Find(kShader);
  const Json* values = json.Find(kValues);
  if (shader == nullptr || values == nullptr || members->size() != 2) {
    return JsonError{"expected null, a bitmap, or a shader with its values", json.offset};
  }
  if (Failure failure = Read(*shader, link.pluginId)) return failure;
  if (link.pluginId <= 0) return JsonError{"expected the id of a shader", shader->offset};
  auto nested = StreamFromJson(*values);
  if (!nested) return nested.error();
  link.values = *std::move(nested);
  return {};
}

// Reads the alternative number `index`.
template <std::size_t... indices>
Failure ReadAlternative(const Json& json, std::size_t index, StreamValue& value,
                        std::index_sequence<indices...>) {
  Failure failure;
  (void)((index == indices && (failure = Read(json, value.value.emplace<indices>()), true)) || ...);
  return failure;
}

Failure Read(const Json& json, StreamValue& value) {
  const auto* members = std::get_if<Json::Object>(&json.value);
  if (members != nullptr && members->size() == 1) {
    const JsonMember& member = members->front();
    for (std::size_t i = 0; i < kTags.size(); ++i) {
      if (member.name != kTags[i]) continue;
      return ReadAlternative(member.value, i, value, std::make_index_sequence<kTags.size()>());
    }
  }
  return JsonError{"expected one value under the name of its type", json.offset};
}

}  // namespace

Json StreamToJson(const std::vector<StreamValue>& values) {
  Json::Array elements;
  for (const StreamValue& value : values) {
    elements.push_back(std::visit(
        [&](const auto& held) { return Tagged(kTags[value.value.index()], JsonOf(held)); },
        value.value));
  }
  return Json(std::move(elements));
}

tl::expected<std::vector<StreamValue>, JsonError> StreamFromJson(const Json& json) {
  const auto* elements = std::get_if<Json::Array>(&json.value);
  if (elements == nullptr) return tl::unexpected(JsonError{"expected an array", json.offset});
  std::vector<StreamValue> values(elements->size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (Failure failure = Read((*elements)[i], values[i])) {
      return tl::unexpected(*std::move(failure));
    }
  }
  return values;
}

}  // namespace sorvanix::host
