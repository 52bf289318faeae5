#include "panel/scale.h"

namespace quorvex {
namespace {

constexpr int kTwiceTheUsual = 192;

int scale = 1;

}  // namespace

int ScaleFor(int wanted, int dotsPerInch) {
  if (wanted == 1 || wanted == 2) return wanted;
  return dotsPerInch >= kTwiceTheUsual ? 2 : 1;
}

int Scale() { return scale; }

void SetScale(int pixels) { scale = pixels; }

int ToPixels(int units) { return units * scale; }

Rect ToPixels(const Rect& units) {
  return {ToPixels(units.left), ToPixels(units.top), ToPixels(units.right), ToPixels(units.bottom)};
}

}  // namespace quorvex
