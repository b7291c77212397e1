// The points that Proximal finds in a scene, worked out by hand.
#include "module/shaders/surface/proximal_targets.h"

#include "module/shell/module_state.h"
#include "tests/support/fake_scene.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

struct Target {
  Vector point;
  float weight = 100;
};

struct TargetsTest : ::testing::Test {
  FakeHost host;
  FakeScene scene;
  std::string sought = "Lamp";
  ProximalBlock block = {};

  TargetsTest() {
    hostApi = host.api;
    block.objectName = reinterpret_cast<HostString*>(&sought);  // any text is one of the fake host
  }
  ~TargetsTest() override {
    EXPECT_EQ(host.liveBlocks(), 0);
    EXPECT_EQ(LivePolygonisedObjects(), 0);
    hostApi = HostApi{};
  }

  FakeObject& AddAt(const std::string& name, const Vector& position, FakeObject* parent = nullptr) {
    FakeObject& object = scene.Add(name, parent);
    object.matrix.off = position;
    return object;
  }
  /// A mesh of these vertices that stands at (10, 0, 0) and is twice as large.
  FakeObject& AddMesh(const std::vector<Vector>& points) {
    FakeObject& mesh = AddAt("Lamp", {10, 0, 0});
    mesh.matrix.v1 = {2, 0, 0};
    mesh.matrix.v2 = {0, 2, 0};
    mesh.matrix.v3 = {0, 0, 2};
    mesh.infoFlags = ObjectHasGeometry;
    mesh.points = points;
    return mesh;
  }
  FakeObject& AddParticles(const std::vector<ParticleRecord>& particles,
                           FakeObject* parent = nullptr) {
    FakeObject& object = AddAt("Lamp", {5, 5, 5}, parent);
    object.type = ObjectTypeParticles;
    object.particles = particles;
    return object;
  }
  std::vector<Target> Collected() {
    ProximalTargets* targets = CollectTargets(block, scene.handle());
    std::vector<Target> found;
    if (targets == nullptr) return found;
    for (std::int32_t i = 0; i < targets->count; ++i) {
      found.push_back({targets->points[i], targets->weights[i]});
    }
    FreeTargets(targets);
    return found;
  }
  void ExpectCollected(const std::vector<Target>& expected) {
    const std::vector<Target> found = Collected();
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
      ExpectVector(found[i].point, expected[i].point);
      EXPECT_NEAR(found[i].weight, expected[i].weight, 1e-5);
    }
  }
};

// --- the walk ---

// Depth first, siblings in their order.
TEST_F(TargetsTest, EveryObjectOfTheNameGivesItsPosition) {
  FakeObject& room = AddAt("Room", {1, 0, 0});
  FakeObject& desk = AddAt("Desk", {2, 0, 0}, &room);
  AddAt("Lamp", {3, 1, 2}, &desk);
  AddAt("Lamp", {4, 0, 0}, &room);
  AddAt("Lamp", {5, 0, 0});
  AddAt("Lamps", {6, 0, 0});
  ExpectCollected({{{3, 1, 2}}, {{4, 0, 0}}, {{5, 0, 0}}});
}

TEST_F(TargetsTest, BelowAMatchNothingIsSought) {
  FakeObject& lamp = AddAt("Lamp", {1, 0, 0});
  AddAt("Lamp", {2, 0, 0}, &lamp);
  AddAt("Lamp", {3, 0, 0});
  ExpectCollected({{{1, 0, 0}}, {{3, 0, 0}}});
}

TEST_F(TargetsTest, ANameThatNoObjectBearsFindsNothing) {
  AddAt("Candle", {1, 0, 0});
  AddAt("", {2, 0, 0});
  ExpectCollected({});
}

TEST_F(TargetsTest, AnEmptyNameFindsNotEvenANamelessObject) {
  AddAt("", {1, 0, 0});
  sought.clear();
  ExpectCollected({});
  block.objectName = nullptr;
  ExpectCollected({});
}

TEST_F(TargetsTest, AnEmptySceneFindsNothing) { ExpectCollected({}); }

