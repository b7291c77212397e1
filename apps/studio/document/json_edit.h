// Changing JSON values: members of objects by name, items of lists.
#pragma once

#include <string>
#include <string_view>

#include "host/services/json.h"

namespace sorvanix::studio {

using host::Json;

/// The value of a name, to be changed; null when `json` is no object or has no such name.
Json* FindMember(Json& json, std::string_view name);

/// Sets a member, behind the others when it is new. What is no object becomes one.
Json& SetMember(Json& json, std::string_view name, Json value);

/// Lets a member go, if there is one.
void RemoveMember(Json& json, std::string_view name);

/// The text of a member, or nothing when it is absent or no text.
std::string TextMember(const Json& json, std::string_view name);

/// The items of the list under a name; an empty list when it is absent or no list.
const Json::Array& ListMember(const Json& json, std::string_view name);
/// The same to be changed; made when it is not there.
Json::Array& MakeListMember(Json& json, std::string_view name);

inline bool IsNull(const Json& json) { return std::holds_alternative<std::nullptr_t>(json.value); }

/// Whether two values are written alike.
bool SameJson(const Json& first, const Json& second);

}  // namespace sorvanix::studio
