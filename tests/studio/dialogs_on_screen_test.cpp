// A dialog under the mouse and the keyboard of a real X server: what nothing but the window system
// can get wrong. studio.on_a_screen runs it, and all other tests of dialogs, on one that shows
// nothing.
#include <fmt/format.h>

#include <QApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include "tests/studio/dialogs_fixture.h"

namespace sorvanix::studio {
namespace {

class DialogsOnScreen : public DialogsTest {
 protected:
  void SetUp() override {
    if (QGuiApplication::platformName() != "xcb") GTEST_SKIP() << "there is no X server";
    if (QStandardPaths::findExecutable("xdotool").isEmpty()) GTEST_SKIP() << "no xdotool";
  }
};

// Words for xdotool; it waits a moment after each.
class Hand {
 public:
  explicit Hand(const DialogWindow& window) : window_(window) {}

  Hand& MoveTo(std::int32_t gadget, QPoint place) {
    const QPoint screen = WidgetOf(window_, gadget)->mapToGlobal(place);
    return Do({"mousemove", QString::number(screen.x()), QString::number(screen.y())});
  }
  Hand& MoveToMiddle(std::int32_t gadget) {
    return MoveTo(gadget, WidgetOf(window_, gadget)->rect().center());
  }
  Hand& Do(const QStringList& words) {
    words_ << words << "sleep"
           << "0.15";
    return *this;
  }
  void Play() { QProcess::startDetached("xdotool", words_); }

 private:
  const DialogWindow& window_;
  QStringList words_;
};

TEST_F(DialogsOnScreen, AKnotIsDraggedAndANumberTyped) {
  QTimer::singleShot(300, [] {
    auto* window = dynamic_cast<DialogWindow*>(QApplication::activeModalWidget());
    ASSERT_NE(window, nullptr);
    Hand(*window)
        .MoveTo(18001, {120, 18})
        .Do({"click", "1"})
        .MoveTo(18001, {120, 33})
        .Do({"mousedown", "1"})
        .MoveTo(18001, {200, 33})
        .MoveTo(18001, {300, 33})
        .Do({"mouseup", "1"})
        .MoveToMiddle(18016)
        .Do({"click", "1"})
        .Do({"key", "ctrl+a"})
        .Do({"type", "2.5"})
        .Do({"key", "Return"})
        .Play();
  });
  QtDialogs dialogs(Sources());
  const std::string graph = R"({"shader":"Gradient","space":1})";
  host::Shader shader = MakeShader(graph);
  const auto edited = Edit(shader, dialogs);
  const auto expected = EditHeadless(
      graph, R"([{"mouse":"down","area":18001,"x":120,"y":18},{"mouse":"up","area":18001},
                 {"mouse":"down","area":18001,"x":120,"y":33},
                 {"mouse":"move","area":18001,"x":300,"y":33},{"mouse":"up","area":18001},
                 {"set":18016,"value":2.5},"ok"])");
  EXPECT_EQ(expected.trouble, "");
  EXPECT_TRUE(edited.confirmed) << "Return is the default button's";
  EXPECT_EQ(edited.block, expected.block);
}

}  // namespace
}  // namespace sorvanix::studio
