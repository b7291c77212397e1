// The known name that an unknown one was most likely meant to be.
#pragma once

#include <string_view>
#include <vector>

namespace sorvanix::host {

/// How many letters must be inserted, removed, replaced or swapped with their neighbour to turn one
/// word into the other; upper and lower case count as the same letter.
std::size_t EditDistance(std::string_view first, std::string_view second);

/// The name with the smallest distance, the first of several; empty when none is near: within one
/// letter and a third of the length, or begun by three letters or more.
std::string_view NearestName(std::string_view wanted, const std::vector<std::string_view>& names);

/// Whether two names are the same but for upper and lower case (of ASCII letters).
bool SameIgnoringCase(std::string_view first, std::string_view second);

}  // namespace sorvanix::host
