// Mesh files by their extensions, and the one line that an error is.
#include "host/scene/mesh_files.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "host/scene/obj_file.h"
#include "host/scene/ply_file.h"
#include "tests/host/scene/vector_checks.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

constexpr const char* kObj = "v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvn 0 0 1\nf 1/1/1 2/1/1 3/1/1\n";
constexpr const char* kPly =
    "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
    "property float z\nelement face 1\nproperty list uchar int vertex_indices\nend_header\n"
    "0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n";

TEST(MeshFiles, GoByTheExtension) {
  const TemporaryFolder folder;
  for (const auto& [name, text] : {std::pair{"a.obj", kObj},
                                   {"b.OBJ", kObj},
                                   {"c.ply", kPly},
                                   {"mit Umläuten ü/d.ply", kPly}}) {
    const auto mesh = ReadMeshFile(folder.Write(name, text));
    ASSERT_TRUE(mesh) << mesh.error();
    EXPECT_EQ(mesh->polygons.size(), 1u) << name;
  }
}

TEST(MeshFiles, NameThemselvesInErrors) {
  const TemporaryFolder folder;
  const auto error = [&](const std::filesystem::path& file) {
    const auto mesh = ReadMeshFile(file);
    return mesh ? "" : mesh.error().substr(folder.Path().string().size() + 1);
  };
  EXPECT_EQ(error(folder.Path() / "none.obj"), "none.obj: there is no such file");
  EXPECT_EQ(error(folder.Path() / "."),
            ".: unknown kind of mesh; .obj, .ply, .gltf and .glb are known");
  EXPECT_EQ(error(folder.Write("a.stl", "solid")),
            "a.stl: unknown kind of mesh; .obj, .ply, .gltf and .glb are known");
  EXPECT_EQ(error(folder.Write("a.ply", "solid")), "a.ply: this is no PLY file");
  std::filesystem::create_directory(folder.Path() / "folder.obj");
  EXPECT_EQ(error(folder.Path() / "folder.obj"), "folder.obj: there is no such file");
}

TEST(MeshFiles, DoNotReadDevices) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("/dev/zero", folder.Path() / "endless.ply");
  EXPECT_FALSE(ReadMeshFile(folder.Path() / "endless.ply"));
}

/// The text with a few bytes changed, left out or repeated.
std::string Damaged(std::string text, std::mt19937& random) {
  for (int i = 0; i < 3 && !text.empty(); ++i) {
    const std::size_t place = random() % text.size(), length = random() % 6;
    switch (random() % 3) {
      case 0:
        text[place] = static_cast<char>(random());
        break;
      case 1:
        text.erase(place, length);
        break;
      default:
        text.insert(place, text.substr(random() % text.size(), length));
    }
  }
  return text;
}

// Any answer is right that leaves a sound mesh.
TEST(MeshFiles, SurviveDamage) {
  std::mt19937 random(7);
  const auto damage = [&](const char* text, auto read) {
    for (int round = 0; round < 10000; ++round) {
      const auto mesh = read(Damaged(text, random));
      if (!mesh) continue;
      for (const PolygonRecord& p : mesh->polygons) EXPECT_GE(AreaOf(*mesh, p), 0);  // at() throws
      EXPECT_TRUE(mesh->normals.empty() || mesh->normals.size() == mesh->polygons.size());
    }
  };
  damage(kObj, ReadObj);
  damage(kPly, ReadPly);
}

}  // namespace
}  // namespace sorvanix::host
