// The module's dialogs in windows: what the user does by mouse and keys makes the same blocks as
// the same list of events without a window.
#include <fmt/format.h>

#include <cctype>
#include <cmath>

#include "host/dialogs/gadget_spelling.h"
#include "host/dialogs/preview_threads.h"
#include "tests/studio/dialogs_fixture.h"

namespace sorvanix::studio {
namespace {

struct Edit {
  const char* name;
  const char* graph;
  const char* events;
};

class DialogsInWindows : public DialogsTest, public testing::WithParamInterface<Edit> {};

TEST_P(DialogsInWindows, MakeTheSameBlocksAsWithoutAWindow) {
  const auto headless = EditHeadless(GetParam().graph, GetParam().events);
  const auto inWindow = EditInWindow(GetParam().graph, GetParam().events);
  EXPECT_EQ(headless.trouble, "");
  EXPECT_EQ(inWindow.trouble, "");
  EXPECT_EQ(inWindow.confirmed, headless.confirmed);
  EXPECT_EQ(inWindow.block, headless.block);
  const auto untouched = EditHeadless(GetParam().graph, R"(["cancel"])");
  EXPECT_EQ(inWindow.block == untouched.block, !inWindow.confirmed) << "the list changes something";
}

constexpr Edit kEdits[] = {
    {"Numbers", R"({"shader":"2D Noise"})",
     R"([{"set":19006,"value":2.5},{"set":19008,"value":40},{"expect":19009,"value":40},
         {"set":19001,"value":"Cell Edge"},{"set":19017,"value":"#101820"},"ok"])"},
    {"NumbersBeyondTheLimits", R"({"shader":"2D Noise"})",
     R"([{"set":19008,"value":1e9},{"set":19010,"value":-1e9},{"set":19003,"value":0},"ok"])"},
    {"ASlider", R"({"shader":"2D Noise"})",
     R"([{"set":19009,"value":40},{"expect":19008,"value":40},"ok"])"},
    {"AChoiceThatDisables", R"({"shader":"2D Noise"})",
     R"([{"set":19001,"value":3},{"expect":19002,"enabled":false},
         {"expect":19016,"enabled":false},{"expect":19006,"enabled":true},"ok"])"},
    {"Cancel", R"({"shader":"2D Noise"})", R"([{"set":19006,"value":2.5},"cancel"])"},
    {"ResetByKeys", R"({"shader":"2D Noise","noiseType":7,"octaves":3})",
     R"([{"key":"R","qualifier":3},"ok"])"},
    {"RevertByKeys", R"({"shader":"2D Noise"})",
     R"([{"set":19006,"value":2.5},{"key":"R","qualifier":2},{"set":19007,"value":2},"ok"])"},
    {"Escape", R"({"shader":"2D Noise"})", R"([{"set":19006,"value":3},{"key":32785}])"},
    {"Tabs", R"({"shader":"Hue"})",
     R"([{"set":24014,"value":"Colorize"},{"set":24008,"value":90},"ok"])"},
    {"Links", R"({"shader":"Hue"})",
     R"([{"set":24017,"value":{"shader":"Tiles"}},{"set":24001,"value":10},"ok"])"},
    {"AClearedLink", R"({"shader":"Hue","input":{"shader":"2D Noise"}})",
     R"([{"set":24017,"value":null},"ok"])"},
    {"AboutInside", R"({"shader":"2D Noise"})",
     R"([{"mouse":"down","area":19022,"x":5,"y":5},{"mouse":"up","area":19022},"cancel",
         {"set":19006,"value":2.5},"ok"])"},
    {"AboutClosedByItsPicture", R"({"shader":"2D Noise"})",
     R"([{"mouse":"down","area":19022,"x":5,"y":5},{"mouse":"up","area":19022},
         {"mouse":"down","area":35000,"x":50,"y":50},{"mouse":"up","area":35000},
         {"set":19006,"value":2.5},"ok"])"},
    {"AKnotAddedColouredAndDragged", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":120,"y":18},{"mouse":"up","area":18001},
         {"mouse":"double","area":18001,"x":120,"y":33},{"colour":"#ff9040"},
         {"mouse":"down","area":18001,"x":120,"y":33},{"mouse":"move","area":18001,"x":300,"y":33},
         {"mouse":"up","area":18001},{"key":"I","qualifier":2},"ok"])"},
    {"AKnotTornOff", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":100,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":200,"y":33},{"mouse":"move","area":18001,"x":210,"y":90},
         {"mouse":"up","area":18001},"ok"])"},
    {"AKnotTornOffThatComesBack", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":200,"y":33},{"mouse":"move","area":18001,"x":210,"y":90},
         {"mouse":"move","area":18001,"x":220,"y":33},{"mouse":"up","area":18001},"ok"])"},
    {"AKnotDraggedPastAnother", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":100,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":100,"y":33},{"mouse":"move","area":18001,"x":150,"y":33},
         {"mouse":"move","area":18001,"x":290,"y":33},{"mouse":"up","area":18001},"ok"])"},
    {"ABiasDragged", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":234,"y":6},{"mouse":"move","area":18001,"x":100,"y":6},
         {"mouse":"up","area":18001},"ok"])"},
    {"ACopiedKnot", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":200,"y":33,"qualifier":4},
         {"mouse":"move","area":18001,"x":260,"y":33},{"mouse":"up","area":18001},"ok"])"},
    {"TheWheelOverAKnot", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"wheel","area":18001,"x":200,"y":33,"delta":360},"ok"])"},
    {"ArrowsMoveAKnot", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"key":32770,"qualifier":1},{"key":32770,"qualifier":1},{"key":32771,"qualifier":2},
         {"key":32770,"qualifier":1},"ok"])"},
};

