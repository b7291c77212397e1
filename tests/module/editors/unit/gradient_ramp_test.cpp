#include "module/editors/gradient_ramp.h"

#include <cstring>

#include "tests/module/editors/unit/ramp_readings.h"

namespace sorvanix {
namespace {

using test::FourKnots;
using test::ManyKnots;
using test::ThreeKnots;
using testing::ElementsAre;

RampInBlock In(Ramp& ramp) {
  return {ramp.knots, ramp.order, &ramp.interpolation, &ramp.count, &ramp.selected};
}

TEST(RampInBlock, StoresWhatItLoads) {
  Ramp block = ThreeKnots();
  const Ramp changed = FourKnots();
  In(block).Store(changed);
  EXPECT_EQ(std::memcmp(&block, &changed, sizeof block), 0);
  const Ramp loaded = In(block).Load();
  EXPECT_EQ(std::memcmp(&loaded, &changed, sizeof loaded), 0);
}

TEST(RampInBlock, LimitsTheCountOfADamagedBlock) {
  Ramp block = ManyKnots(50);
  block.count = 4711;
  EXPECT_EQ(In(block).Load().count, 50);
  block.count = -1;
  EXPECT_EQ(In(block).Load().count, 0);
}

TEST(RampInBlock, RepairsTheOrderOfADamagedBlock) {
  Ramp block = ThreeKnots();
  block.order[1] = 40;
  EXPECT_THAT(test::Order(In(block).Load()), ElementsAre(2, 1, 0));
  EXPECT_EQ(block.order[1], 40) << "loading changes nothing";
}

TEST(RampInBlock, IsEmptyWithoutABlock) {
  const RampInBlock nowhere;
  EXPECT_EQ(nowhere.Load().count, 0);
  nowhere.Store(ThreeKnots());
}

}  // namespace
}  // namespace sorvanix
