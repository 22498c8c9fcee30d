#!/usr/bin/env bash
# window.sh FOLDER COMMAND: starts the program in the bare root below FOLDER on an X server outside, opens the clip in
# its home folder, and checks what the window shows. Screenshots: FOLDER/window.png, FOLDER/playing.png.
set -uo pipefail
folder=$1
command=$2
base=$folder/base root=$folder/root
. "$(dirname "${BASH_SOURCE[0]}")/bare_root.sh"
ceiling=${STACKREEL_CEILING:-120}

eventually() { # COMMAND…: repeats it until it succeeds; fails after $ceiling seconds
  local end=$((SECONDS + ceiling))
  until "$@"; do
    [ $SECONDS -lt $end ] || return 1
    sleep 0.3
  done
}

picture() { # FILE: writes a screenshot
  ffmpeg -hide_banner -loglevel error -nostdin -y -f x11grab -video_size 1280x900 -i "$DISPLAY" -frames:v 1 -update 1 "$1"
}

colours() {
  picture "$1" && ffmpeg -hide_banner -loglevel error -nostdin -i "$1" -f rawvideo -pix_fmt rgb24 - |
    od -An -v -w3 -tx1 | sort -u | wc -l
}

# Finds the windows by the class in the desktop file, as a desktop does.
class=$(sed -n 's/^StartupWMClass=//p' "$root"/usr/share/applications/*.desktop)
visible() { xdotool search --onlyvisible --class "^$class\$" 2>/dev/null; }
windows() { visible | wc -l; }
has_windows() { [ "$(windows)" -ge "$1" ]; }
has_windows_at_most() { [ "$(windows)" -le "$1" ]; }
# There is no window manager that would focus a new window.
focus_on_newest() { xdotool windowfocus --sync "$(visible | tail -n 1)"; }
shows_colours() { [ "$(colours "$2")" -gt "$1" ]; }
moves_on() { picture "$folder/later.png" && ! cmp -s "$folder/playing.png" "$folder/later.png"; }
has_ended() { ! kill -0 "$program" 2>/dev/null; }

finish() {
  # Kill the process that created the namespaces, a child of the background shell, which ends all processes in them.
  kill -KILL $(pgrep -P "$program") 2>/dev/null
  kill -TERM "$server" 2>/dev/null
  wait 2>/dev/null
}

# A server that ends closes its output, so `read` does not wait for a server that fails to start. Without -noreset it
# resets itself when its last client disconnects, and closes the connection of a client that is just connecting.
start_server() {
  coproc XSERVER { exec Xvfb -displayfd 1 -screen 0 1280x900x24 -nolisten tcp -noreset 2>"$folder/xvfb.log"; }
  server=$XSERVER_PID
  read -rt "$ceiling" number <&"${XSERVER[0]}" && return
  echo "Xvfb does not start: $(tail -n 5 "$folder/xvfb.log")"
  kill -TERM "$server" 2>/dev/null
  wait "$server" 2>/dev/null
  return 1
}

start_server || start_server || start_server || exit 1
export DISPLAY=:$number DISPLAY_IN_ROOT=:$number
in_root user sh -c "exec $command" >"$folder/window.log" 2>&1 &
program=$!
trap finish EXIT

fail() { echo "$*"; cat "$folder/window.log"; exit 1; }
eventually has_windows 1 || fail "no window opens"
eventually shows_colours 8 "$folder/window.png" || fail "the window shows nothing"
empty=$(colours "$folder/window.png")
focus_on_newest
xdotool key --clearmodifiers ctrl+o
eventually has_windows 2 || fail "Ctrl-O opens no panel"
focus_on_newest
xdotool type --delay 30 /home/user/clip.mp4
xdotool key Return
eventually has_windows_at_most 1 || fail "the panel does not close"
eventually shows_colours $((empty * 4)) "$folder/playing.png" || fail "no picture of the clip appears"
eventually moves_on || fail "the picture stands still"
focus_on_newest
xdotool key --clearmodifiers ctrl+q
eventually has_ended || fail "Ctrl-Q does not end the program"
wait "$program" || fail "the program ends with status $?"
! grep -iE 'not installed|no such|missing|cannot|could not|failed|plugin|error' "$folder/window.log" || fail "the program printed an error"
