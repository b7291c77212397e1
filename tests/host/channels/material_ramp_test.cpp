// Ramps in material files: knots, defaults, order, limits, and the places of errors.
#include "host/channels/material_ramp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/channels/material_file.h"
#include "tests/host/channels/fake_shaders.h"

namespace sorvanix::host {
namespace {

using ::testing::ElementsAre;

MaterialReading Read(std::string_view ramp) {
  return ReadMaterial(R"({"shader": "Colours", "ramp": )" + std::string(ramp) + "}",
                      fake::Catalogue());
}

std::vector<std::string> ErrorsOf(const MaterialReading& reading) {
  std::vector<std::string> errors;
  for (const MaterialProblem& problem : reading.Errors()) {
    errors.push_back(problem.pointer + ": " + problem.message);
  }
  EXPECT_EQ(reading.material.has_value(), errors.empty());
  return errors;
}

constexpr const char* kTwoKnots =
    R"([{"position": 0.25, "colour": "#ff0000"},
        {"position": 0.75, "colour": [0, 0.5, 2], "bias": 0.125}])";

TEST(MaterialRamp, KnotsGoUnderTheirKeysWithTheStrideBetween) {
  const Container container = ContainerOf(Read(kTwoKnots).material.value());
  EXPECT_EQ(container.GetInt(1002), 2);
  EXPECT_EQ(container.GetVector(1100).x, 1.0f);
  EXPECT_EQ(container.GetFloat(1200), 0.25f);
  EXPECT_EQ(container.GetFloat(1300), 0.5f) << "the usual bias";
  EXPECT_EQ(container.GetVector(1102).z, 2.0f);
  EXPECT_EQ(container.GetFloat(1202), 0.75f);
  EXPECT_EQ(container.GetFloat(1302), 0.125f);
  EXPECT_EQ(container.Size(), 7u) << "two knots of three values, and their number";
}

TEST(MaterialRamp, ItsSpellingReadsBackAsTheSame) {
  const auto spelled = [](const MaterialReading& reading) {
    return WriteJson(JsonOf(reading.material.value()), -1);
  };
  const std::string spelling = spelled(Read(kTwoKnots));
  EXPECT_EQ(spelling,
            R"({"shader":"Colours","ramp":[{"position":0.25,"colour":[1.0,0.0,0.0],"bias":0.5},)"
            R"({"position":0.75,"colour":[0.0,0.5,2.0],"bias":0.125}]})");
  EXPECT_EQ(spelled(ReadMaterial(spelling, fake::Catalogue())), spelling);
}

TEST(MaterialRamp, KnotsOutOfOrderAreSortedWithAWarning) {
  const auto reading = Read(R"([{"position": 1, "colour": [1, 0, 0]},
                                {"position": 0, "colour": [2, 0, 0]},
                                {"position": 1, "colour": [3, 0, 0]}])");
  ASSERT_EQ(reading.Warnings().size(), 1u);
  EXPECT_EQ(reading.Warnings()[0].pointer, "/ramp");
  const Container container = ContainerOf(reading.material.value());
  EXPECT_EQ(container.GetVector(1100).x, 2.0f);
  EXPECT_EQ(container.GetVector(1102).x, 1.0f) << "equal positions keep their order";
  EXPECT_EQ(container.GetVector(1104).x, 3.0f);
}

TEST(MaterialRamp, EqualPositionsAreInOrder) {
  EXPECT_TRUE(Read(R"([{"position": 0.5, "colour": [0, 0, 0]},
                       {"position": 0.5, "colour": [1, 1, 1]}])")
                  .problems.empty());
}

TEST(MaterialRamp, APositionOutsideTheRampIsTakenWithAWarning) {
  const auto reading = Read(R"([{"position": -0.5, "colour": [0, 0, 0]}])");
  ASSERT_EQ(reading.Warnings().size(), 1u);
  EXPECT_EQ(reading.Warnings()[0].pointer, "/ramp/0/position");
  EXPECT_EQ(ContainerOf(reading.material.value()).GetFloat(1200), -0.5f);
}

TEST(MaterialRamp, AsManyKnotsAsThereIsRoomForAreRead) {
  const std::string knot = R"({"position": 0, "colour": [0, 0, 0]})";
  EXPECT_THAT(ErrorsOf(Read('[' + knot + ',' + knot + ',' + knot + ',' + knot + ']')),
              ElementsAre());
  EXPECT_THAT(ErrorsOf(Read('[' + knot + ',' + knot + ',' + knot + ',' + knot + ',' + knot + ']')),
              ElementsAre("/ramp: expected 1 to 4 knots, found 5"));
  EXPECT_THAT(ErrorsOf(Read("[]")), ElementsAre("/ramp: expected 1 to 4 knots, found 0"));
}

TEST(MaterialRamp, EveryErrorHasItsPlace) {
  EXPECT_THAT(ErrorsOf(Read("5")), ElementsAre("/ramp: expected a list of knots, found a whole "
                                               "number"));
  EXPECT_THAT(ErrorsOf(Read(R"([{"position": 0, "colour": [0, 0, 0]}, 7])")),
              ElementsAre("/ramp/1: expected an object, a knot, found a whole number"));
  EXPECT_THAT(ErrorsOf(Read(R"([{"position": "x", "colour": [0, 0]}, {"color": 1}])")),
              ElementsAre("/ramp/0/position: expected a number, found a text",
                          "/ramp/0/colour: expected three numbers, found 2",
                          "/ramp/1: \"position\" is missing", "/ramp/1: \"colour\" is missing",
                          "/ramp/1/color: unknown part of a knot \"color\"; did you mean "
                          "\"colour\"?"));
}

}  // namespace
}  // namespace sorvanix::host
