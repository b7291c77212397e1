// A material brought to life: the module's shader with the material's parameters.
#pragma once

#include <cstdint>
#include <string>
#include <tl/expected.hpp>

#include "host/channels/material.h"
#include "host/loader/module.h"

namespace sorvanix::host {

/// Makes the shader in a channel (ids.h), sets its parameters and confirms them
/// (import_confirmation.h). It must be gone before the module is. The error is one line: a shader
/// that the module lacks, or that cannot take up its inputs.
tl::expected<Shader, std::string> ImportShader(const Module& module, const MaterialNode& material,
                                               std::int32_t channel);

/// The same, and prepares it for samples without a surface; a shader that cannot be is an error.
tl::expected<Shader, std::string> MakeShader(const Module& module, const MaterialNode& material,
                                             std::int32_t channel);

}  // namespace sorvanix::host
