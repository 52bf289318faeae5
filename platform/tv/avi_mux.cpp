#include "platform/tv/avi_mux.h"

#include <evcode.h>
#include <uuids.h>
#include <vfwmsgs.h>

#include <algorithm>
#include <cstring>

#include "platform/common/input_pin.h"
#include "platform/tv/graph_walk.h"
#include "platform/tv/mux_format.h"

namespace quorvex {
namespace {

// A source may be ahead of the disk by so much memory, and so many samples.
constexpr long kAheadBytes = 24L << 20;
constexpr long kFewestSamples = 8;
constexpr long kMostSamples = 40;

MediaType AviType() {
  AM_MEDIA_TYPE type{};
  type.majortype = MEDIATYPE_Stream;
  type.subtype = MEDIASUBTYPE_Avi;
  type.formattype = FORMAT_None;
  return MediaType(type);
}

std::uint64_t NewId() {
  GUID id{};
  ::CoCreateGuid(&id);
  std::uint64_t number = 0;
  std::memcpy(&number, &id, sizeof number);
  return number;
}

std::uint64_t SizeOf(IStream& file) {
  STATSTG stat{};
  return SUCCEEDED(file.Stat(&stat, STATFLAG_NONAME)) ? stat.cbSize.QuadPart : 0;
}

// The journal lies beside the file, wherever whoever writes it says that it is.
std::wstring JournalBeside(IPin& writer) {
  const ComPtr<IBaseFilter> filter = FilterOf(writer);
  const auto sink = filter.As<IFileSinkFilter>();
  LPOLESTR name = nullptr;
  if (!sink || FAILED(sink->GetCurFile(&name, nullptr)) || name == nullptr) return {};
  std::wstring path = JournalPath(name);
  ::CoTaskMemFree(name);
  return path;
}

}  // namespace

class AviMux::Input final : public InputPin {
 public:
  Input(AviMux& owner, std::size_t number)
      : InputPin(owner, L"Input " + std::to_wstring(number + 1)), mux(owner), index(number) {}
  ~Input() = default;

  HRESULT STDMETHODCALLTYPE ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* type) override {
    const HRESULT result = InputPin::ReceiveConnection(connector, type);
    if (SUCCEEDED(result)) mux.AddFreeInput();
    return result;
  }
  HRESULT STDMETHODCALLTYPE GetAllocatorRequirements(ALLOCATOR_PROPERTIES* needs) override {
    if (needs == nullptr) return E_POINTER;
    const long bytes = std::max(1L, static_cast<long>(AgreedType().Get().lSampleSize));
    *needs = {std::clamp(kAheadBytes / bytes, kFewestSamples, kMostSamples), 0, 1, 0};
    return S_OK;
  }

 protected:
  std::vector<MediaType> Types() override { return {}; }
  bool Takes(const AM_MEDIA_TYPE& type) override { return MuxFormatOf(type).has_value(); }
  HRESULT OnSample(IMediaSample& sample) override { return mux.Take(index, sample); }
  void OnEnd() override { mux.EndOfStream(); }
  void OnBeginFlush() override {}
  void OnEndFlush() override {}

 private:
  AviMux& mux;
  const std::size_t index;
};

// Nothing is delivered as samples: the file is written through the other pin's IStream.
class AviMux::Output final : public OutputPin {
 public:
  explicit Output(AviMux& owner) : OutputPin(owner, L"AVI Out") {}
  ~Output() = default;

 protected:
  std::vector<MediaType> Types() override { return {AviType()}; }
  ALLOCATOR_PROPERTIES BufferNeeds(const MediaType&) override { return {1, 1, 1, 0}; }
};

AviMux::AviMux()
    : FilterBase(kAviMuxClass),
      settings(*this),
      interleaving(*this),
      position(*this, [this] { return Length(); }),
      counts(*static_cast<IBaseFilter*>(this), counted),
      output(std::make_unique<Output>(*this)) {
  AddFreeInput();
}

