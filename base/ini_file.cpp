#include "base/ini_file.h"

#include <algorithm>
#include <optional>

#include "base/file_bytes.h"
#include "base/handles.h"
#include "base/text.h"

namespace quorvex {
namespace {

constexpr DWORD kPatienceMs = 60;  // for each of a turn, a read and a replacement that somebody else holds up
constexpr DWORD kRetryMs = 10;
constexpr DWORD kLargestStore = 64 << 20;
constexpr std::string_view kUtf16Mark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";

// Repeats an attempt while another program's hold on the file is what stands in its way.
template <typename Attempt>
bool WithPatience(Attempt attempt) {
  for (DWORD waited = 0;; waited += kRetryMs) {
    if (attempt()) return true;
    const DWORD error = ::GetLastError();
    const bool held = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
    if (!held || waited >= kPatienceMs) return false;
    ::Sleep(kRetryMs);
  }
}

std::string Utf8FromUtf16(std::string_view bytes) {
  std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
  std::copy_n(bytes.data(), wide.size() * sizeof(wchar_t), reinterpret_cast<char*>(wide.data()));
  const int length = static_cast<int>(wide.size());
  std::string text(static_cast<std::size_t>(length) * 3, '\0');
  const int size = static_cast<int>(text.size());
  text.resize(static_cast<std::size_t>(
      ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text.data(), size, nullptr, nullptr)));
  return text;
}

std::string Utf16FromUtf8(const std::string& text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length)));
  return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t)};
}

struct Loaded {
  IniSnapshot::State state;
  std::string text;  // UTF-8
  bool utf16 = false;
};

std::optional<std::string> ReadBytes(const std::string& path, DWORD& error) {
  UniqueHandle file;
  WithPatience([&] {
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    file = OwnFile(::CreateFileA(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
    return static_cast<bool>(file);
  });
  error = file ? ERROR_READ_FAULT : ::GetLastError();
  return ReadAll(file.Get(), kLargestStore);
}

Loaded Load(const std::string& path) {
  using State = IniSnapshot::State;
  DWORD error = ERROR_SUCCESS;
  std::optional<std::string> bytes = ReadBytes(path, error);
  if (!bytes) {
    const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return {missing ? State::kMissing : State::kUnreadable, {}};
  }
  if (bytes->starts_with(kUtf16BigEndianMark)) return {State::kUnreadable, {}};
  if (bytes->starts_with(kUtf16Mark)) {
    return {State::kRead, Utf8FromUtf16(std::string_view(*bytes).substr(kUtf16Mark.size())), true};
  }
  return {State::kRead, std::move(*bytes)};
}

bool WriteAndFlush(HANDLE file, const std::string& bytes) {
  DWORD written = 0;
  return ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != FALSE &&
         written == bytes.size() && ::SetEndOfFile(file) != FALSE && ::FlushFileBuffers(file) != FALSE;
}

UniqueHandle OpenForWriting(const std::string& path, DWORD disposition) {
  return OwnFile(
      ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// For a folder that lets no second file be made: not safe against being killed, but all that is left.
bool WriteInPlace(const std::string& path, const std::string& bytes) {
  UniqueHandle file;
  WithPatience([&] {
    file = OpenForWriting(path, OPEN_ALWAYS);
    return static_cast<bool>(file);
  });
  return file && WriteAndFlush(file.Get(), bytes);
}

bool Replace(const std::string& path, const std::string& bytes) {
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) return false;
  const std::string fresh = path + ".new";
  {
    const UniqueHandle file = OpenForWriting(fresh, CREATE_ALWAYS);
    if (!file) return WriteInPlace(path, bytes);
    if (!WriteAndFlush(file.Get(), bytes)) {
      ::DeleteFileA(fresh.c_str());
      return false;
    }
  }
  const DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  const auto move = [&] {
    if (::MoveFileExA(fresh.c_str(), path.c_str(), flags) != FALSE) return true;
    // A file that somebody just reads is not replaced either, and this is how it is told.
    if (::GetLastError() == ERROR_ACCESS_DENIED) ::SetLastError(ERROR_SHARING_VIOLATION);
    return false;
  };
  if (WithPatience(move)) return true;
  ::DeleteFileA(fresh.c_str());
  return false;
}

// The turn of one process among those that change a file. An owner that was killed hands it on.
class Turn {
 public:
  explicit Turn(const std::string& path) {
    std::string name = "Quorvex store " + path;
    std::transform(name.begin(), name.end(), name.begin(), [](char c) {
      return c == '\\' ? '/' : c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    mutex = UniqueHandle(::CreateMutexA(nullptr, FALSE, name.c_str()));
    const DWORD wait = mutex ? ::WaitForSingleObject(mutex.Get(), kPatienceMs) : WAIT_FAILED;
    held = wait == WAIT_OBJECT_0 || wait == WAIT_ABANDONED;
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;
  ~Turn() {
    if (held) ::ReleaseMutex(mutex.Get());
  }
  [[nodiscard]] bool Held() const { return held; }

 private:
  UniqueHandle mutex;
  bool held = false;
};

}  // namespace

std::string IniSnapshot::String(std::string_view section, std::string_view key, std::size_t limit) const {
  return std::string(FirstCharacters(document.Find(section, key).value_or(""), limit));
}

int IniSnapshot::Integer(std::string_view section, std::string_view key, int missing) const {
  return document.Integer(section, key, missing);
}

IniSnapshot IniFile::Read() const {
  Loaded loaded = Load(path);
  return {loaded.state, IniDocument(std::move(loaded.text))};
}

IniFile::Result IniFile::Update(const std::function<void(IniDocument&)>& change) const {
  const Turn turn(path);
  if (!turn.Held()) return Result::kFailed;
  Loaded loaded = Load(path);
  if (loaded.state == IniSnapshot::State::kUnreadable) return Result::kUnreadable;
  IniDocument document(loaded.text);
  change(document);
  const std::string text = document.Text();
  if (text == loaded.text && loaded.state == IniSnapshot::State::kRead) return Result::kDone;
  if (text.size() > kLargestStore) return Result::kFailed;  // nobody could read it again
  const bool done = Replace(path, loaded.utf16 ? std::string(kUtf16Mark) + Utf16FromUtf8(text) : text);
  return done ? Result::kDone : Result::kFailed;
}

}  // namespace quorvex
