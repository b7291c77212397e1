/* Host tables for memory, messages, registration, documents on disk, containers, texts and
 * resources.
 *
 * Handles may be null everywhere: the operation then does nothing and answers 0, null, an empty
 * object or the default given, where no other answer is told. Unless said otherwise an operation is
 * called on the main thread.
 */
#ifndef SORVANIX_HOST_SERVICES_H
#define SORVANIX_HOST_SERVICES_H

#include <sorvanix/records.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Word 1: memory, messages, registration. */
typedef struct GeneralTable {
  /* A block of size bytes (0 counts as 1), cleared to zero, or null when memory is short. */
  void* (*alloc)(size_t size)SORVANIX_NOEXCEPT;
  /* Releases a block of alloc; null is allowed. */
  void (*free)(void* block) SORVANIX_NOEXCEPT;
  /* Shows a message and waits for the user; flags is MessageDialogFlags. */
  void (*messageDialog)(const HostString* text, int32_t flags) SORVANIX_NOEXCEPT;
  /* Registers a plug-in: the host copies size bytes of record. Nonzero on success. */
  int32_t (*registerPlugin)(int32_t api, int32_t type, int32_t id, const HostString* name,
                            const ShaderRecord* record, int32_t size) SORVANIX_NOEXCEPT;
  /* The form of hosts below version 6114, which know no record size. */
  int32_t (*registerPluginUnsized)(int32_t api, int32_t type, int32_t id, const HostString* name,
                                   const ShaderRecord* record) SORVANIX_NOEXCEPT;
  /* Nonzero when the file is there. */
  int32_t (*fileExists)(const HostFilename* filename) SORVANIX_NOEXCEPT;
} GeneralTable;

/* Word 3: typed values in a document, in order. Writes and reads answer nonzero on success. A read
 * that fails (the stream ended, or holds another type next) leaves the destination as it was. */
typedef struct StreamTable {
  int32_t (*writeInt)(HostStream* stream, int32_t value) SORVANIX_NOEXCEPT;
  int32_t (*writeFloat)(HostStream* stream, float value) SORVANIX_NOEXCEPT;
  int32_t (*writeBool)(HostStream* stream, int32_t value) SORVANIX_NOEXCEPT;
  int32_t (*writeVector)(HostStream* stream, const Vector* value) SORVANIX_NOEXCEPT;
  int32_t (*writeMatrix)(HostStream* stream, const Matrix* value) SORVANIX_NOEXCEPT;
  int32_t (*writeString)(HostStream* stream, const HostString* value) SORVANIX_NOEXCEPT;
  /* What the link holds: the shader's id and its own stream with its length, or a bitmap's name. */
  int32_t (*writeChannelLink)(HostStream* stream, const ChannelLink* value) SORVANIX_NOEXCEPT;
  int32_t (*readInt)(HostStream* stream, int32_t* value) SORVANIX_NOEXCEPT;
  int32_t (*readFloat)(HostStream* stream, float* value) SORVANIX_NOEXCEPT;
  int32_t (*readBool)(HostStream* stream, int32_t* value) SORVANIX_NOEXCEPT; /* stores 0 or 1 */
  int32_t (*readVector)(HostStream* stream, Vector* value) SORVANIX_NOEXCEPT;
  int32_t (*readMatrix)(HostStream* stream, Matrix* value) SORVANIX_NOEXCEPT;
  int32_t (*readString)(HostStream* stream, HostString* value) SORVANIX_NOEXCEPT;
  int32_t (*readChannelLink)(HostStream* stream, ChannelLink* value) SORVANIX_NOEXCEPT;
} StreamTable;

/* Word 4: typed values under integer keys, in the order in which the keys were first set.
 * A getter whose key is absent, or holds another type that does not convert, answers the default.
 * Integers, bools and floats convert into one another. */
