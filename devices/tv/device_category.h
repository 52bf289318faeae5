// The platform's categories of filters: what is listed in them, by place and by name.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <functional>
#include <string>

#include "base/com_ptr.h"

namespace quorvex {

// Makes what lists the categories; answers the platform's code.
HRESULT CreateDeviceEnumerator(ComPtr<ICreateDevEnum>& devices);

// Visits a category's entries in the platform's order until `visit` answers false. Answers the code of
// listing it: S_FALSE when it is empty.
HRESULT VisitCategory(ICreateDevEnum& devices, REFCLSID category,
                      const std::function<bool(IMoniker&)>& visit);

// A text that an entry is registered with ("FriendlyName", "CLSID"); empty when it has none.
std::string EntryText(IMoniker& entry, const wchar_t* property);

// Makes the filter of the entry at a place (from 0) of a category; null when there is none. Answers the code
// of listing the category.
HRESULT BindFilterAt(ICreateDevEnum& devices, REFCLSID category, int place, ComPtr<IBaseFilter>& filter);

// The class of the last entry of a category that has a name: an unknown one when there is none, the category
// of all categories when this one cannot be listed. With `bind` its filter is made as well; one that cannot
// be made is reported.
CLSID FindFilterByName(REFCLSID category, const std::string& friendlyName, ComPtr<IBaseFilter>* bind);

}  // namespace quorvex
