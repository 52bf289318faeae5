#include "devices/play_order.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <numeric>

namespace quorvex {

void PlayOrder::SetPlainOrder() {
  orderLength = std::clamp(itemCount, 0, static_cast<int>(kMaxOrderLength));
  std::iota(playOrder.begin(), playOrder.begin() + orderLength, 1);
}

void PlayOrder::SetOrder(std::span<const int> entries) {
  entries = entries.first(std::min(entries.size(), kMaxOrderLength));
  std::copy(entries.begin(), entries.end(), playOrder.begin());
  orderLength = static_cast<int>(entries.size());
}

void PlayOrder::Shuffle(const std::function<int()>& random) {
  for (int i = orderLength - 1; i > 0; --i) {
    std::swap(playOrder[static_cast<std::size_t>(i)],
              playOrder[static_cast<std::size_t>(random() % (i + 1))]);
  }
}

void PlayOrder::Shuffle() {
  std::srand(static_cast<unsigned>(std::time(nullptr)));
  Shuffle([] { return std::rand(); });
}

int PlayOrder::IndexOf(int item) const {
  const auto end = playOrder.begin() + orderLength;
  const auto found = std::find(playOrder.begin(), end, item);
  return found == end ? -1 : static_cast<int>(found - playOrder.begin());
}

int PlayOrder::CurrentEntry() const {
  return orderIndex >= 0 && orderIndex < orderLength ? playOrder[static_cast<std::size_t>(orderIndex)] : 0;
}

void PlayOrder::StepForward() { orderIndex = orderIndex + 1 >= orderLength ? 0 : orderIndex + 1; }

void PlayOrder::StepBack() { orderIndex = orderIndex > 0 ? orderIndex - 1 : std::max(orderLength - 1, 0); }

void PlayOrder::MoveTo(int item) { orderIndex = std::max(IndexOf(item), 0); }

}  // namespace quorvex
