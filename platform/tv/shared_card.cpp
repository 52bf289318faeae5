#include "platform/tv/shared_card.h"

#include <new>

namespace quorvex {

SharedCard::SharedCard()
    : file(L"card.state", sizeof(CardState)),
      state(file.Memory() != nullptr ? *static_cast<CardState*>(file.Memory()) : alone) {
  if (state.version != CardState::kVersion) new (&state) CardState;
}

}  // namespace quorvex
