# The Debian packages that Quorvex needs, by what they are for; sourced.
packages_fonts=(fonts-liberation timgm6mb-soundfont)  # letters and instruments, for building and for running
packages_build=(
  g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 cmake ninja-build make nasm patch xz-utils bzip2 ca-certificates
  python3 python3-markdown python3-pil librsvg2-bin fluidsynth "${packages_fonts[@]}")
packages_wine=(
  "${packages_fonts[@]}" wine wine64 fonts-wine libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1 libxcomposite1
  x11-utils pulseaudio-utils
  # MIDI files: the platform plays them with these, and with the sound font.
  gstreamer1.0-plugins-base gstreamer1.0-plugins-bad)
packages_virtual_display=(xvfb imagemagick)
packages_virtual_sound=(pulseaudio)
packages_unpacked_sound=(libpulse0 libsndfile1 libltdl7 libtdb1 liborc-0.4-0 libsoxr0 libspeexdsp1 libfftw3-single3 libwrap0)
packages_check=(g++ googletest clang-format clang-tidy cppcheck xdotool ffmpeg dvdauthor genisoimage)
# tools/package, and what its tests (tools/package --test) need beyond those of ./check.
packages_package=(nsis git)
packages_package_test=(debootstrap xdotool)
# tools/fuzz.
packages_fuzz=(clang libclang-rt-dev)
# tools/coverage.
packages_coverage=(llvm)
