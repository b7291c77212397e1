// The rows of the layout say all of each record, and docs/records.md shows them.
//
// Run with SORVANIX_UPDATE_RECORDS=1 to write the document's tables anew.
#include <gtest/gtest.h>
#include <sorvanix/host_api.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "module/noise/tables.h"
#include "module/shaders/filters/bright_contrast.h"
#include "module/shaders/filters/colorizer.h"
#include "module/shaders/filters/distorter.h"
#include "module/shaders/filters/fusion.h"
#include "module/shaders/filters/hue.h"
#include "module/shaders/filters/posterizer.h"
#include "module/shaders/generators/gradient.h"
#include "module/shaders/generators/noise_2d.h"
#include "module/shaders/generators/noise_3d.h"
#include "module/shaders/generators/tiles.h"
#include "module/shaders/surface/banj.h"
#include "module/shaders/surface/falloff.h"
#include "module/shaders/surface/fresnel.h"
#include "module/shaders/surface/lumas.h"
#include "module/shaders/surface/projector.h"
#include "module/shaders/surface/proximal.h"

namespace sorvanix {
namespace {

struct FieldRow {
  std::string name;
  std::size_t on32, on64;    // told offsets
  std::size_t offset, size;  // of this build
};

struct RecordRow {
  std::string name;
  std::size_t on32, on64;  // told sizes; on64 is 0 where only 32-bit builds have one
  std::size_t size;        // of this build
  std::vector<FieldRow> fields;

  /// How many bytes a field takes on 32-bit builds, by the told numbers.
  std::size_t Width(std::size_t field) const {
    return (field + 1 < fields.size() ? fields[field + 1].on32 : on32) - fields[field].on32;
  }
};

using Records = std::vector<RecordRow>;

Records ContractRecords() {
  Records rows;
#define SORVANIX_RECORD(record, on32, on64) \
  rows.push_back({#record, on32, on64, sizeof(record), {}});
#define SORVANIX_FIELD(record, field, on32, on64) \
  rows.back().fields.push_back(                   \
      {#field, on32, on64, offsetof(record, field), sizeof(record::field)});
#include <sorvanix/record_rows.h>
#undef SORVANIX_FIELD
#undef SORVANIX_RECORD
  return rows;
}

Records BlockRecords() {
  Records rows;
  constexpr std::size_t EveryBuild = 4, On32Bits = 0;  // told bytes of a word on 64 bits
#define BLOCK(record, words, builds) \
  rows.push_back({#record, 4 * (words), (builds) * (words), sizeof(record), {}});
#define WORD(record, field, word) \
  rows.back().fields.push_back(   \
      {#field, 4 * (word), 4 * (word), offsetof(record, field), sizeof(record::field)});
#include "module/shaders/block_rows.h"
#undef WORD
#undef BLOCK
  return rows;
}

// --- the rows ---

class RecordsTest : public ::testing::TestWithParam<RecordRow> {};

// On 32-bit builds no record has a hole: each field begins where the one before ends. So no row is
// missing, and every told width is that of the field.
TEST_P(RecordsTest, RowsLeaveNoGap) {
  const RecordRow& record = GetParam();
  ASSERT_FALSE(record.fields.empty());
  EXPECT_EQ(record.fields.front().on32, 0u);
  for (std::size_t i = 0; i < record.fields.size(); ++i) {
    SCOPED_TRACE(record.name + "::" + record.fields[i].name);
    if (sizeof(void*) == 4) {
      EXPECT_EQ(record.fields[i].offset, record.fields[i].on32);
      EXPECT_EQ(record.fields[i].size, record.Width(i));
    } else {
      EXPECT_GE(record.fields[i].size, record.Width(i)) << "a handle may be wider, nothing smaller";
    }
  }
}

// With wider pointers the order stays.
TEST_P(RecordsTest, FieldsFollowOneAnotherOnEveryBuild) {
  const RecordRow& record = GetParam();
  std::size_t end = 0;
  for (const FieldRow& field : record.fields) {
    EXPECT_GE(field.offset, end) << record.name << "::" << field.name;
    end = field.offset + field.size;
  }
  EXPECT_LE(end, record.size);
}

std::string NameOf(const ::testing::TestParamInfo<RecordRow>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Contract, RecordsTest, ::testing::ValuesIn(ContractRecords()), NameOf);
INSTANTIATE_TEST_SUITE_P(Blocks, RecordsTest, ::testing::ValuesIn(BlockRecords()), NameOf);

// --- the document ---

constexpr const char* kDocument = SORVANIX_SOURCE_FOLDER "/docs/records.md";
constexpr const char* kTablesFollow = "<!-- The tables below are written by contract_tests. -->\n";

void PrintTables(std::ostream& out, const std::string& title, const std::string& holder,
                 const Records& records) {
  out << "\n## " << title << "\n\nHeld by " << holder << ".\n";
  for (const RecordRow& record : records) {
    out << "\n### " << record.name << "\n\n" << record.on32 << " bytes";
    if (record.on64 == 0) {
      out << " on 32 bits";
    } else if (record.on64 != record.on32) {
      out << ", " << record.on64 << " on 64 bits";
    } else {
      out << " on every build";
    }
    const bool twoColumns = record.on64 != record.on32 && record.on64 != 0;
    out << ".\n\n| Field | Offset | Bytes |" << (twoColumns ? " Offset on 64 bits |" : "")
        << "\n|---|---|---|" << (twoColumns ? "---|" : "") << "\n";
    for (std::size_t i = 0; i < record.fields.size(); ++i) {
      const FieldRow& field = record.fields[i];
      out << "| `" << field.name << "` | " << field.on32 << " | " << record.Width(i) << " |";
      if (twoColumns) out << " " << field.on64 << " |";
      out << "\n";
    }
  }
}

std::string Tables() {
  std::ostringstream out;
  PrintTables(out, "Records of the contract",
              "`include/sorvanix/layout.h` in every file that includes the contract",
              ContractRecords());
  PrintTables(out, "Parameter blocks",
              "`module/shaders/block_layout.cpp` in every build of the module", BlockRecords());
  return out.str();
}

TEST(RecordsDocument, ShowsTheRows) {
  std::ifstream file(kDocument);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  const std::size_t head = text.find(kTablesFollow);
  ASSERT_NE(head, std::string::npos) << kDocument;
  const std::size_t tables = head + std::string(kTablesFollow).size();
  if (std::getenv("SORVANIX_UPDATE_RECORDS") != nullptr) {
    text.replace(tables, std::string::npos, Tables());
    std::ofstream(kDocument) << text;
  }
  EXPECT_EQ(text.substr(tables), Tables())
      << "contract_tests with SORVANIX_UPDATE_RECORDS=1 writes it";
}

}  // namespace
}  // namespace sorvanix
