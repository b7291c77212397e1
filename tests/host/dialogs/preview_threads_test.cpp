#include "host/dialogs/preview_threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <semaphore>
#include <thread>

#include "tests/host/dialogs/module_side.h"

namespace sorvanix::host::test {
namespace {

class PreviewThreads : public DialogTest {
 protected:
  PreviewThreads() { Script("[]"); }
  const ThreadTable& Threads() const { return host_.Tables().thread; }
};

// Work that goes on until it is told to stop.
struct Endless {
  const ThreadTable* threads;
  std::binary_semaphore begun{0};
  std::atomic<bool> stopped = false;
  std::atomic<bool> finished = false;

  static void Run(void* context, HostThread* thread) noexcept {
    auto& self = *static_cast<Endless*>(context);
    self.begun.release();
    while (self.threads->mustStop(thread) == 0) std::this_thread::yield();
    self.stopped = true;
  }
  static void Finished(void* context) noexcept { static_cast<Endless*>(context)->finished = true; }
};

TEST_F(PreviewThreads, EndStopsTheWorkAndWaitsForIt) {
  Endless work = {.threads = &Threads()};
  HostThread* thread = Threads().start(Endless::Run, Endless::Finished, &work);
  ASSERT_NE(thread, nullptr);
  work.begun.acquire();
  EXPECT_FALSE(work.stopped);
  Threads().end(thread);
  EXPECT_TRUE(work.stopped);
  EXPECT_TRUE(work.finished);
}

TEST_F(PreviewThreads, StopPreviewsLeavesTheHandleToItsOwner) {
  Endless work = {.threads = &Threads()};
  HostThread* thread = Threads().start(Endless::Run, nullptr, &work);
  StopPreviews();
  EXPECT_TRUE(work.stopped);
  Threads().end(thread);
}

TEST_F(PreviewThreads, WaitingWaitsForTheWork) {
  static std::atomic<int> done;
  done = 0;
  const auto run = [](void*, HostThread*) noexcept {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    done = 1;
  };
  HostThread* thread = Threads().start(run, nullptr, nullptr);
  WaitForPreviews();
  EXPECT_EQ(done, 1);
  Threads().end(thread);
}

TEST_F(PreviewThreads, ThereAreNoneWithoutAServiceAndWithoutWork) {
  EXPECT_EQ(Threads().start(nullptr, nullptr, nullptr), nullptr);
  SetDialogService(nullptr);
  EXPECT_EQ(Threads().start(Endless::Run, nullptr, nullptr), nullptr);
  EXPECT_EQ(Threads().mustStop(nullptr), 0);
  Threads().end(nullptr);
}

// As the module's preview: a thread paints a picture and asks for redraws while the dialog is
// edited and shows what there is.
TEST_F(PreviewThreads, APictureIsPaintedWhileItIsShown) {
  struct Painter {
    const HostTables* tables;
    HostUserArea* area = nullptr;
    Bitmap picture = {};

    static void Run(void* context, HostThread* thread) noexcept {
      auto& self = *static_cast<Painter*>(context);
      for (std::int32_t round = 0; round < 200; ++round) {
        if (self.tables->thread.mustStop(thread) != 0) return;
        for (std::int32_t i = 0; i < 12; ++i) {
          self.tables->bitmap.setPixel(self.picture.Handle(), i % 4, i / 4, round, round, round);
        }
        self.tables->dialog.redraw(self.area);
      }
    }
    static std::int32_t Hear(void* context, std::int32_t id, const HostContainer*,
                             HostContainer*) noexcept {
      auto& self = *static_cast<Painter*>(context);
      if (id == AreaDraw) self.tables->dialog.drawBitmap(self.area, self.picture.Handle(), 0, 0);
      return 1;
    }
  } painter = {.tables = &host_.Tables()};
  ASSERT_TRUE(painter.picture.Init(4, 3));
  std::string events = "[";
  for (int i = 0; i < 300; ++i) events += R"({"set": 101, "value": 1},)";
  Script(events + R"({"wait": "preview"}, {"save": "a.png", "area": 120}, "ok"])");
  const OwnedDialog dialog = Create(listener_);
  painter.area = Gadgets().attachUserArea(dialog.get(), 120, Painter::Hear, &painter);
  HostThread* thread = Threads().start(Painter::Run, nullptr, &painter);
  EXPECT_EQ(Forms().open(dialog.get(), -1, -1), 1);
  Threads().end(thread);
  EXPECT_EQ(headless_->Pictures()[0].picture.At(3, 2), (Bitmap::Pixel{199, 199, 199}));
}

}  // namespace
}  // namespace sorvanix::host::test
