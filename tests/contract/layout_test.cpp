// Compiles the contract as C++ with its compile-time layout checks; layout_c.c does so as C.
#include <gtest/gtest.h>
#include <sorvanix/host_api.h>

TEST(Contract, HostApiHasThirtySixWords) { EXPECT_EQ(sizeof(HostApi), 36 * sizeof(void*)); }
