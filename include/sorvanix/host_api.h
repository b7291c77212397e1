/* The block of 36 words that a host hands to c4d_main when it attaches: all that the module knows
 * of its host.
 *
 * A host fills the tables that it serves and leaves other words, or single functions, null; the
 * module then works with neutral answers. examples/minimal_host.c is a complete small host.
 */
#ifndef SORVANIX_HOST_API_H
#define SORVANIX_HOST_API_H

#include <sorvanix/footprint.h>
#include <sorvanix/host_dialog.h>
#include <sorvanix/host_render.h>
#include <sorvanix/host_scene.h>
#include <sorvanix/host_services.h>
#include <sorvanix/ids.h>
#include <sorvanix/records.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The module copies the 36 words; the tables must stay valid until it is unloaded. */
typedef struct HostApi {
  Word version;                          /* word 0: 7201 or above to start */
  const GeneralTable* general;           /* word 1 */
  const RenderTable* render;             /* word 2 */
  const StreamTable* stream;             /* word 3 */
  const ContainerTable* container;       /* word 4 */
  const StringTable* string;             /* word 5 */
  const DialogTable* dialog;             /* word 6 */
  Word reserved7;                        /* words without a name are null */
  const ChannelTable* channel;           /* word 8 */
  const FilenameTable* filename;         /* word 9 */
  Word reserved10[2];                    /* words 10, 11 */
  const FileTable* file;                 /* word 12 */
  const DialogFormTable* dialogForm;     /* word 13 */
  Word reserved14;                       /* word 14 */
  const ResourceTable* resources;        /* word 15 */
  const ObjectTable* object;             /* word 16 */
  const MaterialTable* material;         /* word 17 */
  const DocumentTable* document;         /* word 18 */
  const DocumentListTable* documentList; /* word 19 */
  const ThreadTable* thread;             /* word 20 */
  const BitmapTable* bitmap;             /* word 21 */
  const MatrixTable* matrix;             /* word 22 */
  Word reserved23[13];                   /* words 23 to 35 */
} HostApi;

/* The module's one exported function. See the Action constants for actions and results; arg2 is
 * reserved. Calls must not overlap. */
typedef int32_t (*EntryFunction)(int32_t action, void* arg1, Word arg2,
                                 const char* arg3) SORVANIX_NOEXCEPT;
#define SORVANIX_ENTRY_NAME "c4d_main"

#ifdef __cplusplus
} /* extern "C" */
#endif

#include <sorvanix/layout.h>

#endif
