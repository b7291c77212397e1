// The window stays responsive while a large bake runs.
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <algorithm>

#include "apps/studio/program/script.h"
#include "apps/studio/render/bake_worker.h"
#include "apps/studio/window/main_window.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

// The longest time, in ms, between two turns of an event loop that has something to do every ms.
class LongestTurn : public QObject {
 public:
  LongestTurn() {
    since_.start();
    timer_.setInterval(1);
    connect(&timer_, &QTimer::timeout, this, [this] {
      longest_ = std::max(longest_, since_.restart());
      ++turns_;
    });
    timer_.start();
  }
  qint64 Milliseconds() const { return longest_; }
  int Turns() const { return turns_; }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  qint64 longest_ = 0;
  int turns_ = 0;
};

// A person sees a delay of 50 ms as none. A machine that does other work at the same time may be
// late for its own reasons, so the best of some tries counts.
constexpr qint64 kNoDelay = 50;
constexpr int kTries = 8;
constexpr int kEnoughTurns = 1500;
constexpr int kPatience = 300000;  // ms; only a test that fails takes so long

TEST_F(StudioTest, TheEventLoopTurnsWithinFiftyMillisecondsDuringABake) {
  Workshop workshop(*SharedEngine());
  OwnDialogs dialogs;
  MainWindow window(workshop, dialogs);
  window.resize(900, 600);
  window.show();
  const GraphPlace colour = workshop.selection.Place();
  workshop.commands.PlaceShader(colour, "2D Noise");
  // A user who goes on working: each turn is a change, which is checked, shown, and painted.
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, &user, [&, turn = 0]() mutable {
    workshop.commands.SetStrength("colour", static_cast<float>(++turn % 10) / 10);
    if (turn % 5 == 0) workshop.commands.Wrap(colour, "Hue");
    if (turn % 5 == 4) workshop.commands.Unwrap(colour);
    workshop.selection.SetPlace(turn % 2 == 0 ? colour
                                              : GraphPlace{.channel = "bump", .inputs = {}});
  });
  user.start(40);
  QTest::qWait(100);

  qint64 best = 1000000;
  for (int i = 0; i < kTries && best >= kNoDelay; ++i) {
    BakeWorker worker(Catalogue());
    QSignalSpy ended(&worker, &BakeWorker::Ended);
    cli::BakeOptions options;
    options.picture.width = options.picture.height = 2048;
    const LongestTurn turn;
    worker.Begin(
        {.sceneText = workshop.previews.TextFor(*workshop.selection.MaterialJson(), {}, {}),
         .sceneFile = {},
         .options = options,
         .file = Folder() / "large.png"});
    // To its end, or, where other work keeps the bake from ending, until enough was seen of it.
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return !ended.empty() || turn.Turns() >= kEnoughTurns; }, kPatience));
    const qint64 longest = turn.Milliseconds();
    worker.Cancel();
    ASSERT_TRUE(!ended.empty() || ended.wait(kPatience));
    ASSERT_EQ(ended[0][0].toString(), "");
    ASSERT_GT(turn.Turns(), 10);
    best = std::min(best, longest);
    RecordProperty("longestTurnMilliseconds", static_cast<int>(longest));
    std::printf("longest turn of the event loop: %d ms in %d turns\n", static_cast<int>(longest),
                turn.Turns());
  }
  EXPECT_LT(best, kNoDelay);
}

}  // namespace
}  // namespace sorvanix::studio
