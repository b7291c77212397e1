// What a document of a later program says and this one does not know: kept while the document is
// open, and written back at its place.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/services/json.h"

namespace sorvanix::host {

/// The members of one object of a document, in their order. Of those that are known only the names,
/// which tell the places of the others.
struct KeptMember {
  std::string name;
  std::optional<Json> value;  ///< of an unknown member
};

/// Empty for an object that holds nothing unknown.
using KeptMembers = std::vector<KeptMember>;

/// Puts the unknown members into those that are to be written: each behind the one that stood
/// before it in the document, or, where that is not written, behind the nearest one before.
void PutBack(const KeptMembers& kept, Json::Object& members);

}  // namespace sorvanix::host
