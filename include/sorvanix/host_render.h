/* Host tables that serve a render: threads, noise, light, inputs, projection, matrices.
 *
 * Every operation that Output may call (all of RenderTable but fractalInit and cpuCount, and
 * ChannelTable's sample) is safe on several threads at once.
 */
#ifndef SORVANIX_HOST_RENDER_H
#define SORVANIX_HOST_RENDER_H

#include <sorvanix/records.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The weights of a fractal spectrum: filled by fractalInit, opaque to the module. */
enum { FractalWeightsSize = 88 };

/* Codes of RenderTable::query. */
enum {
  QueryPictureSize = 0, /* answers const int32_t[2]: width, height in pixels */
  QueryCameraMatrix = 2 /* answers const Matrix*: camera to world; null without a camera */
};

/* Word 2: the running render. Noise operations are pure functions of their arguments.
 * "octaves" counts may be fractional: the last octave counts by its fraction. */
typedef struct RenderTable {
  /* How many CPUs this render uses: at least 1, constant during the render. */
  int32_t (*cpuCount)(const RenderContext* render) SORVANIX_NOEXCEPT;
  /* On a render thread: its index, from 0 to the count less 1. */
  int32_t (*cpuIndex)(const RenderContext* render) SORVANIX_NOEXCEPT;

  /* Smooth noise around 0; its magnitude tops out near 0.65 and never exceeds 1. */
  float (*signedNoise)(const Vector* point, float time) SORVANIX_NOEXCEPT;
  /* The same family around 0.5, nearly all of it between 0.3 and 0.7. */
  float (*unitNoise)(const Vector* point) SORVANIX_NOEXCEPT;
  float (*unitNoiseAt)(const Vector* point, float time) SORVANIX_NOEXCEPT;
  /* Sum of octaves: signed and within about 2 of 0, or not negative when absolute is set. */
  float (*turbulence)(const Vector* point, float time, float octaves,
                      int32_t absolute) SORVANIX_NOEXCEPT;
  /* Sum of octaves around 0.5, within 0..1; band is always 0.5. */
  float (*bandTurbulence)(const Vector* point, float time, float octaves,
                          float band) SORVANIX_NOEXCEPT;
  /* Fills the weights: capacity octaves, each step times the frequency of the one before,
   * amplitudes falling as step^(-exponent). weights may be null. */
  int32_t (*fractalInit)(void* weights, int32_t capacity, float step,
                         float exponent) SORVANIX_NOEXCEPT;
  /* Fractal sum with time; signed. */
  float (*fractalSum)(const void* weights, const Vector* point, float time,
                      float octaves) SORVANIX_NOEXCEPT;
  /* Fractal sum without time; about -1.75 to 1.75. */
  float (*fractalSumPoint)(const void* weights, const Vector* point,
                           float octaves) SORVANIX_NOEXCEPT;
  /* Ridged fractal without time; about -0.5 to 0.6. offset is always 0.25, gain always 1. */
  float (*fractalRidged)(const void* weights, const Vector* point, float octaves, float offset,
                         float gain) SORVANIX_NOEXCEPT;

  /* A fact about the render by code, see QueryPictureSize; null when there is none. */
  const void* (*query)(const RenderContext* render, int32_t code)SORVANIX_NOEXCEPT;
  /* A point in camera space to pixels (x, y) and depth (z). */
  void (*projectToScreen)(const RenderContext* render, const Vector* point,
                          Vector* screen) SORVANIX_NOEXCEPT;

  /* Adds the light at the current hit to diffuse and specular, which it never clears. For each
   * light of colour C, with N = bumpNormal as it stands, L the direction to the light, V the ray
   * reversed and c = N.L: C itself, to diffuse, of an ambient light; nothing where c is 0 or below;
   * else C c^(e^-k) to diffuse unless noDiffuse, k being the light's contrast, and
   * C max(0, R.V)^exponent, R = 2 c N - L, to specular unless noSpecular. Area lights count by the
   * mean of 16 of their points. Shadows by lightParamB. Adds nothing while lightsEnabled is 0. */
  void (*illuminate)(const RenderContext* render, Vector* diffuse, Vector* specular,
                     float exponent) SORVANIX_NOEXCEPT;
  int32_t (*lightCount)(const RenderContext* render) SORVANIX_NOEXCEPT;
  /* One light, or null for an index out of range. */
  const LightRecord* (*lightAt)(const RenderContext* render, int32_t index)SORVANIX_NOEXCEPT;
  /* The light's colour at a point, and the unit vector towards it. 0 when no light arrives by
   * distance or cone; a shadowed point answers 1 and black. shadows: cast shadow rays;
   * identity: the element that they skip. */
  int32_t (*lightSample)(const RenderContext* render, const LightRecord* light, Vector* colour,
                         Vector* direction, const Vector* point, const Vector* normal,
                         int32_t shadows, int32_t identity) SORVANIX_NOEXCEPT;
  /* Adds the share of an area light (types 7 and 8) to sum: value / 16 times the sum over a grid of
   * 4 by 4 of its points, at -0.75, -0.25, 0.25 and 0.75 of areaU and areaW, of C max(0,
   * N.L)^(e^-k). N is bumpNormal, turned over when ray.N is below 0; side is 1 on the front of a
   * face, -1 on its back; shadows by lightParamB. */
  void (*areaLight)(const RenderContext* render, const LightRecord* light, float value,
                    const Vector* ray, float side, const Vector* point,
                    Vector* sum) SORVANIX_NOEXCEPT;
  /* A smooth curve through count equally spaced values, read at 0..1. */
  float (*splineLookup)(float value, const float* table, int32_t count) SORVANIX_NOEXCEPT;

  /* The texture coordinate of a surface point near the hit. */
  void (*pointToUvw)(const RenderContext* render, const TextureTag* tag, int32_t identity,
                     const Vector* point, const Vector* normal, Vector* uvw) SORVANIX_NOEXCEPT;
  /* Unit vectors along increasing u and v, in the surface at the hit. */
  void (*surfaceAxes)(const RenderContext* render, const TextureTag* tag, const Vector* point,
                      const Vector* normal, Vector* axisU, Vector* axisV) SORVANIX_NOEXCEPT;
  /* Prepares projections of four points (hit and footprint) with UVW set uvwIndex. */
  void (*setUpTexture)(RenderContext* render, const Vector points[4],
                       int32_t uvwIndex) SORVANIX_NOEXCEPT;
  /* Projects a point in the tag's space (world space for projection 6) to a texture coordinate;
   * 0 when the point has none. */
  int32_t (*projectTexture)(const TextureTag* tag, const RenderContext* render, const Vector* point,
                            const UvwRecord* uvwRecord, Vector* uvw) SORVANIX_NOEXCEPT;
} RenderTable;

