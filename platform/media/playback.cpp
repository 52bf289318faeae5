#include "platform/media/playback.h"

#include <algorithm>
#include <iterator>

#include "platform/common/com_thread.h"

namespace quorvex {
namespace {

// About a second and a half of usual packets; and what a badly interleaved file may take.
constexpr std::size_t kEnoughPackets = 40;
constexpr std::size_t kMostBytes = std::size_t{64} << 20;

}  // namespace

void Playback::Start(const Segment& segment) {
  Halt();
  playing.clear();
  std::copy_if(tracks.begin(), tracks.end(), std::back_inserter(playing),
               [](const Track& track) { return track.pin->IsConnected(); });
  if (playing.empty()) return;
  buffers = std::make_unique<Buffers>(playing.size(), kEnoughPackets, kMostBytes);
  threads.emplace_back([this, from = segment.start] { Read(from); });
  for (std::size_t i = 0; i < playing.size(); ++i)
    threads.emplace_back([this, i, segment] { Work(i, segment); });
}

void Playback::Halt() {
  if (threads.empty()) return;
  file.Interrupt(true);
  buffers->Abort();
  for (const Track& track : playing) track.pin->DeliverBeginFlush();
  for (std::thread& thread : threads) {
    // A receiver that is told the end may give up the last reference to the graph: then this is that stream's
    // own thread, which does nothing more.
    if (thread.get_id() == std::this_thread::get_id()) {
      thread.detach();
    } else {
      thread.join();
    }
  }
  threads.clear();
  for (const Track& track : playing) track.pin->DeliverEndFlush();
  file.Interrupt(false);
}

void Playback::Read(MediaTime from) {
  file.Seek(from);
  while (std::optional<MediaFile::Packet> packet = file.Next()) {
    const auto track = std::find_if(playing.begin(), playing.end(),
                                    [&](const Track& one) { return one.kind == packet->kind; });
    if (track == playing.end()) continue;
    const auto bytes = static_cast<std::size_t>(packet->data->size) + sizeof(AVPacket);
    const auto stream = static_cast<std::size_t>(track - playing.begin());
    if (!buffers->Push(stream, std::move(packet->data), bytes)) return;
  }
  buffers->Finish();
}

void Playback::Work(std::size_t index, const Segment& segment) {
  const ComThread com;
  const Track& track = playing[index];
  track.feeder->Begin(segment);
  track.pin->DeliverNewSegment(segment.Origin(), segment.stop);
  const Fed fed = FeedAll(index);
  buffers->Close(index);
  if (fed == Fed::kOver) track.pin->DeliverEndOfStream();  // after this the whole filter may be gone
}

// All packets of a track; answers why it ended: kOver when nothing more is to come, kRefused when nothing
// more is wanted.
Fed Playback::FeedAll(std::size_t index) {
  StreamFeeder& feeder = *playing[index].feeder;
  AvOwner<AVPacket> packet;
  for (auto popped = buffers->Pop(index, packet); popped != Buffers::Popped::kOver;
       popped = buffers->Pop(index, packet)) {
    const Fed fed = popped == Buffers::Popped::kStarved ? feeder.FillIn() : feeder.Feed(packet.get());
    if (fed != Fed::kMore) return fed;
  }
  if (buffers->IsAborted()) return Fed::kRefused;
  return feeder.Feed(nullptr) == Fed::kRefused ? Fed::kRefused : Fed::kOver;
}

}  // namespace quorvex
