// The pins of a capture graph's filters.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <string>

#include "base/com_ptr.h"

namespace quorvex {

// The last pin of a filter in a direction, of that name when one is given; null when there is none, or no
// filter.
ComPtr<IPin> FindPinByName(IBaseFilter* filter, PIN_DIRECTION direction, const std::string& name = "");

// Connects two pins as they are; a failure when one is missing.
HRESULT ConnectPins(IGraphBuilder& graph, const ComPtr<IPin>& output, const ComPtr<IPin>& input);

// Takes everything that a filter feeds out of the graph, its far ends first; the filter stays.
void RemoveDownstream(IGraphBuilder& graph, IBaseFilter* filter);

}  // namespace quorvex
