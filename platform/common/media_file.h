// A media file: its picture and its sound, their packets in the file's order, and places in it. Times count
// from where the picture begins (the sound, without a picture).
#pragma once

#include <windows.h>

#include <atomic>
#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "platform/common/av.h"
#include "platform/common/stream_joints.h"

namespace quorvex {

class MediaFile {
 public:
  enum class Kind { kPicture, kSound };
  struct Packet {
    Kind kind;
    AvOwner<AVPacket> data;
  };

  // Opens the file. Answers the platform's code of what is wrong (ERROR_FILE_NOT_FOUND as an HRESULT ...),
  // VFW_E_UNKNOWN_FILE_TYPE when the content is none that is known, VFW_E_UNSUPPORTED_STREAM when nothing in
  // it can be decoded.
  static HRESULT Open(const std::wstring& path, std::unique_ptr<MediaFile>& opened);

  MediaFile(const MediaFile&) = delete;
  MediaFile& operator=(const MediaFile&) = delete;
  ~MediaFile() = default;

  // The streams to be played; null when there is none.
  [[nodiscard]] const AVStream* Picture() const { return picture; }
  [[nodiscard]] const AVStream* Sound() const { return sound; }

  // How a stream of this file is coded. Belongs to the file.
  [[nodiscard]] CodedStream Coded(const AVStream& stream) const;

  // How long a picture lasts; 0 when nobody knows.
  [[nodiscard]] MediaTime FrameTime() const;

  [[nodiscard]] MediaTime Duration() const { return duration; }

  // Goes to a place from which everything at `time` and after it can be decoded: the packets from there on
  // include the key picture that is needed.
  void Seek(MediaTime time);

  // The next packet of picture or sound; nothing at the end of the file, or when interrupted. Damaged
  // stretches are passed over; where time stamps begin anew, times go on.
  std::optional<Packet> Next();

  // Lets a Seek or Next that runs in another thread return early, until taken back.
  void Interrupt(bool now) { interrupted = now; }

 private:
  MediaFile() = default;

  HRESULT OpenFormat(const std::wstring& path);
  void ChooseStreams();
  void ChooseOrigin();
  void GoTo(MediaTime time);
  void GoToBeginning();
  bool FindKeyPicture(MediaTime by);
  std::optional<Packet> Read();
  Packet Joined(Kind kind, AvOwner<AVPacket> data);

  std::atomic<bool> interrupted{false};
  AvOwner<AVFormatContext> format;
  AVStream* picture = nullptr;  // of format
  AVStream* sound = nullptr;
  std::int64_t origin = 0;  // in FFmpeg's microseconds
  MediaTime duration = 0;
  StreamJoints joints;
  std::deque<Packet> waiting;  // read already while looking for a key picture
};

}  // namespace quorvex
