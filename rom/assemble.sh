#!/bin/sh
# Assembles the ROM images into a folder, without CMake: for trying changes out.
#   rom/assemble.sh [-u] OUTDIR [SOURCE...]
# -u: what is not defined yet becomes address 0, after it has been listed, and a source with errors is left
# out. Listings, objects and the maps go to OUTDIR/obj. Further sources, such as a stand-in for what is
# missing, are linked behind the ROM's own.
set -e
tolerant=
if [ "$1" = -u ]; then tolerant=1; shift; fi
[ $# -ge 1 ] || { echo "usage: $0 [-u] OUTDIR [SOURCE...]" >&2; exit 2; }
rom=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1/obj"
out=$(cd "$1" && pwd)
shift
extra=
for source in "$@"; do extra="$extra $(cd "$(dirname "$source")" && pwd)/$(basename "$source")"; done
cd "$out/obj"

prefix=
for p in z80-unknown-coff z80-unknown-elf z80-elf; do
  if command -v $p-as >/dev/null; then prefix=$p; break; fi
done
[ -n "$prefix" ] || { echo "no Z80 assembler: install binutils-z80" >&2; exit 1; }

assemble() {  # source object [option...]
  source=$1; object=$2; shift 2
  (cd "$rom" && "$prefix-as" -march=z80 -I include "$@" -almn="$out/obj/$object.lst" -o "$out/obj/$object.o" "$source")
}

rm -f ./*.o
objects=
for source in "$rom"/system/*.s "$rom"/math/*.s "$rom"/basic/*.s $extra; do
  [ -e "$source" ] || continue
  name=$(basename "$(dirname "$source")")_$(basename "$source" .s)
  case $name in
    system_reset | system_banner) continue ;;
  esac
  if ! assemble "${source#"$rom"/}" "$name"; then
    [ -n "$tolerant" ] || exit 1
    echo "left out: $source" >&2
    continue
  fi
  objects="$objects $name.o"
done
assemble system/reset.s system_reset
assemble system/banner.s banner22 --defsym VERSION=22
assemble system/banner.s banner12 --defsym VERSION=12

# What is used but not defined.
missing=$("$prefix-nm" -o system_reset.o banner22.o $objects 2>/dev/null | awk '
  {name = $NF; kind = $(NF - 1)}
  kind == "U" {used[name] = used[name] " " substr($1, 1, index($1, ":") - 1)}
  kind ~ /^[A-TV-Z]$/ {defined[name] = 1}
  END {for (name in used) if (!(name in defined)) print name ":" used[name]}' | sort)
defines=
if [ -n "$missing" ]; then
  echo "not defined yet:" >&2
  echo "$missing" | awk '{seen = " "; line = "  " $1
    for (i = 2; i <= NF; i++) if (!index(seen, " " $i " ")) {seen = seen $i " "; line = line " " $i}
    print line}' >&2
  [ -n "$tolerant" ] || exit 1
  for name in $(echo "$missing" | cut -d: -f1); do defines="$defines --defsym $name=0"; done
fi

for version in 22 12; do
  "$prefix-ld" -e 0 --no-check-sections $defines -Ttext 0xC000 --section-start=.ext=0xE000 -Map system$version.map \
    -o system$version.x system_reset.o banner$version.o $objects
  "$prefix-objcopy" -O binary -j .text --gap-fill 0xFF --pad-to 0x10000 system$version.x sys$version.bin
  "$prefix-objcopy" -O binary -j .ext --gap-fill 0xFF --pad-to 0x10000 system$version.x ext$version.bin
done

halve() {  # image first-half second-half
  [ "$(wc -c <"$1")" = 16384 ] || { echo "$1: too long" >&2; exit 1; }
  head -c 8192 "$1" >"$2"
  tail -c 8192 "$1" >"$3"
}
halve sys22.bin ../TVC22_D6.rom ../TVC22_D4.rom
halve sys12.bin ../TVC12_D4.rom ../TVC12_D3.rom
[ "$(wc -c <ext22.bin)" = 8192 ] || { echo "extension: too long" >&2; exit 1; }
cp ext22.bin ../TVC22_D7.rom
cp ext12.bin ../TVC12_D7.rom

for card in hbf sndmx io3; do
  assemble cards/$card.s $card
  size=$((0x4000))
  [ $card = sndmx ] && size=$((0x8000))
  [ $card = io3 ] && size=$((0x2000))
  "$prefix-ld" -e 0 -Ttext 0 -o $card.x $card.o
  "$prefix-objcopy" -O binary -j .text --gap-fill 0xFF --pad-to $size $card.x ../$card.rom
  [ "$(wc -c <../$card.rom)" = $size ] || { echo "$card.rom: too long" >&2; exit 1; }
done
chmod 644 ../*.rom
"$prefix-size" -A system22.x | awk '
  $1 == ".text" {print "system ROM:", $2, "of 16384 bytes"}
  $1 == ".ext" {print "extension:", $2, "of 8192 bytes"}'
