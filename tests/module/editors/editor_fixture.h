// What the tests of dialogs share: a shader through the contract, its Edit with a script that plays
// the user, and a walk through gadgets by table.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/loaded_module.h"

namespace sorvanix::test {

/// Qualifiers as the keys of dialogs take them: bits of 0x12 let a key count, bits of 0x05 shift
/// it.
inline constexpr std::int32_t kControl = 0x02;
inline constexpr std::int32_t kCommand = 0x10;
inline constexpr std::int32_t kShift = 0x01;
inline constexpr std::int32_t kAlt = 0x04;

/// 9e18 as documents hold it: what stands for "no limit" and for the reciprocal of 0.
inline constexpr float kEndless = 9e18f;

/// A module whose resources hold all preview scenes.
struct EditorHost : StartedModule {
  EditorHost() {
    for (const char* shape : {"Sphere", "Cube", "Plane", "Cylinder", "Torus"}) {
      host.documents.files.insert(std::string("/plugins/Resources/Preview_") + shape + "_C.c4d");
    }
  }
};

/// A shader and its dialog.
struct EditorTest : ::testing::Test {
  EditorTest(std::int32_t pluginId, std::int32_t itsDialog)
      : shader(started, pluginId), dialogId(itsDialog) {}

  using Script = std::function<void(FakeDialog&)>;

  /// Edit while the script plays the user, who has to confirm in it.
  std::int32_t Edit(Script script) {
    host.dialogs.scripts[dialogId] = std::move(script);
    return shader.record.Edit(&shader.instance);
  }
  /// Sets a gadget in a dialog of its own, and confirms.
  template <class Value>
  void SetAndConfirm(std::int32_t gadget, const Value& value) {
    const auto script = [&](FakeDialog& dialog) {
      EXPECT_TRUE(dialog.Set(gadget, value)) << gadget;
      dialog.Confirm();
    };
    ASSERT_EQ(Edit(script), 1);
  }

  /// A member by its offset.
  template <class Value>
  Value& At(std::size_t offset) {
    return *reinterpret_cast<Value*>(static_cast<char*>(shader.instance.data) + offset);
  }
  /// All words of the block.
  std::vector<std::uint32_t> Words(std::size_t size) {
    std::vector<std::uint32_t> words(size / 4);
    std::memcpy(words.data(), shader.instance.data, size);
    return words;
  }

  EditorHost started;
  FakeHost& host = started.host;
  ShaderUnderTest shader;
  const std::int32_t dialogId;
};

/// A gadget of a number: its limits as the module sets them, in the units of the block, and what
/// the member then holds when the user goes to them or beyond.
struct NumberGadget {
  std::int32_t id;
  std::size_t member;
  float minimum, maximum, step;
  std::int32_t format = FormatReal;
  float atMinimum = minimum, atMaximum = maximum;
  std::int32_t pair = 0;  ///< shows the same

  friend void PrintTo(const NumberGadget& gadget, std::ostream* out) { *out << gadget.id; }
};

/// The same for integers and choices.
struct IntegerGadget {
  std::int32_t id;
  std::size_t member;
  std::int32_t minimum, maximum;
  friend void PrintTo(const IntegerGadget& gadget, std::ostream* out) { *out << gadget.id; }
};

/// Goes to both limits of a gadget and beyond; each time in a dialog of its own that is confirmed.
inline void WalkNumber(EditorTest& test, const NumberGadget& row) {
  SCOPED_TRACE(row.id);
  test.Edit([&](FakeDialog& dialog) {
    const FakeGadget& gadget = dialog[row.id];
    EXPECT_EQ(gadget.kind, FakeGadget::Kind::Real);
    EXPECT_EQ(gadget.minimum, row.minimum);
    EXPECT_EQ(gadget.maximum, row.maximum);
    EXPECT_EQ(gadget.step, row.step);
    EXPECT_EQ(gadget.format, row.format);
  });
  struct Step {
    float typed, held;
  };
  const Step steps[] = {{row.minimum, row.atMinimum},
                        {row.maximum, row.atMaximum},
                        {-std::numeric_limits<float>::max(), row.atMinimum},
                        {std::numeric_limits<float>::max(), row.atMaximum}};
  for (const Step& step : steps) {
    test.Edit([&](FakeDialog& dialog) {
      EXPECT_TRUE(dialog.Set(row.id, step.typed));
      const std::int32_t pair = row.pair != 0 ? row.pair : row.id;
      EXPECT_EQ(dialog.Real(pair), dialog.Real(row.id));
      dialog.Confirm();
    });
    EXPECT_EQ(test.At<float>(row.member), step.held) << "typed " << step.typed;
  }
}

inline void WalkInteger(EditorTest& test, const IntegerGadget& row) {
  SCOPED_TRACE(row.id);
  const std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  const std::int32_t highest = std::numeric_limits<std::int32_t>::max();
  struct Step {
    std::int32_t typed, held;
  };
  for (const Step& step : {Step{row.minimum, row.minimum}, Step{row.maximum, row.maximum},
                           Step{lowest, row.minimum}, Step{highest, row.maximum}}) {
    test.Edit([&](FakeDialog& dialog) {
      EXPECT_EQ(dialog[row.id].kind, FakeGadget::Kind::Int);
      EXPECT_TRUE(dialog.Set(row.id, step.typed));
      dialog.Confirm();
    });
    EXPECT_EQ(test.At<std::int32_t>(row.member), step.held) << "typed " << step.typed;
  }
}

/// A truth goes on and off.
inline void WalkSwitch(EditorTest& test, std::int32_t id, std::size_t member) {
  SCOPED_TRACE(id);
  for (const std::int32_t on : {1, 0, 1}) {
    test.Edit([&](FakeDialog& dialog) {
      EXPECT_EQ(dialog[id].kind, FakeGadget::Kind::Switch);
      EXPECT_TRUE(dialog.Set(id, on));
      dialog.Confirm();
    });
    EXPECT_EQ(test.At<std::int32_t>(member), on);
  }
}

/// A colour is taken as it comes, without limits.
inline void WalkColour(EditorTest& test, std::int32_t id, std::size_t member) {
  SCOPED_TRACE(id);
  const Vector colour = {0.25f, -1, 3};
  test.Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(dialog[id].kind, FakeGadget::Kind::Colour);
    EXPECT_TRUE(dialog.Set(id, colour));
    dialog.Confirm();
  });
  const auto& held = test.At<Vector>(member);
  EXPECT_EQ(held.x, 0.25f);
  EXPECT_EQ(held.y, -1);
  EXPECT_EQ(held.z, 3);
}

/// A generator of the program's own kind, to draw beside it: the next state is
/// ((state + 1) * 69069) mod 2^31, and the number that share of 2^31.
struct SecondGenerator {
  std::uint32_t state;
  double Next() {
    state = ((state + 1) * 69069u) & 0x7FFFFFFFu;
    return state / 2147483648.0;
  }
};

/// The seed that the program's generator starts with.
inline constexpr std::uint32_t kSeed = 665;

}  // namespace sorvanix::test
