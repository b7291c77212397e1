// The dialog of Lumas: five pages of gadgets, and what follows from them.
#include "module/shaders/surface/lumas.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

#define AT(member) offsetof(LumasBlock, member)

constexpr std::int32_t kPages = 23014;

struct LumasDialogTest : EditorTest {
  LumasDialogTest() : EditorTest(PluginIdLumas, 23000) {
    // Where a size is looked up in the host's curve, the clamped number itself comes back.
    host.render.splineLookup = [](float value, const float*, std::int32_t) noexcept {
      return value;
    };
  }
  LumasBlock& block = shader.block<LumasBlock>();
};

// In percent, but for the stretches' own factor: roughness 0..200, levels and edges 0..1000,
// contrast -500..500 of the diffuse term and 0..100 of layers, sizes 0..200, disc size
// -100000..100000, stretches and fade 0..100000, scratches 0..1000000.
TEST_F(LumasDialogTest, NumbersKeepTheirLimits) {
  const NumberGadget rows[] = {
      {23019, AT(sigma), 0, 2, 0.01f, FormatPercent},
      {23020, AT(diffuseLevel), 0, 10, 0.01f, FormatPercent},
      {23021, AT(diffuseContrast), -5, 5, 0.01f, FormatPercent},
      {23066, AT(anisotropyScale), -1000, 1000, 0.01f, FormatPercent},
      {23067, AT(anisotropyX), 0, 1000, 0.01f, FormatPercent},
      {23068, AT(anisotropyY), 0, 1000, 0.01f, FormatPercent},
      {23069, AT(scratchAmplitude), 0, 10000, 0.01f, FormatPercent},
      // The members hold the reciprocals: 9e18 for a size of 0, 1 / 10000 for 1000000 %.
      {23070, AT(scratchScaleU), 0, 10000, 0.01f, FormatPercent, kEndless, 1e-4f},
      {23071, AT(scratchScaleV), 0, 10000, 0.01f, FormatPercent, kEndless, 1e-4f},
      {23072, AT(scratchFade), 0, 1000, 0.01f, FormatPercent},
  };
  for (const NumberGadget& row : rows) WalkNumber(*this, row);
}

// The gadgets of a layer follow the id of its page.
TEST_F(LumasDialogTest, NumbersOfLayersKeepTheirLimits) {
  const std::int32_t pages[] = {23023, 23038, 23051};
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t layer = AT(layers) + i * sizeof(SpecularLayer);
    const NumberGadget rows[] = {
        {pages[i] + 4, layer + offsetof(SpecularLayer, intensity), 0, 10, 0.01f, FormatPercent},
        {pages[i] + 5, layer + offsetof(SpecularLayer, size), 0, 2, 0.01f, FormatPercent},
        {pages[i] + 6, layer + offsetof(SpecularLayer, contrast), 0, 1, 0.01f, FormatPercent},
        {pages[i] + 7, layer + offsetof(SpecularLayer, edgeIntensity), 0, 10, 0.01f, FormatPercent},
        {pages[i] + 8, layer + offsetof(SpecularLayer, edgeWidth), 0, 10, 0.01f, FormatPercent},
    };
    for (const NumberGadget& row : rows) WalkNumber(*this, row);
    WalkSwitch(*this, pages[i] + 1, layer + offsetof(SpecularLayer, useAnisotropy));
    WalkColour(*this, pages[i] + 2, layer + offsetof(SpecularLayer, colour));
    WalkSwitch(*this, pages[i] + 9, AT(scratchOnLayer) + i * sizeof(std::int32_t));
    WalkSwitch(*this, 23002 + static_cast<std::int32_t>(i), AT(layerOn) + i * sizeof(std::int32_t));
  }
}

// No limit is told for the strengths; they are shown in percent and never negative.
TEST_F(LumasDialogTest, StrengthsAreShownInPercent) {
  Edit([](FakeDialog& dialog) {
    for (const std::int32_t id : {23017, 23026, 23041, 23054}) {
      EXPECT_EQ(dialog.Real(id), 1);
      EXPECT_EQ(dialog[id].format, FormatPercent);
      EXPECT_EQ(dialog[id].minimum, 0);
      dialog.Set(id, 2.5f);
    }
    dialog.Confirm();
  });
  EXPECT_EQ(block.diffuseStrength, 2.5f);
  for (const SpecularLayer& layer : block.layers) EXPECT_EQ(layer.colourStrength, 2.5f);
}

