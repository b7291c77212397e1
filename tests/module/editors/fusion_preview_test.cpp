// The flat preview of Fusion: three small pictures, read once, mixed as often as the dialog
// changes.
#include <gmock/gmock.h>

#include "module/kit/blend.h"
#include "tests/module/editors/filter_editors.h"

namespace sorvanix::test {
namespace {

using testing::ElementsAre;

constexpr std::int32_t kWidth = 12, kHeight = 10;
constexpr std::int32_t kPreview = 13040, kMode = 13001, kUseMask = 13004;
constexpr std::int32_t kInvertMask = 13005, kInvertOutput = 13006;
constexpr std::int32_t kBaseInput = 13012, kBlendInput = 13021, kMaskInput = 13030;

constexpr FakePixel kWhite = {255, 255, 255}, kBlack = {0, 0, 0};
// A half of white: 0.5 * 255.99, truncated.
constexpr FakePixel kHalf = {127, 127, 127};

// Base: black left of the middle, white right of it. Blend: white in the upper half, black below.
// Mask: a third of white. Opacity 0.5.
struct FusionPreviewTest : EditorTest {
  FusionPreviewTest() : EditorTest(PluginIdFusion, 13000) {
    host.dialogs.areaSizes[kPreview] = {kWidth, kHeight};
    block.opacity = 0.5f;
    block.previewAuto = 1;
    block.previewObject = 0;
    LetShow(block.baseInput, 0, [](const Vector& uvw) { return uvw.x < 0.5f ? 0.0f : 1.0f; });
    LetShow(block.blendInput, 1, [](const Vector& uvw) { return uvw.y < 0.5f ? 1.0f : 0.0f; });
    LetShow(block.maskInput, 2, [](const Vector&) { return 1 / 3.0f; });
  }
  template <class Grey>
  void LetShow(ChannelLink* link, std::size_t input, Grey grey) {
    ScriptedLink::Of(link).content.show = [this, input, grey](const LinkRead& read) {
      ++reads[input];
      last = read;
      const float value = grey(read.uvw);
      return Vector{value, value, value};
    };
  }

  // Draws the preview up to its end, or to a stop after some rows, and answers what was read.
  std::vector<int> ReadsOfPass(int rowsUntilStop = -1) {
    for (int& count : reads) count = 0;
    EXPECT_TRUE(host.dialogs.RunPass(rowsUntilStop));
    return {reads[0], reads[1], reads[2]};
  }
  static FakePixel PixelAt(FakeDialog& dialog, std::int32_t x, std::int32_t y) {
    FakeArea& area = dialog.Area(kPreview);
    area.Draw();
    return area.drawn.at(0).bitmap->At(x, y);
  }

