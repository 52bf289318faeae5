#include "platform/common/media_file.h"

#include <vfwmsgs.h>

#include <algorithm>
#include <cstdlib>

namespace quorvex {
namespace {

constexpr int kMostErrorsInARow = 256;

// Sound that begins so little before the picture is no part of the file's time: it is cut off.
constexpr std::int64_t kSoundAheadUs = 500'000;

// Decoders of sound need what came before to begin well.
constexpr MediaTime kRunUp = kSecond / 10;

// No sane picture is larger; what claims to be is damage.
constexpr std::int64_t kMostPixels = std::int64_t{1} << 27;

std::string Utf8(const std::wstring& text) {
  const int wide = static_cast<int>(text.size());
  const int length = ::WideCharToMultiByte(CP_UTF8, 0, text.c_str(), wide, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(length), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.c_str(), wide, utf8.data(), length, nullptr, nullptr);
  return utf8;
}

int IsInterrupted(void* flag) { return *static_cast<std::atomic<bool>*>(flag) ? 1 : 0; }

// Whether the file can be opened at all.
HRESULT FileError(const std::wstring& path) {
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return HRESULT_FROM_WIN32(::GetLastError());
  ::CloseHandle(file);
  return S_OK;
}

bool IsPlayable(const AVStream& stream) {
  const AVCodecParameters& coded = *stream.codecpar;
  if (coded.codec_type == AVMEDIA_TYPE_AUDIO) return coded.sample_rate > 0 && coded.ch_layout.nb_channels > 0;
  const bool isCover = (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
  return !isCover && coded.width > 0 && coded.height > 0 &&
         std::int64_t{coded.width} * coded.height <= kMostPixels;
}

std::int64_t StartUs(const AVStream& stream) {
  if (stream.start_time == AV_NOPTS_VALUE) return 0;
  return av_rescale_q(stream.start_time, stream.time_base, AV_TIME_BASE_Q);
}

std::int64_t TickOf(const AVPacket& packet) { return packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts; }

}  // namespace

HRESULT MediaFile::Open(const std::wstring& path, std::unique_ptr<MediaFile>& opened) {
  const HRESULT readable = FileError(path);
  if (FAILED(readable)) return readable;
  std::unique_ptr<MediaFile> file(new MediaFile);
  const HRESULT result = file->OpenFormat(path);
  if (FAILED(result)) return result;
  file->ChooseStreams();
  if (file->picture == nullptr && file->sound == nullptr) return VFW_E_UNSUPPORTED_STREAM;
  file->ChooseOrigin();
  opened = std::move(file);
  return S_OK;
}

HRESULT MediaFile::OpenFormat(const std::wstring& path) {
  av_log_set_level(AV_LOG_QUIET);
  AVFormatContext* made = avformat_alloc_context();
  if (made == nullptr) return E_OUTOFMEMORY;
  made->interrupt_callback = {IsInterrupted, &interrupted};
  made->flags |= AVFMT_FLAG_GENPTS;
  // The prefix keeps a name like "data:x" from being taken for an address. A failure frees `made`.
  if (avformat_open_input(&made, ("file:" + Utf8(path)).c_str(), nullptr, nullptr) < 0)
    return VFW_E_UNKNOWN_FILE_TYPE;
  format.reset(made);
  // A failure shows in the streams: what could not be found out of them is missing there.
  avformat_find_stream_info(made, nullptr);
  return S_OK;
}

void MediaFile::ChooseStreams() {
  const auto choose = [this](AVMediaType type) -> AVStream* {
    const AVCodec* decoder = nullptr;
    const int index = av_find_best_stream(format.get(), type, -1, -1, &decoder, 0);
    if (index < 0 || decoder == nullptr) return nullptr;
    AVStream* stream = format->streams[index];
    return IsPlayable(*stream) ? stream : nullptr;
  };
  picture = choose(AVMEDIA_TYPE_VIDEO);
  sound = choose(AVMEDIA_TYPE_AUDIO);
  for (unsigned i = 0; i < format->nb_streams; ++i) {
    AVStream* stream = format->streams[i];
    stream->discard = stream == picture || stream == sound ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
  }
}

void MediaFile::ChooseOrigin() {
  const std::int64_t first = format->start_time != AV_NOPTS_VALUE ? format->start_time : 0;
  origin = StartUs(picture != nullptr ? *picture : *sound);
  if (origin - first > kSoundAheadUs || origin < first) origin = first;
  if (format->duration != AV_NOPTS_VALUE)
    duration = std::max<MediaTime>(0, Rescale(first + format->duration - origin, kSecond, AV_TIME_BASE));
}

CodedStream MediaFile::Coded(const AVStream& stream) const {
  const AVRational base = stream.time_base;
  return {stream.codecpar, {base.num, base.den, av_rescale_q(origin, AV_TIME_BASE_Q, base)}};
}

MediaTime MediaFile::FrameTime() const {
  const AVRational rate = av_guess_frame_rate(format.get(), picture, nullptr);
  return rate.num > 0 && rate.den > 0 ? Rescale(kSecond, rate.den, rate.num) : 0;
}

// Cuts are found by trying ever further back: not every container knows where its key pictures are.
void MediaFile::Seek(MediaTime time) {
  for (MediaTime back = kRunUp; !interrupted; back = std::max(kSecond, back * 2)) {
    waiting.clear();
    if (time - back <= 0) {
      GoToBeginning();
      return;
    }
    GoTo(time - back);
    if (picture == nullptr || FindKeyPicture(time)) return;
  }
}

void MediaFile::GoTo(MediaTime time) {
  joints.Forget();
  const AVStream& leading = picture != nullptr ? *picture : *sound;
  const std::int64_t tick = Coded(leading).clock.Tick(time);
  if (avformat_seek_file(format.get(), leading.index, INT64_MIN, tick, tick, 0) < 0) GoToBeginning();
}

void MediaFile::GoToBeginning() {
  joints.Forget();
  // Streams without an index are sought in by trying places, which may miss the very first packets.
  const int flags = format->iformat->flags;
  const bool isBare =
      (flags & AVFMT_TS_DISCONT) != 0 && (flags & (AVFMT_NOBINSEARCH | AVFMT_NO_BYTE_SEEK)) == 0;
  if (isBare ||
      avformat_seek_file(format.get(), -1, INT64_MIN, format->start_time, format->start_time, 0) < 0)
    av_seek_frame(format.get(), -1, 0, AVSEEK_FLAG_BYTE);
}

// Reads on until the first key picture, keeping what will be needed. Whether it comes by the time given.
bool MediaFile::FindKeyPicture(MediaTime by) {
  const TickClock clock = Coded(*picture).clock;
  while (std::optional<Packet> packet = Read()) {
    const bool isPicture = packet->kind == Kind::kPicture;
    const bool isKey = isPicture && (packet->data->flags & AV_PKT_FLAG_KEY) != 0;
    const std::int64_t tick = TickOf(*packet->data);
    if (isPicture && tick != AV_NOPTS_VALUE && clock.Time(tick) > by) return false;
    if (!isPicture || isKey) waiting.push_back(std::move(*packet));
    if (isKey) return true;
  }
  return false;
}

std::optional<MediaFile::Packet> MediaFile::Next() {
  if (waiting.empty()) return Read();
  Packet packet = std::move(waiting.front());
  waiting.pop_front();
  return packet;
}

std::optional<MediaFile::Packet> MediaFile::Read() {
  for (int errors = 0; errors < kMostErrorsInARow && !interrupted;) {
    AvOwner<AVPacket> packet(av_packet_alloc());
    const int result = av_read_frame(format.get(), packet.get());
    if (result == AVERROR_EOF) return std::nullopt;
    if (result < 0) {
      ++errors;
      continue;
    }
    if (picture != nullptr && packet->stream_index == picture->index)
      return Joined(Kind::kPicture, std::move(packet));
    if (sound != nullptr && packet->stream_index == sound->index)
      return Joined(Kind::kSound, std::move(packet));
  }
  return std::nullopt;
}

MediaFile::Packet MediaFile::Joined(Kind kind, AvOwner<AVPacket> data) {
  const std::int64_t tick = TickOf(*data);
  if ((format->iformat->flags & AVFMT_TS_DISCONT) != 0 && tick != AV_NOPTS_VALUE) {
    const AVRational base = format->streams[data->stream_index]->time_base;
    const TickClock clock{base.num, base.den, 0};
    const std::size_t stream = kind == Kind::kPicture ? 0 : 1;
    const std::int64_t shift =
        clock.Tick(joints.ShiftOf(stream, clock.Time(tick), clock.Length(data->duration)));
    for (std::int64_t* stamp : {&data->pts, &data->dts})
      if (*stamp != AV_NOPTS_VALUE) *stamp += shift;
  }
  return {kind, std::move(data)};
}

}  // namespace quorvex
