// The contract compiles as C and as C++, where layout.h checks every offset at compile time.
#include <gtest/gtest.h>
#include <sorvanix/host_api.h>

extern "C" int sorvanixContractCompilesAsC(void);

TEST(Contract, HasThirtySixWordsInBothLanguages) {
  EXPECT_EQ(sizeof(HostApi), 36 * sizeof(void*));
  EXPECT_TRUE(sorvanixContractCompilesAsC());
}
