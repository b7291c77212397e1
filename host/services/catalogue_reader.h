// Reads the text of a shader catalogue into its structs.
#pragma once

#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

/// The error is one line: "LINE:COLUMN: POINTER: what is wrong", the pointer as RFC 6901 has it.
tl::expected<std::vector<ShaderDescription>, std::string> ReadCatalogue(std::string_view text);

}  // namespace sorvanix::host
