/* The smallest host: loads the module through the contract, samples 2D Noise once and prints the
 * colour.
 *
 * usage: minimal_host MODULE    (plain C11; on POSIX link with -ldl, on Windows with -lshell32)
 *
 * Paths and texts are UTF-8 on every system.
 */
#include <math.h>
#include <sorvanix/host_api.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#ifdef _WIN32
#include <windows.h>
/* After windows.h, which it builds upon. */
#include <shellapi.h>

#define SEPARATORS "/\\"
#define FIND(library, name) ((void*)GetProcAddress((HMODULE)(library), name))
#define CLOSE(library) FreeLibrary((HMODULE)(library))
enum { LongestPath = 1024 }; /* what the module keeps of its path */

static void* openLibrary(const char* path) {
  wchar_t wide[LongestPath];
  return MultiByteToWideChar(CP_UTF8, 0, path, -1, wide, LongestPath) == 0 ? NULL
                                                                           : LoadLibraryW(wide);
}

/* The argument of the command line. main's own has lost the letters outside the system's code page.
 */
static const char* modulePath(int argumentCount, char** arguments) {
  static char path[LongestPath];
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &argumentCount);
  (void)arguments;
  if (wide == NULL || argumentCount != 2 ||
      WideCharToMultiByte(CP_UTF8, 0, wide[1], -1, path, LongestPath, NULL, NULL) == 0)
    path[0] = '\0';
  LocalFree(wide);
  return path[0] == '\0' ? NULL : path;
}
#else
#include <dlfcn.h>

#define SEPARATORS "/"
#define FIND(library, name) dlsym(library, name)
#define CLOSE(library) dlclose(library)

static void* openLibrary(const char* path) { return dlopen(path, RTLD_NOW); }

static const char* modulePath(int argumentCount, char** arguments) {
  return argumentCount == 2 ? arguments[1] : NULL;
}
#endif

/* Texts and filenames are plain C strings here. An empty one is always the shared one, which is
 * never freed. */
static char emptyText[] = "";

static char* copyText(const void* text) {
  const size_t length = strlen(text);
  char* copy = length == 0 ? NULL : malloc(length + 1);
  return copy == NULL ? emptyText : strcpy(copy, text);
}
static HostString* stringFromChars(const char* chars, int32_t length) {
  (void)length; /* the module passes zero-terminated text */
  return (HostString*)copyText(chars);
}
static void freeText(void* text) {
  if (text != emptyText) free(text);
}
static void freeString(HostString* text) { freeText(text); }
static void freeFilename(HostFilename* filename) { freeText(filename); }
static HostFilename* filenameFromString(const HostString* path) {
  return (HostFilename*)copyText(path);
}
static HostFilename* copyFilename(const HostFilename* name) {
  return (HostFilename*)copyText(name);
}
static HostFilename* directory(const HostFilename* filename) {
  const char* path = (const char*)filename;
  size_t length = strlen(path);
  while (length > 0 && strchr(SEPARATORS, path[length - 1]) == NULL) --length;
  char* folder = length == 0 ? emptyText : copyText(path);
  if (length > 1) --length; /* the root keeps its slash */
  if (folder != emptyText) folder[length] = '\0';
  return (HostFilename*)folder;
}

/* Resources: this host has no files, and names every shader by its text's number. */
static HostResources* openResources(const HostFilename* folder) {
  (void)folder;
  return (HostResources*)emptyText;
}
static void closeResources(HostResources* resources) { (void)resources; }
static HostString* loadString(HostResources* resources, int32_t id, int32_t flag) {
  char name[32];
  (void)resources, (void)flag;
  snprintf(name, sizeof name, "shader %d", (int)id);
  return (HostString*)copyText(name);
}

static void* allocate(size_t size) { return calloc(1, size == 0 ? 1 : size); }
static void showMessage(const HostString* text, int32_t flags) {
  (void)flags;
  fprintf(stderr, "%s\n", (const char*)text);
}

/* Keeps the one shader that this program samples. */
static ShaderRecord noise2D;
static int32_t registerPlugin(int32_t api, int32_t type, int32_t id, const HostString* name,
                              const ShaderRecord* record, int32_t size) {
  (void)api, (void)type, (void)name;
  if (id == PluginIdNoise2D && size == (int32_t)sizeof noise2D) noise2D = *record;
  return 1;
}

/* The host's noise: any smooth function does for a start. */
static float unitNoiseAt(const Vector* p, float time) {
  return 0.5f + 0.25f * sinf(p->x + time) * cosf(p->y);
}

int main(int argumentCount, char** arguments) {
  static const GeneralTable general = {.alloc = allocate,
                                       .free = free,
                                       .messageDialog = showMessage,
                                       .registerPlugin = registerPlugin};
  static const RenderTable render = {.unitNoiseAt = unitNoiseAt};
  static const StringTable string = {
      .empty = (HostString*)emptyText, .createFromChars = stringFromChars, .free = freeString};
  static const FilenameTable filename = {.empty = (HostFilename*)emptyText,
                                         .fromString = filenameFromString,
                                         .copy = copyFilename,
                                         .free = freeFilename,
                                         .directory = directory};
  static const ResourceTable resources = {
      .open = openResources, .close = closeResources, .loadString = loadString};
  HostApi api = {.version = 7300,
                 .general = &general,
                 .render = &render,
                 .string = &string,
                 .filename = &filename,
                 .resources = &resources};

  const char* path = modulePath(argumentCount, arguments);
  void* module = path == NULL ? NULL : openLibrary(path);
  EntryFunction entry = NULL;
  if (module != NULL) *(void**)&entry = FIND(module, SORVANIX_ENTRY_NAME);
  if (entry == NULL || entry(ActionAttach, &api, 0, path) != 1 ||
      entry(ActionStart, NULL, 0, NULL) != 1) {
    fprintf(stderr, "usage: minimal_host MODULE (a sorvaNIX module that starts)\n");
    return EXIT_FAILURE;
  }

  ShaderInstance instance = {.channel = ChannelColour};
  ChannelSample sample = {.uvw = {0.25f, 0.5f, 0}, .blurScale = 1};
  Vector colour = {0, 0, 0};
  if (noise2D.Output == NULL || noise2D.Alloc(&instance) == 0) return EXIT_FAILURE;
  noise2D.Output(&colour, &instance, &sample);
  printf("2D Noise at (0.25, 0.5): %.4f %.4f %.4f\n", (double)colour.x, (double)colour.y,
         (double)colour.z);

  noise2D.Free(&instance);
  entry(ActionDetach, NULL, 0, NULL);
  CLOSE(module);
  return EXIT_SUCCESS;
}