// The children that stand in for the match, of any name, without their own children; the walk goes
// on behind the match.
TEST_F(TargetsTest, UseChildrenTakesTheDirectChildren) {
  block.useChildren = 1;
  FakeObject& lamp = AddAt("Lamp", {1, 0, 0});
  FakeObject& foot = AddAt("Foot", {2, 0, 0}, &lamp);
  AddAt("Screw", {3, 0, 0}, &foot);
  AddAt("Bulb", {4, 0, 0}, &lamp);
  AddAt("Desk", {5, 0, 0});
  FakeObject& other = AddAt("Lamp", {6, 0, 0});
  AddAt("Lamp", {7, 0, 0}, &other);
  ExpectCollected({{{2, 0, 0}}, {{4, 0, 0}}, {{7, 0, 0}}});
}

TEST_F(TargetsTest, AMatchWithoutChildrenGivesNothingThen) {
  block.useChildren = 1;
  AddAt("Lamp", {1, 0, 0});
  ExpectCollected({});
}

TEST_F(TargetsTest, AChainOfObjectsBeyondAllMeasureDoesNotExhaustTheStack) {
  FakeObject* parent = &AddAt("Room", {});
  for (int level = 0; level < 30000; ++level) parent = &AddAt("Room", {}, parent);
  AddAt("Lamp", {1, 0, 0}, parent);
  AddAt("Lamp", {2, 0, 0});
  ExpectCollected({{{2, 0, 0}}});
}

// --- geometry ---

TEST_F(TargetsTest, WithoutUseGeometryAMeshGivesItsPosition) {
  AddMesh({{1, 0, 0}, {0, 1, 0}});
  ExpectCollected({{{10, 0, 0}}});
  block.useFaces = 1;
  ExpectCollected({{{10, 0, 0}}});  // faces are a way to take the geometry
}

TEST_F(TargetsTest, AnObjectWithoutGeometryGivesItsPosition) {
  block.useGeometry = 1;
  AddMesh({{1, 0, 0}}).infoFlags = ~ObjectHasGeometry;
  ExpectCollected({{{10, 0, 0}}});
}

// (1, 2, 3) x 2 + (10, 0, 0).
TEST_F(TargetsTest, AMeshGivesItsVerticesInWorldSpace) {
  block.useGeometry = 1;
  AddMesh({{1, 2, 3}, {0, -1, 0}});
  ExpectCollected({{{12, 4, 6}}, {{10, -2, 0}}});
}

TEST_F(TargetsTest, AMeshWithoutVerticesGivesItsPosition) {
  block.useGeometry = 1;
  AddMesh({});
  ExpectCollected({{{10, 0, 0}}});
  block.useFaces = 1;
  ExpectCollected({});
}

TEST_F(TargetsTest, APrimitiveIsMadeOfPolygonsFirst) {
  block.useGeometry = 1;
  FakeObject& primitive = AddMesh({{9, 9, 9}});
  primitive.infoFlags |= ObjectNeedsPolygonise;
  primitive.polygonised = {{1, 2, 3}, {0, 0, 1}};
  ExpectCollected({{{12, 4, 6}}, {{10, 0, 2}}});
  block.useFaces = 1;
  ExpectCollected({{{12, 4, 6}}, {{10, 0, 2}}});  // its vertices all the same
}

TEST_F(TargetsTest, APrimitiveThatCannotBeMadeOfPolygonsGivesNothing) {
  block.useGeometry = 1;
  AddMesh({{9, 9, 9}}).infoFlags |= ObjectNeedsPolygonise;
  ExpectCollected({});
}

// A square with a side of 2, twice as large: the centre (12, 2, 0), its corners 2 sqrt 2 away.
TEST_F(TargetsTest, FacesGiveTheirCentresAndReachToTheirCorners) {
  block.useGeometry = block.useFaces = 1;
  FakeObject& mesh = AddMesh({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}});
  mesh.polygons = {{0, 1, 2, 3}};
  ExpectCollected({{{12, 2, 0}, 2.8284271f}});
}

