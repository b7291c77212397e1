// A host for tests: records every call of the module, answers as scripted, and fails on demand.
//
// Only contract headers: it stands behind the module as any host would. One FakeHost is current at
// a time; it must outlive the module that it is attached to.
#pragma once

#include <sorvanix/host_api.h>

#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "tests/support/fake_bitmap.h"
#include "tests/support/fake_data.h"
#include "tests/support/fake_dialog.h"
#include "tests/support/fake_documents.h"
#include "tests/support/scripted_links.h"

namespace sorvanix::test {

/// What the module handed over at one registration.
struct Registration {
  std::int32_t api, type, id;
  std::string name;
  ShaderRecord record;
  std::int32_t size;
};

/// The text behind a string; that of the shared empty one for null.
std::string& FakeTextOf(HostString* text);
const std::string& FakeTextOf(const HostString* text);

/// Counts a call down; true for the one that shall fail.
inline bool IsDue(int& countdown) { return countdown > 0 && --countdown == 0; }

class FakeHost {
 public:
  explicit FakeHost(Word version = 7300);
  ~FakeHost();
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  HostApi api = {};         ///< to be handed to the entry; tables may be taken out before
  RenderTable render = {};  ///< CPUs are served; noise is what a test installs
  ObjectTable object = {};
  DocumentTable document = {};

  std::vector<std::string> calls;  ///< every call but stream and container ones, with arguments
  std::vector<Registration> registrations;    ///< also the refused one
  std::vector<std::string> messages;          ///< texts of message dialogs, in order
  std::map<std::int32_t, std::string> texts;  ///< resource texts by id

  int refuseRegistration = 0;  ///< 1 refuses the first registration, 2 the second, ...
  bool failResources = false;
  bool failLinkedShader = false;  ///< links make no shader by its id
  bool failContainers = false;

  // Each fails one call: 1 the next, 2 the one after, ... It is 0 again once that call was made.
  int failAllocation = 0;
  int failLink = 0;  ///< creations
  int failLinkCopy = 0;
  int failLinkInit = 0;        ///< InitRender of a link answers RenderInitFailed
  int failLinkBitmap = 0;      ///< a link's bitmap cannot be loaded
  int failContainer = 0;       ///< creations
  int failContainerWrite = 0;  ///< the setter stores nothing
  int failText = 0;            ///< creations and copies answer the shared empty text
  int failRead = 0;            ///< a stream's next value cannot be had
  int failWrite = 0;           ///< a stream does not store the value
  int failPolygonise = 0;
  int failResourcesOpen = 0;
  int failBitmap = 0;      ///< creations
  int failBitmapInit = 0;  ///< a bitmap cannot have its size
  int failPicture = 0;     ///< a bitmap's file cannot be loaded

  std::vector<LinkRead> reads;  ///< of all links, in order
  bool recordReads = true;      ///< to be switched off where several threads read
  int linksMade = 0;
  int liveLinks = 0;
  int liveContainers = 0;

  FakeDialogs dialogs;
  FakeDocuments documents;
  std::map<std::string, FakePicture> pictures;  ///< that can be loaded, by path
  std::vector<std::string> picturesAsked;
  std::set<FakeBitmap*> bitmaps;  ///< that the module made and did not free

  std::int32_t cpuCount = 1;
  /// Index that hostCpuIndex answers on the calling thread.
  static constinit thread_local std::int32_t cpuIndex;

  /// Adds to `calls`; from any thread.
  void RecordCall(std::string call) {
    const std::lock_guard lock(mutex_);
    calls.push_back(std::move(call));
  }

  int liveBlocks() const { return static_cast<int>(blocks_.size()); }
  int liveTexts() const { return liveTexts_; }  ///< strings and filenames

  static FakeHost& Current();

 private:
  friend struct FakeTables;
  std::mutex mutex_;  // previews allocate on threads of their own
  std::set<void*> blocks_;
  int liveTexts_ = 0;
};

}  // namespace sorvanix::test
