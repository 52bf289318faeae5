// An output pin of the DVD source: one type, as long as it lives.
#pragma once

#include <utility>

#include "platform/common/output_pin.h"

namespace quorvex {

class DvdPin final : public OutputPin {
 public:
  // Offers `offered`, in `count` buffers of `bytes` bytes.
  DvdPin(FilterBase& owner, const wchar_t* id, MediaType offered, long count, long bytes)
      : OutputPin(owner, id), type(std::move(offered)) {
    needs.cBuffers = count;
    needs.cbBuffer = bytes;
  }

 protected:
  std::vector<MediaType> Types() override { return {type}; }
  [[nodiscard]] bool LaysOut() const override { return true; }
  ALLOCATOR_PROPERTIES BufferNeeds(const MediaType&) override { return needs; }

 private:
  const MediaType type;
  ALLOCATOR_PROPERTIES needs{};
};

}  // namespace quorvex
