#include "platform/tv/channel_plan.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace quorvex {
namespace {

// Channels that follow each other at equal distances.
struct Band {
  int first;
  int last;
  long kilohertz;  // of the first channel's picture
  long step;
};

constexpr Band kAmericanAntenna[] = {
    {2, 4, 55250, 6000}, {5, 6, 77250, 6000}, {7, 13, 175250, 6000}, {14, 69, 471250, 6000}};
constexpr Band kAmericanCable[] = {{1, 1, 73250, 0},      {2, 4, 55250, 6000},     {5, 6, 77250, 6000},
                                   {7, 13, 175250, 6000}, {14, 22, 121250, 6000},  {23, 94, 217250, 6000},
                                   {95, 99, 91250, 6000}, {100, 125, 649250, 6000}};
constexpr Band kEuropeanAntenna[] = {{2, 4, 48250, 7000}, {5, 12, 175250, 7000}, {21, 69, 471250, 8000}};
constexpr Band kBritishAntenna[] = {{21, 69, 471250, 8000}};
// The special channels S1 to S41.
constexpr Band kEuropeanCable[] = {{1, 10, 105250, 7000}, {11, 20, 231250, 7000}, {21, 41, 303250, 8000}};
constexpr Band kJapaneseAntenna[] = {
    {1, 3, 91250, 6000}, {4, 7, 171250, 6000}, {8, 12, 193250, 6000}, {13, 62, 471250, 6000}};
constexpr Band kJapaneseCable[] = {{13, 22, 109250, 6000}, {23, 63, 223250, 6000}};

struct Plan {
  std::span<const Band> antenna;
  std::span<const Band> cable;
  long soundAbove;  // kHz from a channel's picture to its sound
};
constexpr Plan kAmerican{kAmericanAntenna, kAmericanCable, 4500};
constexpr Plan kEuropean{kEuropeanAntenna, kEuropeanCable, 5500};
constexpr Plan kBritish{kBritishAntenna, kEuropeanCable, 6000};
constexpr Plan kJapanese{kJapaneseAntenna, kJapaneseCable, 4500};

struct Country {
  int code;
  const Plan* plan;
};
constexpr Country kCountries[] = {{kUnitedStates, &kAmerican},
                                  {31, &kEuropean},
                                  {32, &kEuropean},
                                  {34, &kEuropean},
                                  {39, &kEuropean},
                                  {41, &kEuropean},
                                  {43, &kEuropean},
                                  {44, &kBritish},
                                  {45, &kEuropean},
                                  {46, &kEuropean},
                                  {47, &kEuropean},
                                  {49, &kEuropean},
                                  {52, &kAmerican},
                                  {81, &kJapanese},
                                  {82, &kAmerican},
                                  {351, &kEuropean},
                                  {358, &kEuropean},
                                  {886, &kAmerican}};

const Country* FindCountry(int code) {
  const auto* found = std::find_if(std::begin(kCountries), std::end(kCountries),
                                   [=](const Country& country) { return country.code == code; });
  return found != std::end(kCountries) ? found : nullptr;
}

const Plan& PlanOf(int country) {
  const Country* known = FindCountry(country);
  return known != nullptr ? *known->plan : kAmerican;
}

std::span<const Band> BandsOf(const Plan& plan, TunerInput input) {
  return input == TunerInput::kAntenna ? plan.antenna : plan.cable;
}

}  // namespace

bool HasChannelPlan(int country) { return FindCountry(country) != nullptr; }

ChannelRange ChannelsOf(int country, TunerInput input) {
  const std::span<const Band> bands = BandsOf(PlanOf(country), input);
  return {bands.front().first, bands.back().last};
}

std::optional<Carriers> CarriersOf(int country, TunerInput input, int channel) {
  const Plan& plan = PlanOf(country);
  for (const Band& band : BandsOf(plan, input)) {
    if (channel < band.first || channel > band.last) continue;
    const long picture = band.kilohertz + (channel - band.first) * band.step;
    return Carriers{picture * 1000, (picture + plan.soundAbove) * 1000};
  }
  return std::nullopt;
}

}  // namespace quorvex
