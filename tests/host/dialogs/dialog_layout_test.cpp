#include "host/dialogs/dialog_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

using ::testing::HasSubstr;

DialogLayout Read(std::string_view text) { return ReadDialogLayout(text, "d.json").value(); }

std::string ErrorOf(std::string_view text) {
  const auto layout = ReadDialogLayout(text, "d.json");
  return layout ? "no error" : layout.error();
}

// A dialog whose layout is the given element.
std::string With(std::string_view element) {
  return "{ \"id\": 100, \"title\": \"T\", \"layout\": " + std::string(element) + " }";
}

TEST(DialogLayout, HoldsIdTitleAndElements) {
  const DialogLayout layout = Read(R"({ "id": 19000, "title": "2D Noise", "layout":
      { "kind": "column", "children": [
        { "kind": "area", "id": 19021, "width": 200, "height": 100 },
        { "kind": "real", "id": 19003, "label": "Size", "help": "How large", "unit": "percent" },
        { "kind": "label", "text": "Noise" } ] } })");
  EXPECT_EQ(layout.id, 19000);
  EXPECT_EQ(layout.title, "2D Noise");
  ASSERT_EQ(layout.root.children.size(), 3u);
  const LayoutElement& area = layout.root.children[0];
  EXPECT_EQ(area.kind, ElementKind::Area);
  EXPECT_EQ(area.width, 200);
  EXPECT_EQ(area.height, 100);
  const LayoutElement& real = layout.root.children[1];
  EXPECT_EQ(real.kind, ElementKind::Real);
  EXPECT_EQ(real.id, 19003);
  EXPECT_EQ(real.label, "Size");
  EXPECT_EQ(real.help, "How large");
  EXPECT_EQ(real.unit, "percent");
  EXPECT_EQ(layout.root.children[2].id, 0) << "this label is no gadget";
}

TEST(DialogLayout, EveryKindThatStandsForItselfIsKnownByItsName) {
  for (const ElementKind kind : {ElementKind::Integer, ElementKind::Real, ElementKind::Slider,
                                 ElementKind::Check, ElementKind::Colour, ElementKind::Text,
                                 ElementKind::Button, ElementKind::Filename, ElementKind::Link}) {
    const std::string name(NameOf(kind));
    EXPECT_EQ(Read(With("{\"kind\": \"" + name + "\", \"id\": 7}")).root.kind, kind) << name;
  }
}

TEST(DialogLayout, PagesOfTabsAreEntriesWithOneChildEach) {
  const DialogLayout layout = Read(With(R"({ "kind": "tabs", "id": 1, "pages": [
      { "id": 2, "label": "Shift", "layout": { "kind": "check", "id": 3 } },
      { "id": 4, "label": "Tint", "layout": { "kind": "check", "id": 5 } } ] })"));
  ASSERT_EQ(layout.root.entries.size(), 2u);
  EXPECT_EQ(layout.root.entries[1].value, 4);
  EXPECT_EQ(layout.root.entries[1].label, "Tint");
  EXPECT_EQ(layout.root.children[1].id, 5);
}

TEST(DialogLayout, GroupsAndGridsArrange) {
  const DialogLayout layout = Read(With(R"({ "kind": "group", "label": "G", "children": [
      { "kind": "grid", "columns": 2, "children": [ { "kind": "row", "children": [] } ] } ] })"));
  EXPECT_EQ(layout.root.label, "G");
  EXPECT_EQ(layout.root.children[0].columns, 2);
  EXPECT_EQ(layout.root.children[0].children[0].kind, ElementKind::Row);
}

struct WrongLayout {
  const char* element;
  const char* error;  // behind "d.json:LINE:COLUMN: "
};

class WrongLayouts : public ::testing::TestWithParam<WrongLayout> {};

TEST_P(WrongLayouts, AreToldWithTheirPlace) {
  const std::string error = ErrorOf(With(GetParam().element));
  EXPECT_EQ(error.rfind("d.json:", 0), 0u) << error;
  EXPECT_THAT(error, HasSubstr(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Each, WrongLayouts,
    ::testing::Values(
        WrongLayout{"5", "/layout: \"kind\" is missing"},
        WrongLayout{"{}", "/layout: \"kind\" is missing"},
        WrongLayout{R"({"kind": "rael"})",
                    R"(/layout/kind: unknown kind "rael"; did you mean "real"?)"},
        WrongLayout{R"({"kind": 5})", "/layout/kind: expected a text, found a whole number"},
        WrongLayout{R"({"kind": "row"})", "/layout: \"children\" is missing"},
        WrongLayout{R"({"kind": "row", "children": {}})",
                    "/layout/children: expected a list, found an object"},
        WrongLayout{R"({"kind": "row", "children": [{"kind": "real"}]})",
                    "/layout/children/0: \"id\" is missing"},
        WrongLayout{R"({"kind": "real", "id": 0})", "/layout/id: expected a whole number of 1"},
        WrongLayout{R"({"kind": "real", "id": 1.5})", "/layout/id: expected a whole number"},
        WrongLayout{R"({"kind": "real", "id": 1e300})", "/layout/id: expected a whole number"},
        WrongLayout{R"({"kind": "real", "id": 1, "labe": ""})",
                    R"(/layout/labe: unknown name "labe"; did you mean "label"?)"},
        WrongLayout{R"({"kind": "real", "id": 1, "entries": []})", "/layout/entries: unknown name"},
        WrongLayout{R"({"kind": "choice", "id": 1})", "/layout: \"entries\" is missing"},
        WrongLayout{
            R"({"kind": "choice", "id": 1, "entries": [{"value": 1, "label": "a"},
                {"value": 1, "label": "b"}]})",
            "/layout/entries/1: the value 1 stands here twice"},
        WrongLayout{R"({"kind": "grid", "columns": 0, "children": []})", "/layout/columns: "},
        WrongLayout{R"({"kind": "area", "id": 1, "width": 5000, "height": 1})",
                    "/layout/width: expected a whole number of 0 to 4096"},
        WrongLayout{R"({"kind": "row", "children": [{"kind": "link", "id": 10},
                    {"kind": "real", "id": 18}]})",
                    "/layout/children/1/id: the id 18 is taken already"}));

TEST(DialogLayout, TextThatIsNoLayoutIsAnError) {
  EXPECT_THAT(ErrorOf(""), HasSubstr("d.json:1:1: "));
  EXPECT_THAT(ErrorOf("[]"), HasSubstr("expected an object, found a list"));
  EXPECT_THAT(ErrorOf(R"({"id": 1, "title": "T"})"), HasSubstr("\"layout\" is missing"));
  EXPECT_THAT(ErrorOf(std::string(100000, '[')), HasSubstr("nested more than 256 levels"));
}

TEST(DialogLayout, AMissingFileIsAnErrorWithItsName) {
  const TemporaryFolder folder;
  const auto layout = LoadDialogLayout(folder.Path() / "5.json");
  ASSERT_FALSE(layout);
  EXPECT_THAT(layout.error(), HasSubstr("5.json: it cannot be read"));
}

}  // namespace
}  // namespace sorvanix::host
