// The callbacks that follow from a shader's table alone.
#pragma once

#include "module/shell/block.h"
#include "module/shell/exchange.h"
#include "module/shell/persistence.h"
#include "module/shell/thread_slots.h"

namespace sorvanix {

/// Callbacks of the shader record over one table. A shader whose rule differs stores its own
/// instead.
template <const ShaderTable& table>
struct TableCallbacks {
  static std::int32_t Alloc(ShaderInstance* instance) noexcept {
    return AllocBlock(table, instance);
  }
  static void Free(ShaderInstance* instance) noexcept { FreeBlock(table, instance); }
  static std::int32_t Copy(const ShaderInstance* source, ShaderInstance* destination) noexcept {
    return CopyBlock(table, source, destination);
  }
  static std::int32_t Compare(const ShaderInstance* first, const ShaderInstance* second) noexcept {
    return CompareBlocks(table, first, second);
  }
  static std::int32_t Read(ShaderInstance* instance, HostStream* reader) noexcept {
    return ReadBlock(table, instance, reader);
  }
  static std::int32_t Write(const ShaderInstance* instance, HostStream* writer) noexcept {
    return WriteBlock(table, instance, writer);
  }
  /// Of a shader without a dialog: nothing was confirmed.
  static std::int32_t Edit(ShaderInstance*) noexcept { return 0; }
  static std::uint32_t GetInfo() noexcept { return table.infoWord; }
  static std::int32_t Message(ShaderInstance* instance, std::int32_t id,
                              HostContainer* payload) noexcept {
    return AnswerMessage(table, instance, id, payload);
  }
  /// For shaders whose slots begin all zero. Without memory for them the render goes on.
  static std::int32_t InitSlots(ShaderInstance* instance, const RenderInit* init) noexcept {
    if (instance->data != nullptr && init->render != nullptr) MakeSlots(table, instance, init);
    return 0;
  }
  static void FreeRender(ShaderInstance* instance) noexcept { FreeSlots(instance); }

  /// Stores all of these but InitSlots into a cleared record.
  static void Fill(ShaderRecord* record) noexcept {
    record->Alloc = Alloc;
    record->Free = Free;
    record->Copy = Copy;
    record->Compare = Compare;
    record->Read = Read;
    record->Write = Write;
    record->Edit = Edit;
    record->GetInfo = GetInfo;
    record->Message = Message;
    record->FreeRender = FreeRender;
  }
};

}  // namespace sorvanix
