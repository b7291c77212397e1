#include "host/channels/material_file.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/host/channels/small_catalogue.h"

namespace sorvanix::host {
namespace {

MaterialReading Read(std::string_view text) { return ReadMaterial(text, test::SmallCatalogue()); }

// The problems as the program tells them, one to a line.
std::string Told(std::string_view text) {
  std::string told;
  for (const MaterialProblem& problem : Read(text).problems) {
    told += Describe("m.json", problem) + '\n';
  }
  return told;
}

// The value of the only parameter that is given.
template <class Type>
Type OnlyValue(std::string_view text) {
  const MaterialReading reading = Read(text);
  if (!reading.material || reading.material->values.size() != 1) {
    ADD_FAILURE() << Told(text);
    return {};
  }
  return std::get<Type>(reading.material->values.front().value);
}

TEST(MaterialFile, AShaderIsNamedByNameOrId) {
  for (const char* text : {R"({"shader": "Mixer"})", R"({"shader": 12})"}) {
    const MaterialReading reading = Read(text);
    ASSERT_TRUE(reading.material) << text;
    EXPECT_EQ(reading.material->shader->name, "Mixer");
    EXPECT_TRUE(reading.material->values.empty());
  }
}

TEST(MaterialFile, EveryTypeIsRead) {
  const MaterialReading reading = Read(R"({"target": "a\u00fc", "tint": [1, 0.5, 0],
      "offset": [-1, 2e3, 0.25], "inverted": true, "scale": 2.5, "count": 7, "kind": "Rough",
      "shader": "Paint"})");
  ASSERT_TRUE(reading.material);
  EXPECT_TRUE(reading.problems.empty());
  const auto& values = reading.material->values;
  ASSERT_EQ(values.size(), 7u);
  // In the order of the catalogue, whatever that of the file is.
  EXPECT_EQ(values[0].parameter->name, "kind");
  EXPECT_EQ(std::get<std::int32_t>(values[0].value), 2);
  EXPECT_EQ(std::get<std::int32_t>(values[1].value), 7);
  EXPECT_EQ(std::get<float>(values[2].value), 2.5f);
  EXPECT_EQ(std::get<bool>(values[3].value), true);
  EXPECT_EQ(std::get<Vector>(values[4].value).y, 2000.0f);
  EXPECT_EQ(std::get<Vector>(values[5].value).y, 0.5f);
  EXPECT_EQ(std::get<std::string>(values[6].value), "a\xC3\xBC");
}

TEST(MaterialFile, NumbersConvertWhereNothingIsLost) {
  EXPECT_EQ(OnlyValue<float>(R"({"shader": 11, "scale": 3})"), 3.0f);
  EXPECT_EQ(OnlyValue<std::int32_t>(R"({"shader": 11, "count": 5.0})"), 5);
  EXPECT_EQ(OnlyValue<std::int32_t>(R"({"shader": 11, "kind": 0})"), 0);
}

TEST(MaterialFile, ColoursMayBeHexadecimal) {
  const Vector colour = OnlyValue<Vector>(R"({"shader": 11, "tint": "#fF8000"})");
  EXPECT_EQ(colour.x, 1.0f);
  EXPECT_EQ(colour.y, static_cast<float>(0x80 / 255.0));
  EXPECT_EQ(colour.z, 0.0f);
  for (const char* wrong : {"red", "#ff800", "#ff80001", "#ff80 0", "#-10000", ""}) {
    const std::string text = std::string(R"({"shader": 11, "tint": ")") + wrong + "\"}";
    EXPECT_EQ(Told(text),
              "m.json:1:24: /tint: expected a colour such as \"#ff8000\" or [1, 0.5, 0]\n")
        << wrong;
  }
  EXPECT_FALSE(Read(R"({"shader": 11, "offset": "#ff8000"})").material);
}

TEST(MaterialFile, UnknownNamesAreToldWithTheNearest) {
  EXPECT_EQ(Told(R"({"shader": "Pant"})"),
            "m.json:1:12: /shader: unknown shader \"Pant\"; did you mean \"Paint\"?\n");
  EXPECT_EQ(Told("{\"shader\": \"Paint\",\n  \"scael\": 2}"),
            "m.json:2:12: /scael: unknown parameter of Paint \"scael\"; did you mean \"scale\"?\n");
  EXPECT_EQ(Told(R"({"shader": "Paint", "kind": "Rogh"})"),
            "m.json:1:29: /kind: unknown choice \"Rogh\"; did you mean \"Rough\"?\n");
  EXPECT_EQ(Told(R"({"shader": 13})"), "m.json:1:12: /shader: there is no shader with the id 13\n");
}

TEST(MaterialFile, WrongTypesAreErrors) {
  const struct {
    const char* member;
    const char* message;
  } rows[] = {
      {R"("kind": true)", "/kind: expected a choice's name or number, found true or false"},
      {R"("count": "5")", "/count: expected a whole number, found a text"},
      {R"("count": 5.5)", "/count: expected a whole number, found a number"},
      {R"("scale": "2")", "/scale: expected a number, found a text"},
      {R"("scale": null)", "/scale: expected a number, found null"},
      {R"("inverted": 1)", "/inverted: expected true or false, found a whole number"},
      {R"("offset": 1)", "/offset: expected a list of three numbers, found a whole number"},
      {R"("offset": [1, 2])", "/offset: expected three numbers, found 2"},
      {R"("offset": [1, 2, "3"])", "/offset: expected three numbers, found a text"},
      {R"("target": {})", "/target: expected a text, found an object"},
  };
  for (const auto& row : rows) {
    const std::string text = std::string("{\"shader\": 11, ") + row.member + "}";
    EXPECT_NE(Told(text).find(row.message), std::string::npos) << Told(text);
    EXPECT_FALSE(Read(text).material) << text;
  }
}

TEST(MaterialFile, NumbersBeyond32BitsAreErrors) {
  EXPECT_FALSE(Read(R"({"shader": 11, "scale": 1e39})").material);
  EXPECT_FALSE(Read(R"({"shader": 11, "scale": -1e300})").material);
  EXPECT_FALSE(Read(R"({"shader": 11, "offset": [0, 0, 1e39]})").material);
  EXPECT_FALSE(Read(R"({"shader": 11, "count": 2147483648})").material);
  EXPECT_FALSE(Read(R"({"shader": 11, "scale": 1e999})").material);
  EXPECT_FALSE(Read(R"({"shader": 11, "scale": NaN})").material);
  EXPECT_EQ(OnlyValue<std::int32_t>(R"({"shader": 11, "count": -2147483648})"),
            std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(OnlyValue<float>(R"({"shader": 11, "scale": 3.4028234663852886e38})"),
            std::numeric_limits<float>::max());
}

TEST(MaterialFile, ValuesOutsideTheDialogsLimitsAreTakenWithAWarning) {
  const MaterialReading reading = Read(R"({"shader": 11, "count": 11, "scale": 0.05, "kind": 1})");
  ASSERT_TRUE(reading.material);
  EXPECT_EQ(reading.material->values.size(), 3u);
  EXPECT_TRUE(reading.Errors().empty());
  ASSERT_EQ(reading.Warnings().size(), 3u);
  EXPECT_EQ(reading.Warnings()[0].message, "11 is above the dialog's greatest value, 10");
  EXPECT_EQ(reading.Warnings()[1].message, "0.05 is below the dialog's least value, 0.1");
  EXPECT_EQ(reading.Warnings()[2].message, "1 is none of the choices");
}

TEST(MaterialFile, ValuesAtTheLimitsAreNoReasonForAWarning) {
  EXPECT_EQ(Told(R"({"shader": 11, "count": 10, "scale": 0.1, "kind": 2})"), "");
}

TEST(MaterialFile, AllErrorsAreToldInTheOrderOfTheText) {
  EXPECT_EQ(Told("{\"x\": 1,\n\"scale\": [],\n\"shader\": 11,\n\"count\": {}}"),
            "m.json:1:7: /x: unknown parameter of Paint \"x\"\n"
            "m.json:2:10: /scale: expected a number, found a list\n"
            "m.json:4:10: /count: expected a whole number, found an object\n");
}

TEST(MaterialFile, WhatIsNoShaderIsAnError) {
  EXPECT_EQ(Told("[]"), "m.json:1:1: expected an object, a shader, found a list\n");
  EXPECT_EQ(Told("{}"), "m.json:1:1: \"shader\" is missing: the name or the id of a shader\n");
  EXPECT_EQ(Told(R"({"shader": []})"),
            "m.json:1:12: /shader: expected a shader's name or id, found a list\n");
}

TEST(MaterialFile, MalformedTextIsAnErrorWithItsPlace) {
  for (const char* text : {"", "{", "{\"shader\": 11,}", "{\"shader\" 11}", "nonsense"}) {
    const MaterialReading reading = Read(text);
    EXPECT_FALSE(reading.material) << text;
    ASSERT_EQ(reading.problems.size(), 1u) << text;
    EXPECT_EQ(reading.problems[0].message.find('\n'), std::string::npos);
  }
  EXPECT_EQ(Told("{\n\n  nonsense}").substr(0, 11), "m.json:3:4:");
}

TEST(MaterialFile, ANameGivenTwiceIsAnError) {
  const MaterialReading reading = Read("{\"shader\": 11,\n\"scale\": 1, \"scale\": 2}");
  EXPECT_FALSE(reading.material);
  ASSERT_EQ(reading.problems.size(), 1u);
  EXPECT_EQ(reading.problems[0].position.line, 2u);
  EXPECT_EQ(reading.problems[0].pointer, "/scale");
  EXPECT_NE(reading.problems[0].message.find("scale"), std::string::npos);
}

TEST(MaterialFile, ColumnsCountLettersBehindAnyByteOrderMark) {
  EXPECT_EQ(Told("\xEF\xBB\xBF{\"target\": \"\xC3\xBC\xC3\xBC\", \"scale\": [], \"shader\": 11}"),
            "m.json:1:27: /scale: expected a number, found a list\n");
}

TEST(MaterialFile, AHundredErrorsAreToldAndTheOthersCounted) {
  std::string text = R"({"shader": 11)";
  for (int i = 0; i < 150; ++i) text += ", \"wrong " + std::to_string(i) + "\": 1";
  const MaterialReading reading = Read(text + R"(, "count": 11})");
  EXPECT_EQ(reading.Errors().size(), 100u);
  EXPECT_EQ(reading.untold.errors, 50u);
  EXPECT_EQ(reading.Warnings().size(), 1u);
  EXPECT_EQ(reading.untold.warnings, 0u);
  EXPECT_FALSE(reading.material);
}

TEST(MaterialFile, MessagesQuoteNoMoreThanAnExcerpt) {
  const std::string text(5000, 'x');
  for (const std::string& json :
       {"{\"shader\": \"" + text + "\"}", "{\"shader\": 11, \"" + text + "\": 1}",
        "{\"shader\": 11, \"kind\": \"" + text + "\"}",
        "{\"shader\": 12, \"input\": \"" + text + ".png\"}",
        "{\"shader\": 12, \"input\": \"" + text + ".json\"}"}) {
    EXPECT_FALSE(Told(json).empty());
    EXPECT_LT(Told(json).size(), 250u);
  }
}

TEST(MaterialFile, TheNameOfAFileHoldsNoZero) {
  for (const char* name : {"a\\u0000.png", "a\\u0000.json"}) {
    EXPECT_EQ(Told(std::string(R"({"shader": 12, "input": ")") + name + "\"}"),
              "m.json:1:25: /input: the name of a file cannot hold a zero character\n");
  }
}

TEST(MaterialFile, InputsAreReadAndTheirErrorsHaveTheirPlace) {
  const MaterialReading reading =
      Read(R"({"shader": "Mixer", "input": {"shader": "Paint", "scale": 2}})");
  ASSERT_TRUE(reading.material);
  ASSERT_EQ(reading.material->inputs.size(), 1u);
  EXPECT_EQ(std::get<MaterialNode>(reading.material->inputs[0].content).shader->name, "Paint");

  EXPECT_EQ(Told("{\"shader\": \"Mixer\",\n \"input\": {\"shader\": \"Paint\", \"scale\": true}}"),
            "m.json:2:40: /input/scale: expected a number, found true or false\n");
}

TEST(MaterialFile, PointersEscapeTildeAndSlash) {
  EXPECT_EQ(Read(R"({"shader": 11, "a/b~c": 1})").problems[0].pointer, "/a~1b~0c");
}

TEST(MaterialFile, ASchemaIsAllowedAtTheTopOnly) {
  EXPECT_TRUE(Read(R"({"$schema": "material.schema.json", "shader": 11})").material);
  EXPECT_FALSE(Read(R"({"shader": 12, "input": {"$schema": "x", "shader": 11}})").material);
}

std::string Graph(int levels) {
  std::string text;
  for (int i = 0; i < levels; ++i) text += R"({"shader":"Mixer","input":)";
  text += R"({"shader":"Paint"})";
  return text + std::string(static_cast<std::size_t>(levels), '}');
}

TEST(MaterialFile, ADeepGraphIsReadOrRefusedButNeverEndsTheProgram) {
  EXPECT_TRUE(Read(Graph(64)).material);
  for (const int levels : {65, 1000, 100000}) {
    const MaterialReading reading = Read(Graph(levels));
    EXPECT_FALSE(reading.material);
    EXPECT_EQ(reading.problems.size(), 1u);
  }
}

TEST(MaterialFile, EveryTruncationOfAFileIsAnErrorAndNothingWorse) {
  const std::string text = R"({"shader": "Paint", "tint": [1, 0.5, 0], "target": "\u00fc\n"})";
  ASSERT_TRUE(Read(text).material);
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_FALSE(Read(text.substr(0, length)).material) << length;
  }
}

}  // namespace
}  // namespace sorvanix::host
