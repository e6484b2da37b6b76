#!/bin/sh
# What the command does with files, arguments and errors: test.sh QUOLLASM FOLDER
set -eu
quollasm=$1
rm -rf "$2"
mkdir -p "$2/source"
cd "$2"
failed=0

# check NAME EXPECTED ACTUAL
check() {
  [ "$2" = "$3" ] && return
  printf '%s: expected\n%s\ngot\n%s\n' "$1" "$2" "$3"
  failed=1
}

hex() { od -An -v -tx1 "$@" | tr -d ' \n'; }

# outcome ARGUMENT...: status and what is said
outcome() {
  status=0
  said=$("$quollasm" "$@" 2>&1) || status=$?
  echo "$status:$said"
}

printf 'X: EQU 5\nORG 10000\nL:\nLD A,@X\nDB "\303\201"\nINCBIN "data.bin"\nJR @L\n' >source/utf8.asm
printf 'inc' >source/data.bin
check "complete" "0:" "$(outcome source/utf8.asm -o out.bin --listing out.lst --symbols out.sym)"
check "bytes" "3e0580696e6318f8" "$(hex out.bin)"
check "symbols" "5      X:
10000  L:" "$(cat out.sym)"
check "listing" "X: EQU 5
ORG 10000
L:
0x2710	LD A,@X
0x2712	DB \"Á\"
INCBIN \"DATA.BIN\"
0x2716	JR @L" "$(cat out.lst)"
check "without files" "0:" "$(outcome source/utf8.asm)"

# Code page 1250 and the other system's line ends give the same; here the working directory has the file.
printf 'ORG 10000\r\nL:\r\nDB "\301"\r\nINCBIN "other.bin"\r\n' >source/cp1250.asm
printf 'xyz' >other.bin
check "code page 1250" "0:" "$(outcome -o out.bin source/cp1250.asm)"
check "its bytes" "8078797a" "$(hex out.bin)"

# What is written need not begin at 0 nor be of one piece.
printf 'ORG 300\nDB 1\nORG 296\nDB 2\n' >gap.asm
check "gap" "0:" "$(outcome gap.asm -o out.bin)"
check "its bytes" "0200000001" "$(hex out.bin)"

printf 'ORG 6639\nDB 0,1,2\n' >tape.asm
check "cassette" "0:" "$(outcome tape.asm -o out.cas)"
check "its length" "147" "$(wc -c <out.cas | tr -d ' ')"
check "its header" "110001001300" "$(hex -N6 out.cas)"
check "its end" "010300000000000000000000000000000102" "$(hex -j129 out.cas)"
check "cassette elsewhere" "1:gap.asm: a cassette file must begin with ORG 6639" "$(outcome gap.asm -o no.cas)"

printf 'NOP\nLD A,256\n' >bad.asm
printf 'old' >kept.bin
check "error" "1:bad.asm:2: OverFlow Error!" "$(outcome bad.asm -o kept.bin)"
check "the old file" "old" "$(cat kept.bin)"
printf 'JP @X\n' >pass2.asm
check "error of the second pass" "1:pass2.asm:1: Syntax Error!" "$(outcome pass2.asm)"
printf 'L:\n\nL:\n' >twice.asm
check "name" "1:twice.asm:3: Existing name!" "$(outcome twice.asm)"
printf 'INCBIN "source"\n' >folder.asm
check "folder included" "1:folder.asm:1: Internal Error P1!" "$(outcome folder.asm)"

awk 'BEGIN { for (i = 0; i < 30000; ++i) print "NOP" }' >long.asm
check "too long" "1:long.asm: is too long: no line may begin behind character 100000" "$(outcome long.asm)"

check "no file" "1:nix.asm: No such file or directory" "$(outcome nix.asm)"
check "no such folder" 1 "$(outcome gap.asm -o nix/out.bin | cut -d: -f1)"
for bad in "" "a.asm b.asm" "a.asm -o" "--what a.asm"; do
  # shellcheck disable=SC2086
  check "usage: $bad" "1:usage: quollasm SOURCE.asm" "$(outcome $bad | head -n 1 | cut -c1-28)"
done
check "help" "0:usage: quollasm SOURCE.asm" "$(outcome --help | head -n 1 | cut -c1-28)"

exit $failed
