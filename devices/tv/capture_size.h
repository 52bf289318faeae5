// The room that a capture file gets: what its disk offers, and what may be typed into the dialog's field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvex {

// A size that can be handed to the device.
inline constexpr int kLargestCaptureMegabytes = 65535;

// The longest path of a capture file and of a copy of one, in bytes.
inline constexpr std::size_t kLongestCapturePath = 259;

struct CaptureRoom {
  int megabytes = 0;        // the size that the dialog proposes
  std::optional<int> free;  // megabytes that the file may have; none where the disk does not tell
};

// The room of a file that is there, by its size (bytes), and of a new one. `freeKb`: what the disk has free;
// what a file holds already counts as free, for it is written over. A new file gets 10 MB, or all of a disk
// with less.
CaptureRoom RoomOfFile(std::optional<std::int64_t> freeKb, std::int64_t fileBytes);
CaptureRoom RoomOfNewFile(std::optional<std::int64_t> freeKb);

// The largest size that the user may set, in megabytes; 0 where there is no room.
int LargestSize(const std::optional<int>& freeMegabytes);

// What the size field holds after the user has changed it to `text`: numbers from 1 up to the largest one;
// where that is 0 any number stays, to be refused at the end.
std::string CorrectedSize(std::string_view text, int largest);

// The part of a full path that names its disk or network share, with the backslash behind it.
std::string RootOf(std::string_view fullPath);

// The folder of a path with the backslash behind it; empty when it has none.
std::string FolderOf(std::string_view path);

// The path with ".avi" behind it, unless its file's name has an extension.
std::string WithExtension(const std::string& path);

}  // namespace quorvex
