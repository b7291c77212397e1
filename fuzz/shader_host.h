// The module in the standalone host, and everything that a host may ask of one of its shaders.
#pragma once

#include <filesystem>

#include "host/loader/module.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::fuzz {

/// The module, loaded at the first call and kept.
const host::Module& LoadedModule();

/// What shaders.json tells of it, read at the first call and kept.
const host::ShaderCatalogue& Catalogue();

/// Ends the program with the place of a law that does not hold, as a sanitizer would.
#define SORVANIX_EXPECT(law)                                      \
  do {                                                            \
    if (!(law)) ::sorvanix::fuzz::Fail(#law, __FILE__, __LINE__); \
  } while (false)
[[noreturn]] void Fail(const char* law, const char* file, int line);

/// Saves, copies, compares, asks, prepares and samples the shader, in the channels of colour and of
/// bump, with a surface and without one.
void UseInEveryWay(host::Shader& shader);

}  // namespace sorvanix::fuzz