TEST_F(LumasDialogTest, ChoicesSwitchesAndColours) {
  WalkInteger(*this, {23018, AT(orenNayar), 0, 1});
  WalkInteger(*this, {23065, AT(anisotropyMode), 0, 6});
  WalkInteger(*this, {23012, AT(previewObject), 0, 5});
  WalkSwitch(*this, 23001, AT(diffuseOn));
  WalkSwitch(*this, 23005, AT(anisotropyOn));
  WalkSwitch(*this, 23013, AT(previewAuto));
  WalkColour(*this, 23016, AT(diffuseColour));
}

// --- pages ---

TEST_F(LumasDialogTest, ThePageOnShowIsKept) {
  SetAndConfirm(kPages, 23051);
  EXPECT_EQ(block.activePage, 23051);
  Edit([](FakeDialog& dialog) { EXPECT_EQ(dialog.Int(kPages), 23051); });
}

TEST_F(LumasDialogTest, TurningAPageDoesNotDrawThePreview) {
  Edit([&](FakeDialog& dialog) {
    const int before = host.dialogs.threadsStarted;
    dialog.Set(kPages, 23064);
    EXPECT_EQ(host.dialogs.threadsStarted, before);
  });
}

TEST_F(LumasDialogTest, ALayerThatIsSwitchedOnComesOnShow) {
  const std::int32_t pages[] = {23023, 23038, 23051};
  for (std::int32_t layer = 0; layer < 3; ++layer) {
    Edit([&](FakeDialog& dialog) {
      dialog.Set(kPages, 23015);
      dialog.Set(23002 + layer, 0);
      EXPECT_EQ(dialog.Int(kPages), 23015) << "switching off shows nothing else";
      dialog.Set(23002 + layer, 1);
      EXPECT_EQ(dialog.Int(kPages), pages[layer]);
      dialog.Confirm();
    });
    EXPECT_EQ(block.activePage, pages[layer]);
  }
}

// Only where it really is turned on: neither the value that it has nor a message without one
// counts.
TEST_F(LumasDialogTest, ALayerThatIsOnAlreadyTurnsNoPage) {
  Edit([](FakeDialog& dialog) {
    for (const std::int32_t id : {23002, 23003, 23004}) {
      dialog.Set(id, 1);
      dialog.Send(id, {});
      EXPECT_EQ(dialog.Int(kPages), 23015);
    }
  });
}

TEST_F(LumasDialogTest, OtherSwitchesTurnNoPage) {
  Edit([](FakeDialog& dialog) {
    for (const std::int32_t id : {23001, 23005}) {
      dialog.Set(id, 0);
      dialog.Set(id, 1);
      EXPECT_EQ(dialog.Int(kPages), 23015);
    }
  });
}

TEST_F(LumasDialogTest, OnlyOneWayOfBrushingHasADiscSize) {
  Edit([](FakeDialog& dialog) {
    EXPECT_FALSE(dialog.Enabled(23075));
    for (std::int32_t mode = 0; mode <= 6; ++mode) {
      dialog.Set(23065, mode);
      EXPECT_EQ(dialog.Enabled(23075), mode == 4) << mode;
    }
  });
}

// --- what follows ---

// exponent 2 / size; the window of the contrast 0.5: 0.25 to 0.75; tint = colour x strength.
TEST_F(LumasDialogTest, AChangeBringsDerivedFieldsUpToDate) {
  Edit([](FakeDialog& dialog) {
    dialog.Set(23028, 0.5f);
    dialog.Set(23029, 0.5f);
    dialog.Set(23025, Vector{1, 0.5f, 0});
    dialog.Set(23026, 0.5f);
    dialog.Set(23019, 0.0f);
    dialog.Set(23021, 0.5f);
    dialog.Set(23016, Vector{0.5f, 1, 0});
    dialog.Set(23017, 2.0f);
    dialog.Set(23005, 1);
    dialog.Confirm();
  });
  const SpecularLayer& layer = block.layers[0];
  EXPECT_EQ(layer.exponent, 4);
  EXPECT_EQ(layer.contrastLow, 0.25f);
  EXPECT_EQ(layer.contrastHigh, 0.75f);
  EXPECT_EQ(layer.tint.x, 0.5f);
  EXPECT_EQ(layer.tint.y, 0.25f);
  EXPECT_EQ(layer.active, 1);
  EXPECT_EQ(layer.useEdge, 1);
  EXPECT_EQ(block.sigma2, 0);
  EXPECT_EQ(block.orenA, 1);
  EXPECT_EQ(block.orenB, 0);
  EXPECT_EQ(block.diffuseLow, 0.25f);
  EXPECT_EQ(block.diffuseHigh, 0.75f);
  EXPECT_EQ(block.diffuseTint.y, 2);
  EXPECT_EQ(block.anisotropyActive, 1);
  EXPECT_EQ(block.scratchActive, 1);
}

