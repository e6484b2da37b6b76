#!/bin/sh
# Installs the packages of tools/packages.txt that are missing; does nothing when all are there.
# Exit status: 0 all there, 1 some could not be installed (the message names them).
set -eu

list=$(dirname "$0")/packages.txt
wanted=$(sed 's/#.*//' "$list")

if ! command -v dpkg-query >/dev/null 2>&1; then
  echo "setup: this is no Debian system, so nothing was checked or installed; $list names what is needed." >&2
  exit 1
fi

# $wanted and $missing are split into words on purpose: a package name holds no space.
# shellcheck disable=SC2086
there=$(dpkg-query -W -f '${Package}=${db:Status-Status}\n' $wanted 2>/dev/null || true)
missing=
for package in $wanted; do
  echo "$there" | grep -qxF "$package=installed" || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

echo "setup: installing$missing"
if [ "$(id -u)" -eq 0 ]; then
  asRoot=
elif command -v sudo >/dev/null 2>&1; then
  asRoot=sudo
else
  echo "setup: not root and no sudo here. As root: apt-get install$missing" >&2
  exit 1
fi

$asRoot apt-get update || echo "setup: the package lists could not be renewed; trying with the old ones" >&2
# shellcheck disable=SC2086
if ! $asRoot env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing; then
  echo "setup: could not install$missing" >&2
  exit 1
fi
