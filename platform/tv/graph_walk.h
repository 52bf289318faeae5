// Finding pins and filters in a filter graph.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <optional>
#include <vector>

#include "base/com_ptr.h"

namespace quorvex {

std::vector<ComPtr<IPin>> PinsOf(IBaseFilter& filter);
std::vector<ComPtr<IBaseFilter>> FiltersOf(IFilterGraph& graph);

PIN_DIRECTION DirectionOf(IPin& pin);
// The pin at the other end; null when there is none.
ComPtr<IPin> PeerOf(IPin& pin);
// Null for a pin that has lost its filter.
ComPtr<IBaseFilter> FilterOf(IPin& pin);

// A filter's pin of this direction and category (null: of any). A free one is preferred. Null when it has
// none.
ComPtr<IPin> FindPin(IBaseFilter& filter, PIN_DIRECTION direction, const GUID* category);

}  // namespace quorvex
