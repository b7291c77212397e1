// The working copy: made word by word, with links and texts of its own, and taken over by exchange.
#include "module/editors/edit_session.h"

#include <utility>

#include "module/editors/preview_scene.h"
#include "module/editors/shared_words.h"
#include "module/shell/value_kind.h"

namespace sorvanix {

namespace {

bool OwnsObjects(const ShaderTable& table) noexcept {
  for (const Field& field : table.fields) {
    if (OperationsOf(field.kind).release != nullptr) return true;
  }
  return false;
}

// The links and texts change hands, so that nothing is left that could fail.
void ExchangeOwnedObjects(const ShaderTable& table, void* first, void* second) noexcept {
  for (const Field& field : table.fields) {
    if (OperationsOf(field.kind).release == nullptr) continue;
    std::swap(MemberAt<void*>(first, field.offset), MemberAt<void*>(second, field.offset));
  }
}

void TakeOver(const ShaderTable& table, void* from, void* to) noexcept {
  CopySharedWords(table, from, to);
  ExchangeOwnedObjects(table, from, to);
}

}  // namespace

EditSession::EditSession(const EditorTable& table, ShaderInstance* original) noexcept
    : table_(table), original_(original) {
  table.fill(&record_);
}

EditSession::~EditSession() { record_.Free(&working_); }

bool EditSession::MakeCopy() noexcept {
  working_.channel = original_->channel;
  if (record_.Alloc(&working_) == 0) return false;
  const bool ownsObjects = OwnsObjects(*table_.shader);
  if (ownsObjects && record_.Copy(original_, &working_) == 0) return false;
  CopySharedWords(*table_.shader, original_->data, working_.data);
  // What Copy makes stands alone, and so must its words.
  if (ownsObjects) StoreInt(working_.data, table_.shader->nestedOffset, 0);
  TellChannel();
  return true;
}

void EditSession::TellChannel() noexcept {
  StoreInt(working_.data, table_.preview.channel, original_->channel);
}

bool EditSession::Begin() noexcept {
  if (original_->data == nullptr || !MakeCopy()) return false;
  if (!table_.HasPreview()) return true;
  scene_ = LoadPreviewScene(LoadInt(block(), table_.preview.object, 0));
  return scene_.get() != nullptr;
}

void EditSession::Confirm() noexcept { TakeOver(*table_.shader, block(), original_->data); }

// A copy that fails half-way leaves no links: it must not be the one that is confirmed.
void EditSession::Revert() noexcept {
  if (!OwnsObjects(*table_.shader)) {
    record_.Copy(original_, &working_);
  } else {
    ShaderInstance copy = {};
    const bool made = record_.Alloc(&copy) != 0 && record_.Copy(original_, &copy) != 0;
    if (made) TakeOver(*table_.shader, copy.data, block());
    record_.Free(&copy);
  }
  TellChannel();
}

}  // namespace sorvanix
