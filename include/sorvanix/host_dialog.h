/* Host tables for dialogs, user areas, bitmaps and the thread that draws previews.
 *
 * A dialog is a window of gadgets, each with an id. What happens in it reaches the module as
 * messages: containers with the keys of ids.h. All on the main thread, but for the bitmap and
 * thread operations that a preview calls on its own.
 */
#ifndef SORVANIX_HOST_DIALOG_H
#define SORVANIX_HOST_DIALOG_H

#include <sorvanix/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* How a real gadget shows its value. */
enum {
  FormatReal = 0,
  FormatPercent = 1, /* value 0.5 shows as 50 */
  FormatDegrees = 2, /* value in radians */
  FormatMeters = 3
};

/* A message to a dialog or a user area. reply takes what the message asks for. Nonzero when it
 * was handled.
 *
 * To a dialog: id is that of the gadget whose value the user changed, with DialogValue and
 * DialogDragging (an area's action has DialogDragging alone; a link's has neither), or DialogKey
 * with InputChannel and InputQualifier. To an area: AreaInit, AreaMinSize (answered by AreaWidth
 * and AreaHeight), AreaDraw, AreaTimer, and AreaInput with InputDevice, InputChannel,
 * InputQualifier, and of the mouse InputX, InputY, InputDouble and InputWheel. */
typedef int32_t (*DialogMessageFunction)(void* context, int32_t id, const HostContainer* message,
                                         HostContainer* reply) SORVANIX_NOEXCEPT;

/* Word 6: gadgets of an open dialog, and drawing into a user area. */
typedef struct DialogTable {
  /* Nonzero when the dialog has the gadget. */
  int32_t (*findGadget)(const HostDialog* dialog, int32_t id) SORVANIX_NOEXCEPT;
  void (*setInt)(HostDialog* dialog, int32_t id, int32_t value, int32_t minimum, int32_t maximum,
                 int32_t step) SORVANIX_NOEXCEPT;
  void (*setFloat)(HostDialog* dialog, int32_t id, float value, float minimum, float maximum,
                   float step, int32_t format) SORVANIX_NOEXCEPT;
  void (*setVector)(HostDialog* dialog, int32_t id, const Vector* colour) SORVANIX_NOEXCEPT;
  void (*setBool)(HostDialog* dialog, int32_t id, int32_t value) SORVANIX_NOEXCEPT;
  void (*setText)(HostDialog* dialog, int32_t id, const HostString* text) SORVANIX_NOEXCEPT;
  int32_t (*getInt)(const HostDialog* dialog, int32_t id, int32_t* value) SORVANIX_NOEXCEPT;
  int32_t (*getFloat)(const HostDialog* dialog, int32_t id, float* value) SORVANIX_NOEXCEPT;
  int32_t (*getVector)(const HostDialog* dialog, int32_t id, Vector* colour) SORVANIX_NOEXCEPT;
  int32_t (*getBool)(const HostDialog* dialog, int32_t id, int32_t* value) SORVANIX_NOEXCEPT;
  /* A new text. */
  HostString* (*getText)(const HostDialog* dialog, int32_t id)SORVANIX_NOEXCEPT;
  void (*enable)(HostDialog* dialog, int32_t id, int32_t on) SORVANIX_NOEXCEPT;
  void (*focus)(HostDialog* dialog, int32_t id) SORVANIX_NOEXCEPT;
  /* Lets the host edit a link in the nine gadgets from id on. */
  void (*setChannelLink)(HostDialog* dialog, int32_t id, ChannelLink* link) SORVANIX_NOEXCEPT;

  /* Makes a gadget a user area whose messages go to handler. */
  HostUserArea* (*attachUserArea)(HostDialog* dialog, int32_t id, DialogMessageFunction handler,
                                  void* context)SORVANIX_NOEXCEPT;
  void (*areaSize)(const HostUserArea* area, int32_t* width, int32_t* height) SORVANIX_NOEXCEPT;
  void (*redraw)(HostUserArea* area) SORVANIX_NOEXCEPT; /* asks for AreaDraw; from any thread */
  void (*drawBitmap)(HostUserArea* area, const HostBitmap* bitmap, int32_t x,
                     int32_t y) SORVANIX_NOEXCEPT;
  /* Sends an action of the area to its dialog: message id, with DialogDragging set to dragging. */
  void (*sendAction)(HostUserArea* area, int32_t dragging) SORVANIX_NOEXCEPT;
  /* While the mouse is held: waits for the next move, 0 when it was released. */
  int32_t (*pollMouse)(HostUserArea* area, int32_t* x, int32_t* y,
                       int32_t* qualifier) SORVANIX_NOEXCEPT;
  /* Sends AreaTimer to the area's handler every so many milliseconds; 0 stops it. */
  void (*setTimer)(HostUserArea* area, int32_t milliseconds) SORVANIX_NOEXCEPT;
  /* Lets the user choose a colour; 0 when cancelled. */
  int32_t (*chooseColour)(Vector* colour) SORVANIX_NOEXCEPT;
} DialogTable;