  FusionBlock& block = shader.block<FusionBlock>();
  int reads[3] = {};
  LinkRead last = {};
  static constexpr int kAll = kWidth * kHeight;
};

TEST_F(FusionPreviewTest, MixesTheBytesOfItsInputs) {
  Edit([&](FakeDialog& dialog) {
    ReadsOfPass();
    // Half way from the base to the blend.
    EXPECT_EQ(PixelAt(dialog, 3, 3), kHalf) << "black under white";
    EXPECT_EQ(PixelAt(dialog, 8, 3), kWhite) << "white under white";
    EXPECT_EQ(PixelAt(dialog, 3, 7), kBlack) << "black under black";
    EXPECT_EQ(PixelAt(dialog, 8, 7), kHalf) << "white under black";
  });
}

TEST_F(FusionPreviewTest, InputsAreMixedAsBytes) {
  LetShow(block.baseInput, 0, [](const Vector&) { return 0.3f; });
  LetShow(block.blendInput, 1, [](const Vector&) { return 0.3f; });
  block.mode = BlendAdd;
  block.opacity = 1;
  Edit([&](FakeDialog& dialog) {
    ReadsOfPass();
    // Each byte is trunc(0.3 * 255.99) = trunc(76.797) = 76; the sum trunc(152 / 255 * 255.99) =
    // trunc(152.6). Mixed as they come they would make trunc(0.6 * 255.99) = 153.
    EXPECT_EQ(PixelAt(dialog, 5, 5), (FakePixel{152, 152, 152}));
  });
}

TEST_F(FusionPreviewTest, AWhiteBorderLiesAroundTheMix) {
  Edit([&](FakeDialog& dialog) {
    ReadsOfPass();
    for (const std::int32_t i : {0, 1}) {
      EXPECT_EQ(PixelAt(dialog, i, 7), kWhite);
      EXPECT_EQ(PixelAt(dialog, 3, kHeight - 1 - i), kWhite);
      EXPECT_EQ(PixelAt(dialog, kWidth - 1 - i, 7), kWhite);
      EXPECT_EQ(PixelAt(dialog, 3, i), kWhite);
    }
    EXPECT_EQ(PixelAt(dialog, 2, 7), kBlack) << "painted over the red frame";
  });
}

TEST_F(FusionPreviewTest, ReadsInputsWithAFootprintOfHalfAPixel) {
  Edit([&](FakeDialog&) { ReadsOfPass(); });
  EXPECT_EQ(last.uvw.x, 11.0f / kWidth);
  EXPECT_EQ(last.uvw.y, 9.0f / kHeight);
  EXPECT_EQ(last.delta.x, 0.5f / kWidth);
  EXPECT_EQ(last.delta.y, 0.5f / kHeight);
  EXPECT_EQ(last.tagFlag, 0);
}

TEST_F(FusionPreviewTest, TheMaskIsReadWhereItIsUsed) {
  Edit([&](FakeDialog& dialog) {
    EXPECT_THAT(ReadsOfPass(), ElementsAre(kAll, kAll, 0));
    dialog.Set(kUseMask, 1);
    EXPECT_THAT(ReadsOfPass(), ElementsAre(0, 0, kAll));
    // The mask's byte is trunc(85.33) = 85, a third of 255: a third of the half, 255.99 / 6 = 42.7.
    EXPECT_EQ(PixelAt(dialog, 3, 3), (FakePixel{42, 42, 42}));
    dialog.Set(kInvertMask, 1);
    EXPECT_THAT(ReadsOfPass(), ElementsAre(0, 0, 0));
    EXPECT_EQ(PixelAt(dialog, 3, 3), (FakePixel{85, 85, 85}));  // 255.99 / 3
  });
}

TEST_F(FusionPreviewTest, AnotherModeReadsNothing) {
  Edit([&](FakeDialog& dialog) {
    ReadsOfPass();
    dialog.Set(kMode, std::int32_t{BlendMultiply});
    EXPECT_THAT(ReadsOfPass(), ElementsAre(0, 0, 0));
    EXPECT_EQ(PixelAt(dialog, 8, 3), kWhite);
    EXPECT_EQ(PixelAt(dialog, 3, 3), kBlack) << "black times white";
    dialog.Set(kInvertOutput, 1);
    ReadsOfPass();
    EXPECT_EQ(PixelAt(dialog, 3, 3), kWhite);
  });
}

TEST_F(FusionPreviewTest, AnotherInputIsReadAlone) {
  block.useMask = 1;
  Edit([&](FakeDialog& dialog) {
    EXPECT_THAT(ReadsOfPass(), ElementsAre(kAll, kAll, kAll));
    dialog.Press(kBlendInput + 3);
    EXPECT_THAT(ReadsOfPass(), ElementsAre(0, kAll, 0));
    dialog.Press(kBaseInput);
    EXPECT_THAT(ReadsOfPass(), ElementsAre(kAll, 0, 0));
    dialog.Press(kMaskInput + 8);
    EXPECT_THAT(ReadsOfPass(), ElementsAre(0, 0, kAll));
  });
}

TEST_F(FusionPreviewTest, AStoppedReadingBeginsAnew) {
  block.changed = 1;
  Edit([&](FakeDialog& dialog) {
    EXPECT_THAT(ReadsOfPass(3), ElementsAre(3 * kWidth, 0, 0));
    EXPECT_TRUE(dialog.Set(kMode, 1));
    EXPECT_THAT(ReadsOfPass(kHeight + 2), ElementsAre(kAll, 2 * kWidth, 0));
    dialog.Set(kMode, 0);
    EXPECT_THAT(ReadsOfPass(kHeight + 2), ElementsAre(0, kAll, 0)) << "stopped in the mix";
    dialog.Confirm();
  });
  EXPECT_EQ(block.changed, 1);
}

TEST_F(FusionPreviewTest, ADrawnPictureIsNoLongerMarked) {
  block.changed = 1;
  Edit([&](FakeDialog& dialog) {
    ReadsOfPass();
    dialog.Confirm();
  });
  EXPECT_EQ(block.changed, 0);
}

TEST_F(FusionPreviewTest, RevertReadsAllInputsAnew) {
  Edit([&](FakeDialog& dialog) {
    ReadsOfPass();
    dialog.Key('R', kControl);
    EXPECT_THAT(ReadsOfPass(), ElementsAre(kAll, kAll, 0));
  });
}

TEST_F(FusionPreviewTest, RandomAndResetReadNothing) {
  block.useMask = 1;
  Edit([&](FakeDialog& dialog) {
    ReadsOfPass();
    dialog.Key('M', kControl);
    EXPECT_THAT(ReadsOfPass(), ElementsAre(0, 0, 0));
    dialog.Key('R', kControl | kShift);
    EXPECT_THAT(ReadsOfPass(), ElementsAre(0, 0, 0));
  });
}

TEST_F(FusionPreviewTest, AnotherSizeReadsAllInputsAnew) {
  Edit([&](FakeDialog& dialog) {
    ReadsOfPass();
    FakeArea& area = dialog.Area(kPreview);
    area.width = 6;
    area.height = 5;
    area.Draw();
    EXPECT_THAT(ReadsOfPass(), ElementsAre(30, 30, 0));
  });
}

TEST_F(FusionPreviewTest, APreviewWithoutWidthDrawsNothing) {
  host.dialogs.areaSizes[kPreview] = {0, kHeight};
  Edit([&](FakeDialog&) {
    host.dialogs.RunPass();
    EXPECT_THAT(reads, ElementsAre(0, 0, 0));
  });
}

TEST_F(FusionPreviewTest, ItsInputsAreMadeReadyAndLetGo) {
  const auto times = [&](const std::string& operation) {
    return std::count_if(host.calls.begin(), host.calls.end(), [&](const std::string& call) {
      return call.compare(0, operation.size(), operation) == 0;
    });
  };
  long readyBefore = -1, goneBefore = -1;
  LetShow(block.baseInput, 0, [&](const Vector&) {
    readyBefore = times("channelInitRender");
    goneBefore = times("channelFreeRender");
    return 0.0f;
  });
  for (const int rowsUntilStop : {-1, 3}) {
    host.calls.clear();
    Edit([&](FakeDialog&) { ReadsOfPass(rowsUntilStop); });
    EXPECT_EQ(readyBefore, 3) << "before the inputs are read";
    EXPECT_EQ(goneBefore, 0);
    EXPECT_EQ(times("channelInitRender"), 3);
    EXPECT_EQ(times("channelFreeRender"), 3) << "also where it was stopped";
  }
  EXPECT_EQ(host.liveLinks, 3);
}

TEST_F(FusionPreviewTest, ASceneShowsACopyThatIsMarked) {
  std::int32_t busy = 0, nested = 1;
  block.nested = 1;
  host.documents.onRender = [&](const FakeRender& render, HostBitmap*) {
    const ShaderInstance* shown = render.material->links.at(ChannelLuminance)->content.instance;
    busy = static_cast<FusionBlock*>(shown->data)->previewBusy;
    nested = static_cast<FusionBlock*>(shown->data)->nested;
  };
  Edit([&](FakeDialog& dialog) {
    dialog.Set(13041, 2);
    ReadsOfPass();
  });
  EXPECT_EQ(host.documents.renders.size(), 1u);
  EXPECT_EQ(busy, 1);
  EXPECT_EQ(nested, 0);
}

}  // namespace
}  // namespace sorvanix::test
