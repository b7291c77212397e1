// Every gadget of all dialogs in windows, once.
#include <fmt/format.h>

#include <cctype>
#include <cmath>

#include "host/dialogs/gadget_spelling.h"
#include "host/dialogs/preview_threads.h"
#include "tests/studio/dialogs_fixture.h"

namespace sorvanix::studio {
namespace {

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
