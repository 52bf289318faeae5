// What applications want of closed captions: set by them, read by the thread that draws.
#pragma once

#include <atomic>

#include "platform/common/line21_decoder.h"

namespace quorvex {

struct CaptionWishes {
  std::atomic<bool> shown{false};
  std::atomic<bool> opaque{true};
  std::atomic<Line21Channel> channel{Line21Channel::kCaption1};
};

}  // namespace quorvex
