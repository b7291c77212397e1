/* Host tables for scenes: objects, materials, documents, and the list of open documents.
 *
 * Used when a render begins (to collect objects) and by previews. Main thread, or the preview's.
 */
#ifndef SORVANIX_HOST_SCENE_H
#define SORVANIX_HOST_SCENE_H

#include <sorvanix/records.h>

#ifdef __cplusplus
extern "C" {
#endif

/* One particle of a particle tag, in world space. */
typedef struct ParticleRecord {
  Vector position;
  int32_t flags; /* ParticleVisible, ParticleAlive */
} ParticleRecord;

/* One polygon of a polygon tag: indices into the point tag; a triangle has c equal to d. */
typedef struct PolygonRecord {
  int32_t a, b, c, d;
} PolygonRecord;

/* Word 16: the objects of a scene and what hangs on them. */
typedef struct ObjectTable {
  HostObject* (*next)(const HostObject* object)SORVANIX_NOEXCEPT; /* following sibling, or null */
  HostObject* (*down)(const HostObject* object)SORVANIX_NOEXCEPT; /* first child, or null */
  /* The object's name: stays the object's own. */
  const HostString* (*name)(const HostObject* object)SORVANIX_NOEXCEPT;
  int32_t (*type)(const HostObject* object) SORVANIX_NOEXCEPT;
  int32_t (*infoFlags)(const HostObject* object) SORVANIX_NOEXCEPT; /* ObjectHasGeometry, ... */
  void (*globalMatrix)(const HostObject* object, Matrix* matrix) SORVANIX_NOEXCEPT;
  /* The first tag of a type, or null. */
  HostTag* (*tag)(const HostObject* object, int32_t type)SORVANIX_NOEXCEPT;
  /* The items of a point tag (Vector, local) or polygon tag (PolygonRecord), and their number. */
  const void* (*tagData)(const HostTag* tag)SORVANIX_NOEXCEPT;
  int32_t (*tagItemCount)(const HostTag* tag) SORVANIX_NOEXCEPT;
  /* One particle of a particle tag, or null out of range. */
  const ParticleRecord* (*particleAt)(const HostTag* tag, int32_t index)SORVANIX_NOEXCEPT;
  /* A polygon object made from a primitive at a level of detail (1 is full), with local points;
   * the caller frees it. Null when the object has no geometry. */
  HostObject* (*polygonise)(const HostObject* object, float detail)SORVANIX_NOEXCEPT;
  void (*free)(HostObject* object) SORVANIX_NOEXCEPT;
  /* Attaches a new tag of a type to the object. */
  HostTag* (*makeTag)(HostObject* object, int32_t type)SORVANIX_NOEXCEPT;
  void (*setTagMaterial)(HostTag* tag, HostMaterial* material) SORVANIX_NOEXCEPT;
  /* A texture tag's settings (KeyTagOffsetU, ...): stay the tag's own. */
  const HostContainer* (*tagContainer)(const HostTag* tag)SORVANIX_NOEXCEPT;
  void (*tagPosition)(const HostTag* tag, Vector* position) SORVANIX_NOEXCEPT;
  void (*tagScale)(const HostTag* tag, Vector* scale) SORVANIX_NOEXCEPT;
  void (*tagRotation)(const HostTag* tag, Vector* angles) SORVANIX_NOEXCEPT; /* radians */
} ObjectTable;

/* Word 17: materials. */
typedef struct MaterialTable {
  HostMaterial* (*create)(int32_t type)SORVANIX_NOEXCEPT;
  void (*free)(HostMaterial* material) SORVANIX_NOEXCEPT;
  void (*enableChannel)(HostMaterial* material, int32_t channel, int32_t on) SORVANIX_NOEXCEPT;
  /* The link that fills a channel: stays the material's own. */
  ChannelLink* (*channel)(HostMaterial* material, int32_t channel)SORVANIX_NOEXCEPT;
} MaterialTable;

/* Word 18: one document. */
typedef struct DocumentTable {
  HostObject* (*firstObject)(const HostDocument* document)SORVANIX_NOEXCEPT;
  HostObject* (*findObject)(const HostDocument* document, const HostString* name)SORVANIX_NOEXCEPT;
  HostMaterial* (*findMaterial)(const HostDocument* document,
                                const HostString* name)SORVANIX_NOEXCEPT;
  /* The document takes the material over. */
  void (*insertMaterial)(HostDocument* document, HostMaterial* material) SORVANIX_NOEXCEPT;
  void (*removeMaterial)(HostDocument* document, HostMaterial* material) SORVANIX_NOEXCEPT;
  /* The tag that the user selected, or null. */
  HostTag* (*activeTag)(const HostDocument* document)SORVANIX_NOEXCEPT;
  /* Renders into a bitmap by settings (KeyRenderWidth, ...); thread, if given, is asked after each
   * row whether to stop. Answers 0 for success. */
  int32_t (*render)(HostDocument* document, HostBitmap* bitmap, const HostContainer* settings,
                    HostThread* thread) SORVANIX_NOEXCEPT;
} DocumentTable;

/* Word 19: documents as files, and the one the user works on. */
typedef struct DocumentListTable {
  HostDocument* (*active)(void)SORVANIX_NOEXCEPT;
  HostDocument* (*load)(const HostFilename* filename)SORVANIX_NOEXCEPT; /* null on failure */
  int32_t (*merge)(HostDocument* document, const HostFilename* filename) SORVANIX_NOEXCEPT;
  void (*free)(HostDocument* document) SORVANIX_NOEXCEPT;
} DocumentListTable;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
