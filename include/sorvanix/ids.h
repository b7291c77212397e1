/* Every number that host and module agree on: shader ids, messages, container keys, channels.
 *
 * The lists are append-only. A number that was ever shipped keeps its meaning.
 */
#ifndef SORVANIX_IDS_H
#define SORVANIX_IDS_H

#include <stdint.h>

/* The oldest hosts that may attach, and start, the module; the API that it is written for. */
enum {
  HostVersionAttach = 7000,
  HostVersionStart = 7201,
  PluginApiVersion = 7200,
  PluginTypeShader = 2,
  MessageDialogFlags = 48 /* the one flag word that the module passes to the message dialog */
};

/* What c4d_main is asked to do, and its answers. */
enum {
  ActionAttach = 1, /* arg1 the HostApi block, arg3 the module's path: 1, or ActionRefused */
  ActionStart = 2,  /* 1 when all shaders stand, else 0 */
  ActionDetach = 3, /* 1 */
  ActionQuery = 4,  /* ActionQueryAnswer */
  ActionQueryAnswer = 2,
  ActionUnknown = -1,
  ActionRefused = -3
};

/* Plug-in ids of the seventeen shaders. */
enum {
  PluginIdFresnel = 1000075,
  PluginIdNoise3D = 1000104,
  PluginIdTiles = 1000123,
  PluginIdFusion = 1000125,
  PluginIdDistorter = 1001203,
  PluginIdBrightContrast = 1001214,
  PluginIdColorizer = 1001216,
  PluginIdGradient = 1001224,
  PluginIdNoise2D = 1001231,
  PluginIdFalloff = 1001232,
  PluginIdProjector = 1001235,
  PluginIdProximal = 1001238,
  PluginIdBanj = 1001258,
  PluginIdLumas = 1001266,
  PluginIdHue = 1001271,
  PluginIdPosterizer = 1001277,
  PluginIdBuffy = 1004202
};

/* Messages to a shader. The payload is a HostContainer. */
enum {
  MessageSetParameters = 112000,      /* take the values of the container's keys */
  MessageGetParameters = 112001,      /* put every exchanged value under its key */
  MessageDescribeParameters = 112003, /* put a DescribeType under every key */
  MessageForward = 112004,            /* filters pass it on to their inputs */
  MessageReportSlots = 1001257        /* put KeySlots and KeySlotStride */
};

/* The type words of MessageDescribeParameters. */
enum { DescribeInteger = 1, DescribeReal = 2 };

/* Container keys that cross the line. A shader's own parameters start at 1000 in its own table. */
enum {
  KeySlots = 12000,         /* integer: the address of the shader's ThreadSlot array */
  KeySlotStride = 12001,    /* integer: the size of one ThreadSlot in bytes */
  KeyLinkPluginId = 1016,   /* integer: the linked shader's id; 0 a bitmap; absent an empty link */
  KeyLinkParameters = 1017, /* container: the linked shader's parameters */
  KeyLinkFilename = 1018    /* filename: the linked bitmap */
};

/* Keys of the container that asks for a render of a document into a bitmap. */
enum {
  KeyRenderQuality = 5002, /* integer: 2 for the full picture, 0 for a fast one */
  KeyRenderWidth = 5008,   /* integer: pixels */
  KeyRenderHeight = 5009,  /* integer: pixels */
  KeyRenderPreview = 5067  /* bool: a preview, not a final picture */
};

/* Material channels, as ShaderInstance::channel and ChannelLink holders use them. */
enum {
  ChannelColour = 0,
  ChannelLuminance = 1,
  ChannelTransparency = 2,
  ChannelReflection = 3,
  ChannelEnvironment = 4,
  ChannelDiffusion = 5,
  ChannelBump = 6,
  ChannelAlpha = 7,
  ChannelSpecularColour = 8,
  ChannelPreview = -1,     /* the flat preview of a dialog */
  ChannelStandalone = 8427 /* a filter in this channel makes its inputs act as if not nested */
};

/* Types of scene objects, tags and materials that shaders name. */
enum {
  ObjectTypeExcludedFromFrame = 5102, /* 3D Noise fits no object frame to this kind */
  ObjectTypeParticles = 5109,
  TagTypePoints = 5600,
  TagTypePolygons = 5604,
  TagTypeTexture = 5616,
  TagTypeParticles = 5630,
  MaterialTypeStandard = 5703
};

