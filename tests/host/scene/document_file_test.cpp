// Scenes on disk, in both forms.
#include "host/scene/document_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/scene/binary_document.h"
#include "host/scene/scene_file.h"
#include "host/services/text_file.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

using ::testing::HasSubstr;

constexpr const char* kText =
    R"({"format":"sorvanix-scene","version":1,"materials":[],"objects":[{"kind":"cube"}]})";

struct DocumentFile : ::testing::Test {
  TemporaryFolder folder;
  std::filesystem::path At(const char* name) const { return folder.Path() / name; }
};

TEST_F(DocumentFile, IsBinaryByItsName) {
  const Json document = *ParseJson(kText);
  for (const char* name : {"a.svx", "b.SVX"}) {
    ASSERT_TRUE(WriteDocument(document, At(name)));
    EXPECT_EQ(ReadTextFile(At(name)), WriteBinaryDocument(document)) << name;
  }
  for (const char* name : {"a.json", "a.c4d", "svx"}) {
    ASSERT_TRUE(WriteDocument(document, At(name)));
    EXPECT_EQ(ReadTextFile(At(name)), WriteJson(document) + '\n') << name;
  }
}

TEST_F(DocumentFile, IsReadByItsContent) {
  const Json document = *ParseJson(kText);
  folder.Write("binary.json", WriteBinaryDocument(document));
  folder.Write("text.svx", kText);
  EXPECT_EQ(ReadDocument(At("binary.json")), WriteJson(document) + '\n');
  EXPECT_EQ(ReadDocument(At("text.svx")), kText);
}

TEST_F(DocumentFile, ThatCannotBeReadIsTold) {
  EXPECT_EQ(ReadDocument(At("none.svx")).error(), "there is no such file");
  EXPECT_THAT(TextOfDocument(WriteBinaryDocument(Json()).substr(0, 40)).error(),
              HasSubstr("cut off"));
}

TEST_F(DocumentFile, HoldsAScene) {
  const auto scene = ReadScene(kText, At("s.json")).scene;
  ASSERT_NE(scene, nullptr);
  ASSERT_TRUE(SaveScene(*scene, At("s.svx")));
  const SceneReading again = LoadScene(At("s.svx"));
  ASSERT_NE(again.scene, nullptr);
  EXPECT_EQ(SceneText(*again.scene), SceneText(*scene));
  EXPECT_EQ(again.scene->file, At("s.svx"));

  folder.Write("cut.svx", WriteBinaryDocument(Json()).substr(0, 40));
  const SceneReading cut = LoadScene(At("cut.svx"));
  EXPECT_EQ(cut.scene, nullptr);
  ASSERT_EQ(cut.problems.size(), 1u);
  EXPECT_THAT(cut.problems[0].message, HasSubstr("cut off"));
}

}  // namespace
}  // namespace sorvanix::host
