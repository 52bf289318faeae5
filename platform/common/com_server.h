// What makes a DLL an in-process COM server: its classes, and the registry values that name them.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvex {

// One class of a server.
struct ServedClass {
  CLSID id;
  const wchar_t* name;  // as registered
  // A new object, with one reference.
  IUnknown* (*create)();
};

// DllGetClassObject for a server of these classes, which live as long as the module.
HRESULT GetClassObject(std::span<const ServedClass> classes, REFCLSID wanted, REFIID iid, void** object);

// One text value below HKEY_LOCAL_MACHINE\Software\Classes. An empty name is the key's default value; no text
// means that the value shall not be there.
struct ClassesValue {
  std::wstring key;
  std::wstring name;
  std::optional<std::wstring> text;
};

// {xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}
std::wstring GuidText(const GUID& guid);

// The values that register `classes` as served by this module, with both threading models.
std::vector<ClassesValue> ClassValues(std::span<const ServedClass> classes);

// Writes the values and notes what each one replaces. `server` names the notes; registering twice keeps the
// first notes. Answers SELFREG_E_CLASS when a value cannot be written.
HRESULT Register(const std::wstring& server, std::span<const ClassesValue> values);

// Takes the values away, unless somebody else has replaced them since, and puts back what they replaced.
HRESULT Unregister(const std::wstring& server, std::span<const ClassesValue> values);

}  // namespace quorvex
