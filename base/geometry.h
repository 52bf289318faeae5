// Rectangles in pixels, for code that does not know windows.
#pragma once

namespace quorvex {

struct Point {
  int x = 0;
  int y = 0;
  friend constexpr bool operator==(const Point&, const Point&) = default;
};

struct Size {
  int width = 0;
  int height = 0;
  friend constexpr bool operator==(const Size&, const Size&) = default;
};

// left and top lie inside, right and bottom just outside.
struct Rect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  [[nodiscard]] constexpr int Width() const { return right - left; }
  [[nodiscard]] constexpr int Height() const { return bottom - top; }
  [[nodiscard]] constexpr Size Extent() const { return {Width(), Height()}; }
  [[nodiscard]] constexpr bool Contains(Point point) const {
    return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
  }
  [[nodiscard]] constexpr bool Contains(const Rect& other) const {
    return other.left >= left && other.right <= right && other.top >= top && other.bottom <= bottom;
  }
  [[nodiscard]] constexpr bool Intersects(const Rect& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
  friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

constexpr Rect Shifted(const Rect& rect, Point by) {
  return {rect.left + by.x, rect.top + by.y, rect.right + by.x, rect.bottom + by.y};
}

// Half of a length, rounding down also below zero, as an arithmetic shift does.
constexpr int Half(int length) { return length >> 1; }

}  // namespace quorvex