AviMux::~AviMux() = default;

void* AviMux::Find(REFIID iid) {
  if (iid == __uuidof(IConfigAviMux)) return static_cast<IConfigAviMux*>(&settings);
  if (iid == __uuidof(IConfigInterleaving)) return static_cast<IConfigInterleaving*>(&interleaving);
  if (iid == __uuidof(IAMDroppedFrames)) return static_cast<IAMDroppedFrames*>(&counts);
  if (iid == __uuidof(IMediaSeeking)) return static_cast<IMediaSeeking*>(&position);
  return FilterBase::Find(iid);
}

void AviMux::AddFreeInput() {
  const std::scoped_lock guard(inputsLock);
  const bool isFree =
      std::any_of(inputs.begin(), inputs.end(), [](const auto& input) { return !input->IsConnected(); });
  if (!isFree && inputs.size() < kMostStreams)
    inputs.push_back(std::make_unique<Input>(*this, inputs.size()));
}

std::vector<IPin*> AviMux::Pins() {
  const std::scoped_lock guard(inputsLock);
  std::vector<IPin*> pins{output.get()};
  for (const auto& input : inputs) pins.push_back(input.get());
  return pins;
}

std::optional<RecordingPlan> AviMux::Plan() {
  const std::scoped_lock guard(inputsLock);
  RecordingPlan plan;
  streams.assign(inputs.size(), std::nullopt);
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    if (!inputs[i]->IsConnected()) continue;
    const std::optional<MuxFormat> format = MuxFormatOf(inputs[i]->AgreedType().Get());
    if (!format) continue;
    streams[i] = plan.movie.streams.size();
    plan.movie.streams.push_back(format->stream);
    plan.silence.push_back(format->silence);
  }
  if (plan.movie.streams.empty()) return std::nullopt;
  plan.movie.id = NewId();
  plan.movie.oldIndex = settings.OldIndex();
  plan.master = settings.Master();
  return plan;
}

HRESULT AviMux::OnStart() {
  std::optional<RecordingPlan> plan = Plan();
  const ComPtr<IPin> writer = PeerOf(*output);
  if (!plan || !writer) return S_OK;
  ComPtr<IStream> file;
  if (const HRESULT result = writer->QueryInterface(IID_IStream, file.ReceiveVoid()); FAILED(result))
    return result;
  plan->movie.fileBytes = SizeOf(*file.Get());
  plan->journal = JournalBeside(*writer.Get());
  auto made =
      std::make_shared<RecordingThread>(file, std::move(*plan), counts, static_cast<RecordingUser&>(*this));
  made->Begin();
  const std::scoped_lock guard(recordingLock);
  recording = std::move(made);
  return S_OK;
}

void AviMux::OnStop() {
  const std::shared_ptr<RecordingThread> ended = Recording();
  if (!ended) return;
  ended->Finish();
  const std::scoped_lock guard(recordingLock);
  lastLength = ended->Length();
  recording.reset();
}

std::shared_ptr<RecordingThread> AviMux::Recording() {
  const std::scoped_lock guard(recordingLock);
  return recording;
}

HRESULT AviMux::Take(std::size_t input, IMediaSample& sample) {
  const std::shared_ptr<RecordingThread> current = Recording();
  std::optional<std::size_t> stream;
  {
    const std::scoped_lock guard(inputsLock);
    if (input < streams.size()) stream = streams[input];
  }
  return current && stream ? current->Take(*stream, sample) : S_FALSE;
}

void AviMux::EndOfStream() {
  if (const std::shared_ptr<RecordingThread> current = Recording()) current->EndOfStream();
}

MediaTime AviMux::Length() {
  const std::scoped_lock guard(recordingLock);
  return recording ? recording->Length() : lastLength;
}

void AviMux::OnBroken(HRESULT why) { Tell(EC_ERRORABORT, why, 0); }

void AviMux::OnEnded() { output->DeliverEndOfStream(); }

}  // namespace quorvex
