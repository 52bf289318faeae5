// The MCI CD-audio driver: what MCI asks of a drive, answered by the shared drive. Messages, flags and codes
// are those of the Multimedia Command Interface (mmsystem.h, mmddk.h); winmm hands the parameter records over
// in their wide form.
#include <windows.h>

#include <mmsystem.h>

#include <mmddk.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/cd/cd_engine.h"
#include "platform/cd/mci_driver_calls.h"

namespace quorvex {
namespace {

// One open of the drive.
struct OpenDevice {
  MCIDEVICEID id;
  bool shareable;
  TimeFormat format = TimeFormat::kMsf;
  // As this program last heard of the disc: a disc that was exchanged since is first reported as gone.
  std::uint32_t mediaSerial = 0;
  bool mediaPresent = false;
};

std::mutex devicesMutex;
std::vector<std::shared_ptr<OpenDevice>> devices;

CdEngine& Engine() { return CdEngine::Instance(); }

// Null when none has that number. Another thread may close it, or this one while it waits.
std::shared_ptr<OpenDevice> FindDevice(DWORD_PTR id) {
  const std::scoped_lock lock(devicesMutex);
  const auto found =
      std::find_if(devices.begin(), devices.end(), [id](const auto& device) { return device->id == id; });
  return found == devices.end() ? nullptr : *found;
}

DiscTimes TimesOf(const DiscImage& disc) { return {disc.Tracks(), disc.LeadOut()}; }

MCIERROR Open(MCIDEVICEID id, DWORD flags) {
  if ((flags & (MCI_OPEN_ELEMENT | MCI_OPEN_ELEMENT_ID)) != 0) return MCIERR_NO_ELEMENT_ALLOWED;
  if (!Engine().MayOpen()) return MCIERR_CANNOT_LOAD_DRIVER;
  const bool shareable = (flags & MCI_OPEN_SHAREABLE) != 0;
  const std::uint32_t serial = Engine().Look().mediaSerial;
  const std::scoped_lock lock(devicesMutex);
  if (!devices.empty() && (!shareable || !devices.front()->shareable)) return MCIERR_MUST_USE_SHAREABLE;
  auto device = std::make_shared<OpenDevice>(OpenDevice{id, shareable});
  device->mediaSerial = serial;
  devices.push_back(std::move(device));
  return 0;
}

MCIERROR Close(MCIDEVICEID id) {
  Engine().Forget(id);
  Engine().AwaitSound();
  const std::scoped_lock lock(devicesMutex);
  std::erase_if(devices, [id](const auto& device) { return device->id == id; });
  return 0;
}

// The answer to a question: a number, perhaps with the way in which MCI's command strings are to show it.
struct Answer {
  DWORD_PTR value = 0;
  MCIERROR code = 0;  // an error, or MCI_..._RETURNED
};

Answer Error(MCIERROR code) { return {0, code}; }
Answer Number(DWORD_PTR value) { return {value, 0}; }
Answer Word(DWORD value, DWORD word, MCIERROR kind = MCI_RESOURCE_RETURNED) {
  return {static_cast<DWORD_PTR>(MAKEMCIRESOURCE(value, word)), kind};
}
Answer Constant(DWORD value) { return Word(value, value); }
// A constant whose word is among this driver's own resources.
Answer OwnConstant(DWORD value) { return Word(value, value, MCI_RESOURCE_RETURNED | MCI_RESOURCE_DRIVER); }
Answer Boolean(bool value) { return Word(value ? TRUE : FALSE, value ? MCI_TRUE : MCI_FALSE); }
Answer Time(TimeFormat format, DWORD_PTR value) {
  if (format == TimeFormat::kMilliseconds) return Number(value);
  return {value,
          format == TimeFormat::kTmsf ? MCIERROR{MCI_COLONIZED4_RETURN} : MCIERROR{MCI_COLONIZED3_RETURN}};
}
Answer Length(TimeFormat format, int frames) {
  return Time(format == TimeFormat::kTmsf ? TimeFormat::kMsf : format, PackLength(format, frames));
}

Answer AnswerMediaPresent(OpenDevice& device) {
  const CdEngine::Status status = Engine().Look();
  const bool exchanged = status.mediaSerial != device.mediaSerial && device.mediaPresent;
  device.mediaSerial = status.mediaSerial;
  device.mediaPresent = status.mediaPresent && !exchanged;
  return Boolean(device.mediaPresent);
}

// A question about one track of the disc.
Answer AnswerTrack(const OpenDevice& device, const DiscTimes& disc, const MCI_STATUS_PARMS& question) {
  if (question.dwTrack < 1 || question.dwTrack > disc.tracks.size()) return Error(MCIERR_OUTOFRANGE);
  const DiscTrack& track = disc.tracks[question.dwTrack - 1];
  switch (question.dwItem) {
    case MCI_STATUS_LENGTH: return Length(device.format, track.length);
    case MCI_STATUS_POSITION: return Time(device.format, PackPlace(disc, device.format, track.start));
    case MCI_CDA_STATUS_TYPE_TRACK:
      return OwnConstant(track.audio ? MCI_CDA_TRACK_AUDIO : MCI_CDA_TRACK_OTHER);
    default: return Error(MCIERR_FLAGS_NOT_COMPATIBLE);
  }
}

// A question that needs a disc.
Answer AnswerDisc(const OpenDevice& device, DWORD flags, const MCI_STATUS_PARMS& question) {
  const std::shared_ptr<DiscImage> image = Engine().Disc();
  const CdEngine::Status status = Engine().Look();
  if (!image || !status.mediaPresent) return Error(MCIERR_DEVICE_NOT_READY);
  const DiscTimes disc = TimesOf(*image);
  if ((flags & MCI_TRACK) != 0) return AnswerTrack(device, disc, question);
  switch (question.dwItem) {
    case MCI_STATUS_LENGTH: return Length(device.format, disc.leadOut);
    case MCI_STATUS_NUMBER_OF_TRACKS:
      return Number(status.claimTracks != 0 ? status.claimTracks : disc.tracks.size());
    case MCI_STATUS_CURRENT_TRACK: return Number(static_cast<DWORD_PTR>(disc.TrackAt(status.position)));
    case MCI_STATUS_POSITION: {
      const int place = (flags & MCI_STATUS_START) != 0 ? disc.tracks.front().start : status.position;
      return Time(device.format, PackPlace(disc, device.format, place));
    }
    case MCI_CDA_STATUS_TYPE_TRACK: return Error(MCIERR_MISSING_PARAMETER);
    default: return Error(MCIERR_UNSUPPORTED_FUNCTION);
  }
}

Answer AnswerStatus(OpenDevice& device, DWORD flags, const MCI_STATUS_PARMS& question) {
  if ((flags & MCI_STATUS_ITEM) == 0) return Error(MCIERR_MISSING_PARAMETER);
  switch (question.dwItem) {
    case MCI_STATUS_MODE: return Constant(Engine().Poll().mode);
    case MCI_STATUS_MEDIA_PRESENT: return AnswerMediaPresent(device);
    case MCI_STATUS_READY: return Boolean(Engine().Look().mediaPresent);
    case MCI_STATUS_TIME_FORMAT: {
      const auto format = static_cast<DWORD>(device.format);
      return Word(format, MCI_FORMAT_RETURN_BASE + format);
    }
    default: return AnswerDisc(device, flags, question);
  }
}

MCIERROR Status(OpenDevice& device, DWORD flags, MCI_STATUS_PARMS* question) {
  if (question == nullptr) return MCIERR_NULL_PARAMETER_BLOCK;
  const Answer answer = AnswerStatus(device, flags, *question);
  if ((answer.code & 0xFFFFU) == 0) question->dwReturn = answer.value;
  return answer.code;
}

MCIERROR SetFormat(OpenDevice& device, const MCI_SET_PARMS& parameters) {
  switch (parameters.dwTimeFormat) {
    case MCI_FORMAT_MILLISECONDS:
    case MCI_FORMAT_MSF:
    case MCI_FORMAT_TMSF: device.format = static_cast<TimeFormat>(parameters.dwTimeFormat); return 0;
    default: return MCIERR_BAD_TIME_FORMAT;
  }
}

MCIERROR Set(OpenDevice& device, DWORD flags, const MCI_SET_PARMS* parameters) {
  if ((flags & (MCI_SET_AUDIO | MCI_SET_VIDEO | MCI_SET_ON | MCI_SET_OFF)) != 0)
    return MCIERR_UNSUPPORTED_FUNCTION;
  const bool open = (flags & MCI_SET_DOOR_OPEN) != 0;
  const bool close = (flags & MCI_SET_DOOR_CLOSED) != 0;
  const bool format = (flags & MCI_SET_TIME_FORMAT) != 0;
  if (open && close) return MCIERR_FLAGS_NOT_COMPATIBLE;
  if (!open && !close && !format) return MCIERR_MISSING_PARAMETER;
  if (format && parameters == nullptr) return MCIERR_NULL_PARAMETER_BLOCK;
  if (format) {
    if (const MCIERROR error = SetFormat(device, *parameters); error != 0) return error;
  }
  if (open) Engine().OpenTray();
  if (close) Engine().CloseTray();
  return 0;
}

// The frame that a parameter names.
MCIERROR PlaceOf(const OpenDevice& device, DWORD value, std::optional<int>& place) {
  const std::shared_ptr<DiscImage> disc = Engine().Disc();
  if (!disc) return MCIERR_DEVICE_NOT_READY;
  place = UnpackPlace(TimesOf(*disc), device.format, value);
  return place ? 0 : MCIERR_OUTOFRANGE;
}

// Waits for the end of a playing as MCI_WAIT asks; the program may break off with its yield procedure.
void WaitWhilePlaying(MCIDEVICEID device) {
  while (Engine().Look().mode == MCI_MODE_PLAY && ::mciDriverYield(device) == 0) ::Sleep(20);
}

MCIERROR Play(const OpenDevice& device, DWORD flags, const MCI_PLAY_PARMS* parameters) {
  if (parameters == nullptr && (flags & (MCI_FROM | MCI_TO | MCI_NOTIFY)) != 0)
    return MCIERR_NULL_PARAMETER_BLOCK;
  std::optional<int> from;
  std::optional<int> to;
  if ((flags & MCI_FROM) != 0) {
    if (const MCIERROR error = PlaceOf(device, parameters->dwFrom, from); error != 0) return error;
  }
  if ((flags & MCI_TO) != 0) {
    if (const MCIERROR error = PlaceOf(device, parameters->dwTo, to); error != 0) return error;
  }
  CdEngine::Notify notify;
  if ((flags & MCI_NOTIFY) != 0) notify = {reinterpret_cast<HWND>(parameters->dwCallback), device.id};
  const MCIERROR error = Engine().Play(from, to, notify);
  if (error == 0 && (flags & MCI_WAIT) != 0) WaitWhilePlaying(device.id);
  return error;
}

MCIERROR Seek(const OpenDevice& device, DWORD flags, const MCI_SEEK_PARMS* parameters) {
  const DWORD target = flags & (MCI_TO | MCI_SEEK_TO_START | MCI_SEEK_TO_END);
  if (target == 0) return MCIERR_MISSING_PARAMETER;
  if ((target & (target - 1)) != 0) return MCIERR_FLAGS_NOT_COMPATIBLE;
  if (target == MCI_TO && parameters == nullptr) return MCIERR_NULL_PARAMETER_BLOCK;
  const std::shared_ptr<DiscImage> disc = Engine().Disc();
  if (!disc) return MCIERR_DEVICE_NOT_READY;
  std::optional<int> place = target == MCI_SEEK_TO_START ? disc->Tracks().front().start : disc->LeadOut();
  if (target == MCI_TO) {
    if (const MCIERROR error = PlaceOf(device, parameters->dwTo, place); error != 0) return error;
  }
  return Engine().Seek(*place);
}

Answer Capability(DWORD item) {
  switch (item) {
    case MCI_GETDEVCAPS_DEVICE_TYPE: return Constant(MCI_DEVTYPE_CD_AUDIO);
    case MCI_GETDEVCAPS_HAS_AUDIO:
    case MCI_GETDEVCAPS_CAN_EJECT:
    case MCI_GETDEVCAPS_CAN_PLAY: return Boolean(true);
    case MCI_GETDEVCAPS_CAN_RECORD:
    case MCI_GETDEVCAPS_HAS_VIDEO:
    case MCI_GETDEVCAPS_USES_FILES:
    case MCI_GETDEVCAPS_COMPOUND_DEVICE:
    case MCI_GETDEVCAPS_CAN_SAVE: return Boolean(false);
    default: return Error(MCIERR_UNSUPPORTED_FUNCTION);
  }
}

MCIERROR GetDeviceCapability(DWORD flags, MCI_GETDEVCAPS_PARMS* question) {
  if (question == nullptr) return MCIERR_NULL_PARAMETER_BLOCK;
  if ((flags & MCI_GETDEVCAPS_ITEM) == 0) return MCIERR_MISSING_PARAMETER;
  const Answer answer = Capability(question->dwItem);
  question->dwReturn = static_cast<DWORD>(answer.value);
  return answer.code;
}

// The disc's identity as Windows computes it: the sum of its tracks' starts, each minute, second and frame in
// a byte.
std::wstring MediaIdentity(const DiscImage& disc) {
  std::uint32_t sum = 0;
  const DiscTimes times = TimesOf(disc);
  for (const DiscTrack& track : times.tracks) {
    const std::uint32_t msf = PackPlace(times, TimeFormat::kMsf, track.start);
    sum += (msf & 0xFFU) << 16 | (msf & 0xFF00U) | (msf >> 16 & 0xFFU);
  }
  return std::to_wstring(sum);
}

MCIERROR Info(DWORD flags, MCI_INFO_PARMSW* question) {
  if (question == nullptr || question->lpstrReturn == nullptr) return MCIERR_NULL_PARAMETER_BLOCK;
  std::wstring text;
  if ((flags & MCI_INFO_PRODUCT) != 0) {
    text = L"Quorvex CD drive";
  } else if ((flags & MCI_INFO_MEDIA_IDENTITY) != 0) {
    const std::shared_ptr<DiscImage> disc = Engine().Disc();
    if (!disc) return MCIERR_DEVICE_NOT_READY;
    text = MediaIdentity(*disc);
  } else if ((flags & MCI_INFO_MEDIA_UPC) != 0) {
    return MCIERR_NO_IDENTITY;
  } else {
    return MCIERR_MISSING_PARAMETER;
  }
  if (text.size() >= question->dwRetSize) return MCIERR_PARAM_OVERFLOW;
  std::copy(text.begin(), text.end(), question->lpstrReturn);
  question->lpstrReturn[text.size()] = L'\0';
  question->dwRetSize = static_cast<DWORD>(text.size());
  return 0;
}

MCIERROR Run(OpenDevice& device, UINT message, DWORD flags, LPARAM parameters) {
  switch (message) {
    case MCI_PLAY: return Play(device, flags, reinterpret_cast<MCI_PLAY_PARMS*>(parameters));
    case MCI_SEEK: return Seek(device, flags, reinterpret_cast<MCI_SEEK_PARMS*>(parameters));
    case MCI_STOP: return Engine().Stop();
    case MCI_PAUSE: return Engine().Pause();
    case MCI_RESUME: return Engine().Resume();
    case MCI_STATUS: return Status(device, flags, reinterpret_cast<MCI_STATUS_PARMS*>(parameters));
    case MCI_SET: return Set(device, flags, reinterpret_cast<MCI_SET_PARMS*>(parameters));
    case MCI_GETDEVCAPS:
      return GetDeviceCapability(flags, reinterpret_cast<MCI_GETDEVCAPS_PARMS*>(parameters));
    case MCI_INFO: return Info(flags, reinterpret_cast<MCI_INFO_PARMSW*>(parameters));
    default: return MCIERR_UNSUPPORTED_FUNCTION;
  }
}

// The time that a test lets the drive take for an answer. False when the program, which may do so with its
// yield procedure, breaks off; the drive then answers at once.
bool AwaitDrive(MCIDEVICEID device) {
  const std::uint64_t begun = DriveClock();
  while (DriveClock() - begun < Engine().AnswerMs()) {
    if (::mciDriverYield(device) != 0) return false;
    ::Sleep(20);
  }
  return true;
}

// A command other than PLAY has done its work when it returns; a notification asked for comes at once.
MCIERROR RunAndNotify(DWORD_PTR id, UINT message, DWORD flags, LPARAM parameters) {
  const std::shared_ptr<OpenDevice> device = FindDevice(id);
  if (!device) return MCIERR_INVALID_DEVICE_ID;
  if (!AwaitDrive(device->id)) return MCIERR_DEVICE_NOT_READY;
  if (FindDevice(id) != device) return MCIERR_INVALID_DEVICE_ID;
  const MCIERROR code = Run(*device, message, flags, parameters);
  const bool failed = (code & 0xFFFFU) != 0;
  if (message != MCI_PLAY && !failed && (flags & MCI_NOTIFY) != 0 && parameters != 0) {
    Engine().Supersede(device->id);
    const auto* generic = reinterpret_cast<MCI_GENERIC_PARMS*>(parameters);
    ::mciDriverNotify(reinterpret_cast<HWND>(generic->dwCallback), device->id, MCI_NOTIFY_SUCCESSFUL);
  }
  return code;
}

// DRV_OPEN: winmm tells which device it opens and asks for the driver's type; a plain OpenDriver passes
// nothing.
LRESULT OpenDriverInstance(MCI_OPEN_DRIVER_PARMS* parameters) {
  if (parameters == nullptr) return 1;
  parameters->wType = MCI_DEVTYPE_CD_AUDIO;
  parameters->wCustomCommandTable = static_cast<UINT>(MCI_NO_COMMAND_TABLE);
  return static_cast<LRESULT>(parameters->wDeviceID);
}

}  // namespace
}  // namespace quorvex

extern "C" __declspec(dllexport) LRESULT CALLBACK
    DriverProc(DWORD_PTR id, HDRVR driver, UINT message, LPARAM first, LPARAM second) {
  switch (message) {
    case DRV_LOAD:
    case DRV_ENABLE:
    case DRV_DISABLE:
    case DRV_FREE:
    case DRV_CLOSE: return 1;
    case DRV_OPEN: return quorvex::OpenDriverInstance(reinterpret_cast<MCI_OPEN_DRIVER_PARMS*>(second));
    case DRV_QUERYCONFIGURE: return 0;
    case MCI_OPEN_DRIVER:
      return static_cast<LRESULT>(quorvex::Open(static_cast<MCIDEVICEID>(id), static_cast<DWORD>(first)));
    case MCI_CLOSE_DRIVER: return static_cast<LRESULT>(quorvex::Close(static_cast<MCIDEVICEID>(id)));
    default: break;
  }
  if (message >= DRV_MCI_FIRST && message <= DRV_MCI_LAST) {
    return static_cast<LRESULT>(quorvex::RunAndNotify(id, message, static_cast<DWORD>(first), second));
  }
  return ::DefDriverProc(id, driver, message, first, second);
}
