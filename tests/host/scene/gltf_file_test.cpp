// glTF files: triangles placed by their nodes, and everything that could point outside the file.
#include "host/scene/gltf_file.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tests/host/scene/vector_checks.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

std::string Base64(const std::string& bytes) {
  constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    unsigned value = 0;
    for (std::size_t j = 0; j < 3; ++j) {
      value = value << 8 | (i + j < bytes.size() ? static_cast<unsigned char>(bytes[i + j]) : 0u);
    }
    for (std::size_t j = 0; j < 4; ++j) {
      text += i + j <= bytes.size() ? digits[value >> (18 - 6 * j) & 63] : '=';
    }
  }
  return text;
}

template <class Value>
std::string BytesOf(const std::vector<Value>& values) {
  std::string bytes(values.size() * sizeof(Value), '\0');
  std::memcpy(bytes.data(), values.data(), bytes.size());
  return bytes;
}

/// One triangle that faces +z, with indices, normals and texture coordinates; each part of the file
/// can be replaced.
struct Triangle {
  std::string buffer = BytesOf<float>({0, 0, 0, 1, 0, 0, 0, 1, 0,  // points: 36 bytes
                                       0, 0, 1, 0, 0, 1, 0, 0, 1,  // normals: 36
                                       0, 0, 1, 0, 0, 1}) +        // texture coordinates: 24
                       BytesOf<std::uint16_t>({0, 1, 2, 0});       // indices and padding: 8
  std::string nodes = R"([ { "mesh": 0 } ])";
  std::string sceneNodes = "[0]";
  std::string pointAccessor =
      R"({ "bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3" })";
  std::string indexAccessor =
      R"({ "bufferView": 3, "componentType": 5123, "count": 3, "type": "SCALAR" })";
  std::string attributes = R"("POSITION": 0, "NORMAL": 1, "TEXCOORD_0": 2)";
  std::string more;  // of the primitive

  std::string Text() const {
    return R"({ "asset": { "version": "2.0" }, "scene": 0, "scenes": [ { "nodes": )" + sceneNodes +
           R"( } ], "nodes": )" + nodes + R"(, "buffers": [ { "byteLength": )" +
           std::to_string(buffer.size()) + R"(, "uri": "data:application/octet-stream;base64,)" +
           Base64(buffer) + R"(" } ],
      "bufferViews": [ { "buffer": 0, "byteOffset": 0, "byteLength": 36 },
                       { "buffer": 0, "byteOffset": 36, "byteLength": 36 },
                       { "buffer": 0, "byteOffset": 72, "byteLength": 24 },
                       { "buffer": 0, "byteOffset": 96, "byteLength": 6 } ],
      "accessors": [ )" +
           pointAccessor +
           R"(, { "bufferView": 1, "componentType": 5126, "count": 3, "type": "VEC3" },
              { "bufferView": 2, "componentType": 5126, "count": 3, "type": "VEC2" }, )" +
           indexAccessor + R"( ],
      "meshes": [ { "primitives": [ { "attributes": { )" +
           attributes + R"( }, "indices": 3 )" + more + R"( } ] } ] })";
  }
};

tl::expected<PolygonMesh, std::string> Read(const Triangle& triangle) {
  return ReadGltf(triangle.Text(), "model.gltf");
}

TEST(Gltf, ReadsATriangleThatFacesTheViewer) {
  const auto mesh = Read({});
  ASSERT_TRUE(mesh) << mesh.error();
  ASSERT_EQ(mesh->polygons.size(), 1u);
  EXPECT_LT(AreaVector(*mesh, mesh->polygons[0]).z, 0);
  EXPECT_TRUE(Near(mesh->normals[0][0], {0, 0, -1}));
}

TEST(Gltf, HasTextureCoordinatesDownwardsAlready) {
  const auto mesh = Read({});
  ASSERT_TRUE(mesh) << mesh.error();
  const std::int32_t corners[] = {mesh->polygons[0].a, mesh->polygons[0].b, mesh->polygons[0].c};
  for (std::size_t i = 0; i < 3; ++i) {
    const Vector& point = PointOf(*mesh, corners[i]);  // u is its x, v its y
    EXPECT_TRUE(Near(mesh->uvwSets[0].corners[0][i], {point.x, point.y, 0}));
  }
}

TEST(Gltf, PlacesMeshesByTheirNodes) {
  Triangle placed;
  // Moved by (10, 0, 5) after a turn of 90 degrees about y (0, sin 45, 0, cos 45), which takes x to
  // -z, after a scale of 2: (1, 0, 0) -> (2, 0, 0) -> (0, 0, -2) -> (10, 0, 3), and 3 becomes -3.
  placed.nodes = R"([ { "translation": [10, 0, 5], "children": [1] },
                      { "rotation": [0, 0.70710678, 0, 0.70710678], "scale": [2, 2, 2],
                        "mesh": 0 } ])";
  const auto mesh = Read(placed);
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_TRUE(Near(mesh->points[1], {10, 0, -3}, 1e-5));
}

