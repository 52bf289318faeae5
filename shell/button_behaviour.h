// What some of the panel's buttons do besides sending their command: repeat while held, scan until let go,
// show the chapters.
#pragma once

namespace quorvex {

// Installs the behaviours on the buttons; once, after they are made.
void InstallButtonBehaviours();

}  // namespace quorvex
