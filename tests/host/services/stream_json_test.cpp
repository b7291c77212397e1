#include "host/services/stream_json.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>

namespace sorvanix::host {
namespace {

// Any float that there is: every pattern of bits is as likely as another.
rc::Gen<float> AnyFloat() {
  return rc::gen::map(rc::gen::resize(200, rc::gen::arbitrary<std::uint32_t>()),
                      [](std::uint32_t bits) { return std::bit_cast<float>(bits); });
}

rc::Gen<Vector> AnyVector() {
  return rc::gen::map(rc::gen::tuple(AnyFloat(), AnyFloat(), AnyFloat()), [](const auto& parts) {
    return Vector{std::get<0>(parts), std::get<1>(parts), std::get<2>(parts)};
  });
}

rc::Gen<Matrix> AnyMatrix() {
  return rc::gen::map(
      rc::gen::tuple(AnyVector(), AnyVector(), AnyVector(), AnyVector()), [](const auto& rows) {
        return Matrix{std::get<0>(rows), std::get<1>(rows), std::get<2>(rows), std::get<3>(rows)};
      });
}

// Texts of ASCII, quotes and control characters included.
rc::Gen<std::string> AnyText() {
  return rc::gen::container<std::string>(rc::gen::inRange<char>(1, 127));
}

template <class Type>
rc::Gen<StreamValue> Held(rc::Gen<Type> gen) {
  return rc::gen::map(std::move(gen), [](const Type& value) { return StreamValue{value}; });
}

rc::Gen<StreamValue> AnyValue(int depth);

rc::Gen<std::vector<StreamValue>> AnyValues(int depth) {
  return rc::gen::container<std::vector<StreamValue>>(AnyValue(depth));
}

rc::Gen<StreamLink> AnyLink(int depth) {
  return rc::gen::oneOf(
      rc::gen::just(StreamLink()),
      rc::gen::map(AnyText(),
                   [](const std::string& name) {
                     return StreamLink{StreamLink::kBitmap, name, {}};
                   }),
      rc::gen::map(rc::gen::pair(rc::gen::positive<std::int32_t>(), AnyValues(depth)),
                   [](const auto& pair) {
                     return StreamLink{pair.first, "", pair.second};
                   }));
}

rc::Gen<StreamValue> AnyValue(int depth) {
  const auto plain = rc::gen::oneOf(Held(rc::gen::arbitrary<std::int32_t>()), Held(AnyFloat()),
                                    Held(rc::gen::arbitrary<bool>()), Held(AnyVector()),
                                    Held(AnyMatrix()), Held(AnyText()));
  return depth == 0 ? plain : rc::gen::oneOf(plain, Held(AnyLink(depth - 1)));
}

RC_GTEST_PROP(StreamJson, EveryStreamComesBackBitForBit, ()) {
  const auto values = *rc::gen::resize(20, AnyValues(2)).as("values");
  const std::string text = WriteJson(StreamToJson(values));
  const auto json = ParseJson(text);
  RC_ASSERT(json.has_value());
  const auto again = StreamFromJson(*json);
  RC_ASSERT(again.has_value());
  RC_ASSERT(*again == values);
}

std::string Written(const StreamValue& value) { return WriteJson(StreamToJson({value}), -1); }

TEST(StreamJson, EachTypeHasItsName) {
  EXPECT_EQ(Written({std::int32_t{5}}), R"([{"int":5}])");
  EXPECT_EQ(Written({0.5f}), R"([{"float":0.5}])");
  EXPECT_EQ(Written({true}), R"([{"bool":true}])");
  EXPECT_EQ(Written({Vector{0, 0.5f, 1}}), R"([{"vector":[0.0,0.5,1.0]}])");
  EXPECT_EQ(Written({Matrix{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}),
            R"([{"matrix":[[0.0,0.0,0.0],[1.0,0.0,0.0],[0.0,1.0,0.0],[0.0,0.0,1.0]]}])");
  EXPECT_EQ(Written({std::string("a \"b\"")}), R"([{"string":"a \"b\""}])");
}

TEST(StreamJson, ALinkIsAShaderABitmapOrNull) {
  EXPECT_EQ(Written({StreamLink{1001231, "", {{std::int32_t{1}}}}}),
            R"([{"link":{"shader":1001231,"values":[{"int":1}]}}])");
  EXPECT_EQ(Written({StreamLink{StreamLink::kBitmap, "a.png", {}}}),
            R"([{"link":{"bitmap":"a.png"}}])");
  EXPECT_EQ(Written({StreamLink()}), R"([{"link":null}])");
}

TEST(StreamJson, AnEmptyStreamIsAnEmptyArray) {
  EXPECT_EQ(WriteJson(StreamToJson({}), -1), "[]");
  EXPECT_TRUE(StreamFromJson(*ParseJson("[]"))->empty());
}

// What is wrong, and the text from the wrong value on.
std::string ErrorIn(const std::string& text) {
  const auto values = StreamFromJson(*ParseJson(text));
  if (values) return "no error";
  return values.error().message + " at " + text.substr(values.error().offset);
}

TEST(StreamJson, AnErrorTellsWhatWasExpectedWhere) {
  EXPECT_EQ(ErrorIn("{}"), "expected an array at {}");
  EXPECT_EQ(ErrorIn("[5]"), "expected one value under the name of its type at 5]");
  EXPECT_EQ(ErrorIn(R"([{"double":5}])"),
            R"(expected one value under the name of its type at {"double":5}])");
  EXPECT_EQ(ErrorIn(R"([{"int":1,"bool":true}])"),
            R"(expected one value under the name of its type at {"int":1,"bool":true}])");
  EXPECT_EQ(ErrorIn(R"([{"int":1.5}])"), "expected an integer of 32 bits at 1.5}]");
  EXPECT_EQ(ErrorIn(R"([{"int":2147483648}])"), "expected an integer of 32 bits at 2147483648}]");
  EXPECT_EQ(ErrorIn(R"([{"float":1e39}])"), "expected a number that a float can hold at 1e39}]");
  EXPECT_EQ(ErrorIn(R"([{"float":"NaN:00000000"}])"),
            R"(expected a number that a float can hold at "NaN:00000000"}])");
  EXPECT_EQ(ErrorIn(R"([{"bool":1}])"), "expected true or false at 1}]");
  EXPECT_EQ(ErrorIn(R"([{"vector":[1,2]}])"), "expected three numbers at [1,2]}]");
  EXPECT_EQ(ErrorIn(R"([{"matrix":[[1,2,3]]}])"), "expected four rows at [[1,2,3]]}]");
  EXPECT_EQ(ErrorIn(R"([{"matrix":[[1,2,3],[1,2,3],[1,2,3],7]}])"),
            "expected three numbers at 7]}]");
  EXPECT_EQ(ErrorIn(R"([{"string":5}])"), "expected a text at 5}]");
  EXPECT_EQ(ErrorIn(R"([{"link":{"shader":-1,"values":[]}}])"),
            R"(expected the id of a shader at -1,"values":[]}}])");
  EXPECT_EQ(ErrorIn(R"([{"link":{"shader":5}}])"),
            R"(expected null, a bitmap, or a shader with its values at {"shader":5}}])");
  EXPECT_EQ(ErrorIn(R"([{"link":5}])"),
            "expected null, a bitmap, or a shader with its values at 5}]");
  EXPECT_EQ(ErrorIn(R"([{"link":{"shader":5,"values":[{"int":true}]}}])"),
            "expected an integer of 32 bits at true}]}}]");
}

}  // namespace
}  // namespace sorvanix::host