INSTANTIATE_TEST_SUITE_P(Each, DialogsInWindows, testing::ValuesIn(kEdits),
                         [](const auto& edit) { return std::string(edit.param.name); });

// Edits every gadget of a dialog that can be reached, page by page, and notes how.
class Thorough : public host::DialogService {
 public:
  void RunModal(host::Dialog& dialog, std::int32_t, std::int32_t) override {
    EditBelow(dialog, dialog.Layout()->root);
    list_ += "\"ok\"]";
    host::WaitForPreviews();
    dialog.Close(true);
  }
  std::optional<Vector> ChooseColour(const Vector&) override { return std::nullopt; }
  bool OpenInViewer(const std::filesystem::path&) override { return false; }
  std::optional<host::MousePlace> PollMouse(host::UserArea&) override { return std::nullopt; }
  bool ShowsPictures() const noexcept override { return true; }

  const std::string& List() const { return list_; }
  int Count() const { return count_; }

 private:
  void EditBelow(host::Dialog& dialog, const host::LayoutElement& element) {
    for (std::size_t i = 0; i < element.children.size(); ++i) {
      if (element.kind == host::ElementKind::Tabs) {
        Set(dialog, element.id, Json(std::int64_t{element.entries[i].value}));
      }
      EditBelow(dialog, element.children[i]);
    }
    const host::Gadget* gadget = element.id != 0 ? dialog.Find(element.id) : nullptr;
    if (gadget == nullptr || !gadget->enabled || element.kind <= host::ElementKind::Tabs) return;
    if (const Json value = ValueFor(*gadget); !IsNull(value)) Set(dialog, gadget->id, value);
  }

  // Another value than the neutral one.
  static Json ValueFor(const host::Gadget& gadget) {
    constexpr double kWithoutLimits = 5;
    switch (gadget.kind) {
      case host::ElementKind::Integer:
        return Json(std::int64_t{2});
      case host::ElementKind::Real:
      case host::ElementKind::Slider: {
        const double range = gadget.maximum - gadget.minimum;
        if (!(range < 1000)) return Json(kWithoutLimits);
        const double steps = std::floor(range / gadget.step / 3);
        return Json(std::round((gadget.minimum + steps * gadget.step) * gadget.Scale()));
      }
      case host::ElementKind::Check:
        return Json(gadget.Integer() == 0);
      case host::ElementKind::Choice:  // a preview on an object takes its time
        return Json(std::int64_t{gadget.entries.front().label == "Flat"
                                     ? gadget.entries.front().value
                                     : gadget.entries.back().value});
      case host::ElementKind::Colour:
        return Json(std::string("#306090"));
      default:
        return {};
    }
  }

  void Set(host::Dialog& dialog, std::int32_t id, const Json& value) {
    host::Gadget& gadget = *dialog.Find(id);
    dialog.Set(gadget, host::TypedValue(gadget, value).value());
    list_ += fmt::format(R"({{"set":{},"value":{}}},)", id, OneLine(value));
    ++count_;
  }

  std::string list_ = "[";
  int count_ = 0;
};

class EveryGadget : public DialogsTest, public testing::WithParamInterface<std::string> {};

TEST_P(EveryGadget, WorksInAWindow) {
  const std::string graph = fmt::format(R"({{"shader":"{}"}})", GetParam());
  Thorough thorough;
  host::Shader shader = MakeShader(graph);
  const auto expected = Edit(shader, thorough);
  EXPECT_GT(thorough.Count(), 2);
  const auto edited = EditInWindow(graph, thorough.List());
  EXPECT_EQ(edited.trouble, "") << thorough.List();
  EXPECT_EQ(edited.block, expected.block) << thorough.List();
}

INSTANTIATE_TEST_SUITE_P(Of, EveryGadget, testing::ValuesIn(ShadersWithDialogs()),
                         [](const auto& shader) {
                           std::string name;
                           for (const char c : shader.param) {
                             if (std::isalnum(static_cast<unsigned char>(c)) != 0) name += c;
                           }
                           return name;
                         });

}  // namespace
}  // namespace sorvanix::studio
