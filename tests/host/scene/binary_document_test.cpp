// Binary documents: what they look like, that nothing is lost in them, and that nothing in them is
// believed.
#include "host/scene/binary_document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/services/content_hash.h"

namespace sorvanix::host {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

std::string Bytes(std::initializer_list<int> bytes) {
  std::string text;
  for (const int byte : bytes) text += static_cast<char>(byte);
  return text;
}

std::string Number(std::uint64_t value, int size) {
  std::string bytes;
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
  return bytes;
}
std::string Checksum(const std::string& bytes) {
  return Number(std::stoull(HashOf(bytes), nullptr, 16), 8);
}
std::string Section(const std::string& kind, const std::string& content) {
  return kind + Number(0, 4) + Number(content.size(), 8) + Checksum(content) + content;
}

// A file with right lengths and checksums, whatever stands in it.
std::string Sealed(const std::string& names, const std::string& tree, int version = 1) {
  const std::string body = Section("NAME", names) + Section("TREE", tree);
  const std::string header = "\x89SVX\r\n\x1A\n" + Number(std::uint64_t(version), 4) +
                             Number(2, 4) + Number(body.size(), 8);
  return header + Checksum(header) + body;
}

std::string Failure(const std::string& bytes) {
  const auto read = ReadBinaryDocument(bytes);
  return read ? "read: " + WriteJson(*read, -1) : read.error();
}
std::string ThereAndBack(const std::string& json) {
  const auto read = ReadBinaryDocument(WriteBinaryDocument(*ParseJson(json)));
  return read ? WriteJson(*read, -1) : read.error();
}

TEST(BinaryDocument, LooksAsDocumented) {
  // One name. An object of one member, number 0: an array of three: the integer 1, whose zigzag is
  // 2; 0.5 as a float, 0x3F000000; a text of two bytes.
  const std::string names = Bytes({1, 1, 'a'});
  const std::string tree = Bytes({8, 1, 0, 7, 3, 3, 2, 4, 0, 0, 0, 0x3F, 6, 2, 0xC3, 0xA9});
  EXPECT_EQ(WriteBinaryDocument(*ParseJson("{\"a\": [1, 0.5, \"\xC3\xA9\"]}")),
            Sealed(names, tree));
  EXPECT_TRUE(IsBinaryDocument(Sealed(names, tree)));
  EXPECT_FALSE(IsBinaryDocument("{\"a\": 1}"));
  EXPECT_FALSE(IsBinaryDocument(""));
}

TEST(BinaryDocument, KeepsEveryKindOfValue) {
  for (const char* json :
       {"null", "true", "false", "0", "-1", "9223372036854775807", "-9223372036854775808", "0.1",
        "1.0", "-0.0", "1e+300", "3.14159265358979", "16777217.0", "\"\"", "\"\xF0\x9F\x8C\x8D\"",
        "[]", "{}", "[[],{},[null]]", "{\"b\":1,\"a\":{\"b\":2}}"}) {
    EXPECT_EQ(ThereAndBack(json), WriteJson(*ParseJson(json), -1));
  }
}

// What floats are, and what is spelled so shortly that a float says all of it, takes five bytes.
TEST(BinaryDocument, StoresFloatsShortly) {
  const std::size_t small = WriteBinaryDocument(*ParseJson("0.1")).size();
  const std::size_t large = WriteBinaryDocument(*ParseJson("0.12345678901")).size();
  EXPECT_EQ(large - small, 4u);
}

TEST(BinaryDocument, KeepsTheExampleScenes) {
  int count = 0;
  for (const auto& entry : fs::directory_iterator(SORVANIX_SOURCE_FOLDER "/examples/scenes")) {
    if (entry.path().extension() != ".json") continue;
    std::ostringstream text;
    text << std::ifstream(entry.path()).rdbuf();
    const auto json = ParseJson(text.str());
    ASSERT_TRUE(json) << entry.path();
    EXPECT_EQ(ThereAndBack(text.str()), WriteJson(*json, -1)) << entry.path();
    ++count;
  }
  EXPECT_GT(count, 0);
}

rc::Gen<Json> AnyJson(int depth) {
  const auto text = rc::gen::container<std::string>(rc::gen::inRange('a', 'z'));
  const auto leaf = rc::gen::oneOf(
      rc::gen::map(rc::gen::arbitrary<bool>(), [](bool truth) { return Json(truth); }),
      rc::gen::map(rc::gen::arbitrary<std::int64_t>(), [](std::int64_t n) { return Json(n); }),
      rc::gen::map(rc::gen::arbitrary<double>(), [](double n) { return Json(n); }),
      rc::gen::map(rc::gen::arbitrary<float>(), [](float n) { return Json(double{n}); }),
      rc::gen::map(text, [](const std::string& t) { return Json(t); }));
  if (depth == 0) return leaf;
  const auto element = AnyJson(depth - 1);
  const auto array = rc::gen::map(rc::gen::container<Json::Array>(element),
                                  [](Json::Array elements) { return Json(std::move(elements)); });
  const auto object =
      rc::gen::map(rc::gen::container<Json::Array>(element), [](Json::Array values) {
        Json::Object members;
        for (Json& value : values) {
          members.push_back({"n" + std::to_string(members.size()), std::move(value)});
        }
        return Json(std::move(members));
      });
  return rc::gen::oneOf(leaf, array, object);
}

RC_GTEST_PROP(BinaryDocument, LosesNothing, ()) {
  const Json json = *AnyJson(2);
  const std::string bytes = WriteBinaryDocument(json);
  const auto read = ReadBinaryDocument(bytes);
  RC_ASSERT(read.has_value());
  RC_ASSERT(WriteJson(*read) == WriteJson(json));
  RC_ASSERT(WriteBinaryDocument(*read) == bytes);
}

// --- damage ---

const std::string& Whole() {
  static const std::string whole =
      WriteBinaryDocument(*ParseJson("{\"name\": [1, 2.5, \"text\", {\"inner\": null}]}"));
  return whole;
}

TEST(BinaryDocument, IsRefusedWhereverItIsCutOff) {
  for (std::size_t size = 0; size < Whole().size(); ++size) {
    EXPECT_FALSE(ReadBinaryDocument(std::string_view(Whole()).substr(0, size))) << size;
  }
  EXPECT_THAT(Failure(Whole() + "x"), HasSubstr("goes on behind its end"));
}

TEST(BinaryDocument, IsRefusedWhicheverBitChanged) {
  for (std::size_t i = 0; i < Whole().size(); ++i) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string damaged = Whole();
      damaged[i] = static_cast<char>(damaged[i] ^ (1 << bit));
      EXPECT_FALSE(ReadBinaryDocument(damaged)) << i << " " << bit;
    }
  }
}

