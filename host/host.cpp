#include "host/host.h"

#include <atomic>
#include <cassert>

#include "host/services/container_table.h"
#include "host/services/filenames.h"
#include "host/services/registration.h"
#include "host/services/resources.h"
#include "host/services/streams.h"
#include "host/services/strings.h"

namespace sorvanix::host {

namespace {

constinit std::atomic<bool> hostIsThere = false;

void InstallOwnServices(HostTables& tables) noexcept {
  InstallMemory(tables.general);
  InstallMessages(tables.general);
  InstallRegistration(tables.general);
  InstallFileQueries(tables.general);
  InstallStreams(tables.stream);
  InstallContainers(tables.container);
  InstallStrings(tables.string);
  InstallFilenames(tables.filename);
  InstallResources(tables.resources);
}

// The words of the block that are tables.
void Point(HostApi& api, const HostTables& tables) noexcept {
  api.general = &tables.general;
  api.render = &tables.render;
  api.stream = &tables.stream;
  api.container = &tables.container;
  api.string = &tables.string;
  api.dialog = &tables.dialog;
  api.channel = &tables.channel;
  api.filename = &tables.filename;
  api.file = &tables.file;
  api.dialogForm = &tables.dialogForm;
  api.resources = &tables.resources;
  api.object = &tables.object;
  api.material = &tables.material;
  api.document = &tables.document;
  api.documentList = &tables.documentList;
  api.thread = &tables.thread;
  api.bitmap = &tables.bitmap;
  api.matrix = &tables.matrix;
}

}  // namespace

Host::Host(HostOptions options) {
  [[maybe_unused]] const bool wasThere = hostIsThere.exchange(true);
  assert(!wasThere && "one Host at a time: the tables carry no context");
  formerSink_ = SetMessageSink(options.messages);
  InstallOwnServices(tables_);
  for (const ServiceInstaller install : options.services) install(tables_);
  api_.version = options.version;
  Point(api_, tables_);
}

Host::~Host() {
  SetMessageSink(formerSink_);
  hostIsThere = false;
}

}  // namespace sorvanix::host
