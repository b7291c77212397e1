// The standalone host: fills the block of 36 words that a module is attached with.
#pragma once

#include <sorvanix/host_api.h>

#include <vector>

#include "host/services/memory.h"
#include "host/services/messages.h"

namespace sorvanix::host {

/// Every table of the block. A function that nobody installed is null, which a module tolerates.
struct HostTables {
  GeneralTable general = {};
  RenderTable render = {};
  StreamTable stream = {};
  ContainerTable container = {};
  StringTable string = {};
  DialogTable dialog = {};
  ChannelTable channel = {};
  FilenameTable filename = {};
  FileTable file = {};
  DialogFormTable dialogForm = {};
  ResourceTable resources = {};
  ObjectTable object = {};
  MaterialTable material = {};
  DocumentTable document = {};
  DocumentListTable documentList = {};
  ThreadTable thread = {};
  BitmapTable bitmap = {};
  MatrixTable matrix = {};
};

/// Puts the functions of one service into the tables: noise, channels, a renderer, dialogs.
using ServiceInstaller = void (*)(HostTables& tables);

struct HostOptions {
  Word version = 7300;              ///< word 0: what the host says of itself
  MessageSink* messages = nullptr;  ///< must outlive the host; null is the standard error stream
  /// Services beyond those of host/services, installed in this order after them; so a later one
  /// may replace what an earlier one put there:
  ///     Host host({.services = {[](HostTables& t) { InstallNoiseServices(t.render); }}});
  std::vector<ServiceInstaller> services = {};
};

/// The host of this process. The functions of the contract carry no context, so their state is the
/// process's: one Host at a time, asserted. It must outlive the modules that are attached to it,
/// since a module calls back into the tables until it is unloaded.
class Host {
 public:
  explicit Host(HostOptions options = {});
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// What ActionAttach takes; valid as long as the host.
  HostApi& Api() noexcept { return api_; }
  const HostTables& Tables() const noexcept { return tables_; }
  Word Version() const noexcept { return api_.version; }

  /// Blocks and objects that the module or the host still holds.
  MemoryStatistics Memory() const noexcept { return GetMemoryStatistics(); }

 private:
  HostTables tables_;
  HostApi api_ = {};
  MessageSink* formerSink_ = nullptr;
};

}  // namespace sorvanix::host
