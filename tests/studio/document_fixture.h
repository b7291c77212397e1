// A document under its commands, in a folder of its own.
#pragma once

#include "apps/studio/document/commands.h"
#include "apps/studio/document/document.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {

class DocumentTest : public StudioTest {
 protected:
  // Some of everything that the studio changes.
  void Edit() {
    commands_.PlaceShader({.channel = "diffusion", .inputs = {}}, "Gradient");
    commands_.Wrap({.channel = "diffusion", .inputs = {}}, "Colorizer");
    commands_.SwitchChannel("bump", true);
    commands_.AddMaterial();
    commands_.RenameMaterial(0, "Renamed");
    commands_.DuplicateMaterial();
    selection_.SetMaterial(0);
    commands_.RemoveMaterial();
  }
  void UndoAll() { document_.History().setIndex(0); }

  Document document_{Catalogue()};
  Selection selection_{document_};
  Commands commands_{document_, selection_};
};

}  // namespace sorvanix::studio
