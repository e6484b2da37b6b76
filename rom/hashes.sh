#!/bin/sh
# The images are the same to the bit wherever they are assembled; docs/rom.md has their hashes
# and what is used of the pages.
#   rom/hashes.sh check [IMAGES]   assembles anew and compares with the hashes, and with the images in a folder
#   rom/hashes.sh update           writes the hashes of the present sources into docs/rom.md
set -e
rom=$(cd "$(dirname "$0")" && pwd)
doc=$rom/../docs/rom.md
images="TVC22_D6.rom TVC22_D4.rom TVC22_D7.rom TVC12_D4.rom TVC12_D3.rom TVC12_D7.rom hbf.rom sndmx.rom io3.rom"
case $1 in check | update) ;; *) echo "usage: $0 check [IMAGES] | update" >&2; exit 2 ;; esac

new=$(mktemp -d)
trap 'rm -rf "$new"' EXIT
"$rom/assemble.sh" "$new" >"$new/sizes"
sizes=$(sed -n 's/^\(.*\): \([0-9]*\) of \([0-9]*\) bytes$/| \1 | \2 | \3 |/p' "$new/sizes")
table=$(cd "$new" && sha256sum $images | awk '{print "| `" $2 "` | `" $1 "` |"}')

if [ "$1" = update ]; then
  awk -v table="$table" -v sizes="$sizes" '
    /^\| (system ROM|extension) \| [0-9]* \| [0-9]* \|$/ {if (!sized) print sizes; sized = 1; next}
    /^\| `[A-Za-z0-9_]*\.rom` \| `[0-9a-f]*` \|$/ {if (!done) print table; done = 1; next}
    {print}' "$doc" >"$new/rom.md"
  cat "$new/rom.md" >"$doc"
  exit
fi

if [ -n "$2" ]; then
  for image in $images; do cmp "$new/$image" "$2/$image"; done
fi
printf '%s\n%s\n' "$sizes" "$table" | while IFS= read -r line; do
  grep -qxF "$line" "$doc" || { echo "not in docs/rom.md (rom/hashes.sh update writes it): $line" >&2; exit 1; }
done
