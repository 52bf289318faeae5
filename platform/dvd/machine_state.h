// What libdvdnav has no functions for: a look into its virtual machine, its registers, and places within a
// title.
#pragma once

#include "platform/dvd/place.h"

struct dvdnav_s;
struct dvd_reader_s;

namespace quorvex {

enum class SystemRegister {
  kMenuLanguage = 0,
  kAudio = 1,
  kSubpicture = 2,
  kCountry = 12,
  kParentalLevel = 13
};

// Whether the machine can be asked on. A title set whose tables cannot be read leaves it without any, which
// its functions do not expect.
bool IsSound(dvdnav_s* machine);

// Closes the disc's files of a machine that an assertion left in the middle of something: nothing else of it
// can be used any more, nor freed.
void Abandon(dvdnav_s* machine);

// Whether the tables of a title's set can be read.
bool CanOpenTitle(dvdnav_s* machine, int title);

// Whether a title, played from its beginning, has a time. The machine stays where it is.
bool HasTime(dvdnav_s* machine, int title, DvdTicks time);

dvd_reader_s* ReaderOf(dvdnav_s* machine);

// Fills in domain, title set, length, streams and registers.
void ReadMachine(dvdnav_s* machine, Place& place);

// What the register of a title's subpictures may name beside a stream: none, which it begins with, and what a
// disc shows of itself. Discs that show subtitles unasked count on being seen with either.
inline constexpr int kNoSubpicture = 62;
inline constexpr int kForcedSubpictures = 63;

// Whether a stream of subpictures is chosen, and none of the two above; outside of a title the first always
// is.
bool ChoosesSubpicture(dvdnav_s* machine);

bool SetRegister(dvdnav_s* machine, SystemRegister which, int value);

// Calls a menu (DVDMenuID_t) from where a place is, if the machine is in the same programme chain still: it
// may have read on. False when there is no such menu.
bool CallMenuFrom(dvdnav_s* machine, int menu, const Place& place);
// Goes to the programme chain above this one. False when there is none.
bool GoToChainAbove(dvdnav_s* machine);
// Goes back to a place. False when the machine is in another programme chain.
bool GoToPlace(dvdnav_s* machine, const Place& place);

// Goes to a time of the title that plays. False when it has no such time.
bool GoToTime(dvdnav_s* machine, DvdTicks time);

// Goes to the video unit before the one that plays. False at the title's beginning.
bool GoToPreviousUnit(dvdnav_s* machine);

// Whether what is read next does not continue what was read.
bool JumpIsDue(dvdnav_s* machine);

// Goes to a video unit behind the one that plays, the further the greater `attempts`; at the end of what
// plays to what the disc plays then. False when there is no way on.
bool GoBehind(dvdnav_s* machine, int attempts);

// Goes back to where the title was left for a menu. False when none was.
bool ResumeTitle(dvdnav_s* machine);

}  // namespace quorvex
