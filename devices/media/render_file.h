// Builds the part of a filter graph that plays a file.
#pragma once

#include <windows.h>

#include <strmif.h>

namespace quorvex {

// Fills an empty graph with what plays the file at `path`. Answers what IGraphBuilder::RenderFile answers.
HRESULT RenderMediaFile(IGraphBuilder* graph, const wchar_t* path);

}  // namespace quorvex
