// An interface of a filter that is an object of its own: it lives and is counted with its filter.
#pragma once

#include <unknwn.h>

#include "platform/common/filter_base.h"

namespace quorvex {

template <typename Interface>
class FilterPart : public Interface {
 public:
  explicit FilterPart(FilterBase& owner) : filter(owner) {}
  FilterPart(const FilterPart&) = delete;
  FilterPart& operator=(const FilterPart&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return filter.QueryInterface(iid, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return filter.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return filter.Release(); }

 protected:
  ~FilterPart() = default;

  FilterBase& filter;
};

}  // namespace quorvex
