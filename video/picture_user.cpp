#include "video/picture_user.h"

namespace quorvex {

bool fullScreen = false;

namespace {
PictureUser* pictureUser = nullptr;
}

void SetPictureUser(PictureUser* user) { pictureUser = user; }

PictureUser& CurrentPictureUser() { return *pictureUser; }

}  // namespace quorvex
