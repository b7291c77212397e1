/* The per-CPU record that shaders keep during a render and hand to one another.
 *
 * A filter writes a FootprintBlock into the head of its input's ThreadSlot before it reads that
 * input, so the offsets are a format: 248 bytes on every build, without a pointer inside.
 */
#ifndef SORVANIX_FOOTPRINT_H
#define SORVANIX_FOOTPRINT_H

#include <sorvanix/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The head of every ThreadSlot. */
typedef struct FootprintBlock {
  Vector footprint[4];    /* hit point, then three corners of the sample */
  Vector footprintRadius; /* half extent of the four points, plus blurOffset * blurScale */
  Vector pointOffset;     /* displacement of the 3D point; zero but from Distorter */
  Vector uvwPoint;        /* the sample's uvw */
  Vector uvwDelta;        /* the sample's delta */
  Vector uvwOffset;       /* displacement of uvw; zero but from Distorter */
  Vector basePoint;       /* the sample's uvw, kept undisturbed */
  Vector baseDelta;       /* the sample's delta, kept undisturbed */
  Vector baseOffset;      /* (0, 0, 0) */
  int32_t tap;            /* a FootprintTap: 0 to 4 */
  Matrix texMatrix;       /* tag to world; identity without a tag */
  Matrix texInverse;      /* world to tag; identity without a tag */
  int32_t outerChannel;   /* channel of the shader that built the block */
} FootprintBlock;

/* Which neighbour of the point a bump pass wants. */
typedef enum FootprintTap {
  TapNone = 0,
  TapPlusU = 1,
  TapMinusU = 2,
  TapPlusV = 3,
  TapMinusV = 4
} FootprintTap;

/* Sizes of one ThreadSlot, as MessageReportSlots tells them: the same on every build. */
enum {
  SlotStrideHeadOnly = 248, /* Banj, Falloff, Gradient */
  SlotStrideNoise = 256,    /* 2D Noise, 3D Noise, Proximal */
  SlotStrideTiles = 264,
  SlotStrideFilter = 268, /* Colorizer, Hue, Posterizer */
  SlotStrideBrightContrast = 272,
  SlotStrideDistorter = 296, /* Distorter, Lumas */
  SlotStrideFusion = 308,
  SlotStrideProjector = 336
};

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
