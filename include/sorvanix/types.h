/* The values that cross the line between host and module: vectors, matrices, words and opaque
 * handles.
 *
 * Plain C11, also valid C++20. Every record of the contract is made of these.
 */
#ifndef SORVANIX_TYPES_H
#define SORVANIX_TYPES_H

#include <stddef.h>
#include <stdint.h>

/* No exception crosses the line in either direction: every function pointer of the contract says
 * so. */
#ifdef __cplusplus
#define SORVANIX_NOEXCEPT noexcept
#else
#define SORVANIX_NOEXCEPT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* A word of the contract: as wide as a pointer, so that it can carry an address. */
typedef intptr_t Word;

/* A point, a direction, a texture coordinate (u, v, w) or a colour (red, green, blue).
 * Colours are not limited to 0..1. */
typedef struct Vector {
  float x, y, z;
} Vector;

/* An affine map: a point p goes to off + v1 * p.x + v2 * p.y + v3 * p.z. */
typedef struct Matrix {
  Vector off;        /* the displacement */
  Vector v1, v2, v3; /* the images of the unit axes */
} Matrix;

/* Objects of the host. The module holds them by pointer only; a null handle is always allowed and
 * makes an operation answer with a neutral value. */
typedef struct HostString HostString;       /* a text */
typedef struct HostFilename HostFilename;   /* a path */
typedef struct HostContainer HostContainer; /* typed values under integer keys */
typedef struct HostStream HostStream;       /* a run of typed values in a document */
typedef struct HostResources HostResources; /* an opened resource folder */
typedef struct HostBitmap HostBitmap;       /* a picture */
typedef struct HostDialog HostDialog;       /* a window of gadgets */
typedef struct HostUserArea HostUserArea;   /* a gadget that its owner draws */
typedef struct HostThread HostThread;       /* a background thread of the host */
typedef struct HostDocument HostDocument;   /* a scene */
typedef struct HostObject HostObject;       /* an object of a scene */
typedef struct HostMaterial HostMaterial;   /* a material of a scene */
typedef struct HostTag HostTag;             /* what is attached to an object */
typedef struct ChannelLink ChannelLink;     /* one input of a shader: empty, a shader or a bitmap */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
