# Starting the player with files and discs; sourced by ./run and the installed quorvex command, after environment.sh.
#
# Descriptor 8 is the caller's own lock, if it has one: nothing that Wine leaves running may hold it.

# Sorts arguments into `images` (what goes into the drive: disc images, folders) and `files` (what is played), as absolute paths.
sort_files() {
  local file path
  images=() files=()
  for file in "$@"; do
    [ -e "$file" ] || { echo "There is no file $file" >&2; return 2; }
    path=$(realpath -- "$file")
    case ${path,,} in
      *.cue | *.toc | *.nrg | *.iso | *.bin) images+=("$path") ;;
      *) if [ -d "$path" ]; then images+=("$path"); else files+=("$path"); fi ;;
    esac
  done
  [ ${#images[@]} -le 1 ] || echo "One disc fits into the drive: only ${images[0]} is inserted."
}

drive() { wine "$bin_dir/qvdrive.exe" "$@" </dev/null 8>&-; }
remote() { wine "$bin_dir/qvremote.exe" "$@" </dev/null 8>&-; }

# Starts the player; `player` is its process. It is out of the terminal's reach: Ctrl+C comes to the script, which closes it
# properly.
start_player() {
  setsid wine "$bin_dir/quorvex.exe" </dev/null >/dev/null 2>&1 8>&- &
  player=$!
}

# Waits until the player answers; fails when that takes all too long. What it is told before its start is over waits for that.
await_player() {
  for _ in $(seq 100); do
    remote state >/dev/null 2>&1 && return
    sleep 0.2
  done
  echo "Quorvex does not answer." >&2
  return 1
}

# Puts the disc that sort_files found into the drive.
insert_disc() { [ ${#images[@]} = 0 ] || drive insert "${images[0]}"; }

# Plays what sort_files found, with the player running and the disc in the drive: the disc, and the files after it.
play_files() {
  if [ ${#images[@]} -gt 0 ]; then
    case $(drive status) in
      *disc=dvd*) remote key close dvd || return ;;  # a DVD that is open stays the one before
      *disc=audio*) remote key cd || return ;;
    esac
  fi
  [ ${#files[@]} = 0 ] || remote open "${files[@]}"
}

# Asks the player to close, so that it saves its settings; killed it would not.
close_player() {
  [ -n "${player:-}" ] && kill -0 "$player" 2>/dev/null || return 0
  wine taskkill /IM quorvex.exe </dev/null >/dev/null 2>&1 8>&- || true
  for _ in $(seq 50); do kill -0 "$player" 2>/dev/null || break; sleep 0.1; done
  kill "$player" 2>/dev/null || true
}
