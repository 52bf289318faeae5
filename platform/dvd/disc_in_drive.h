// The disc in the drive, virtual or real.
#pragma once

#include "platform/dvd/opened_disc.h"

namespace quorvex {

// Opens the disc in the drive that qvdrive serves, else that in the first DVD drive that has one.
DiscFault OpenDiscInDrive(OpenedDisc& disc);

}  // namespace quorvex