/* Word 12: files outside the host's own formats. */
typedef struct FileTable {
  /* Opens a file in the system's viewer; nonzero on success. */
  int32_t (*openInViewer)(const HostFilename* filename) SORVANIX_NOEXCEPT;
} FileTable;

/* Word 13: the dialog as a whole. */
typedef struct DialogFormTable {
  HostDialog* (*create)(DialogMessageFunction handler, void* context)SORVANIX_NOEXCEPT;
  void (*free)(HostDialog* dialog) SORVANIX_NOEXCEPT;
  /* Takes the layout from a dialog resource; 0 when there is none. */
  int32_t (*load)(HostDialog* dialog, HostResources* resources, int32_t id) SORVANIX_NOEXCEPT;
  void (*setTitle)(HostDialog* dialog, const HostString* title) SORVANIX_NOEXCEPT;
  /* Runs the dialog modally at a position, -1 and -1 leaving it to the host; 1 when confirmed. */
  int32_t (*open)(HostDialog* dialog, int32_t x, int32_t y) SORVANIX_NOEXCEPT;
  void (*close)(HostDialog* dialog, int32_t confirmed) SORVANIX_NOEXCEPT;
} DialogFormTable;

/* Word 20: background work for previews. */
typedef struct ThreadTable {
  /* Starts run(context) on a thread; finished(context) follows when it returns. */
  HostThread* (*start)(void (*run)(void* context, HostThread* thread) SORVANIX_NOEXCEPT,
                       void (*finished)(void* context) SORVANIX_NOEXCEPT,
                       void* context)SORVANIX_NOEXCEPT;
  /* On the thread itself: nonzero when it was told to stop. */
  int32_t (*mustStop)(const HostThread* thread) SORVANIX_NOEXCEPT;
  /* Tells the thread to stop, waits for it and frees it. */
  void (*end)(HostThread* thread) SORVANIX_NOEXCEPT;
} ThreadTable;

/* Word 21: pictures with eight bits a channel, row 0 at the top. */
typedef struct BitmapTable {
  HostBitmap* (*create)(void)SORVANIX_NOEXCEPT;
  void (*free)(HostBitmap* bitmap) SORVANIX_NOEXCEPT;
  int32_t (*init)(HostBitmap* bitmap, int32_t width, int32_t height,
                  int32_t depth) SORVANIX_NOEXCEPT;
  int32_t (*load)(HostBitmap* bitmap, const HostFilename* filename) SORVANIX_NOEXCEPT;
  int32_t (*width)(const HostBitmap* bitmap) SORVANIX_NOEXCEPT;
  int32_t (*height)(const HostBitmap* bitmap) SORVANIX_NOEXCEPT;
  void (*getPixel)(const HostBitmap* bitmap, int32_t x, int32_t y, int32_t* red, int32_t* green,
                   int32_t* blue) SORVANIX_NOEXCEPT;
  /* Components outside 0..255 are limited; pixels outside the picture are skipped. */
  void (*setPixel)(HostBitmap* bitmap, int32_t x, int32_t y, int32_t red, int32_t green,
                   int32_t blue) SORVANIX_NOEXCEPT;
} BitmapTable;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
