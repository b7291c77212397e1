#include "host/scene/document_file.h"

#include <fmt/format.h>

#include <fstream>

#include "host/bake/temporary_file.h"
#include "host/channels/material_file.h"
#include "host/channels/nearest_name.h"
#include "host/scene/binary_document.h"
#include "host/services/filenames.h"

namespace sorvanix::host {

namespace {

std::string JsonText(const Json& document) { return WriteJson(document) + '\n'; }

}  // namespace

tl::expected<std::string, std::string> TextOfDocument(std::string bytes) {
  if (!IsBinaryDocument(bytes)) return bytes;
  return ReadBinaryDocument(bytes).map(JsonText);
}

tl::expected<std::string, std::string> ReadDocument(const std::filesystem::path& file) {
  return ReadMaterialText(file).and_then(TextOfDocument);
}

tl::expected<void, std::string> WriteDocument(const Json& document,
                                              const std::filesystem::path& file) {
  const bool isBinary = SameIgnoringCase(Utf8FromPath(file.extension()), kBinaryExtension);
  const std::string bytes = isBinary ? WriteBinaryDocument(document) : JsonText(document);
  auto temporary = TemporaryFile::Create(file);
  if (!temporary) return tl::unexpected(temporary.error());
  std::ofstream stream(temporary->Path(), std::ios::binary);
  stream << bytes;
  stream.close();
  if (!stream) return tl::unexpected(fmt::format("{}: cannot be written", Utf8FromPath(file)));
  return temporary->Commit();
}

}  // namespace sorvanix::host
