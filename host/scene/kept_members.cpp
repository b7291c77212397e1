#include "host/scene/kept_members.h"

#include <algorithm>

namespace sorvanix::host {

void PutBack(const KeptMembers& kept, Json::Object& members) {
  auto place = members.begin();  // where the next unknown member goes
  for (const KeptMember& member : kept) {
    const auto written = std::find_if(members.begin(), members.end(), [&](const JsonMember& each) {
      return each.name == member.name;
    });
    if (!member.value) {
      if (written != members.end()) place = std::next(written);
    } else if (written == members.end()) {
      place = std::next(members.insert(place, {member.name, *member.value}));
    }
  }
}

}  // namespace sorvanix::host