// The triangle (0,0,0), (4,0,0), (0,4,0), twice as large: (0 + 8 + 0 + 0) / 4 = 2 and
// (0 + 0 + 8 + 8) / 4 = 4 beside (10, 0, 0). The farthest corner is (8, 0): (6, -4), sqrt 52.
TEST_F(TargetsTest, ATriangleLeansTowardsItsLastCorner) {
  block.useGeometry = block.useFaces = 1;
  AddMesh({{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}).polygons = {{0, 1, 2, 2}};
  ExpectCollected({{{12, 4, 0}, 7.2111026f}});
}

TEST_F(TargetsTest, FacesWithCornersThatDoNotExistAreSkipped) {
  block.useGeometry = block.useFaces = 1;
  FakeObject& mesh = AddMesh({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}});
  mesh.polygons = {
      {0, 1, 2, 4}, {-1, 1, 2, 3}, {0, INT32_MAX, 2, 3}, {0, 1, INT32_MIN, 3}, {0, 1, 2, 3}};
  ExpectCollected({{{12, 2, 0}, 2.8284271f}});
}

// --- particles ---

// Only those with both flags; the object's own position does not count.
TEST_F(TargetsTest, ParticlesThatAreVisibleAndAliveGiveTheirPositions) {
  AddParticles({{{1, 0, 0}, 3}, {{2, 0, 0}, 1}, {{3, 0, 0}, 2}, {{4, 0, 0}, 0}, {{5, 0, 0}, 7}});
  ExpectCollected({{{1, 0, 0}}, {{5, 0, 0}}});
}

// Room for the four with either flag, 4 x 12 and 4 x 4 bytes, is made before two are taken.
TEST_F(TargetsTest, ParticlesWithOneFlagAreCountedThoughNotTaken) {
  AddParticles({{{1, 0, 0}, 3}, {{2, 0, 0}, 1}, {{3, 0, 0}, 2}, {{4, 0, 0}, 0}, {{5, 0, 0}, 7}});
  host.calls.clear();
  EXPECT_EQ(Collected().size(), 2u);
  ASSERT_GE(host.calls.size(), 3u);
  EXPECT_EQ(host.calls[1], "alloc(48)");
  EXPECT_EQ(host.calls[2], "alloc(16)");
}

TEST_F(TargetsTest, ParticlesAreTakenAlsoWhereChildrenAreAskedFor) {
  block.useChildren = 1;
  FakeObject& particles = AddParticles({{{1, 0, 0}, 3}});
  AddAt("Child", {9, 0, 0}, &particles);
  FakeObject& group = AddAt("Lamp", {0, 0, 0});
  AddParticles({{{2, 0, 0}, 3}}, &group);
  ExpectCollected({{{1, 0, 0}}, {{2, 0, 0}}});
}

TEST_F(TargetsTest, AnEmptyParticleObjectGivesNothing) {
  AddParticles({});
  ExpectCollected({});
}

// --- memory ---

// Six points: the list itself, then room for 1, 2, 4, 8 points, two arrays each: nine allocations.
// A failure of the first gives no list; a later one what was found before it.
TEST_F(TargetsTest, EveryFailedAllocationEndsTheCollectionWithWhatItHas) {
  for (int i = 0; i < 6; ++i) AddAt("Lamp", {static_cast<float>(i), 0, 0});
  const std::size_t expected[] = {0, 0, 0, 1, 1, 2, 2, 4, 4, 6};
  for (std::size_t k = 0; k < std::size(expected); ++k) {
    host.failAllocation = static_cast<int>(k) + 1;
    EXPECT_EQ(Collected().size(), expected[k]) << k;
    EXPECT_EQ(host.liveBlocks(), 0) << k;
    host.failAllocation = 0;
  }
}

TEST_F(TargetsTest, AFailureInTheMiddleOfAPrimitiveFreesItsPolygons) {
  block.useGeometry = 1;
  FakeObject& primitive = AddMesh({});
  primitive.infoFlags |= ObjectNeedsPolygonise;
  primitive.polygonised = {{1, 2, 3}, {0, 0, 1}};
  AddAt("Lamp", {1, 0, 0});
  host.failAllocation = 4;  // the points of the second growth
  EXPECT_EQ(Collected().size(), 1u);
  EXPECT_EQ(LivePolygonisedObjects(), 0);
}

}  // namespace
}  // namespace sorvanix::test
