// What shaders and links hold, spelled as material and scene files spell it.
#pragma once

#include <filesystem>
#include <string>

#include "host/channels/material.h"
#include "host/services/containers.h"
#include "host/services/json.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

/// The value that a shader's parameters (Shader::Parameters) have for one of them.
ParameterValue ValueIn(const Container& parameters, const ShaderParameter& parameter);

/// Whether two values are spelled alike in files.
bool AreAlike(const ShaderParameter& parameter, const ParameterValue& first,
              const ParameterValue& second);

/// The name of a file from a folder on; an empty folder is the current one. Links in the file
/// system keep their own names where the file is somewhere below the folder.
std::string NameFrom(const std::filesystem::path& folder, const std::filesystem::path& file);

/// What a link tells of itself (MessageGetParameters): the shader, with those parameters that
/// differ from their initial values, and what stands in its inputs; or the name of a bitmap from
/// `folder` on. What files cannot say is left out: bitmaps that are not there, numbers that are not
/// finite, ramps without knots, shaders that are unread. Null for a link of nothing else.
Json SpelledLink(const Container& link, const ShaderCatalogue& catalogue,
                 const std::filesystem::path& folder);

}  // namespace sorvanix::host
