// What a process holds, seen from outside. Under Wine GetGuiResources and GetProcessHandleCount answer 0, and
// the system's list of processes tells how many handles there is room for; so the drawing objects are counted
// in the table that the process shares with the platform, and its handles in the list of all handles.
#pragma once

#include <windows.h>

#include <winternl.h>

#include <cstdint>
#include <cstdio>
#include <map>
#include <vector>

namespace quorvex {

// An entry of the table of drawing objects; a free one has no type.
struct DrawingObject {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type;
  std::uint8_t flags;
  std::uint64_t userPointer;
};

// An entry of the list of all handles, which begins with their number.
struct ListedHandle {
  std::uint32_t process;
  std::uint8_t kind;
  std::uint8_t flags;
  std::uint16_t value;
  std::uint64_t object;
  std::uint64_t access;
};

// How many objects of each kind the process draws with.
inline std::map<int, int> CountDrawingObjects(HANDLE process) {
  constexpr std::size_t kTableInPeb = 0xF8;
  constexpr std::size_t kEntries = 0x4000;
  PROCESS_BASIC_INFORMATION basic{};
  std::map<int, int> counts;
  if (::NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0)
    return counts;
  void* table = nullptr;
  const auto* field = reinterpret_cast<const char*>(basic.PebBaseAddress) + kTableInPeb;
  std::vector<DrawingObject> entries(kEntries);
  const SIZE_T size = entries.size() * sizeof(DrawingObject);
  if (::ReadProcessMemory(process, field, &table, sizeof table, nullptr) == FALSE ||
      ::ReadProcessMemory(process, table, entries.data(), size, nullptr) == FALSE)
    return counts;
  for (const DrawingObject& entry : entries) {
    if (entry.type != 0) ++counts[entry.type];
  }
  return counts;
}

// How many handles of each kind of object the process has.
inline std::map<int, int> CountHandles(DWORD process) {
  constexpr auto kAllHandles = static_cast<SYSTEM_INFORMATION_CLASS>(16);
  std::vector<std::uint64_t> list(1 << 19);
  const auto size = static_cast<ULONG>(list.size() * sizeof list[0]);
  std::map<int, int> counts;
  if (::NtQuerySystemInformation(kAllHandles, list.data(), size, nullptr) != 0) return counts;
  const auto* handles = reinterpret_cast<const ListedHandle*>(&list[1]);
  for (std::uint64_t i = 0; i < static_cast<std::uint32_t>(list[0]); ++i) {
    if (handles[i].process == process) ++counts[handles[i].kind];
  }
  return counts;
}

inline void PrintCounts(const char* what, const std::map<int, int>& counts) {
  int all = 0;
  for (const auto& [kind, count] : counts) {
    std::printf("%s of kind %d=%d\n", what, kind, count);
    all += count;
  }
  std::printf("%s=%d\n", what, all);
}

inline void PrintCounts(DWORD id) {
  const HANDLE process = ::OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
  PrintCounts("drawing", CountDrawingObjects(process));
  ::CloseHandle(process);
  PrintCounts("handles", CountHandles(id));
}

}  // namespace quorvex
