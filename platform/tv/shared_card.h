// The cards that all processes of the user share (%LOCALAPPDATA%\Quorvex\card.state).
#pragma once

#include "platform/common/shared_file.h"
#include "platform/tv/card_state.h"

namespace quorvex {

class SharedCard {
 public:
  SharedCard();

  CardState& operator*() const { return state; }
  CardState* operator->() const { return &state; }

 private:
  SharedFile file;
  CardState alone;  // this process's own when the file cannot be mapped
  CardState& state;
};

}  // namespace quorvex
