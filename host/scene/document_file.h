// Documents on disk, in either form: JSON, or the compact one of binary_document.h.
#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

#include "host/services/json.h"

namespace sorvanix::host {

/// The extension of documents in the binary form.
inline constexpr const char* kBinaryExtension = ".svx";

/// The JSON text of a document whose bytes are in one form or the other. The error, what is wrong
/// with one in the binary form, is one line without the file's name.
tl::expected<std::string, std::string> TextOfDocument(std::string bytes);

/// The same of a file.
tl::expected<std::string, std::string> ReadDocument(const std::filesystem::path& file);

/// Writes a document, in the binary form under a name that says so; the file appears whole or not
/// at all. The error is one line.
tl::expected<void, std::string> WriteDocument(const Json& document,
                                              const std::filesystem::path& file);

}  // namespace sorvanix::host
