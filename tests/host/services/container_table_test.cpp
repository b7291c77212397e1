#include "host/services/container_table.h"

#include <gtest/gtest.h>

#include "host/services/containers.h"
#include "tests/host/services/leak_check.h"

namespace sorvanix::host {
namespace {

class ContainerTableTest : public ::testing::Test {
 protected:
  ContainerTableTest() {
    InstallContainers(table);
    container = table.create(42);
  }
  ~ContainerTableTest() override { table.free(container); }

  LeakCheck leaks;
  ContainerTable table = {};
  HostContainer* container = nullptr;
};

TEST_F(ContainerTableTest, ANewContainerHasItsIdAndNoKeys) {
  EXPECT_EQ(table.id(container), 42);
  EXPECT_EQ(table.keyAt(container, 0), -1);
  EXPECT_EQ(table.find(container, 1000), -1);
}

TEST_F(ContainerTableTest, AWalkByIndexEndsAtMinusOne) {
  table.setInt(container, 1002, 5);
  table.setFloat(container, 1000, 0.5f);
  EXPECT_EQ(table.keyAt(container, 0), 1002);
  EXPECT_EQ(table.keyAt(container, 1), 1000);
  EXPECT_EQ(table.keyAt(container, 2), -1);
  EXPECT_EQ(table.keyAt(container, -1), -1);
  EXPECT_EQ(table.find(container, 1000), 1);
}

TEST_F(ContainerTableTest, EveryTypeComesBack) {
  Text text("noise");
  Filename filename("/a/b.png");
  Container nested(7);
  const Vector vector = {1, 2, 3};
  table.setBool(container, 1, 1);
  table.setInt(container, 2, -5);
  table.setFloat(container, 3, 0.5f);
  table.setVector(container, 4, &vector);
  table.setString(container, 5, text.Handle());
  table.setFilename(container, 6, filename.Handle());
  table.setContainer(container, 7, nested.Handle());

  EXPECT_EQ(table.getBool(container, 1, 0), 1);
  EXPECT_EQ(table.getInt(container, 2, 0), -5);
  EXPECT_EQ(table.getFloat(container, 3, 0), 0.5f);
  Vector found = {};
  table.getVector(container, 4, nullptr, &found);
  EXPECT_EQ(found.z, 3.0f);
  EXPECT_EQ(TextOf(table.getString(container, 5, nullptr)), "noise");
  EXPECT_EQ(PathOf(table.getFilename(container, 6, nullptr)), "/a/b.png");
  EXPECT_EQ(table.id(table.getContainer(container, 7, nullptr)), 7);
}

TEST_F(ContainerTableTest, SettersCopyTheirValue) {
  Text text("before");
  Container nested;
  table.setString(container, 1, text.Handle());
  table.setContainer(container, 2, nested.Handle());
  text.text = "after";
  nested.Set(1, true);
  EXPECT_EQ(TextOf(table.getString(container, 1, nullptr)), "before");
  EXPECT_EQ(table.keyAt(table.getContainer(container, 2, nullptr), 0), -1);
}

// Any nonzero word is true; a default goes back as it came.
TEST_F(ContainerTableTest, ATruthIsZeroOrOne) {
  table.setBool(container, 1, 256);
  table.setFloat(container, 2, 0.5f);
  EXPECT_EQ(table.getBool(container, 1, 0), 1);
  EXPECT_EQ(table.getBool(container, 2, 0), 1);
  EXPECT_EQ(table.getBool(container, 3, 5), 5);
  const Vector vector = {};
  table.setVector(container, 4, &vector);
  EXPECT_EQ(table.getBool(container, 4, 5), 5);
}

TEST_F(ContainerTableTest, AVectorThatIsNotThereIsTheDefaultOrZero) {
  const Vector fallback = {7, 8, 9};
  Vector found = {1, 1, 1};
  table.getVector(container, 1, &fallback, &found);
  EXPECT_EQ(found.y, 8.0f);
  table.getVector(container, 1, nullptr, &found);
  EXPECT_EQ(found.y, 0.0f);
  table.getVector(container, 1, &fallback, nullptr);
}

TEST_F(ContainerTableTest, ACloneIsDeepAndStandsAlone) {
  Container nested(7);
  table.setContainer(container, 1, nested.Handle());
  HostContainer* clone = table.clone(container);
  table.setInt(table.getContainer(container, 1, nullptr), 5, 5);
  EXPECT_EQ(table.id(clone), 42);
  EXPECT_EQ(table.keyAt(table.getContainer(clone, 1, nullptr), 0), -1);
  table.free(clone);
}

TEST_F(ContainerTableTest, CopyingReplacesTheContents) {
  HostContainer* destination = table.create(1);
  table.setInt(destination, 9, 9);
  table.setInt(container, 5, 5);
  table.copyTo(container, destination);
  EXPECT_EQ(table.getInt(destination, 5, 0), 5);
  EXPECT_EQ(table.find(destination, 9), -1);
  table.copyTo(destination, destination);
  EXPECT_EQ(table.getInt(destination, 5, 0), 5);
  table.free(destination);
}

TEST_F(ContainerTableTest, AContainerCanBePutIntoItself) {
  table.setInt(container, 5, 5);
  table.setContainer(container, 6, container);
  HostContainer* inner = table.getContainer(container, 6, nullptr);
  EXPECT_EQ(table.getInt(inner, 5, 0), 5);
  EXPECT_EQ(table.find(inner, 6), -1);
}

TEST_F(ContainerTableTest, ATextOfTheContainerCanBeSetAgainUnderItsOwnKey) {
  Text text("a text that is too long for the room inside a string object");
  table.setString(container, 1, text.Handle());
  table.setString(container, 1, table.getString(container, 1, nullptr));
  EXPECT_EQ(TextOf(table.getString(container, 1, nullptr)), text.text);
}

TEST_F(ContainerTableTest, ANullContainerIsAnsweredNeutrally) {
  Text text("default");
  Filename filename("default");
  Container nested;
  Vector vector = {1, 2, 3};
  EXPECT_EQ(table.clone(nullptr), nullptr);
  table.free(nullptr);
  table.copyTo(nullptr, container);
  table.copyTo(container, nullptr);
  EXPECT_EQ(table.id(nullptr), 0);
  EXPECT_EQ(table.find(nullptr, 1), -1);
  EXPECT_EQ(table.keyAt(nullptr, 0), -1);
  EXPECT_EQ(table.getBool(nullptr, 1, 1), 1);
  EXPECT_EQ(table.getInt(nullptr, 1, 2), 2);
  EXPECT_EQ(table.getFloat(nullptr, 1, 3), 3.0f);
  Vector found = {};
  table.getVector(nullptr, 1, &vector, &found);
  EXPECT_EQ(found.x, 1.0f);
  EXPECT_EQ(table.getString(nullptr, 1, text.Handle()), text.Handle());
  EXPECT_EQ(table.getFilename(nullptr, 1, filename.Handle()), filename.Handle());
  EXPECT_EQ(table.getContainer(nullptr, 1, nested.Handle()), nested.Handle());
  table.setBool(nullptr, 1, 1);
  table.setInt(nullptr, 1, 1);
  table.setFloat(nullptr, 1, 1);
  table.setVector(nullptr, 1, &vector);
  table.setString(nullptr, 1, text.Handle());
  table.setFilename(nullptr, 1, filename.Handle());
  table.setContainer(nullptr, 1, nested.Handle());
}

TEST_F(ContainerTableTest, ANullValueSetsNothing) {
  table.setInt(container, 1, 5);
  table.setVector(container, 1, nullptr);
  table.setString(container, 1, nullptr);
  table.setFilename(container, 1, nullptr);
  table.setContainer(container, 1, nullptr);
  EXPECT_EQ(table.getInt(container, 1, 0), 5);
}

TEST_F(ContainerTableTest, AnObjectThatIsNotThereIsTheDefaultGiven) {
  Text text("default");
  EXPECT_EQ(table.getString(container, 1, text.Handle()), text.Handle());
  table.setInt(container, 1, 5);
  EXPECT_EQ(table.getString(container, 1, text.Handle()), text.Handle());
  EXPECT_EQ(table.getString(container, 1, nullptr), nullptr);
}

TEST_F(ContainerTableTest, AShortMemoryAnswersNullOrChangesNothing) {
  Container nested(7);
  nested.Set(1, NestedContainer(Container(8)));
  table.setContainer(container, 1, nested.Handle());
  table.setInt(container, 2, 2);
  // The clone itself, the container in it, and the one in that.
  EXPECT_EQ(WithEveryAllocationFailing([&] { table.free(table.clone(container)); }), 3);
  EXPECT_EQ(WithEveryAllocationFailing([&] { table.free(table.create(1)); }), 1);
  const AllocationFailure failure(2);
  table.setContainer(container, 2, nested.Handle());
  EXPECT_EQ(table.getInt(container, 2, 0), 2);
}

}  // namespace
}  // namespace sorvanix::host
