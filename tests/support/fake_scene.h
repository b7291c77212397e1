// A scene for tests: objects in a tree, with points, polygons and particles, as a host serves them.
#pragma once

#include <sorvanix/host_api.h>

#include <deque>
#include <string>
#include <vector>

namespace sorvanix::test {

struct FakeObject;

struct FakeTag {
  std::int32_t type;
  const FakeObject* object;
};

/// One object. Flags tell what the host says of it, whatever it holds.
struct FakeObject {
  std::string name;
  std::int32_t type = 0;
  std::int32_t infoFlags = 0;
  Matrix matrix = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  std::vector<Vector> points = {};
  std::vector<PolygonRecord> polygons = {};
  std::vector<ParticleRecord> particles = {};
  std::vector<Vector> polygonised = {};  ///< the points that polygonise makes; empty: it fails

  FakeObject* next = nullptr;
  FakeObject* down = nullptr;
  FakeTag tags[3] = {{TagTypePoints, this}, {TagTypePolygons, this}, {TagTypeParticles, this}};

  explicit FakeObject(std::string itsName) : name(std::move(itsName)) {}
  FakeObject(const FakeObject&) = delete;
  FakeObject& operator=(const FakeObject&) = delete;
};

/// Owns its objects; lives as long as the render.
class FakeScene {
 public:
  /// Puts an object behind its siblings: below a parent, or at the top.
  FakeObject& Add(std::string name, FakeObject* parent = nullptr);
  HostDocument* handle() { return reinterpret_cast<HostDocument*>(this); }
  FakeObject* first = nullptr;

 private:
  std::deque<FakeObject> objects_;
};

const ObjectTable& FakeObjectTable();
const DocumentTable& FakeDocumentTable();

/// How many objects made by polygonise were not freed.
int LivePolygonisedObjects();

}  // namespace sorvanix::test
