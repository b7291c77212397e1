// PLY files in their three forms: what is read of them, and that no count is believed.
#include "host/scene/ply_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/host/scene/vector_checks.h"

namespace sorvanix::host {
namespace {

const std::string kAsciiSquare =
    "ply\nformat ascii 1.0\ncomment a square\nelement vertex 4\n"
    "property float x\nproperty float y\nproperty float z\n"
    "property float nx\nproperty float ny\nproperty float nz\n"
    "property float s\nproperty float t\n"
    "element face 1\nproperty list uchar int vertex_indices\nend_header\n"
    "-1 -1 0 0 0 1 0 0\n1 -1 0 0 0 1 1 0\n1 1 0 0 0 1 1 1\n-1 1 0 0 0 1 0 1\n"
    "4 0 1 2 3\n";

/// The bytes of numbers in the order that a format tells.
class Bytes {
 public:
  explicit Bytes(bool littleEndian) : littleEndian_(littleEndian) {}
  template <class Value>
  Bytes& Add(Value value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    if (littleEndian_ != (std::endian::native == std::endian::little)) {
      std::reverse(std::begin(bytes), std::end(bytes));
    }
    text_.append(bytes, sizeof value);
    return *this;
  }
  const std::string& Text() const { return text_; }

 private:
  bool littleEndian_;
  std::string text_;
};

std::string Error(const std::string& text) {
  const auto mesh = ReadPly(text);
  return mesh ? "" : mesh.error();
}

std::string Header(const std::string& declarations, const std::string& form = "ascii") {
  return "ply\nformat " + form + " 1.0\n" + declarations + "end_header\n";
}

const std::string kVertex = "property float x\nproperty float y\nproperty float z\n";
const std::string kFace = "property list uchar int vertex_indices\n";

TEST(Ply, ReadsPointsNormalsAndTextureCoordinates) {
  const auto mesh = ReadPly(kAsciiSquare);
  ASSERT_TRUE(mesh) << mesh.error();
  ASSERT_EQ(mesh->points.size(), 4u);
  ASSERT_EQ(mesh->polygons.size(), 1u);
  EXPECT_LT(AreaVector(*mesh, mesh->polygons[0]).z, 0) << "towards the viewer";
  EXPECT_TRUE(Near(mesh->normals[0][0], {0, 0, -1}));
  // The first corner is (-1, -1): at the left and at the bottom of the picture.
  EXPECT_EQ(mesh->polygons[0].a, 0);
  EXPECT_TRUE(Near(mesh->uvwSets[0].corners[0][0], {0, 1, 0}));
}

class PlyBinary : public ::testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(BothEndians, PlyBinary, ::testing::Bool());

TEST_P(PlyBinary, ReadsEveryTypeOfNumber) {
  // x is a double, y a short, z a uchar; an unknown property and an unknown list are stepped over.
  const std::string header = Header(
      "element vertex 3\nproperty double x\nproperty short y\nproperty uchar z\n"
      "property uint more\nproperty list ushort char many\n"
      "element face 1\nproperty list uint ushort vertex_index\n",
      GetParam() ? "binary_little_endian" : "binary_big_endian");
  Bytes data(GetParam());
  const auto vertex = [&](double x, std::int16_t y, std::uint8_t z) {
    data.Add(x).Add(y).Add(z).Add(std::uint32_t{7}).Add(std::uint16_t{2});
    data.Add(std::int8_t{1}).Add(std::int8_t{2});
  };
  vertex(0.5, -300, 255);
  vertex(1, 0, 0);
  vertex(0, 1, 0);
  data.Add(std::uint32_t{3}).Add(std::uint16_t{0}).Add(std::uint16_t{1}).Add(std::uint16_t{2});
  const auto mesh = ReadPly(header + data.Text());
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_TRUE(Near(mesh->points[0], {0.5f, -300, -255}));
  EXPECT_TRUE(IsTriangle(mesh->polygons[0]));
}

TEST_P(PlyBinary, RefusesDataThatEndsTooEarlyAtEveryByte) {
  const std::string header = Header("element vertex 3\n" + kVertex + "element face 1\n" + kFace,
                                    GetParam() ? "binary_little_endian" : "binary_big_endian");
  Bytes data(GetParam());
  for (const float number : {0.f, 0.f, 0.f, 1.f, 0.f, 0.f, 0.f, 1.f, 0.f}) data.Add(number);
  data.Add(std::uint8_t{3}).Add(0).Add(1).Add(2);
  ASSERT_TRUE(ReadPly(header + data.Text()));
  for (std::size_t size = 0; size < data.Text().size(); ++size) {
    EXPECT_FALSE(ReadPly(header + data.Text().substr(0, size))) << size << " bytes";
  }
}

TEST(Ply, PrefersTheTextureCoordinatesOfFaces) {
  const auto mesh = ReadPly(Header("element vertex 3\n" + kVertex + "element face 1\n" + kFace +
                                   "property list uchar float texcoord\n") +
                            "0 0 0\n1 0 0\n0 1 0\n3 0 1 2 6 0.25 0.5 1 0 0 1\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_TRUE(Near(mesh->uvwSets[0].corners[0][0], {0.25f, 0.5f, 0}));
}

TEST(Ply, MayBeAPointCloud) {
  const auto mesh = ReadPly(Header("element vertex 2\n" + kVertex) + "1 2 3\n4 5 6\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_EQ(mesh->points.size(), 2u);
  EXPECT_TRUE(mesh->polygons.empty());
}

TEST(Ply, TakesWindowsLinesAndPlusSigns) {
  const auto mesh = ReadPly(
      "ply\r\nformat ascii 1.0\r\nelement vertex 1\r\nproperty float x\r\n"
      "property float y\r\nproperty float z\r\nend_header\r\n+1 2e0 -3.5\r\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_TRUE(Near(mesh->points[0], {1, 2, 3.5f}));
}

TEST(Ply, RefusesHeadersThatAreNone) {
  EXPECT_EQ(Error(""), "this is no PLY file");
  EXPECT_EQ(Error("plyometrics\n"), "this is no PLY file");
  EXPECT_EQ(Error("ply\nformat ascii 1.0\n"), "the header has no end");
  EXPECT_EQ(Error("ply\nend_header\n"), "the header names no format");
  EXPECT_EQ(Error(Header("", "ternary")), "line 2: unknown format");
  EXPECT_EQ(Error(Header("property float x\n")),
            "line 3: a property stands before the first element");
  EXPECT_EQ(Error(Header("element vertex -1\n")), "line 3: \"-1\" is no count");
  EXPECT_EQ(Error(Header("element vertex 1\nproperty quad x\n")), "line 4: unknown type \"quad\"");
  EXPECT_EQ(Error(Header("sphere\n")), "line 3: unknown header line \"sphere\"");
}

// Found by fuzzing: the points of the first list had no texture coordinates, those of the second
// did.
TEST(Ply, RefusesAnElementThatIsDeclaredTwice) {
  EXPECT_EQ(Error(Header("element vertex 1\n" + kVertex + "element vertex 2\n" + kVertex +
                         "property float s\nproperty float t\nelement face 1\n" + kFace) +
                  "0 0 0\n1 0 0 0 0\n0 1 0 0 1\n3 0 1 2\n"),
            "line 7: the element \"vertex\" is declared twice");
}

TEST(Ply, RefusesCountsBeyondTheFile) {
  for (const char* count : {"1000", "4000000000", "18446744073709551615"}) {
    const std::string vertices = std::string("element vertex ") + count + "\n" + kVertex;
    EXPECT_EQ(Error(Header(vertices) + "1 2 3\n"),
              std::string("the file is too short for ") + count + " items of \"vertex\"");
    EXPECT_NE(Error(Header(vertices, "binary_little_endian") + "123456789012"), "");
  }
  EXPECT_EQ(Error(Header("element vertex 99999999999999999999999\n" + kVertex)),
            "line 3: \"99999999999999999999999\" is no count");
}

TEST(Ply, StepsOverAnyNumberOfEmptyItems) {
  EXPECT_EQ(Error(Header("element nothing 18446744073709551615\nelement vertex 0\n" + kVertex)),
            "");
}

TEST(Ply, RefusesListsBeyondTheFile) {
  const std::string header = Header("element vertex 1\n" + kVertex + "element face 1\n" +
                                    "property list float int vertex_indices\n");
  EXPECT_NE(Error(header + "0 0 0\n1e30 0 0 0\n"), "");
  EXPECT_NE(Error(header + "0 0 0\ninf 0 0 0\n"), "");
}

TEST(Ply, TakesAListOfANegativeLengthAsEmpty) {
  const std::string header = Header("element vertex 1\n" + kVertex + "element face 1\n" +
                                    "property list char int vertex_indices\n");
  const auto mesh = ReadPly(header + "0 0 0\n-3\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_TRUE(mesh->polygons.empty());
}

TEST(Ply, RefusesIndicesThatAreNone) {
  const std::string header = Header("element vertex 3\n" + kVertex + "element face 1\n" +
                                    "property list uchar float vertex_indices\n") +
                             "0 0 0\n1 0 0\n0 1 0\n";
  for (const char* index : {"3", "-1", "0.5", "1e30", "nan"}) {
    EXPECT_NE(Error(header + "3 0 1 " + index + "\n"), "") << index;
  }
  EXPECT_EQ(Error(header + "3 0 1 2\n"), "");
}

TEST(Ply, RefusesPointsBeyondNumbers) {
  for (const char* x : {"1e39", "nan", "-inf", "word"}) {
    EXPECT_NE(Error(Header("element vertex 1\n" + kVertex) + x + " 0 0\n"), "") << x;
  }
}

TEST(Ply, RefusesVerticesWithoutPlacesAndFacesWithoutIndices) {
  EXPECT_EQ(Error(Header("element vertex 1\nproperty float x\n") + "1\n"),
            "vertices have no x, y and z");
  EXPECT_EQ(Error(Header("element face 1\nproperty float x\n") + "1\n"),
            "faces have no vertex_indices");
}

}  // namespace
}  // namespace sorvanix::host
