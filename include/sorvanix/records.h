/* The records that host and module exchange: the callbacks of a shader, its instance, one sample,
 * the surface being shaded.
 *
 * On 32-bit builds every record of a sample has fixed byte offsets; on wider builds the order of
 * the fields is the same and pointers are wider. layout.h asserts both.
 */
#ifndef SORVANIX_RECORDS_H
#define SORVANIX_RECORDS_H

#include <sorvanix/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ShaderInstance ShaderInstance;
typedef struct ChannelSample ChannelSample;
typedef struct RenderContext RenderContext;
typedef struct RenderInit RenderInit;

/* What a shader offers. A null slot means that the host's default behaviour applies.
 * Results are nonzero for success unless said otherwise. Only Output is called from several
 * threads at once; all others come on the host's main thread, never during a render. */
typedef struct ShaderRecord {
  Word reserved0;
  /* Makes the parameter block with its defaults and stores it in data; 0 when memory is short. */
  int32_t (*Alloc)(ShaderInstance* instance) SORVANIX_NOEXCEPT;
  /* Releases the block and clears data. */
  void (*Free)(ShaderInstance* instance) SORVANIX_NOEXCEPT;
  /* Copies the parameters; both instances need blocks. The copy stands alone: it is not nested. */
  int32_t (*Copy)(const ShaderInstance* source, ShaderInstance* destination) SORVANIX_NOEXCEPT;
  /* 1 when all compared parameters are equal. */
  int32_t (*Compare)(const ShaderInstance* first, const ShaderInstance* second) SORVANIX_NOEXCEPT;
  /* Restores the block from a document, and stores it there. */
  int32_t (*Read)(ShaderInstance* instance, HostStream* reader) SORVANIX_NOEXCEPT;
  int32_t (*Write)(const ShaderInstance* instance, HostStream* writer) SORVANIX_NOEXCEPT;
  /* Opens the shader's dialog on a working copy; 1 when the user confirmed. */
  int32_t (*Edit)(ShaderInstance* instance) SORVANIX_NOEXCEPT;
  /* A constant word for the host, see each shader. */
  uint32_t (*GetInfo)(void) SORVANIX_NOEXCEPT;
  /* Messages of ids.h; the payload is a HostContainer. Unknown ids are answered with 1. */
  int32_t (*Message)(ShaderInstance* instance, int32_t id,
                     HostContainer* payload) SORVANIX_NOEXCEPT;
  /* Prepares a render: 0 for success, RenderInitFailed when the shader cannot take part. */
  int32_t (*InitRender)(ShaderInstance* instance, const RenderInit* init) SORVANIX_NOEXCEPT;
  /* Undoes InitRender; also allowed without it. */
  void (*FreeRender)(ShaderInstance* instance) SORVANIX_NOEXCEPT;
  /* Writes the colour of one sample; thread safe. In the bump channel a shader may instead change
   * the render's bumpNormal and write black. */
  void (*Output)(Vector* result, ShaderInstance* instance, ChannelSample* sample) SORVANIX_NOEXCEPT;
  Word reserved52;
  Word reserved56;
} ShaderRecord;

enum { RenderInitFailed = -100 };

/* One shader in one channel of one material. The host creates it; the callbacks write it. */
struct ShaderInstance {
  void* data;      /* the parameter block: written by Alloc, cleared by Free */
  void* slots;     /* ThreadSlot array, one per CPU: from InitRender to FreeRender, else null */
  int32_t channel; /* where the shader sits, see ids.h; written by the host */
};

/* What InitRender is told about the render that begins. */
struct RenderInit {
  RenderContext* render;  /* argument of the CPU operations; null when only inputs are prepared */
  HostDocument* document; /* the scene being rendered, or null */
};

/* One sample of one channel. Filled by the host for each Output. Few shaders write it: each that
 * does says so. */
struct ChannelSample {
  Vector uvw;            /* texture coordinate */
  Vector normal;         /* surface normal of the sample, handed on to inputs */
  Vector delta;          /* size of the sample in texture space; its magnitude widens filters */
  float time;            /* animation time in seconds */
  int32_t texFlags;      /* TextureTag::flags, sign-extended, or 0 without a tag; to inputs */
  RenderContext* render; /* the surface; null outside a render (previews, flat bakes) */
  float blurOffset;      /* blurOffset * blurScale widens filters */
  float blurScale;
};

/* A ray from the eye, in world space. */
typedef struct RayRecord {
  double origin[3];
  double direction[3]; /* unit vector from the eye to the surface */
} RayRecord;

