#include "platform/tv/chain_filter.h"

namespace quorvex {

class ChainFilter::Entry final : public InputPin {
 public:
  Entry(ChainFilter& owner, std::wstring id, std::size_t at)
      : InputPin(owner, std::move(id)), chain(owner), index(at) {}
  ~Entry() = default;

  HRESULT STDMETHODCALLTYPE NewSegment(REFERENCE_TIME start, REFERENCE_TIME stop, double) override {
    chain.ForOutputsOf(index, [=](OutputPin& output) { output.DeliverNewSegment(start, stop); });
    return S_OK;
  }

 protected:
  std::vector<MediaType> Types() override { return {}; }
  bool Takes(const AM_MEDIA_TYPE& type) override { return chain.Takes(index, type); }
  HRESULT OnSample(IMediaSample& sample) override { return chain.Take(index, sample); }
  void OnEnd() override {
    chain.ForOutputsOf(index, [](OutputPin& output) { output.DeliverEndOfStream(); });
  }
  void OnBeginFlush() override {
    chain.ForOutputsOf(index, [](OutputPin& output) { output.DeliverBeginFlush(); });
  }
  void OnEndFlush() override {
    chain.ForOutputsOf(index, [](OutputPin& output) { output.DeliverEndFlush(); });
  }

 private:
  ChainFilter& chain;
  const std::size_t index;
};

class ChainFilter::Exit final : public OutputPin {
 public:
  Exit(ChainFilter& owner, std::wstring id) : OutputPin(owner, std::move(id)), chain(owner) {}
  ~Exit() = default;

 protected:
  std::vector<MediaType> Types() override { return chain.Gives(); }
  [[nodiscard]] bool LaysOut() const override { return chain.LaysOut(); }
  ALLOCATOR_PROPERTIES BufferNeeds(const MediaType& type) override {
    constexpr long kBuffers = 4;
    return {kBuffers, static_cast<long>(type.Get().lSampleSize), 1, 0};
  }

 private:
  ChainFilter& chain;
};

ChainFilter::ChainFilter(const CLSID& ownClass, const std::vector<std::wstring>& inputNames,
                         const std::vector<std::wstring>& outputNames)
    : FilterBase(ownClass) {
  for (const std::wstring& id : inputNames)
    inputs.push_back(std::make_unique<Entry>(*this, id, inputs.size()));
  for (const std::wstring& id : outputNames) outputs.push_back(std::make_unique<Exit>(*this, id));
}

ChainFilter::~ChainFilter() = default;

template <typename Act>
void ChainFilter::ForOutputsOf(std::size_t input, Act act) {
  if (input != 0) return;
  for (const auto& output : outputs) act(*output);
}

OutputPin& ChainFilter::Output(std::size_t index) { return *outputs.at(index); }

std::vector<MediaType> ChainFilter::AsArrives() {
  if (!inputs.front()->IsConnected()) return {};
  return {TypeAt(0)};
}

MediaType ChainFilter::TypeAt(std::size_t input) { return inputs.at(input)->AgreedType(); }

std::vector<IPin*> ChainFilter::Pins() {
  std::vector<IPin*> pins;
  for (const auto& input : inputs) pins.push_back(input.get());
  for (const auto& output : outputs) pins.push_back(output.get());
  return pins;
}

HRESULT ChainFilter::OnStart() {
  for (const auto& output : outputs) {
    if (const HRESULT result = output->Start(); FAILED(result)) return result;
  }
  OnBegin();
  return S_OK;
}

void ChainFilter::OnStop() {
  for (const auto& output : outputs) output->Stop();
}

}  // namespace quorvex
