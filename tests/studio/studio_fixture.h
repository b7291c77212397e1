// What tests of the studio stand on: the module, a folder of their own, documents made of text.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "apps/studio/program/engine.h"
#include "apps/studio/window/workshop.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

/// The module that all tests share; main() makes and ends it.
inline std::unique_ptr<Engine>& SharedEngine() {
  static std::unique_ptr<Engine> engine;
  return engine;
}

inline std::filesystem::path Examples() {
  return std::filesystem::path(SORVANIX_SOURCE_FOLDER) / "examples";
}

inline std::string ReadAll(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

inline void WriteAll(const std::filesystem::path& file, const std::string& text) {
  std::ofstream(file, std::ios::binary) << text;
}

inline Json Parsed(std::string_view text) { return host::ParseJson(text).value(); }

inline std::string OneLine(const Json& json) { return host::WriteJson(json, -1); }

class StudioTest : public testing::Test {
 protected:
  const host::ShaderCatalogue& Catalogue() const { return SharedEngine()->Catalogue(); }
  const host::ShaderDescription& Shader(std::string_view name) const {
    return *Catalogue().Find(name);
  }
  std::filesystem::path Folder() const { return host::PathFromUtf8(folder_.path().toStdString()); }

 private:
  QTemporaryDir folder_;
};

}  // namespace sorvanix::studio