TEST(BinaryDocument, OfALaterFormIsTold) {
  EXPECT_THAT(Failure(Sealed(Bytes({0}), Bytes({0}), 2)), HasSubstr("does not know: 2"));
}

// --- hostile contents, with right checksums ---

TEST(BinaryDocument, AsksForNoMoreMemoryThanItIsLong) {
  const std::string huge = Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F});
  EXPECT_EQ(Failure(Sealed(huge, Bytes({0}))), "it is cut off") << "names";
  EXPECT_EQ(Failure(Sealed(Bytes({1}) + huge, Bytes({0}))), "it is cut off") << "a name";
  for (const int tag : {6, 7, 8}) {
    EXPECT_EQ(Failure(Sealed(Bytes({0}), Bytes({tag}) + huge)), "it is cut off") << tag;
  }
}

TEST(BinaryDocument, RefusesWhatJsonCannotSay) {
  const std::string none = Bytes({0});
  EXPECT_THAT(Failure(Sealed(none, Bytes({9}))), HasSubstr("unknown kind"));
  EXPECT_THAT(Failure(Sealed(none, Bytes({4, 0, 0, 0x80, 0x7F}))), HasSubstr("not finite"));
  EXPECT_THAT(Failure(Sealed(none, Bytes({5, 0, 0, 0, 0, 0, 0, 0xF8, 0x7F}))),
              HasSubstr("not finite"));
  EXPECT_THAT(Failure(Sealed(none, Bytes({8, 1, 0, 0}))), HasSubstr("not listed"));
  EXPECT_THAT(Failure(Sealed(Bytes({1, 1, 'a'}), Bytes({8, 2, 0, 0, 0, 0}))),
              HasSubstr("twice in one object"));
  EXPECT_THAT(Failure(Sealed(Bytes({2, 1, 'a', 1, 'a'}), Bytes({0}))), HasSubstr("listed twice"));
  EXPECT_THAT(Failure(Sealed(none, Bytes({0, 0}))), HasSubstr("holds too much"));
  EXPECT_THAT(Failure(Sealed(none + none, Bytes({0}))), HasSubstr("holds too much"));
  EXPECT_THAT(Failure(Sealed(none, "\x03" + std::string(10, '\xFF'))), HasSubstr("too long"));
}

// Not UTF-8: a lone tail, a cut-off letter, an overlong slash, a surrogate, beyond U+10FFFF.
TEST(BinaryDocument, RefusesTextsThatAreNotUtf8) {
  for (const std::string& text :
       {Bytes({0x80}), Bytes({0xC3}), Bytes({0xC0, 0xAF}), Bytes({0xE0, 0x80, 0xAF}),
        Bytes({0xED, 0xA0, 0x80}), Bytes({0xF0, 0x80, 0x80, 0xAF}), Bytes({0xF4, 0x90, 0x80, 0x80}),
        Bytes({0xFF})}) {
    const std::string tree = Bytes({6, static_cast<int>(text.size())}) + text;
    EXPECT_THAT(Failure(Sealed(Bytes({0}), tree)), HasSubstr("not UTF-8"));
  }
}

// 256 levels as in JSON; a file of brackets must not exhaust the stack.
TEST(BinaryDocument, NestsAsDeepAsJson) {
  const auto nested = [](int levels) {
    std::string tree;
    for (int i = 0; i < levels; ++i) tree += Bytes({7, 1});
    return Sealed(Bytes({0}), tree + Bytes({0}));
  };
  EXPECT_TRUE(ReadBinaryDocument(nested(256)));
  EXPECT_THAT(Failure(nested(257)), HasSubstr("256 levels"));
  EXPECT_THAT(Failure(nested(1000000)), HasSubstr("256 levels"));
}

// A name of a mebibyte a hundred times over: a hundredth of that is in the file.
TEST(BinaryDocument, DoesNotGrowOutOfProportion) {
  const std::string names = Bytes({1, 0x80, 0x80, 0x40}) + std::string(1 << 20, 'n');
  std::string tree = Bytes({7, 100});
  for (int i = 0; i < 100; ++i) tree += Bytes({8, 1, 0, 0});
  EXPECT_THAT(Failure(Sealed(names, tree)), HasSubstr("names are too long"));
}

}  // namespace
}  // namespace sorvanix::host
