// A user of dialogs who does what bytes say.
#pragma once

#include "fuzz/container_source.h"
#include "host/dialogs/dialog.h"

namespace sorvanix::fuzz {

/// Whether a key makes the module draw parameters at random.
bool DrawsAtRandom(std::int32_t code, std::int32_t qualifier) noexcept;

/// For a service that shows no pictures: the areas are there all the same, but so small that to
/// move their pixels does not take most of the time.
void PrepareSmallAreas(host::Dialog& dialog);

/// Acts in the innermost dialog until it is closed or the bytes end, which cancels. The first byte
/// says whether there are pictures: previews cost a thread and a scene for each dialog, so that
/// most inputs do better without.
class DialogUser final : public host::DialogService {
 public:
  explicit DialogUser(const ByteSource& bytes)
      : bytes_(bytes), showsPictures_(bytes_.Byte() == 1) {}

  void RunModal(host::Dialog& dialog, std::int32_t x, std::int32_t y) override;
  std::optional<Vector> ChooseColour(const Vector& shown) override;
  bool OpenInViewer(const std::filesystem::path&) override { return bytes_.Byte() % 2 == 1; }
  std::optional<host::MousePlace> PollMouse(host::UserArea& area) override;
  bool ShowsPictures() const noexcept override { return showsPictures_; }

  bool HasDrawnAtRandom() const noexcept { return hasDrawnAtRandom_; }

 private:
  bool IsTired() const noexcept;
  void Act(host::Dialog& dialog);
  void SetGadget(host::Dialog& dialog);
  host::GadgetValue TakeValue(const host::Gadget& gadget);
  host::GadgetValue TakeNumber(const host::Gadget& gadget);
  void ChangeLink(host::Dialog& dialog, const host::Gadget& gadget);
  void PressKey(host::Dialog& dialog);
  void UseArea(host::Dialog& dialog);
  void SendAnything(host::Dialog& dialog);
  host::MousePlace TakePlace();
  std::int32_t TakeQualifier();

  ByteSource bytes_;
  bool showsPictures_;
  bool hasDrawnAtRandom_ = false;
  int acts_ = 0;
  int opened_ = 0;
  int previews_ = 0;
};

}  // namespace sorvanix::fuzz
