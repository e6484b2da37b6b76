#!/bin/sh
# How the desktop program runs in real time, without a window on the screen:
#
#   bench/pace.sh [seconds] [build folder]      60 seconds each, build/release
#
#   1. on SDL's driver without a device: 50 frames a second, to 0.2 %
#   2. on SDL's driver that writes to a file: the file must hold every block once
#   3. without any sound device: the clock keeps the pace
#   4. at "Max" speed
#
# Exit status 0 when the first and third keep the rate and the second holds all blocks.
set -eu

seconds=${1:-60}
build=${2:-$(dirname "$0")/../build/release}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
chmod 700 "$folder"
export XDG_RUNTIME_DIR="$folder" QT_QPA_PLATFORM=offscreen
failed=0

run() {
  title=$1
  shift
  echo "== $title"
  "$@" >"$folder/report" 2>/dev/null || failed=1
  cat "$folder/report"
}

# The figure "in a minute" must lie within 3000 +- 6.
expectRate() {
  awk '/^frames/ { rate = $(NF - 3); good = rate >= 2994 && rate <= 3006 }
       END { exit good ? 0 : 1 }' "$folder/report" || { echo "   not the right rate"; failed=1; }
}

run "no device, by SDL's own clock" env SDL_AUDIODRIVER=dummy "$build/bin/pacebench" "$seconds"
expectRate
run "a file as the device" env SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILE="$folder/played" \
  "$build/bin/pacebench" "$seconds"
run "no driver at all" env SDL_AUDIODRIVER=none "$build/bin/pacebench" "$seconds"
expectRate
run "Max" env SDL_AUDIODRIVER=dummy "$build/bin/pacebench" --max 10
exit $failed