typedef struct ContainerTable {
  HostContainer* (*create)(int32_t id)SORVANIX_NOEXCEPT;
  void (*free)(HostContainer* container) SORVANIX_NOEXCEPT;
  HostContainer* (*clone)(const HostContainer* container)SORVANIX_NOEXCEPT; /* a deep copy */
  void (*copyTo)(const HostContainer* source, HostContainer* destination) SORVANIX_NOEXCEPT;
  int32_t (*id)(const HostContainer* container) SORVANIX_NOEXCEPT;
  /* The index of a key, or -1; -1 also for null. */
  int32_t (*find)(const HostContainer* container, int32_t key) SORVANIX_NOEXCEPT;
  /* The key at an index, or -1 for an index out of range; -1 also for null. */
  int32_t (*keyAt)(const HostContainer* container, int32_t index) SORVANIX_NOEXCEPT;
  int32_t (*getBool)(const HostContainer* container, int32_t key, int32_t def) SORVANIX_NOEXCEPT;
  Word (*getInt)(const HostContainer* container, int32_t key, Word def) SORVANIX_NOEXCEPT;
  float (*getFloat)(const HostContainer* container, int32_t key, float def) SORVANIX_NOEXCEPT;
  void (*getVector)(const HostContainer* container, int32_t key, const Vector* def,
                    Vector* value) SORVANIX_NOEXCEPT;
  /* Texts, filenames and containers that a getter answers stay the container's own. */
  const HostString* (*getString)(const HostContainer* container, int32_t key,
                                 const HostString* def)SORVANIX_NOEXCEPT;
  const HostFilename* (*getFilename)(const HostContainer* container, int32_t key,
                                     const HostFilename* def)SORVANIX_NOEXCEPT;
  HostContainer* (*getContainer)(const HostContainer* container, int32_t key,
                                 HostContainer* def)SORVANIX_NOEXCEPT;
  /* Setters copy the value and make the key when it is new. */
  void (*setBool)(HostContainer* container, int32_t key, int32_t value) SORVANIX_NOEXCEPT;
  void (*setInt)(HostContainer* container, int32_t key, Word value) SORVANIX_NOEXCEPT;
  void (*setFloat)(HostContainer* container, int32_t key, float value) SORVANIX_NOEXCEPT;
  void (*setVector)(HostContainer* container, int32_t key, const Vector* value) SORVANIX_NOEXCEPT;
  void (*setString)(HostContainer* container, int32_t key,
                    const HostString* value) SORVANIX_NOEXCEPT;
  void (*setFilename)(HostContainer* container, int32_t key,
                      const HostFilename* value) SORVANIX_NOEXCEPT;
  void (*setContainer)(HostContainer* container, int32_t key,
                       const HostContainer* value) SORVANIX_NOEXCEPT;
} ContainerTable;

/* Word 5: texts. A creation that fails answers the shared empty text, which is never freed. */
typedef struct StringTable {
  HostString* empty;
  HostString* (*create)(void)SORVANIX_NOEXCEPT;
  /* From length bytes of UTF-8, or up to the terminating zero when length is -1. */
  HostString* (*createFromChars)(const char* chars, int32_t length)SORVANIX_NOEXCEPT;
  HostString* (*copy)(const HostString* text)SORVANIX_NOEXCEPT;
  void (*free)(HostString* text) SORVANIX_NOEXCEPT;
  int32_t (*length)(const HostString* text) SORVANIX_NOEXCEPT; /* in bytes */
  int32_t (*compare)(const HostString* first,
                     const HostString* second) SORVANIX_NOEXCEPT; /* 0 equal */
  HostString* (*concatenate)(const HostString* first, const HostString* second)SORVANIX_NOEXCEPT;
  HostString* (*fromNumber)(double value)SORVANIX_NOEXCEPT; /* shortest decimal form */
} StringTable;

/* Word 9: paths. As StringTable; a path made from an empty text is the shared empty one. */
typedef struct FilenameTable {
  HostFilename* empty;
  HostFilename* (*create)(void)SORVANIX_NOEXCEPT;
  HostFilename* (*fromString)(const HostString* path)SORVANIX_NOEXCEPT;
  HostFilename* (*copy)(const HostFilename* filename)SORVANIX_NOEXCEPT;
  void (*free)(HostFilename* filename) SORVANIX_NOEXCEPT;
  /* The folder part, as a new path; empty when there is none. */
  HostFilename* (*directory)(const HostFilename* filename)SORVANIX_NOEXCEPT;
  /* A new path with one component added. */
  HostFilename* (*append)(const HostFilename* filename,
                          const HostString* component)SORVANIX_NOEXCEPT;
} FilenameTable;

/* Word 15: the texts and dialogs in the "Resources" folder of a plug-in. */
typedef struct ResourceTable {
  /* directory is the folder of the module; null when it holds no resources. */
  HostResources* (*open)(const HostFilename* directory)SORVANIX_NOEXCEPT;
  void (*close)(HostResources* resources) SORVANIX_NOEXCEPT;
  /* A new text, or the empty one for an unknown id; flag is always 1. */
  HostString* (*loadString)(HostResources* resources, int32_t id, int32_t flag)SORVANIX_NOEXCEPT;
} ResourceTable;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