/* Bits of an object's information flags, and of a particle's. */
enum {
  ObjectHasGeometry = 1 << 1,
  ObjectNeedsPolygonise = 1 << 3,
  ParticleVisible = 1 << 0,
  ParticleAlive = 1 << 1
};

/* Keys of a texture tag's settings container. */
enum {
  KeyTagOffsetU = 1000,
  KeyTagOffsetV = 1001,
  KeyTagLengthU = 1002,
  KeyTagLengthV = 1003,
  KeyTagProjection = 1004,
  KeyTagTile = 1007,
  KeyTagSeamless = 1008
};

/* A four-character code, first character in the highest byte. */
#define SORVANIX_FOURCC(a, b, c, d) \
  (((int32_t)(a) << 24) | ((int32_t)(b) << 16) | ((int32_t)(c) << 8) | (int32_t)(d))

/* The input channels of a mouse, under InputChannel. */
enum { MouseLeft = 1, MouseWheel = 100 };

/* Qualifier bits, and the key codes of keys that have no letter. Letters are their capitals. */
enum {
  QualifierShift = 1 << 0,
  QualifierControl = 1 << 1,
  QualifierAlt = 1 << 2,
  QualifierCommand = 1 << 4,
  KeyUp = 0x8000,
  KeyDown = 0x8001,
  KeyRight = 0x8002,
  KeyLeft = 0x8003,
  KeyEscape = 32785
};

/* Messages and message keys of dialogs and user areas. */
enum {
  DialogValue = SORVANIX_FOURCC('m', 'e', 'v', 'a'),    /* key: the gadget's new value */
  DialogDragging = SORVANIX_FOURCC('m', 'e', 'd', 'r'), /* key: 1 while the mouse still drags */
  DialogKey = SORVANIX_FOURCC('k', 'e', 'y', 'b'),      /* message: a key was pressed */
  InputDevice = SORVANIX_FOURCC('i', 'p', 'd', 'v'), /* key: the device, DialogMouse or DialogKey */
  InputChannel = SORVANIX_FOURCC('i', 'p', 'c', 'a'),   /* key: the button or the key code */
  InputQualifier = SORVANIX_FOURCC('i', 'p', 'q', 'a'), /* key: qualifier bits */
  DialogMouse = SORVANIX_FOURCC('m', 'o', 'u', 's'),
  InputX = SORVANIX_FOURCC('i', 'p', 'p', 'x'),      /* key: pixels from the area's left edge */
  InputY = SORVANIX_FOURCC('i', 'p', 'p', 'y'),      /* key: pixels from the area's upper edge */
  InputDouble = SORVANIX_FOURCC('i', 'p', 'd', 'c'), /* key: 1 for the second press in a row */
  InputWheel = SORVANIX_FOURCC('i', 'p', 'w', 'd'),  /* key: wheel steps, 120 for a notch */
  AreaInit = SORVANIX_FOURCC('b', 'I', 'N', 'I'),    /* message: the area was created */
  AreaDraw = SORVANIX_FOURCC('b', 'D', 'R', 'A'),    /* message: paint the area */
  AreaInput = SORVANIX_FOURCC('b', 'I', 'P', 'N'),   /* message: mouse or key input */
  AreaMinSize = SORVANIX_FOURCC('b', 'I', 'S', 'I'), /* message: tell the smallest size */
  AreaVisible = SORVANIX_FOURCC('b', 'V', 'I', 'N'), /* message: the area came on screen */
  AreaCast = SORVANIX_FOURCC('b', 'C', 'A', 'S'),    /* message: a message from another gadget */
  AreaWidth = SORVANIX_FOURCC('w', 'i', 'd', 't'),   /* reply key of AreaMinSize: pixels */
  AreaHeight = SORVANIX_FOURCC('h', 'e', 'i', 'g'),  /* reply key of AreaMinSize: pixels */
  AreaTimer = SORVANIX_FOURCC('b', 'T', 'I', 'M')    /* message: the time of setTimer has passed */
};

#endif
