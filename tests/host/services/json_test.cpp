#include "host/services/json.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "host/services/text_position.h"

namespace sorvanix::host {
namespace {

// What a text reads as, written on one line; or the error with its place.
std::string Read(std::string_view text) {
  const auto json = ParseJson(text);
  if (json) return WriteJson(*json, -1);
  const TextPosition position = PositionIn(text, json.error().offset);
  return std::to_string(position.line) + ":" + std::to_string(position.column) + ": " +
         json.error().message;
}

TEST(Json, EveryKindOfValueIsRead) {
  EXPECT_TRUE(std::holds_alternative<std::nullptr_t>(ParseJson("null")->value));
  EXPECT_TRUE(std::get<bool>(ParseJson("true")->value));
  EXPECT_EQ(std::get<std::int64_t>(ParseJson("-5")->value), -5);
  EXPECT_EQ(std::get<double>(ParseJson("0.5")->value), 0.5);
  EXPECT_EQ(std::get<std::string>(ParseJson(R"("Gr\u00fc\u00dfe")")->value),
            "Gr\xC3\xBC\xC3\x9F"
            "e");
  EXPECT_EQ(std::get<Json::Array>(ParseJson("[1, 2]")->value).size(), 2u);
  EXPECT_EQ(std::get<Json::Object>(ParseJson(R"({"a": 1})")->value).front().name, "a");
}

TEST(Json, AnObjectKeepsTheOrderOfItsNames) {
  EXPECT_EQ(Read(R"( { "b" : 1, "a" : [ ], "c" : { } } )"), R"({"b":1,"a":[],"c":{}})");
}

// 2^63 is one more than an int64 holds.
TEST(Json, AnIntegerThatDoesNotFitIsAReal) {
  EXPECT_EQ(std::get<std::int64_t>(ParseJson("9223372036854775807")->value),
            std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(std::get<double>(ParseJson("9223372036854775808")->value), 9223372036854775808.0);
}

TEST(Json, AValueRemembersWhereItStood) {
  constexpr std::string_view kText = R"({ "a" : [1, 22 ,"x"], "b":{"c":-0.5}, "d" : true })";
  const auto json = ParseJson(kText);
  const auto at = [&](const Json& value, std::size_t length) {
    return std::string(kText.substr(value.offset, length));
  };
  const auto& array = std::get<Json::Array>(json->Find("a")->value);
  EXPECT_EQ(json->offset, 0u);
  EXPECT_EQ(at(*json->Find("a"), 2), "[1");
  EXPECT_EQ(at(array[0], 1), "1");
  EXPECT_EQ(at(array[1], 2), "22");
  EXPECT_EQ(at(array[2], 3), R"("x")");
  EXPECT_EQ(at(*json->Find("b"), 4), R"({"c")");
  EXPECT_EQ(at(*json->Find("b")->Find("c"), 4), "-0.5");
  EXPECT_EQ(at(*json->Find("d"), 4), "true");
}

TEST(Json, FindingInSomethingElseThanAnObjectIsNull) {
  EXPECT_EQ(ParseJson("[1]")->Find("a"), nullptr);
  EXPECT_EQ(ParseJson(R"({"b": 1})")->Find("a"), nullptr);
}

TEST(Json, ANameThatStandsTwiceIsAnError) {
  EXPECT_EQ(Read(R"({"a": 1, "b": 2, "a": 3})"), "1:23: the name \"a\" stands here twice");
  EXPECT_EQ(Read(R"([{"a": 1}, {"a": 2}])"), R"([{"a":1},{"a":2}])");
}

TEST(Json, BrokenTextsAreErrorsOfOneLineWithTheirPlace) {
  for (const char* text : {"", "{", "[1,]", "{\"a\"}", "tru", "1 2", "\"a\nb\"", "[1e999]",
                           "\"\xFF\"", "{\"a\":1,}", "// comment\n1"}) {
    const auto json = ParseJson(text);
    ASSERT_FALSE(json.has_value()) << text;
    EXPECT_FALSE(json.error().message.empty()) << text;
    EXPECT_EQ(json.error().message.find('\n'), std::string::npos) << text;
    EXPECT_EQ(json.error().message.find("exception"), std::string::npos) << text;
    EXPECT_LE(json.error().offset, std::string_view(text).size()) << text;
  }
  EXPECT_EQ(Read("[1,\n  x]").substr(0, 4), "2:3:");
}

TEST(Json, NestingIsLimitedSoThatNoFileOverflowsTheStack) {
  const auto nested = [](std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
  };
  EXPECT_TRUE(ParseJson(nested(256)).has_value());
  EXPECT_EQ(Read(nested(257)), "1:257: nested more than 256 levels deep");
  EXPECT_FALSE(ParseJson(std::string(1'000'000, '[')).has_value());
}

TEST(Json, WhatIsRefusedHasAPointer) {
  EXPECT_EQ(ParseJson(R"({"a": [0, {"b": 1, "c/d": 2, "c/d": 3}]})").error().pointer, "/a/1/c~1d");
  EXPECT_EQ(ParseJson(R"([{"x": 1}, {"x": 1, "x": 2}])").error().pointer, "/1/x");
  EXPECT_EQ(ParseJson(R"({"x": 1, "x": 2})").error().pointer, "/x");
  std::string deep = R"({"a": [5, )";
  deep += std::string(255, '[');
  const std::string zeros = ParseJson(deep).error().pointer;
  EXPECT_EQ(zeros.substr(0, 10), "/a/1/0/0/0");
  EXPECT_EQ(zeros.size(), 2u + 2u + 254u * 2u) << "the place that is too deep";
}

TEST(Json, MessagesQuoteNoMoreThanAnExcerpt) {
  EXPECT_EQ(Excerpt(std::string(60, 'x')), std::string(60, 'x'));
  EXPECT_EQ(Excerpt(std::string(61, 'x')), std::string(60, 'x') + "...");
  // The letter of two bytes that would be cut in its middle is left out.
  EXPECT_EQ(Excerpt(std::string(59, 'x') + "\xC3\xBC" + "y"), std::string(59, 'x') + "...");
  const std::string name(100000, 'n');
  const auto twice = ParseJson("{\"" + name + "\": 1, \"" + name + "\": 2}");
  EXPECT_LT(twice.error().message.size(), 120u);
  EXPECT_LT(twice.error().pointer.size(), 80u);
  EXPECT_LT(ParseJson("[" + name + "]").error().message.size(), 200u);
}

TEST(Json, AByteOrderMarkIsSkipped) { EXPECT_EQ(Read("\xEF\xBB\xBF[1]"), "[1]"); }

TEST(Json, BytesThatAreNoTextAreReplacedWhenWritten) {
  EXPECT_EQ(WriteJson(Json(std::string("a\xFF")), -1), "\"a\xEF\xBF\xBD\"");
}

RC_GTEST_PROP(Json, EveryDoubleComesBack, (double value)) {
  const auto again = ParseJson(WriteJson(Json(value)));
  RC_ASSERT(std::get<double>(again->value) == value);
}

RC_GTEST_PROP(Json, AnyBytesAreReadOrRefused, (const std::vector<char>& bytes)) {
  const auto json = ParseJson({bytes.data(), bytes.size()});
  RC_ASSERT(json.has_value() || !json.error().message.empty());
}

}  // namespace
}  // namespace sorvanix::host
