// Every version's files: for each marker in a shader's history a stream as that version stored it,
// with the block that it makes. tests/corpus holds them, written by hand from the told orders.
//
// A field that a file does not name must keep the value of Alloc. Values differ from place to
// place, and switches follow the binary digits of their number over the cases of a file, so that no
// two places can be swapped unseen.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>

#include "module/kit/ramp.h"
#include "module/shell/block.h"
#include "module/shell/module_state.h"
#include "module/shell/registry.h"
#include "tests/support/fake_host.h"

namespace sorvanix::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

fs::path CorpusFolder() { return fs::path(SORVANIX_SOURCE_FOLDER) / "tests" / "corpus"; }

const std::vector<fs::path>& CorpusFiles() {
  static const std::vector<fs::path> files = [] {
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(CorpusFolder())) {
      if (entry.path().extension() == ".json") found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
  }();
  return files;
}

const RegistryRow& RowOf(const std::string& name) {
  for (const RegistryRow& row : ShaderRegistry()) {
    if (name == row.table->name) return row;
  }
  throw std::runtime_error("no shader " + name);
}

Vector VectorOf(const json& value) { return {value.at(0), value.at(1), value.at(2)}; }
Matrix MatrixOf(const json& value) {
  return {VectorOf(value.at(0)), VectorOf(value.at(1)), VectorOf(value.at(2)),
          VectorOf(value.at(3))};
}

StreamValue ValueOf(const json& tagged) {
  const std::string tag = tagged.begin().key();
  const json& value = tagged.begin().value();
  if (tag == "int") return StreamValue::Int(value);
  if (tag == "float") return StreamValue::Float(value);
  if (tag == "bool") return StreamValue::Bool(value);
  if (tag == "vector") return StreamValue::Vec(value.at(0), value.at(1), value.at(2));
  if (tag == "matrix") return StreamValue::Mat(MatrixOf(value));
  if (tag == "string") return StreamValue::String(value);
  if (tag == "link") return StreamValue::Link(value.at("bitmap"));
  throw std::runtime_error("no value " + tag);
}

// What a field of a block holds, spelled as the corpus spells it.
json JsonOf(const Vector& v) { return json::array({v.x, v.y, v.z}); }
json FieldOf(const void* block, const Field& field) {
  switch (field.kind) {
    case ValueKind::Int:
      return MemberAt<std::int32_t>(block, field.offset);
    case ValueKind::Bool:
      return MemberAt<std::int32_t>(block, field.offset) != 0;
    case ValueKind::Float:
      return MemberAt<float>(block, field.offset);
    case ValueKind::Vector:
      return JsonOf(MemberAt<Vector>(block, field.offset));
    case ValueKind::String:
      return FakeTextOf(MemberAt<const HostString*>(block, field.offset));
    case ValueKind::Link:
      return ScriptedLink::Of(MemberAt<ChannelLink*>(block, field.offset)).content.name;
    case ValueKind::Matrix: {
      const Matrix& matrix = MemberAt<Matrix>(block, field.offset);
      return json::array(
          {JsonOf(matrix.off), JsonOf(matrix.v1), JsonOf(matrix.v2), JsonOf(matrix.v3)});
    }
    default:
      throw std::runtime_error("a part of a ramp is no field");
  }
}

// All fields under their names, and the ramp's live knots and order.
json BlockOf(const ShaderTable& table, const void* block) {
  json told = json::object();
  for (const Field& field : table.fields) told[field.name] = FieldOf(block, field);
  if (!table.ramp.given()) return told;
  const Ramp& ramp = MemberAt<Ramp>(block, table.ramp.offset);
  for (std::int32_t i = 0; i < LiveKnots(ramp.count); ++i) {
    const RampKnot& knot = ramp.knots[i];
    told["knots"].push_back(json::array({JsonOf(knot.colour), knot.position, knot.bias}));
    told["order"].push_back(ramp.order[i]);
  }
  return told;
}

struct CorpusTest : ::testing::TestWithParam<fs::path> {
  FakeHost host;
  CorpusTest() { hostApi = host.api; }
  ~CorpusTest() override { hostApi = {}; }
};

std::string NameOf(const fs::path& file) {
  return file.parent_path().filename().string() + "_" + file.stem().string();
}

INSTANTIATE_TEST_SUITE_P(AllFiles, CorpusTest, ::testing::ValuesIn(CorpusFiles()),
                         [](const auto& info) { return "Of_" + NameOf(info.param); });

TEST_P(CorpusTest, IsReadAsTold) {
  const json file = json::parse(std::ifstream(GetParam()));
  const RegistryRow& row = RowOf(file.at("shader"));
  ShaderRecord record = {};
  row.fill(&record);
  for (const json& version : file.at("cases")) {
    ShaderInstance instance = {};
    ASSERT_EQ(record.Alloc(&instance), 1);
    json expected = BlockOf(*row.table, instance.data);
    for (const auto& [name, value] : version.at("block").items()) {
      EXPECT_TRUE(expected.contains(name)) << "no field " << name;
      expected[name] = value;
    }

    FakeStream stream;
    for (const json& value : version.at("stream")) stream.values.push_back(ValueOf(value));
    const std::size_t end = stream.values.size();
    stream.values.push_back(StreamValue::Int(4711));  // of the next object
    EXPECT_EQ(record.Read(&instance, stream.handle()), file.value("answer", 1));
    EXPECT_EQ(stream.mismatches, 0);
    EXPECT_EQ(stream.position, end);

    const json actual = BlockOf(*row.table, instance.data);
    EXPECT_EQ(actual, expected) << json::diff(expected, actual).dump(2);
    record.Free(&instance);
  }
}

// Each file's name is its marker, and what today's program writes has a file.
TEST(CorpusFilesTest, HoldEveryShaderWithTodaysMarker) {
  std::set<std::string> names;
  for (const fs::path& file : CorpusFiles()) {
    const json content = json::parse(std::ifstream(file));
    for (const json& version : content.at("cases")) {
      EXPECT_EQ(std::to_string(version.at("stream").at(0).at("int").get<int>()), file.stem());
    }
    names.insert(content.at("shader").get<std::string>() + " " + file.stem().string());
  }
  for (const RegistryRow& row : ShaderRegistry()) {
    if (row.pluginId == PluginIdBuffy) continue;  // stores nothing
    EXPECT_TRUE(names.contains(row.table->name + (" " + std::to_string(row.table->marker))))
        << row.table->name;
  }
}

}  // namespace
}  // namespace sorvanix::test
