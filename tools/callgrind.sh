#!/bin/bash
# Host instructions per Z80 instruction of the two benchmark mixes, by callgrind: the difference between runs of 100
# and 300 frames, frame ends and sound included, divided by the passes. Repeatable, unlike time.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release >/dev/null
cmake --build --preset release --target mixrun >/dev/null
mixrun=build/release/bin/mixrun

instructions() {
  valgrind --tool=callgrind --callgrind-out-file=/dev/null "$mixrun" "$1" "$2" 2>&1 | sed -n 's/.*Collected : //p'
}

for mix in loop broad; do
  few=$(instructions "$mix" 100)
  many=$(instructions "$mix" 300)
  passes=$("$mixrun" "$mix" 1 | cut -d' ' -f1)
  awk -v mix="$mix" -v few="$few" -v many="$many" -v passes="$passes" \
    'BEGIN { printf "%-6s %.1f host instructions per Z80 instruction\n", mix, (many - few) / 200 / passes }'
done
