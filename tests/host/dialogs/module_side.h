// The module's side of a dialog, played by a test: dialogs made through the tables, whose messages
// are kept and may be answered.
#pragma once

#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/channels/bitmap.h"
#include "host/channels/channel_link.h"
#include "host/dialogs/dialog_script.h"
#include "host/dialogs/dialog_tables.h"
#include "host/dialogs/headless_dialogs.h"
#include "host/host.h"
#include "host/services/containers.h"
#include "tests/host/channels/fake_shaders.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host::test {

/// A message as the module got it.
struct Received {
  std::int32_t id = 0;
  Container message;
};

/// What a dialog or an area does with a message; nonzero takes it.
using Answer =
    std::function<std::int32_t(std::int32_t id, const Container& message, Container& reply)>;

/// Keeps messages and answers them. Must outlive the dialog.
struct Listener {
  std::vector<Received> received;
  Answer answer;

  static std::int32_t Hear(void* context, std::int32_t id, const HostContainer* message,
                           HostContainer* reply) noexcept {
    auto& self = *static_cast<Listener*>(context);
    self.received.push_back({id, *Container::From(message)});
    return self.answer ? self.answer(id, *Container::From(message), *Container::From(reply)) : 0;
  }
  /// The messages of one id.
  std::vector<Container> Of(std::int32_t id) const {
    std::vector<Container> found;
    for (const Received& each : received) {
      if (each.id == id) found.push_back(each.message);
    }
    return found;
  }
};

/// A host whose dialogs are played from a list, and the layouts of dialogs 100 and 200 in a folder.
class DialogTest : public ::testing::Test {
 protected:
  static constexpr const char* kLayout = R"({ "id": 100, "title": "Main", "layout":
      { "kind": "column", "children": [
        { "kind": "real", "id": 101, "label": "Amount" },
        { "kind": "slider", "id": 102 },
        { "kind": "integer", "id": 103 },
        { "kind": "check", "id": 104 },
        { "kind": "choice", "id": 105, "entries": [ { "value": 2, "label": "Two" },
                                                    { "value": 4, "label": "Four" } ] },
        { "kind": "colour", "id": 106 }, { "kind": "text", "id": 107 },
        { "kind": "button", "id": 108 }, { "kind": "label", "id": 109, "text": "Words" },
        { "kind": "link", "id": 110 },
        { "kind": "area", "id": 120, "width": 4, "height": 3 },
        { "kind": "area", "id": 121, "width": 2, "height": 2 } ] } })";

  DialogTest() {
    folder_.Write("Resources/strings.json", "{}");
    folder_.Write("Resources/dialogs/100.json", kLayout);
    folder_.Write("Resources/dialogs/200.json",
                  R"({ "id": 200, "title": "Inner", "layout": { "kind": "real", "id": 201 } })");
  }

  const DialogTable& Gadgets() const { return host_.Tables().dialog; }
  const DialogFormTable& Forms() const { return host_.Tables().dialogForm; }

  struct FreeDialog {
    const DialogFormTable* table;
    void operator()(HostDialog* dialog) const { table->free(dialog); }
  };
  using OwnedDialog = std::unique_ptr<HostDialog, FreeDialog>;

  OwnedDialog Create(Listener& listener, std::int32_t id = 100) {
    OwnedDialog dialog(Forms().create(Listener::Hear, &listener), FreeDialog{&Forms()});
    HostFilename* place =
        host_.Tables().filename.fromString(Text(Utf8FromPath(folder_.Path())).Handle());
    HostResources* resources = host_.Tables().resources.open(place);
    EXPECT_NE(resources, nullptr);
    EXPECT_EQ(Forms().load(dialog.get(), resources, id), 1);
    host_.Tables().resources.close(resources);
    host_.Tables().filename.free(place);
    return dialog;
  }

  /// From now on dialogs are played from this list.
  HeadlessDialogs& Script(std::string_view events) {
    headless_ = std::make_unique<HeadlessDialogs>(
        ParseJson(events).and_then(ReadDialogEvents).value(), fake::Catalogue(), MaterialPlaces());
    SetDialogService(headless_.get());
    return *headless_;
  }
  ~DialogTest() override { SetDialogService(nullptr); }

  TemporaryFolder folder_;
  fake::LinkHost host_;
  Listener listener_;
  std::unique_ptr<HeadlessDialogs> headless_;
};

}  // namespace sorvanix::host::test
