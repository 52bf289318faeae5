// The ground of filters that take what arrives and pass something on, on the same thread.
#pragma once

#include <memory>

#include "platform/common/filter_base.h"
#include "platform/common/input_pin.h"
#include "platform/common/output_pin.h"

namespace quorvex {

class ChainFilter : public FilterBase {
 protected:
  ChainFilter(const CLSID& ownClass, const std::vector<std::wstring>& inputNames,
              const std::vector<std::wstring>& outputNames);
  ~ChainFilter() override;

  // Whether an input takes this type.
  virtual bool Takes(std::size_t input, const AM_MEDIA_TYPE& type) = 0;
  // What arrives there; answers what IMemInputPin::Receive does.
  virtual HRESULT Take(std::size_t input, IMediaSample& sample) = 0;
  // What the outputs offer. Their buffers hold a sample of the type.
  virtual std::vector<MediaType> Gives() = 0;
  // Whether the outputs give pictures in the layout that the other end wishes.
  [[nodiscard]] virtual bool LaysOut() const { return false; }
  // A stream begins.
  virtual void OnBegin() {}

  OutputPin& Output(std::size_t index);
  // What the first input was connected with, for Gives; none when it is not.
  std::vector<MediaType> AsArrives();
  // What an input was connected with; nothing when it is not.
  MediaType TypeAt(std::size_t input);

  std::vector<IPin*> Pins() override;
  HRESULT OnStart() override;
  void OnStop() override;

 private:
  class Entry;
  class Exit;

  // The first input's stream is what the outputs' streams go by.
  template <typename Act>
  void ForOutputsOf(std::size_t input, Act act);

  std::vector<std::unique_ptr<Entry>> inputs;
  std::vector<std::unique_ptr<Exit>> outputs;
};

}  // namespace quorvex
