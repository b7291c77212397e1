/* The byte layout of the contract, held at compile time: a field that moves does not compile. */
#ifndef SORVANIX_LAYOUT_H
#define SORVANIX_LAYOUT_H

#include <assert.h>
#include <sorvanix/host_api.h>

#define SORVANIX_ON_32_OR_64(on32, on64) (sizeof(void*) == 4 ? (on32) : (on64))
#define SORVANIX_RECORD(record, on32, on64)                                 \
  static_assert(sizeof(record) == SORVANIX_ON_32_OR_64(on32, on64), #record \
                " has changed its "                                         \
                "size");
#define SORVANIX_FIELD(record, field, on32, on64)                            \
  static_assert(offsetof(record, field) == SORVANIX_ON_32_OR_64(on32, on64), \
                #record "::" #field " has moved");

#include <sorvanix/record_rows.h>

#undef SORVANIX_FIELD
#undef SORVANIX_RECORD
#undef SORVANIX_ON_32_OR_64

#endif
