# Where the Wine environment of a checkout has its things; sourced by environment.sh and prepare-prefix. The Debian package has a file
# of the same name in its place (packaging/debian/layout.sh).
#
# An environment has a name ($QUORVEX_ENV: "wine" for users, "check" for the tests), a Wine prefix build/NAME and a
# folder build/env/NAME with what was started for it.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
QUORVEX_ENV=${QUORVEX_ENV:-wine}
env_dir=$root/build/env/$QUORVEX_ENV
bin_dir=$root/build/win/bin
keeper=$root/build/win/tests/keep_alive.exe
virtual_parts=1  # where there is no display or sound, a virtual one takes its place
export WINEPREFIX=$root/build/$QUORVEX_ENV
