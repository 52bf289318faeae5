# The Wine environment that run, check, in-wine and the installed quorvex command share; sourced by them. layout.sh says where its things are.
#
# An environment uses the display and the sound that the user has; where there is none, or QUORVEX_VIRTUAL=1 asks for it, a
# virtual screen (Xvfb) and a PulseAudio server with a null sink take their place.
# Everything started in the background has all three standard handles on /dev/null: whoever reads a script's output through a
# pipe would otherwise wait for it.

wine_tools=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$wine_tools/layout.sh"
mkdir -p "$env_dir"

export WINEARCH=win64
# One start in some thousands ends at once with code 1, and only this channel tells why (docs/testing.md).
export WINEDEBUG=${WINEDEBUG:--all,err+virtual}
# Wine takes file names as UTF-8 only in an installed UTF-8 locale, and C.UTF-8 is always there.
export LANG=C.UTF-8 LC_ALL=C.UTF-8
# No questions about Mono and Gecko; a crash ends its process at once, with its exit code; Wine's own programs stay out of the user's
# menu and file associations.
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-winedbg.exe=d;mscoree=d;mshtml=d;winemenubuilder.exe=d}
# Else glibc gives new threads heaps of their own, up to eight for each core, and Wine's threads come and go: each heap keeps megabytes.
export MALLOC_ARENA_MAX=2
unset DISPLAY_ERROR

# alive NAME PROGRAM  Whether the program that NAME.pid notes runs. After a restart of the machine somebody else may have its number.
alive() { [ -s "$env_dir/$1.pid" ] && grep -qs -- "$2" "/proc/$(cat "$env_dir/$1.pid")/cmdline"; }

display_works() { [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; }

sound_works() {
  pactl info >/dev/null 2>&1 && return
  # Without a PulseAudio (or PipeWire) server Wine plays through ALSA, where there is a card.
  compgen -G '/dev/snd/pcm*p' >/dev/null
}

# Starts the virtual screen unless it runs; sets DISPLAY.
virtual_display() {
  if ! alive xvfb Xvfb; then
    rm -f "$env_dir/display"
    # Xvfb writes the number that it found free to descriptor 6.
    setsid Xvfb -displayfd 6 -screen 0 1280x1024x24 -nolisten tcp 6>"$env_dir/display" </dev/null >/dev/null 2>&1 9>&- &
    echo $! >"$env_dir/xvfb.pid"
    for _ in $(seq 100); do [ -s "$env_dir/display" ] && break; sleep 0.1; done
    [ -s "$env_dir/display" ] || { echo "The virtual screen (Xvfb) does not start." >&2; return 1; }
  fi
  DISPLAY=:$(cat "$env_dir/display")
  export DISPLAY
}

# Where the virtual sound server has its socket, whose path must stay short (108 characters), wherever the checkout lies.
sound_folder() { printf '/tmp/quorvex-%s-%s' "$(id -u)" "$(cksum <<<"$env_dir" | cut -d' ' -f1)"; }

# Starts the virtual sound server unless it runs; sets PULSE_SERVER. What is played can be recorded from sink.monitor.
virtual_sound() {
  local runtime modules server=(pulseaudio) unpacked=$root/build/pulseaudio  # of tools/install-virtual-sound
  runtime=$(sound_folder)
  if [ -d "$unpacked" ]; then
    modules=$(echo "$unpacked"/usr/lib/pulse-*/modules)
    server=(env LD_LIBRARY_PATH="$unpacked/usr/lib/x86_64-linux-gnu/pulseaudio:$modules:/usr/lib/x86_64-linux-gnu/pulseaudio"
      "$unpacked/usr/bin/pulseaudio" --dl-search-path="$modules")
  fi
  mkdir -p -m 0700 "$runtime"
  [ -O "$runtime" ] || { echo "$runtime belongs to somebody else." >&2; return 1; }
  if ! alive pulse pulseaudio; then
    rm -f "$runtime/native"
    HOME=$runtime XDG_RUNTIME_DIR=$runtime setsid "${server[@]}" -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no \
      --load="module-native-protocol-unix socket=$runtime/native auth-anonymous=1" --load="module-null-sink sink_name=sink rate=44100 norewinds=1" \
      </dev/null >/dev/null 2>&1 9>&- &
    echo $! >"$env_dir/pulse.pid"
    for _ in $(seq 100); do [ -S "$runtime/native" ] && break; sleep 0.1; done
    [ -S "$runtime/native" ] || { echo "The virtual sound server (pulseaudio) does not start." >&2; return 1; }
  fi
  export PULSE_SERVER=unix:$runtime/native
}

# Chooses display and sound: the user's, else virtual ones. Sets virtual_screen to 1 or 0.
choose_display_and_sound() {
  virtual_screen=0
  if [ "$virtual_parts" = 0 ]; then
    display_works || { echo "Quorvex needs a screen, and ${DISPLAY:-DISPLAY} names none that works." >&2; return 1; }
    return 0
  fi
  if [ "${QUORVEX_VIRTUAL:-0}" = 1 ] || ! display_works; then
    virtual_screen=1
    virtual_display || return
  fi
  if [ "${QUORVEX_VIRTUAL:-0}" = 1 ] || ! sound_works; then virtual_sound || return; fi
}

# A window manager owns the frames of managed windows; without one Wine waits two seconds for every window that closes, so there
# windows are left unmanaged.
apply_window_management() {
  local managed=N
  xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && managed=Y
  [ "$(cat "$env_dir/managed" 2>/dev/null)" = "$managed" ] && return
  wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$managed" /f </dev/null >/dev/null 2>&1 9>&- || return
  echo "$managed" >"$env_dir/managed"
}

# Ends what virtual_display, virtual_sound and keep_wine_alive started.
stop_environment() {
  if [ -d "$WINEPREFIX" ]; then wineserver -k >/dev/null 2>&1; wineserver -w >/dev/null 2>&1; fi
  local started
  for started in "keep keep_alive" "xvfb Xvfb" "pulse pulseaudio"; do
    if alive $started; then kill "$(cat "$env_dir/${started% *}.pid")" 2>/dev/null; fi
    rm -f "$env_dir/${started% *}.pid"
  done
  rm -rf "$(sound_folder)"
}

# Keeps the Wine server and its desktop process up between programs: a program then starts in 0.1 s instead of 4.
keep_wine_alive() {
  [ -f "$keeper" ] || return 0
  alive keep keep_alive && return
  setsid wine "$keeper" </dev/null >/dev/null 2>&1 9>&- &
  echo $! >"$env_dir/keep.pid"
}

# Lets Wine start its services now, with nothing of the caller's: the first program's standard handles would go to them all, and a
# pipe's reader would wait for them.
boot_wine() { wine cmd /c exit </dev/null >/dev/null 2>&1 9>&-; }

# Makes the environment ready for a program: prefix, display, sound. Several callers take turns.
start_environment() {
  exec 9>"$env_dir/lock"
  flock 9
  choose_display_and_sound && "$wine_tools/prepare-prefix" 9>&- && apply_window_management
  local result=$?
  if [ "$result" = 0 ]; then
    [ "$virtual_screen" = 1 ] && keep_wine_alive
    boot_wine
  fi
  exec 9>&-
  return "$result"
}
