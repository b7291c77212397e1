#include "apps/studio/document/json_edit.h"

#include <algorithm>
#include <utility>

namespace sorvanix::studio {

namespace {

template <class Members>
auto FindIn(Members& members, std::string_view name) {
  return std::find_if(members.begin(), members.end(),
                      [name](const host::JsonMember& member) { return member.name == name; });
}

}  // namespace

Json* FindMember(Json& json, std::string_view name) {
  return const_cast<Json*>(std::as_const(json).Find(name));
}

Json& SetMember(Json& json, std::string_view name, Json value) {
  if (!std::holds_alternative<Json::Object>(json.value)) json.value = Json::Object();
  auto& members = std::get<Json::Object>(json.value);
  auto found = FindIn(members, name);
  if (found == members.end()) {
    members.push_back({std::string(name), Json()});
    found = members.end() - 1;
  }
  found->value = std::move(value);
  return found->value;
}

void RemoveMember(Json& json, std::string_view name) {
  auto* members = std::get_if<Json::Object>(&json.value);
  if (members == nullptr) return;
  if (const auto found = FindIn(*members, name); found != members->end()) members->erase(found);
}

std::string TextMember(const Json& json, std::string_view name) {
  const Json* member = json.Find(name);
  const auto* text = member != nullptr ? std::get_if<std::string>(&member->value) : nullptr;
  return text != nullptr ? *text : std::string();
}

const Json::Array& ListMember(const Json& json, std::string_view name) {
  static const Json::Array none;
  const Json* member = json.Find(name);
  const auto* items = member != nullptr ? std::get_if<Json::Array>(&member->value) : nullptr;
  return items != nullptr ? *items : none;
}

Json::Array& MakeListMember(Json& json, std::string_view name) {
  Json* member = FindMember(json, name);
  if (member == nullptr || !std::holds_alternative<Json::Array>(member->value)) {
    member = &SetMember(json, name, Json(Json::Array()));
  }
  return std::get<Json::Array>(member->value);
}

bool SameJson(const Json& first, const Json& second) {
  return host::WriteJson(first, -1) == host::WriteJson(second, -1);
}

}  // namespace sorvanix::studio
