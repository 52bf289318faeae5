// Shows the pictures of a disc: decodes them, lays subtitles, buttons and captions over them, and delivers
// each at its time. While nothing comes the last picture stays, and follows what is laid over it.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/common/filter_base.h"
#include "platform/common/late_pictures.h"
#include "platform/common/picture_converter.h"
#include "platform/common/picture_delivery.h"
#include "platform/dvd/canvas.h"
#include "platform/dvd/closed_captions.h"
#include "platform/dvd/disc_tables.h"
#include "platform/dvd/overlay.h"
#include "platform/dvd/picture_scaler.h"
#include "platform/dvd/place_board.h"
#include "platform/dvd/play_queue.h"
#include "platform/dvd/stream_parser.h"
#include "platform/dvd/timeline.h"

namespace quorvex {

class PictureWorker {
 public:
  // All that is named outlives the worker.
  struct Surroundings {
    FilterBase& filter;
    OutputPin& pin;
    Timeline& timeline;
    PlaceBoard& board;
    const CaptionWishes& captions;
    const DiscTables& tables;
    Canvas canvas;
  };

  PictureWorker(const Surroundings& given, std::function<void()> onTaken)
      : queue(std::move(onTaken)), around(given), delivery(around.pin), captions(around.captions) {}

  PlayQueue queue;
  // Subpictures lie behind the pictures that they are shown with, so they do not wait in their queue.
  PlayQueue subpictures{[] {}};

  // Plays until the queue is halted; a thread's whole work.
  void Run();

  // The graph was paused: it waits for a sample.
  void Cue() {
    cueWanted = true;
    queue.Poke();
  }

  // Marks a button of the menu that is shown; shows the subtitles or only those that are forced.
  void Select(const Overlay::Selection& selection);
  void ShowOnlyForced(bool only);

  // Reader: a renderer that stands is flushed so that it gives up its picture, and the same one is delivered
  // again.
  void FlushAndRenew();
  // The renderer has forgotten a picture that stays: the same one is delivered again.
  void Renew() {
    renewal = Renewal::kWanted;
    queue.Poke();
  }

  // Whether there is sound that keeps the time.
  void SetSoundLeads(bool leads) { soundLeads = leads; }

 private:
  enum class Renewal { kNone, kAwaitsFlush, kWanted };

  // What a drawn picture shows, apart from the video.
  struct Look {
    Overlay::Look overlay;
    std::uint64_t captions = 0;
    friend bool operator==(const Look&, const Look&) = default;
  };

  void Play(const PlayItem& item);
  void ReachPlace(const PlayItem& item);
  bool Show(const AVFrame& frame);
  void Hold();
  void Forget();
  void Drain();
  void TellEnd();
  bool WaitUntil(MediaTime time);
  void Redraw();
  bool Deliver(MediaTime begin, MediaTime end);
  bool MustRenew();
  bool Draw(const PictureView& target);
  bool DrawVideo(const PictureView& area);
  void TakeSubpictures();
  [[nodiscard]] Look LookNow();
  [[nodiscard]] Overlay::Selection Selected() const { return {button, activated}; }
  [[nodiscard]] DvdTicks OverlayTime();
  [[nodiscard]] MediaTime FrameTime() const;
  [[nodiscard]] bool Runs() const { return around.filter.State() == State_Running; }

  const Surroundings around;
  PictureDelivery delivery;
  PictureConverter converter;
  PictureScaler scaler;
  StreamParser parser{DvdStreamKind::kVideo};
  Overlay overlay;
  ClosedCaptions captions;
  LatePictures late;
  std::vector<std::uint8_t> layer;  // the video with what lies over it, before it is scaled
  AvOwner<AVFrame> current{av_frame_alloc()};
  DvdTicks currentTime = 0;
  DvdTicks next = 0;  // when the picture after the last one begins, if it does not say so itself
  VideoShape shape;
  std::shared_ptr<const Place> place;
  Look drawn;
  int stretch = 0;
  bool held = false;          // nothing has come since the last picture
  bool awaitsPicture = true;  // none has come since the last jump
  bool ended = false;
  int emptyLooks = 0;
  std::atomic<bool> cueWanted{true};
  std::atomic<Renewal> renewal = Renewal::kNone;
  std::atomic<bool> delivering{false};  // waits for the renderer to take a picture
  std::mutex flushLock;  // held while the renderer is told the end, or flushed: Wine's would wait for itself
  std::atomic<bool> onlyForced{true};
  std::atomic<bool> soundLeads{false};
  std::atomic<int> button{0};
  std::atomic<bool> activated{false};
};

}  // namespace quorvex
