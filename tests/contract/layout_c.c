/* Compiles the contract as C11, with its compile-time layout checks. */
#include <sorvanix/host_api.h>

int sorvanixContractCompilesAsC(void);
int sorvanixContractCompilesAsC(void) { return sizeof(HostApi) == 36 * sizeof(void*); }
