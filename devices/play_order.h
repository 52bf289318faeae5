// The order in which a device plays its items (a disc's tracks, an album's files).
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <span>

namespace quorvex {

inline constexpr std::size_t kMaxOrderLength = 1000;

// The entries are 1-based item numbers. A device that plays items derives from it.
struct PlayOrder {
  int itemCount = 0;    // items of the medium
  int orderLength = 0;  // entries in use, 0..1000
  int orderIndex = 0;   // of the current entry: 0..orderLength - 1, 0 when there is none
  std::array<int, kMaxOrderLength> playOrder{};

  // 1, 2, ... itemCount (at most 1000 entries). orderIndex stays.
  void SetPlainOrder();

  // These entries, at most the first 1000. orderIndex stays.
  void SetOrder(std::span<const int> entries);

  // Permutes the entries; `random` answers numbers from 0 up, like rand.
  void Shuffle(const std::function<int()>& random);
  // The same with the library's generator, seeded with the time.
  void Shuffle();

  // The position of the first entry equal to `item`; -1 when there is none.
  [[nodiscard]] int IndexOf(int item) const;
  [[nodiscard]] bool Contains(int item) const { return IndexOf(item) >= 0; }

  // The entry at orderIndex; 0 when the order is empty.
  [[nodiscard]] int CurrentEntry() const;
  [[nodiscard]] bool AtLastEntry() const { return orderIndex == orderLength - 1; }

  // One entry on or back, from either end to the other.
  void StepForward();
  void StepBack();

  // Moves to `item`; to the first entry when the order does not have it.
  void MoveTo(int item);
};

}  // namespace quorvex