// A message stores a size and leaves the exponent; the dialog then catches up, touched or not.
TEST_F(LumasDialogTest, ConfirmingAfterAnImportBringsDerivedFieldsUpToDate) {
  FakeContainer payload;
  payload.Set(1010, 0.25f);  // the size of layer 1
  payload.Set(1001, Word{0});
  shader.Message(MessageSetParameters, payload);
  EXPECT_EQ(block.layers[0].exponent, 400);
  EXPECT_EQ(block.layers[0].active, 1);
  Edit([](FakeDialog& dialog) { dialog.Confirm(); });
  EXPECT_EQ(block.layers[0].exponent, 8);
  EXPECT_EQ(block.layers[0].active, 0);
}

TEST_F(LumasDialogTest, CancellingLeavesTheBlockWordForWord) {
  block.layers[1].size = 0.125f;
  const auto before = Words(sizeof(LumasBlock));
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              dialog.Set(23003, 0);
              dialog.Set(23020, 5.0f);
              dialog.Key('M', kControl);
            }),
            0);
  EXPECT_EQ(Words(sizeof(LumasBlock)), before);
}

// --- keys ---

TEST_F(LumasDialogTest, RevertBringsBackTheSavedLight) {
  Edit([](FakeDialog& dialog) {
    dialog.Set(23028, 1.5f);
    dialog.Set(23002, 0);
    dialog.Key('R', kControl);
    EXPECT_EQ(dialog.Real(23028), 0.005f);
    EXPECT_EQ(dialog.Int(23002), 1);
    dialog.Confirm();
  });
  EXPECT_EQ(block.layers[0].exponent, 400);
  EXPECT_EQ(block.layers[0].active, 1);
}

TEST_F(LumasDialogTest, ResetLeavesPreviewAndPage) {
  block.previewObject = 4;
  block.activePage = 23038;
  block.diffuseLevel = 3;
  block.layers[2].size = 1;
  block.scratchOnLayer[1] = 0;
  Edit([](FakeDialog& dialog) {
    dialog.Key('R', kControl | kShift);
    dialog.Confirm();
  });
  EXPECT_EQ(block.previewObject, 4);
  EXPECT_EQ(block.activePage, 23038);
  EXPECT_EQ(block.diffuseLevel, 0.6f);
  EXPECT_EQ(block.layers[2].size, 0.85f);
  EXPECT_FLOAT_EQ(block.layers[2].exponent, 2 / 0.85f);
  EXPECT_EQ(block.scratchOnLayer[1], 1);
}

TEST_F(LumasDialogTest, RandomDrawsInItsOrder) {
  SecondGenerator second = {kSeed};
  const auto drawn = [&] { return static_cast<float>(second.Next()); };
  Edit([](FakeDialog& dialog) {
    dialog.Key('M', kControl);
    dialog.Confirm();
  });
  const auto expectColour = [&](const Vector& colour) {
    EXPECT_EQ(colour.z, drawn());
    EXPECT_EQ(colour.y, drawn());
    EXPECT_EQ(colour.x, drawn());
  };
  expectColour(block.diffuseColour);
  for (const SpecularLayer& layer : block.layers) {
    expectColour(layer.colour);
    EXPECT_EQ(layer.size, drawn());
    EXPECT_FLOAT_EQ(layer.exponent, 2 / layer.size);
  }
}

TEST_F(LumasDialogTest, ThePreviewMarksItsCopy) {
  host.documents.onRender = [](const FakeRender& render, HostBitmap*) {
    const LinkContent& content = render.material->links.at(1)->content;
    EXPECT_EQ(content.pluginId, PluginIdLumas);
    EXPECT_EQ(static_cast<const LumasBlock*>(content.instance->data)->previewBusy, 1);
  };
  Edit([&](FakeDialog& dialog) {
    EXPECT_TRUE(host.dialogs.RunPass());
    dialog.Confirm();
  });
  EXPECT_EQ(host.documents.renders.size(), 1u);
  EXPECT_EQ(block.changed, 0);
  EXPECT_EQ(block.previewBusy, 0);
}

// The scripted host answers a spline lookup on any thread: for the sanitizer that looks for races.
TEST_F(LumasDialogTest, ADerivationWhileThePreviewIsDrawn) {
  host.dialogs.threads = FakeDialogs::Threads::Real;
  host.dialogs.areaSizes[23011] = {48, 48};
  block.previewObject = 0;
  EXPECT_EQ(Edit([&](FakeDialog& dialog) {
              for (int i = 0; i < 200; ++i) {
                const auto step = static_cast<float>(i) / 200;
                dialog.Set(23028, step, i % 10 != 0);
                dialog.Set(23020, step, true);
                dialog.Area(23011).Draw();
              }
              dialog.Confirm();
            }),
            1);
}

#undef AT

}  // namespace
}  // namespace sorvanix::test
