// Filters in the platform's device categories, where its device enumerator finds them.
#pragma once

#include "platform/common/com_server.h"

namespace quorvex {

// The values that list a filter in a category by a friendly name.
inline std::vector<ClassesValue> InstanceValues(const GUID& category, const CLSID& filter,
                                                const std::wstring& name) {
  const std::wstring key = L"CLSID\\" + GuidText(category) + L"\\Instance\\" + GuidText(filter);
  return {{key, L"FriendlyName", name}, {key, L"CLSID", GuidText(filter)}};
}

}  // namespace quorvex
