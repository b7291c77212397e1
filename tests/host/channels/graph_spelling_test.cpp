#include "host/channels/graph_spelling.h"

#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <limits>

#include "tests/host/channels/fake_shaders.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

namespace fs = std::filesystem;

std::string Spelled(const Container& link, const fs::path& folder = {}) {
  return WriteJson(SpelledLink(link, fake::Catalogue(), folder), -1);
}

TEST(GraphSpelling, ALinkIsWhatItHoldsAndWhatIsNotInitial) {
  EXPECT_EQ(Spelled(fake::ScaleDescription(2, fake::ProbeDescription(4))),
            R"({"shader":"Scale","factor":2.0,"input":{"shader":"Probe","value":4.0}})");
  EXPECT_EQ(Spelled(fake::ProbeDescription(0.25f)), R"({"shader":"Probe"})");
  EXPECT_EQ(Spelled(Container()), "null");
}

TEST(GraphSpelling, WhatFilesCannotSayIsLeftOut) {
  EXPECT_EQ(Spelled(fake::ProbeDescription(std::numeric_limits<float>::infinity())),
            R"({"shader":"Probe"})");
  EXPECT_EQ(Spelled(fake::BitmapDescription("nowhere.png")), "null");
  Container unknown = fake::ProbeDescription(4);
  unknown.Set(KeyLinkPluginId, Word{4711});
  EXPECT_EQ(Spelled(unknown), "null");
}

TEST(GraphSpelling, ABitmapIsNamedFromTheFolder) {
  const TemporaryFolder folder;
  const Container bitmap = fake::BitmapDescription(folder.Write("a/b.png", "").c_str());
  EXPECT_EQ(Spelled(bitmap, folder.Path()), R"("a/b.png")");
  EXPECT_EQ(Spelled(bitmap, folder.Path() / "c"), R"("../a/b.png")");
}

TEST(GraphSpelling, NamesDoNotDependOnHowTheFolderIsNamed) {
  const TemporaryFolder folder;
  const fs::path file = folder.Write("a/b.png", "");
  const fs::path fromHere = fs::relative(folder.Path());
  EXPECT_EQ(NameFrom(fromHere, file), "a/b.png");
  EXPECT_EQ(NameFrom(folder.Path(), fromHere / "a" / "b.png"), "a/b.png");
  EXPECT_EQ(NameFrom({}, "a/../b.png"), "b.png");
}

TEST(GraphSpelling, ALinkBelowTheFolderKeepsItsName) {
  const TemporaryFolder folder;
  folder.Write("third.png", "");
  fs::create_symlink("third.png", folder.Path() / "current.png");
  EXPECT_EQ(NameFrom(folder.Path(), folder.Path() / "current.png"), "current.png");
}

TEST(GraphSpelling, RampsAreReadKnotByKnot) {
  const ShaderParameter& ramp = fake::Catalogue().Find("Colours")->parameters[0];
  Container parameters;
  parameters.Set(1002, Word{2});  // the keys stand in the catalogue; knots follow by a stride of 2
  parameters.Set(1200, 0.0f);
  parameters.Set(1202, 0.75f);
  parameters.Set(1102, Vector{1, 2, 3});
  parameters.Set(1302, 0.125f);
  const auto knots = std::get<Ramp>(ValueIn(parameters, ramp));
  ASSERT_EQ(knots.size(), 2u);
  EXPECT_EQ(knots[1].position, 0.75f);
  EXPECT_EQ(knots[1].colour.z, 3);
  EXPECT_EQ(knots[1].bias, 0.125f);
  parameters.Set(1002, Word{99});
  EXPECT_EQ(std::get<Ramp>(ValueIn(parameters, ramp)).size(), 4u) << "as many as there may be";
  parameters.Set(1002, Word{-1});
  EXPECT_TRUE(std::get<Ramp>(ValueIn(parameters, ramp)).empty());
}

}  // namespace
}  // namespace sorvanix::host