TEST(Gltf, TakesMatricesByColumns) {
  Triangle placed;
  placed.nodes = R"([ { "matrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 4,5,6,1], "mesh": 0 } ])";
  const auto mesh = Read(placed);
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_TRUE(Near(mesh->points[0], {4, 5, -6}));
}

TEST(Gltf, KeepsMirroredMeshesRightSideOut) {
  Triangle mirrored;
  mirrored.nodes = R"([ { "scale": [-1, 1, 1], "mesh": 0 } ])";
  const auto mesh = Read(mirrored);
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_LT(AreaVector(*mesh, mesh->polygons[0]).z, 0);
  EXPECT_TRUE(Near(mesh->normals[0][0], {0, 0, -1}));
}

TEST(Gltf, KeepsNormalsUprightUnderUnevenScales) {
  Triangle sheared;
  // The triangle's plane is z = 0; scaled by (1, 1, 9) it stays there, and so does its normal.
  // Tilted first, the normal (0, 1, 1)/sqrt 2 under scale (1, 1, 2) becomes (0, 1, 1/2).
  sheared.buffer = BytesOf<float>({0, 0, 0, 1, 0, 0, 0, -1, 1,  //
                                   0, 1, 1, 0, 1, 1, 0, 1,  1,  //
                                   0, 0, 1, 0, 0, 1}) +
                   BytesOf<std::uint16_t>({0, 1, 2, 0});
  sheared.nodes = R"([ { "scale": [1, 1, 2], "mesh": 0 } ])";
  const auto mesh = Read(sheared);
  ASSERT_TRUE(mesh) << mesh.error();
  const float length = std::sqrt(1.25f);
  EXPECT_TRUE(Near(mesh->normals[0][0], {0, 1 / length, -0.5f / length}));
}

TEST(Gltf, ReadsStripsAndFans) {
  // Four points of a square; without indices two triangles, the same surface in both orders.
  Triangle square;
  square.buffer = BytesOf<float>({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0});
  square.pointAccessor =
      R"({ "bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3" })";
  square.attributes = R"("POSITION": 0)";
  std::string text = square.Text();
  const std::string view = R"("byteOffset": 0, "byteLength": 36)";
  for (const auto& [mode, polygons] : {std::pair{"5", 2u}, {"6", 2u}, {"4", 1u}, {"0", 0u}}) {
    std::string shaped = text;
    shaped.replace(shaped.find(view), view.size(), R"("byteOffset": 0, "byteLength": 48)");
    const std::string indices = R"("indices": 3)";
    shaped.replace(shaped.find(indices), indices.size(), std::string(R"("mode": )") + mode);
    const auto mesh = ReadGltf(shaped, "model.gltf");
    ASSERT_TRUE(mesh) << mesh.error();
    EXPECT_EQ(mesh->polygons.size(), polygons) << "mode " << mode;
    if (std::string(mode) == "5") {
      for (const PolygonRecord& polygon : mesh->polygons) {
        EXPECT_LT(AreaVector(*mesh, polygon).z, 0) << "every second one is turned round";
      }
    }
  }
}

