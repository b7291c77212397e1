// Mesh files by their extensions, and the one line that an error is.
#include "host/scene/mesh_files.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

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

// Bytes changed, left out or repeated at random: any answer is right that leaves a sound mesh.
TEST(MeshFiles, SurviveDamage) {
  const TemporaryFolder folder;
  std::mt19937 random(7);
  for (const auto& [name, text] : {std::pair{"a.obj", kObj}, {"a.ply", kPly}}) {
    for (int round = 0; round < 2000; ++round) {
      std::string damaged = text;
      for (int i = 0; i < 3; ++i) {
        const std::size_t place = random() % damaged.size();
        const std::size_t length = random() % 6;
        switch (random() % 3) {
          case 0:
            damaged[place] = static_cast<char>(random());
            break;
          case 1:
            damaged.erase(place, length);
            break;
          default:
            damaged.insert(place, damaged.substr(random() % damaged.size(), length));
        }
        if (damaged.empty()) damaged = "v";
      }
      const auto mesh = ReadMeshFile(folder.Write(name, damaged));
      if (!mesh) continue;
      for (const PolygonRecord& p : mesh->polygons) EXPECT_GE(AreaOf(*mesh, p), 0);  // at() throws
      EXPECT_TRUE(mesh->normals.empty() || mesh->normals.size() == mesh->polygons.size());
    }
  }
}

}  // namespace
}  // namespace sorvanix::host