/* Word 8: the inputs of shaders. A link holds nothing, a shader, or a bitmap. */
typedef struct ChannelTable {
  Word reserved0;
  ChannelLink* (*create)(void)SORVANIX_NOEXCEPT; /* an empty link, or null */
  void (*release)(ChannelLink* link) SORVANIX_NOEXCEPT;
  /* Makes destination hold a copy of what source holds; nonzero on success. */
  int32_t (*copy)(const ChannelLink* source, ChannelLink* destination) SORVANIX_NOEXCEPT;
  /* Nonzero when both hold equal things. */
  int32_t (*compare)(const ChannelLink* first, const ChannelLink* second) SORVANIX_NOEXCEPT;
  /* 0 for success, as InitRender. */
  int32_t (*initRender)(ChannelLink* link, const RenderInit* init) SORVANIX_NOEXCEPT;
  void (*freeRender)(ChannelLink* link) SORVANIX_NOEXCEPT;
  /* Reads the linked shader or bitmap; black for an empty link. Answers result. */
  Vector* (*sample)(Vector* result, ChannelLink* link, RenderContext* render, const Vector* uvw,
                    const Vector* delta, const Vector* normal, float time, int32_t tagFlag,
                    float blurOffset, float blurScale)SORVANIX_NOEXCEPT;
  /* The link's bitmap, or null. It stays the link's own. */
  HostBitmap* (*bitmap)(ChannelLink* link)SORVANIX_NOEXCEPT;
  /* Sends a message to the linked shader; container is the payload. The link itself answers the
   * keys KeyLinkPluginId, KeyLinkParameters and KeyLinkFilename. */
  int32_t (*message)(ChannelLink* link, int32_t id, HostContainer* container) SORVANIX_NOEXCEPT;
  /* The linked shader's id; 0 for a bitmap and for an empty link. */
  int32_t (*pluginId)(const ChannelLink* link) SORVANIX_NOEXCEPT;
  /* The linked shader's instance, or null. */
  ShaderInstance* (*instance)(ChannelLink* link)SORVANIX_NOEXCEPT;
} ChannelTable;

/* Word 22: matrix arithmetic of the host. */
typedef struct MatrixTable {
  void (*invert)(const Matrix* matrix, Matrix* result) SORVANIX_NOEXCEPT; /* identity if singular */
  /* The map that applies second first, then first. */
  void (*multiply)(const Matrix* first, const Matrix* second, Matrix* result) SORVANIX_NOEXCEPT;
  void (*transform)(const Matrix* matrix, const Vector* point, Vector* result) SORVANIX_NOEXCEPT;
} MatrixTable;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
