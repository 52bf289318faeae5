// An interface of a filter that is an object of its own, and knows its filter.
#pragma once

#include "platform/common/filter_base.h"
#include "platform/common/object_part.h"

namespace quorvex {

template <typename Interface>
class FilterPart : public ObjectPart<Interface> {
 public:
  explicit FilterPart(FilterBase& owner) : ObjectPart<Interface>(owner), filter(owner) {}

 protected:
  ~FilterPart() = default;

  FilterBase& filter;
};

}  // namespace quorvex
