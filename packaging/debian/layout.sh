# Where the installed Quorvex has its things: programs in the system, what belongs to the user in the user's folder of data.
bin_dir=/usr/lib/quorvex/bin
data_dir=${XDG_DATA_HOME:-$HOME/.local/share}/quorvex
env_dir=$data_dir/env
keeper=
virtual_parts=0  # a user has a screen; without sound there is none
export WINEPREFIX=$data_dir/wine