/* How a material lies on an object. */
typedef struct TextureTag {
  Matrix matrix1; /* tag to world */
  Matrix matrix2; /* world to tag */
  int8_t flags;   /* bit 0: tile, bit 1: mirrored (seamless); handed on as tag flag */
  int8_t flags2;  /* the host's own, copied from tag to tag */
  int8_t
      projection; /* 0 sphere, 1 cylinder, 2 flat, 3 cube, 4 frontal, 5 spatial, 6 UVW, 7 shrink */
  int8_t opaqueByte;      /* the host's own, copied from tag to tag */
  float offsetU, offsetV; /* start of the tile in texture space */
  float lengthU, lengthV; /* size of the tile in texture space */
  Word opaque[3];         /* the host's own, copied from tag to tag */
} TextureTag;

/* The polygon that was hit, with its corners as rendered and as they were undeformed. */
typedef struct UvwRecord {
  Vector uvw[4];        /* texture coordinates of the corners */
  Vector corner[4];     /* world space, as rendered */
  Vector restCorner[4]; /* the object's own space, before any deformation */
  int32_t cornerCount;  /* 3 or 4; 0 when the surface has no polygons */
} UvwRecord;

/* The object that was hit. */
typedef struct ObjectRecord {
  uint8_t kind; /* 2 when the surface has UVW coordinates but no polygons to read them from */
  uint8_t reserved[3];
  int32_t type;       /* the host's object type */
  Matrix matrix;      /* object to world */
  HostObject* object; /* the scene object */
} ObjectRecord;

/* Kinds of light that shaders tell apart, and how a light fades with distance. */
enum {
  LightOmni = 0,
  LightSpot = 1,
  LightDistant = 2,
  LightRectangle = 7,
  LightDisc = 8,
  FalloffNone = 0,
  FalloffLinear = 1,
  FalloffInverseSquare = 2
};

/* One light of the scene, in world space. */
typedef struct LightRecord {
  int32_t ambient;    /* lights every surface alike, whatever its direction */
  int32_t noDiffuse;  /* adds no diffuse share */
  int32_t noSpecular; /* adds no highlight */
  int32_t type;
  float contrast; /* k: the cosine is raised to e^-k */
  Vector colour;  /* times brightness */
  Vector position;
  Vector direction;             /* unit vector along which a spot, distant or area light shines */
  float innerAngle, outerAngle; /* of a spot's cone, from axis to side, in radians */
  int32_t falloff;              /* FalloffNone, FalloffLinear, FalloffInverseSquare */
  float range;                  /* distance at which falloff reaches its end, or unit distance */
  int32_t castShadows;
  Vector areaU, areaW; /* half axes of an area light */
} LightRecord;

/* The surface being shaded: one record per render thread, filled anew for every sample.
 * Gaps are unknown to the module. Fields marked writable may be changed by shaders. */
struct RenderContext {
  uint8_t reserved0[24];
  Vector
      bumpTint; /* writable: set to (1, 1, 1) by shaders that bend the normal from solid points */
  uint8_t reserved36[36];
  Vector hitPoint;      /* the hit, in world space */
  Vector bumpNormal;    /* writable: the unit normal that shading uses */
  const RayRecord* ray; /* null when there is no ray */
  Vector faceNormal;    /* its sign against the ray tells front (0 or below) from back */
  Vector baseNormal;    /* the interpolated normal before any bump */
  uint8_t reserved124[24];
  Vector viewPoint; /* position from which Lumas derives the size of its footprint */
  uint8_t reserved160[4];
  int32_t lightParamA;          /* identity of the hit element, never 0; shadow rays skip it */
  const TextureTag* textureTag; /* null when there is no tag */
  float side;                   /* 1 on the front of a face, -1 on its back */
  Vector tangentU;              /* surface tangent along increasing u */
  Vector tangentV;              /* surface tangent along increasing v */
  int32_t lightCount;
  uint8_t reserved204[8];
  int32_t lightParamB;                       /* writable: nonzero lets lights cast shadows */
  int32_t lightsEnabled;                     /* zero: shaders add no light */
  int32_t filteringOn;                       /* zero forces every filter width to 0 */
  Vector footprintA, footprintB, footprintC; /* corners of the sample on the surface, world space */
  const ObjectRecord* object;                /* null when unknown */
  const UvwRecord* uvwRecord;                /* null when the surface has no polygons */
  uint8_t reserved268[52];
  Vector localHitPoint; /* the hit, in the space of the texture tag */
  uint8_t reserved332[36];
  float filterScale; /* multiplies every filter width */
};

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