TEST(Gltf, ReadsBuffersBesideTheFile) {
  const TemporaryFolder folder;
  Triangle triangle;
  folder.Write("triangle.bin", triangle.buffer);
  std::string text = triangle.Text();
  const std::size_t begin = text.find("data:"), end = text.find('"', begin);
  text.replace(begin, end - begin, "triangle.bin");
  const auto mesh = ReadGltf(text, folder.Path() / "model.gltf");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_EQ(mesh->polygons.size(), 1u);
}

TEST(Gltf, ReadsBinaryFiles) {
  Triangle triangle;
  std::string json = triangle.Text();
  const std::size_t begin = json.find(R"(, "uri")"), end = json.find('}', begin);
  json.erase(begin, end - begin);
  json.resize((json.size() + 3) / 4 * 4, ' ');
  const auto chunk = [](std::uint32_t type, const std::string& data) {
    return BytesOf<std::uint32_t>({static_cast<std::uint32_t>(data.size()), type}) + data;
  };
  const std::string chunks = chunk(0x4E4F534A, json) + chunk(0x004E4942, triangle.buffer);
  const std::string file =
      BytesOf<std::uint32_t>({0x46546C67, 2, static_cast<std::uint32_t>(chunks.size() + 12)}) +
      chunks;
  const auto mesh = ReadGltf(file, "model.glb");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_EQ(mesh->polygons.size(), 1u);
  for (std::size_t size = 0; size < file.size(); size += 7) {
    ReadGltf(file.substr(0, size), "model.glb");  // whatever it answers, it must return
  }
}

TEST(Gltf, RefusesWhatPointsOutsideTheFile) {
  const auto refused = [](auto change) {
    Triangle triangle;
    change(triangle);
    const auto mesh = Read(triangle);
    EXPECT_FALSE(mesh);
    return mesh ? "" : mesh.error();
  };
  const auto accessor = [](const std::string& count, const std::string& more = "") {
    return R"({ "bufferView": 0, "componentType": 5126, "count": )" + count + more +
           R"(, "type": "VEC3" })";
  };
  EXPECT_EQ(refused([&](Triangle& t) { t.pointAccessor = accessor("4"); }),
            "a buffer is too short");
  refused([&](Triangle& t) { t.pointAccessor = accessor("4611686018427387905"); });
  refused([&](Triangle& t) { t.pointAccessor = accessor("3", R"(, "byteOffset": 4)"); });
  refused(
      [&](Triangle& t) { t.pointAccessor = accessor("3", R"(, "byteOffset": 9007199254740991)"); });
  refused([](Triangle& t) { t.attributes = R"("POSITION": 99)"; });
  refused([](Triangle& t) { t.attributes = R"("POSITION": 2)"; });
  refused([](Triangle& t) { t.nodes = R"([ { "mesh": 5 } ])"; });
  refused([](Triangle& t) { t.sceneNodes = "[7]"; });
  refused([](Triangle& t) { t.buffer.replace(96, 2, BytesOf<std::uint16_t>({3})); });
}

TEST(Gltf, RefusesNodesThatContainThemselves) {
  Triangle circle;
  circle.nodes = R"([ { "children": [1], "mesh": 0 }, { "children": [0] } ])";
  const auto mesh = Read(circle);
  ASSERT_FALSE(mesh);
  EXPECT_EQ(mesh.error(), "a node has two parents");
}

TEST(Gltf, RefusesTextsThatAreNone) {
  for (const char* text : {"", "{", "[]", "null", "glTF", "{}", R"({ "asset": {} })"}) {
    const auto mesh = ReadGltf(text, "model.gltf");
    if (mesh) {
      EXPECT_TRUE(mesh->polygons.empty()) << text;
    } else {
      EXPECT_EQ(mesh.error().find('\n'), std::string::npos) << "one line";
    }
  }
}

TEST(Gltf, DoesNotReadDevices) {
  std::string text = Triangle().Text();
  const std::size_t begin = text.find("data:"), end = text.find('"', begin);
  text.replace(begin, end - begin, "../../../../../../dev/zero");
  EXPECT_FALSE(ReadGltf(text, "/tmp/model.gltf"));
}

}  // namespace
}  // namespace sorvanix::host
