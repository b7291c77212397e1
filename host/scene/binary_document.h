// Documents in a compact binary form: the same tree of values as their JSON, without loss.
//
// docs/scene_format.md tells it byte by byte. The checksums are Y. Collet's XXH64: they find
// damage, and are no protection against anyone who wants two files to look alike.
#pragma once

#include <string>
#include <string_view>
#include <tl/expected.hpp>

#include "host/services/json.h"

namespace sorvanix::host {

/// Whether these are the first bytes of a binary document, whole or not.
bool IsBinaryDocument(std::string_view bytes) noexcept;

/// Always the same bytes for the same tree. Numbers that JSON cannot say must not be in it.
std::string WriteBinaryDocument(const Json& json);

/// Nothing is believed: lengths are compared with what is there before memory is taken for them.
/// What is read can be said in JSON: texts are UTF-8, names of an object differ, numbers are
/// finite, and nothing nests deeper than the JSON parser takes. The error is one line without the
/// file's name. Offsets of the values are 0.
tl::expected<Json, std::string> ReadBinaryDocument(std::string_view bytes);

}  // namespace sorvanix::host
