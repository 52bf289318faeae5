#include "platform/tv/reception.h"

#include <fstream>
#include <iterator>
#include <string>

#include "platform/common/shared_file.h"
#include "platform/tv/crossbar_pins.h"
#include "platform/tv/station_file.h"

namespace quorvex {
namespace {

std::wstring ListPath() { return SharedFilePath(L"channels.txt"); }

FILETIME TimeOf(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA file{};
  if (::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &file) == FALSE) return {};
  return file.ftLastWriteTime;
}

void WriteFirstList(const std::wstring& path) {
  const UniqueHandle file = OwnFile(
      ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  if (file)
    ::WriteFile(file.Get(), kFirstStations.data(), static_cast<DWORD>(kFirstStations.size()), &written,
                nullptr);
}

std::string ReadText(const std::wstring& path) {
  const UniqueHandle file = OwnFile(::CreateFileW(
      path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  LARGE_INTEGER size{};
  constexpr LONGLONG kLongestList = 1 << 20;
  if (!file || ::GetFileSizeEx(file.Get(), &size) == FALSE || size.QuadPart > kLongestList) return {};
  std::string text(static_cast<std::size_t>(size.QuadPart), '\0');
  DWORD read = 0;
  ::ReadFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &read, nullptr);
  text.resize(read);
  return text;
}

// A station that has nothing to send is not there.
bool IsOnAir(const Station* station) {
  return station != nullptr && (station->file.empty() || StationFile().Tune(station->file) != nullptr);
}

}  // namespace

void Reception::ReadList() {
  const std::wstring path = ListPath();
  WriteFirstList(path);
  const FILETIME time = TimeOf(path);
  if (::CompareFileTime(&time, &listTime) == 0) return;
  listTime = time;
  stations = ReadStations(ReadText(path));
}

bool Reception::HasSignal(TunerInput input, int channel) {
  const std::scoped_lock guard(lock);
  ReadList();
  return IsOnAir(FindStation(stations, input, channel));
}

Scene Reception::Now() {
  if (!traits.hasTuner) return {1, 0, true, "CAMERA", ""};
  const std::scoped_lock guard(lock);
  if (seenRoute == state.routed && seenChannel == state.channel && seenAntenna == state.antenna) return scene;
  seenRoute = state.routed;
  seenChannel = state.channel;
  seenAntenna = state.antenna;
  scene = Receive();
  return scene;
}

Scene Reception::Receive() {
  const int input = InputOfPin(static_cast<int>(seenRoute));
  if (input != kTunerInput) return {input, 0, true, "VIDEO " + std::to_string(input), ""};
  ReadList();
  const auto channel = static_cast<int>(seenChannel);
  const auto kind = seenAntenna != 0 ? TunerInput::kAntenna : TunerInput::kCable;
  const Station* station = FindStation(stations, kind, channel);
  if (!IsOnAir(station)) return {kTunerInput, channel, false, "", ""};
  return {kTunerInput, channel, true, station->name, station->file};
}

}  // namespace quorvex
