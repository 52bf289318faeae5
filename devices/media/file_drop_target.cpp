#include "devices/media/file_drop_target.h"

#include <ole2.h>

#include <atomic>
#include <cstring>

#include "base/com_ptr.h"

namespace quorvex {
namespace {

constexpr FORMATETC kFiles{CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};

// A copy that the window's WM_DROPFILES may finish; null when there is no memory.
HGLOBAL CopyOf(HGLOBAL memory) {
  const SIZE_T size = ::GlobalSize(memory);
  const HGLOBAL copy = ::GlobalAlloc(GMEM_MOVEABLE, size);
  if (copy == nullptr) return nullptr;
  std::memcpy(::GlobalLock(copy), ::GlobalLock(memory), size);
  ::GlobalUnlock(memory);
  ::GlobalUnlock(copy);
  return copy;
}

class FileDropTarget final : public IDropTarget {
 public:
  explicit FileDropTarget(HWND receiver) : window(receiver) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const bool known = iid == IID_IUnknown || iid == IID_IDropTarget;
    *object = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP DragEnter(IDataObject* data, DWORD, POINTL, DWORD* effect) override {
    FORMATETC files = kFiles;
    takes = data->QueryGetData(&files) == S_OK;
    return DragOver(0, {}, effect);
  }
  STDMETHODIMP DragOver(DWORD, POINTL, DWORD* effect) override {
    *effect = takes ? *effect & DROPEFFECT_COPY : DROPEFFECT_NONE;
    return S_OK;
  }
  STDMETHODIMP DragLeave() override { return S_OK; }
  STDMETHODIMP Drop(IDataObject* data, DWORD, POINTL, DWORD* effect) override {
    FORMATETC files = kFiles;
    STGMEDIUM medium{};
    *effect = DROPEFFECT_NONE;
    const HRESULT result = data->GetData(&files, &medium);
    if (FAILED(result)) return result;
    // Posted: what it leads to may show a box, and the drag is to be over then.
    const HGLOBAL drop = CopyOf(medium.hGlobal);
    ::ReleaseStgMedium(&medium);
    if (drop == nullptr) return E_OUTOFMEMORY;
    if (::PostMessageA(window, WM_DROPFILES, reinterpret_cast<WPARAM>(drop), 0) == FALSE) {
      ::GlobalFree(drop);
      return E_FAIL;
    }
    *effect = DROPEFFECT_COPY;
    return S_OK;
  }

 private:
  ~FileDropTarget() = default;

  HWND window;
  bool takes = false;
  std::atomic<ULONG> references = 1;
};

}  // namespace

FileDrops::FileDrops(HWND receiver) : window(receiver) {
  ::OleInitialize(nullptr);
  const auto target = ComPtr<IDropTarget>::Attach(new FileDropTarget(window));
  ::RegisterDragDrop(window, target.Get());
}

FileDrops::~FileDrops() {
  ::RevokeDragDrop(window);
  ::OleUninitialize();
}

}  // namespace quorvex
