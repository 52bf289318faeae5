// The CD drive as any program sees it through MCI.
#include <gtest/gtest.h>
#include <windows.h>

#include <mmsystem.h>

#include <map>

#include "tests/support/pump.h"
#include "tests/support/virtual_drive.h"

namespace quorvex {
namespace {

class MciDriverTest : public testing::Test {
 protected:
  MciDriverTest() {
    WNDCLASSA listener{};
    listener.lpfnWndProc = [](HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
      if (message == MM_MCINOTIFY) heard += Name(wParam) + ' ';
      return ::DefWindowProcA(hwnd, message, wParam, lParam);
    };
    listener.lpszClassName = "QuorvexMciListener";
    ::RegisterClassA(&listener);
    window =
        ::CreateWindowA("QuorvexMciListener", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    heard.clear();
  }
  ~MciDriverTest() override {
    for (const auto& [device, open] : opened) {
      if (open) Close(device);
    }
    ::DestroyWindow(window);
  }

  static std::string Name(WPARAM code) {
    const std::map<WPARAM, std::string> names{{MCI_NOTIFY_SUCCESSFUL, "successful"},
                                              {MCI_NOTIFY_SUPERSEDED, "superseded"},
                                              {MCI_NOTIFY_ABORTED, "aborted"},
                                              {MCI_NOTIFY_FAILURE, "failure"}};
    return names.at(code);
  }

  template <typename Parameters>
  static MCIERROR Send(MCIDEVICEID device, UINT message, DWORD flags, Parameters parameters) {
    return ::mciSendCommandA(device, message, flags, reinterpret_cast<DWORD_PTR>(&parameters));
  }
  static MCIERROR Send(MCIDEVICEID device, UINT message, DWORD flags = 0) {
    return ::mciSendCommandA(device, message, flags, 0);
  }

  // A process may have one open without a name of its own (winmm answers MCIERR_DEVICE_OPEN for a second).
  MCIERROR TryOpen(DWORD flags, MCIDEVICEID& device, const char* alias = nullptr) {
    MCI_OPEN_PARMSA parameters{};
    parameters.lpstrDeviceType = reinterpret_cast<LPSTR>(static_cast<ULONG_PTR>(MCI_DEVTYPE_CD_AUDIO));
    DWORD how = MCI_OPEN_TYPE | MCI_OPEN_TYPE_ID;
    if (alias != nullptr) {
      parameters.lpstrDeviceType = "cdaudio";
      parameters.lpstrAlias = alias;
      how = MCI_OPEN_TYPE | MCI_OPEN_ALIAS;
    }
    const MCIERROR error =
        ::mciSendCommandA(0, MCI_OPEN, how | flags, reinterpret_cast<DWORD_PTR>(&parameters));
    device = parameters.wDeviceID;
    if (error == 0) opened[device] = true;
    return error;
  }
  MCIDEVICEID Open(DWORD format = MCI_FORMAT_TMSF, const char* alias = nullptr) {
    MCIDEVICEID device = 0;
    EXPECT_EQ(TryOpen(MCI_OPEN_SHAREABLE, device, alias), 0U);
    SetFormat(device, format);
    return device;
  }
  MCIERROR Close(MCIDEVICEID device) {
    opened[device] = false;
    return Send(device, MCI_CLOSE);
  }
  static MCIERROR SetFormat(MCIDEVICEID device, DWORD format) {
    MCI_SET_PARMS parameters{};
    parameters.dwTimeFormat = format;
    return Send(device, MCI_SET, MCI_SET_TIME_FORMAT, parameters);
  }

  static MCIERROR TryStatus(MCIDEVICEID device, DWORD item, DWORD_PTR& value, DWORD track = 0,
                            DWORD flags = 0) {
    MCI_STATUS_PARMS parameters{};
    parameters.dwItem = item;
    parameters.dwTrack = track;
    const DWORD all = MCI_WAIT | MCI_STATUS_ITEM | flags | (track != 0 ? MCI_TRACK : 0);
    const MCIERROR error =
        ::mciSendCommandA(device, MCI_STATUS, all, reinterpret_cast<DWORD_PTR>(&parameters));
    value = parameters.dwReturn;
    return error;
  }
  static DWORD_PTR Status(MCIDEVICEID device, DWORD item, DWORD track = 0, DWORD flags = 0) {
    DWORD_PTR value = 0;
    EXPECT_EQ(TryStatus(device, item, value, track, flags), 0U) << "item " << item;
    return value;
  }
  static MCIERROR StatusError(MCIDEVICEID device, DWORD item, DWORD track = 0) {
    DWORD_PTR value = 0;
    return TryStatus(device, item, value, track);
  }
  static DWORD_PTR Mode(MCIDEVICEID device) { return Status(device, MCI_STATUS_MODE); }

  MCIERROR Play(MCIDEVICEID device, DWORD flags, DWORD from = 0, DWORD to = 0) const {
    MCI_PLAY_PARMS parameters{};
    parameters.dwCallback = reinterpret_cast<DWORD_PTR>(window);
    parameters.dwFrom = from;
    parameters.dwTo = to;
    return Send(device, MCI_PLAY, flags, parameters);
  }
  static MCIERROR Seek(MCIDEVICEID device, DWORD flags, DWORD to = 0) {
    MCI_SEEK_PARMS parameters{};
    parameters.dwTo = to;
    return Send(device, MCI_SEEK, flags, parameters);
  }
  static bool Hears(const std::string& notifications) {
    return PumpUntil([&] { return heard == notifications; });
  }

  static inline std::string heard;
  HWND window = nullptr;
  std::map<MCIDEVICEID, bool> opened;
  VirtualDrive drive;
};

constexpr DWORD Msf(DWORD m, DWORD s, DWORD f) { return m | s << 8 | f << 16; }
constexpr DWORD Tmsf(DWORD track, DWORD m, DWORD s, DWORD f) { return track | m << 8 | s << 16 | f << 24; }

TEST_F(MciDriverTest, AnswersForADisc) {
  drive.Insert({61, 5, 200});
  const MCIDEVICEID device = Open();
  EXPECT_EQ(Mode(device), MCI_MODE_STOP);
  EXPECT_EQ(Status(device, MCI_STATUS_MEDIA_PRESENT), 1U);
  EXPECT_EQ(Status(device, MCI_STATUS_READY), 1U);
  EXPECT_EQ(Status(device, MCI_STATUS_NUMBER_OF_TRACKS), 3U);
  EXPECT_EQ(Status(device, MCI_STATUS_LENGTH, 1), Msf(1, 1, 0));
  EXPECT_EQ(Status(device, MCI_STATUS_LENGTH), Msf(4, 26, 0));
  EXPECT_EQ(Status(device, MCI_STATUS_POSITION), Tmsf(1, 0, 0, 0));
  EXPECT_EQ(Status(device, MCI_STATUS_POSITION, 3), Tmsf(3, 0, 0, 0));
  EXPECT_EQ(Status(device, MCI_STATUS_CURRENT_TRACK), 1U);
  EXPECT_EQ(Status(device, MCI_CDA_STATUS_TYPE_TRACK, 2), static_cast<DWORD_PTR>(MCI_CDA_TRACK_AUDIO));
  EXPECT_EQ(Status(device, MCI_STATUS_TIME_FORMAT), static_cast<DWORD_PTR>(MCI_FORMAT_TMSF));
  SetFormat(device, MCI_FORMAT_MSF);
  EXPECT_EQ(Status(device, MCI_STATUS_POSITION, 2), Msf(1, 3, 0));
  EXPECT_EQ(Status(device, MCI_STATUS_POSITION, 0, MCI_STATUS_START), Msf(0, 2, 0));
  SetFormat(device, MCI_FORMAT_MILLISECONDS);
  EXPECT_EQ(Status(device, MCI_STATUS_LENGTH, 2), 5000U);
}

TEST_F(MciDriverTest, AnswersMisuseWithTheCodesOfADrive) {
  drive.Insert({10, 10});
  const MCIDEVICEID device = Open();
  EXPECT_EQ(Send(device, MCI_STATUS, MCI_STATUS_ITEM), MCIERR_NULL_PARAMETER_BLOCK);
  EXPECT_EQ(StatusError(device, 9999), MCIERR_UNSUPPORTED_FUNCTION);
  EXPECT_EQ(StatusError(device, MCI_STATUS_LENGTH, 3), MCIERR_OUTOFRANGE);
  EXPECT_EQ(StatusError(device, MCI_CDA_STATUS_TYPE_TRACK), MCIERR_MISSING_PARAMETER);
  EXPECT_EQ(SetFormat(device, MCI_FORMAT_FRAMES), MCIERR_BAD_TIME_FORMAT);
  EXPECT_EQ(Send(device, MCI_SET, MCI_SET_TIME_FORMAT), MCIERR_NULL_PARAMETER_BLOCK);
  EXPECT_EQ(Send(device, MCI_SET, MCI_SET_DOOR_OPEN | MCI_SET_DOOR_CLOSED), MCIERR_FLAGS_NOT_COMPATIBLE);
  EXPECT_EQ(Play(device, MCI_FROM, 3), MCIERR_OUTOFRANGE);
  EXPECT_EQ(Play(device, MCI_FROM | MCI_TO, 2, 1), MCIERR_OUTOFRANGE);
  EXPECT_EQ(Seek(device, 0), MCIERR_MISSING_PARAMETER);
  EXPECT_EQ(Seek(device, MCI_TO, Tmsf(1, 0, 11, 0)), MCIERR_OUTOFRANGE);
  EXPECT_EQ(Send(device, MCI_RECORD, 0, MCI_RECORD_PARMS{}), MCIERR_UNSUPPORTED_FUNCTION);
  EXPECT_EQ(Mode(device), MCI_MODE_STOP) << "and nothing has begun to play";
}

TEST_F(MciDriverTest, PlayingEndsWhereItWasToldToAndSaysSo) {
  drive.Insert({2, 2, 2});
  drive.SetSpeed(1000);
  const MCIDEVICEID device = Open();
  EXPECT_EQ(Play(device, MCI_NOTIFY | MCI_FROM | MCI_TO, 1, Tmsf(2, 0, 1, 0)), 0U);
  EXPECT_TRUE(Hears("successful "));
  EXPECT_EQ(Mode(device), MCI_MODE_STOP);
  EXPECT_EQ(Status(device, MCI_STATUS_POSITION), Tmsf(2, 0, 1, 0));
  EXPECT_EQ(Play(device, MCI_NOTIFY), 0U) << "from where it stands to the end of the disc";
  EXPECT_TRUE(Hears("successful successful "));
  EXPECT_EQ(Status(device, MCI_STATUS_POSITION), Tmsf(3, 0, 2, 0));
  EXPECT_EQ(Play(device, MCI_WAIT), 0U) << "and from the start when that was the end";
  EXPECT_EQ(Mode(device), MCI_MODE_STOP);
  EXPECT_EQ(heard, "successful successful ");
}

TEST_F(MciDriverTest, NotificationsTellWhatBecameOfAPlaying) {
  drive.Insert({60, 60});
  const MCIDEVICEID device = Open();
  const auto begin = [&] {
    Send(device, MCI_STOP);
    PumpFor(50);
    heard.clear();
    EXPECT_EQ(Play(device, MCI_NOTIFY | MCI_FROM, 1), 0U);
  };
  begin();
  Play(device, MCI_NOTIFY | MCI_FROM, 2);
  EXPECT_TRUE(Hears("superseded "));
  begin();
  Play(device, MCI_FROM, 2);
  EXPECT_TRUE(Hears("aborted ")) << "the new playing asks for none";
  begin();
  Send(device, MCI_STOP);
  EXPECT_TRUE(Hears("aborted "));
  begin();
  Seek(device, MCI_TO, 2);
  EXPECT_TRUE(Hears("aborted "));
  begin();
  MCI_GENERIC_PARMS generic{};
  generic.dwCallback = reinterpret_cast<DWORD_PTR>(window);
  Send(device, MCI_STATUS, MCI_NOTIFY | MCI_STATUS_ITEM,
       MCI_STATUS_PARMS{generic.dwCallback, 0, MCI_STATUS_MODE, 0});
  EXPECT_TRUE(Hears("superseded successful "))
      << "a question that asks for a notification takes the place of the playing's";
  begin();
  drive.Eject();
  EXPECT_TRUE(Hears("failure ")) << "somebody took the disc";
  drive.CloseTray();
  begin();
  Send(device, MCI_SET, MCI_SET_DOOR_OPEN);
  EXPECT_TRUE(Hears("aborted "));
}

TEST_F(MciDriverTest, AnUnreadableTrackStopsThePlayingBeforeIt) {
  drive.Insert({1, 2, 1});
  drive.SetSpeed(500);
  drive.Set(&DriveState::unreadableTrack, 2);
  const MCIDEVICEID device = Open();
  EXPECT_EQ(Play(device, MCI_NOTIFY | MCI_FROM, 1), 0U);
  EXPECT_TRUE(Hears("failure "));
  EXPECT_EQ(Mode(device), MCI_MODE_STOP);
  EXPECT_EQ(Play(device, MCI_FROM, 2), MCIERR_HARDWARE);
  EXPECT_EQ(Play(device, MCI_FROM, 3), 0U);
}

// The place that the drive tells is the one that is heard: in real time, with the sound device as its clock.
TEST_F(MciDriverTest, PlaysInRealTime) {
  drive.Insert({60});
  const MCIDEVICEID device = Open();
  Play(device, MCI_FROM, 1);
  ::Sleep(1000);  // the sound device starts
  const int before = drive.Position();
  const ULONGLONG start = ::GetTickCount64();
  ::Sleep(2000);
  const double seconds = static_cast<double>(::GetTickCount64() - start) / 1000;
  EXPECT_NEAR((drive.Position() - before) / 75.0, seconds, 0.15);
}

TEST_F(MciDriverTest, DiscsThatBeginWithDataOrVanish) {
  drive.InsertImage(drive.MakeDisc("mixed", {10, 10}, true));
  const MCIDEVICEID device = Open();
  EXPECT_EQ(Status(device, MCI_CDA_STATUS_TYPE_TRACK, 1), static_cast<DWORD_PTR>(MCI_CDA_TRACK_OTHER));
  EXPECT_EQ(Play(device, MCI_FROM, 1), MCIERR_HARDWARE);
  EXPECT_EQ(Play(device, MCI_FROM, 2), 0U);
  drive.InsertImage("Z:\\nowhere\\gone.cue");
  EXPECT_EQ(StatusError(device, MCI_STATUS_NUMBER_OF_TRACKS), MCIERR_DEVICE_NOT_READY);
  EXPECT_EQ(Play(device, 0), MCIERR_DEVICE_NOT_READY);
}

TEST_F(MciDriverTest, AnswersCommandStringsInWords) {
  drive.Insert({61, 5});
  const auto ask = [](const char* command) {
    char answer[100] = "";
    const MCIERROR error = ::mciSendStringA(command, answer, sizeof answer, nullptr);
    return error != 0 ? "error " + std::to_string(error) : std::string(answer);
  };
  EXPECT_EQ(ask("open cdaudio alias cd shareable"), "1");
  ask("set cd time format tmsf");
  EXPECT_EQ(ask("status cd mode"), "stopped");
  EXPECT_EQ(ask("status cd time format"), "tmsf");
  EXPECT_EQ(ask("status cd media present"), "true");
  EXPECT_EQ(ask("status cd length track 1"), "01:01:00");
  EXPECT_EQ(ask("status cd position track 2"), "02:00:00:00");
  EXPECT_EQ(ask("status cd type track 1"), "audio");
  EXPECT_EQ(ask("capability cd can eject"), "true");
  EXPECT_EQ(ask("capability cd can record"), "false");
  EXPECT_EQ(ask("info cd product"), "Quorvex CD drive");
  EXPECT_EQ(ask("close cd"), "");
}

TEST_F(MciDriverTest, AResumedPlayingEndsWhereItWasToEnd) {
  drive.Insert({10, 10, 10});
  const MCIDEVICEID device = Open();
  EXPECT_EQ(Play(device, MCI_FROM | MCI_TO, 1, 2), 0U);
  EXPECT_EQ(Send(device, MCI_PAUSE), 0U);
  EXPECT_EQ(Send(device, MCI_RESUME), 0U);
  EXPECT_EQ(Mode(device), MCI_MODE_PLAY);
  EXPECT_EQ(drive.State().end, 10 * 75);
  Send(device, MCI_PAUSE);
  EXPECT_EQ(Seek(device, MCI_TO, 3), 0U);
  EXPECT_EQ(Send(device, MCI_RESUME), 0U);
  EXPECT_EQ(drive.State().end, 30 * 75) << "beyond it there is none";
}

}  // namespace
}  // namespace quorvex
