// A renderer of the tests' own: it notes what arrives and, like every renderer, holds each sample until its
// time has come, and while the graph is paused.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <control.h>
#include <evcode.h>
#include <uuids.h>
#include <vfwmsgs.h>

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/common/enumerators.h"
#include "platform/common/filter_base.h"
#include "platform/common/seeking_pass.h"
#include "tests/support/disc_marks.h"

namespace quorvex {

class RecordingSink final : public FilterBase,
                            private IPin,
                            private IMemInputPin,
                            private IAMFilterMiscFlags {
 public:
  struct Sample {
    std::int64_t start;  // of the segment, plus the sample's own time
    std::int64_t end;
    bool discontinuity;
    int picture;                      // the number that the picture shows
    std::vector<std::int16_t> sound;  // of the left channel
    std::optional<DiscMarks> marks;   // those of a disc's picture
  };
  struct Segment {
    std::int64_t start;
    std::int64_t stop;
    std::vector<Sample> samples;
    bool ended = false;
  };

  explicit RecordingSink(const GUID& majorType) : FilterBase(CLSID_NULL), major(majorType) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return FilterBase::QueryInterface(iid, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return FilterBase::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return FilterBase::Release(); }

  // What has arrived since the last Clear, or since the last seek.
  std::vector<Segment> Segments() {
    const std::scoped_lock guard(lock);
    return segments;
  }
  // The marks of the picture that came last; none when it had none.
  std::optional<DiscMarks> LastMarks() {
    const std::scoped_lock guard(lock);
    return lastMarks;
  }
  // That picture's green at a place (of 1000 by 1000).
  int LastGreen(int x, int y) {
    const std::scoped_lock guard(lock);
    if (lastPicture.empty()) return -1;
    const PictureView view = View(lastPicture.data());
    return view.top[y * view.height / 1000 * view.stride + x * view.width / 1000 * 4 + 1];
  }
  int Flushes() {
    const std::scoped_lock guard(lock);
    return flushes;
  }
  void Clear() {
    const std::scoped_lock guard(lock);
    segments.clear();
    flushes = 0;
  }
  // From now on every sample takes this long.
  void SlowDown(int milliseconds) { delayMs = milliseconds; }

 protected:
  ~RecordingSink() override = default;
  void* Find(REFIID iid) override {
    if (iid == __uuidof(IPin)) return static_cast<IPin*>(this);
    if (iid == __uuidof(IMemInputPin)) return static_cast<IMemInputPin*>(this);
    if (iid == __uuidof(IMediaSeeking) && peer) return seeking.Find(iid, *this, *this);
    if (iid == IID_IAMFilterMiscFlags && peer) return static_cast<IAMFilterMiscFlags*>(this);
    return FilterBase::Find(iid);
  }
  std::vector<IPin*> Pins() override { return {this}; }
  HRESULT OnStart() override {
    const std::scoped_lock guard(lock);
    stopped = false;
    return S_OK;
  }
  void OnStop() override {
    const std::scoped_lock guard(lock);
    stopped = true;
    changed.notify_all();
  }

 public:
  HRESULT STDMETHODCALLTYPE Run(REFERENCE_TIME start) override {
    const HRESULT result = FilterBase::Run(start);
    const std::scoped_lock guard(lock);
    changed.notify_all();
    return result;
  }
  HRESULT STDMETHODCALLTYPE GetState(DWORD timeoutMs, FILTER_STATE* current) override {
    FilterBase::GetState(timeoutMs, current);
    std::unique_lock guard(lock);
    if (*current != State_Paused || !peer) return S_OK;
    const bool cued = changed.wait_for(guard, std::chrono::milliseconds(std::min<DWORD>(timeoutMs, 5000)),
                                       [this] { return stopped || (!segments.empty() && IsCued()); });
    return cued ? S_OK : VFW_S_STATE_INTERMEDIATE;
  }

  // Done on the stream's thread when the end is told.
  std::function<void()> atEnd;
  // Done on the thread that tells a new segment, after it is noted.
  std::function<void()> atSegment;
  // Done on the stream's thread for every sample that arrives, instead of looking at it here.
  std::function<void(IMediaSample&, const MediaType&)> atSample;

 private:
  // The graph waits for the end of every renderer; an unconnected sink is none.
  ULONG STDMETHODCALLTYPE GetMiscFlags() override { return AM_FILTER_MISC_FLAGS_IS_RENDERER; }

  bool IsCued() { return segments.back().ended || !segments.back().samples.empty(); }

  HRESULT STDMETHODCALLTYPE Connect(IPin*, const AM_MEDIA_TYPE*) override { return E_UNEXPECTED; }
  HRESULT STDMETHODCALLTYPE ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* offered) override {
    if (peer) return VFW_E_ALREADY_CONNECTED;
    if (offered->majortype != major) return VFW_E_TYPE_NOT_ACCEPTED;
    peer = ComPtr<IPin>::Share(connector);
    type = MediaType(*offered);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Disconnect() override {
    peer.Reset();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE ConnectedTo(IPin** pin) override {
    *pin = ComPtr<IPin>(peer).Detach();
    return peer ? S_OK : VFW_E_NOT_CONNECTED;
  }
  HRESULT STDMETHODCALLTYPE ConnectionMediaType(AM_MEDIA_TYPE* connected) override {
    type.CopyTo(*connected);
    return peer ? S_OK : VFW_E_NOT_CONNECTED;
  }
  HRESULT STDMETHODCALLTYPE QueryPinInfo(PIN_INFO* info) override {
    *info = {ComPtr<IBaseFilter>::Share(this).Detach(), PINDIR_INPUT, L"In"};
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryDirection(PIN_DIRECTION* direction) override {
    *direction = PINDIR_INPUT;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryId(LPWSTR* id) override {
    *id = static_cast<LPWSTR>(::CoTaskMemAlloc(sizeof(L"In")));
    ::lstrcpyW(*id, L"In");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryAccept(const AM_MEDIA_TYPE* offered) override {
    return offered->majortype == major ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE EnumMediaTypes(IEnumMediaTypes** types) override {
    *types = new MediaTypeEnumerator({});
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryInternalConnections(IPin**, ULONG*) override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE EndOfStream() override {
    {
      const std::scoped_lock guard(lock);
      if (flushing || segments.empty()) return S_FALSE;
      segments.back().ended = true;
      changed.notify_all();
    }
    if (atEnd) atEnd();
    FILTER_INFO info{};
    QueryFilterInfo(&info);
    const auto joined = ComPtr<IFilterGraph>::Attach(info.pGraph);
    if (const auto events = joined.As<IMediaEventSink>()) events->Notify(EC_COMPLETE, S_OK, 0);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE BeginFlush() override {
    const std::scoped_lock guard(lock);
    flushing = true;
    ++flushes;
    changed.notify_all();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EndFlush() override {
    const std::scoped_lock guard(lock);
    flushing = false;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE NewSegment(REFERENCE_TIME start, REFERENCE_TIME stop, double) override {
    {
      const std::scoped_lock guard(lock);
      segments.push_back({start, stop, {}});
    }
    if (atSegment) atSegment();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetAllocator(IMemAllocator**) override { return VFW_E_NO_ALLOCATOR; }
  HRESULT STDMETHODCALLTYPE NotifyAllocator(IMemAllocator*, BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetAllocatorRequirements(ALLOCATOR_PROPERTIES*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Receive(IMediaSample* sample) override {
    std::unique_lock guard(lock);
    if (stopped) return VFW_E_WRONG_STATE;
    if (flushing || segments.empty()) return S_FALSE;
    Note(*sample);
    changed.notify_all();
    REFERENCE_TIME start = 0;
    REFERENCE_TIME end = 0;
    sample->GetTime(&start, &end);
    if (delayMs > 0)
      changed.wait_for(guard, std::chrono::milliseconds(delayMs), [this] { return flushing || stopped; });
    while (!flushing && !stopped && !IsDue(start)) changed.wait_for(guard, std::chrono::milliseconds(4));
    return flushing ? S_FALSE : stopped ? VFW_E_WRONG_STATE : S_OK;
  }
  HRESULT STDMETHODCALLTYPE ReceiveMultiple(IMediaSample**, LONG, LONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ReceiveCanBlock() override { return S_OK; }

  // Whether a sample is over for this renderer: it runs, and by its clock the time has come.
  bool IsDue(REFERENCE_TIME start) {
    return State() == State_Running && StreamTime().value_or(start) >= start;
  }

  void Note(IMediaSample& sample) {
    Sample noted{};
    sample.GetTime(&noted.start, &noted.end);
    noted.start += segments.back().start;
    noted.end += segments.back().start;
    noted.discontinuity = sample.IsDiscontinuity() == S_OK;
    BYTE* data = nullptr;
    sample.GetPointer(&data);
    if (atSample) {
      atSample(sample, type);
    } else if (const VIDEOINFOHEADER* picture = type.Picture()) {
      lastPicture.assign(data, data + sample.GetActualDataLength());
      noted.marks = lastMarks = ReadDiscMarks(View(data));
      for (int stripe = 0; stripe < picture->bmiHeader.biWidth / 16; ++stripe)
        noted.picture |=
            data[(picture->bmiHeader.biWidth * 4 * 20) + (stripe * 16 + 8) * 4] > 125 ? 1 << stripe : 0;
    } else {
      const auto* samples = reinterpret_cast<const std::int16_t*>(data);
      for (int i = 0; i < sample.GetActualDataLength() / 4; ++i) noted.sound.push_back(samples[2 * i]);
    }
    segments.back().samples.push_back(std::move(noted));
  }

  // Pictures arrive with the bottom line first.
  PictureView View(BYTE* data) const {
    const BITMAPINFOHEADER& bitmap = type.Picture()->bmiHeader;
    const std::ptrdiff_t line = bitmap.biWidth * 4;
    return {data + line * (bitmap.biHeight - 1), -line, bitmap.biWidth, bitmap.biHeight};
  }

  const GUID major;
  std::atomic<int> delayMs{0};
  ComPtr<IPin> peer;
  SeekingPass seeking;
  MediaType type;
  std::mutex lock;  // guards what follows
  std::condition_variable changed;
  std::vector<Segment> segments;
  std::optional<DiscMarks> lastMarks;
  std::vector<BYTE> lastPicture;
  int flushes = 0;
  bool flushing = false;
  bool stopped = true;
};

}  // namespace quorvex
