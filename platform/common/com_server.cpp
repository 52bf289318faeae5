#include "platform/common/com_server.h"

#include <olectl.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/com_ptr.h"
#include "platform/common/com_object.h"

namespace quorvex {
namespace {

class ClassFactory final : public ComObject<IClassFactory> {
 public:
  explicit ClassFactory(const ServedClass& made) : served(made) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    const auto instance = ComPtr<IUnknown>::Attach(served.create());
    return instance->QueryInterface(iid, object);
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    quorvex::ModuleUser::Lock(lock != FALSE);
    return S_OK;
  }

 private:
  const ServedClass& served;
};

void EndKey(HKEY key) { ::RegCloseKey(key); }
class RegistryKey {
 public:
  explicit RegistryKey(const std::wstring& path, REGSAM access = KEY_READ | KEY_WRITE, bool create = true) {
    if (create) {
      ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, access, nullptr, &key, nullptr);
    } else {
      ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, access, &key);
    }
  }
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  ~RegistryKey() {
    if (key != nullptr) EndKey(key);
  }

  [[nodiscard]] bool IsOpen() const { return key != nullptr; }

  [[nodiscard]] std::optional<std::wstring> Read(const std::wstring& name) const {
    DWORD bytes = 0;
    if (::RegGetValueW(key, nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
      return std::nullopt;
    std::wstring text(bytes / sizeof(wchar_t), L'\0');
    if (::RegGetValueW(key, nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
        ERROR_SUCCESS)
      return std::nullopt;
    text.resize(bytes / sizeof(wchar_t) - 1);
    return text;
  }

  bool Write(const std::wstring& name, const std::wstring& text) {
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    return ::RegSetValueExW(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                            bytes) == ERROR_SUCCESS;
  }

  void Remove(const std::wstring& name) { ::RegDeleteValueW(key, name.c_str()); }

  [[nodiscard]] bool IsEmpty() const {
    if (!IsOpen()) return false;
    DWORD keys = 0;
    DWORD values = 0;
    ::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr, nullptr,
                       nullptr, nullptr);
    return keys == 0 && values == 0;
  }

 private:
  HKEY key = nullptr;
};

const std::wstring kClasses = L"Software\\Classes\\";

std::wstring NotesKey(const std::wstring& server) { return L"Software\\Quorvex\\Replaced\\" + server; }
std::wstring NoteName(const ClassesValue& value) { return value.key + L"\\\\" + value.name; }

// Removes a key and the keys above it that hold nothing any more.
void RemoveEmptyKeys(std::wstring path) {
  while (!path.empty() && RegistryKey(kClasses + path, KEY_READ, false).IsEmpty()) {
    if (::RegDeleteKeyW(HKEY_LOCAL_MACHINE, (kClasses + path).c_str()) != ERROR_SUCCESS) return;
    const std::size_t cut = path.rfind(L'\\');
    path.resize(cut == std::wstring::npos ? 0 : cut);
  }
}

// Gives a value this text, or takes it away with the keys that become empty.
bool Put(const ClassesValue& value, const std::optional<std::wstring>& text) {
  if (text) return RegistryKey(kClasses + value.key).Write(value.name, *text);
  RegistryKey(kClasses + value.key, KEY_READ | KEY_WRITE, false).Remove(value.name);
  RemoveEmptyKeys(value.key);
  return true;
}

std::wstring ModulePath() {
  HMODULE module = nullptr;
  ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ModulePath), &module);
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = ::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return path.substr(0, length);
    path.resize(path.size() * 2);
  }
}

}  // namespace

HRESULT GetClassObject(std::span<const ServedClass> classes, REFCLSID wanted, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  const auto found = std::find_if(classes.begin(), classes.end(),
                                  [&](const ServedClass& served) { return served.id == wanted; });
  if (found == classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
  const auto factory = ComPtr<IClassFactory>::Attach(new ClassFactory(*found));
  return factory->QueryInterface(iid, object);
}

std::wstring GuidText(const GUID& guid) {
  std::array<wchar_t, 40> text{};
  ::StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
  return text.data();
}

std::vector<ClassesValue> ClassValues(std::span<const ServedClass> classes) {
  std::vector<ClassesValue> values;
  for (const ServedClass& served : classes) {
    const std::wstring key = L"CLSID\\" + GuidText(served.id);
    values.push_back({key, L"", served.name});
    values.push_back({key + L"\\InprocServer32", L"", ModulePath()});
    values.push_back({key + L"\\InprocServer32", L"ThreadingModel", L"Both"});
  }
  return values;
}

HRESULT Register(const std::wstring& server, std::span<const ClassesValue> values) {
  // What is there later may be our own.
  const bool again = RegistryKey(NotesKey(server), KEY_READ, false).IsOpen();
  RegistryKey notes(NotesKey(server));
  for (const ClassesValue& value : values) {
    const std::wstring path = kClasses + value.key;
    const std::optional<std::wstring> before = RegistryKey(path, KEY_READ, false).Read(value.name);
    if (before && !again && !notes.Write(NoteName(value), *before)) return SELFREG_E_CLASS;
    if (before != value.text && !Put(value, value.text)) return SELFREG_E_CLASS;
  }
  return S_OK;
}

HRESULT Unregister(const std::wstring& server, std::span<const ClassesValue> values) {
  {
    const RegistryKey notes(NotesKey(server), KEY_READ, false);
    for (const ClassesValue& value : values) {
      const std::wstring path = kClasses + value.key;
      if (RegistryKey(path, KEY_READ, false).Read(value.name) == value.text)
        Put(value, notes.Read(NoteName(value)));
    }
  }
  ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, NotesKey(server).c_str());
  return S_OK;
}

}  // namespace quorvex
