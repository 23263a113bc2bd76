#!/bin/sh
# Draws the pictures that the manual names, of a demo library of its own.
#   manual-pictures.sh QUILLA QUILLA_DB MANUAL_FOLDER TARGET_FOLDER
set -eu
quilla=$1 tool=$2 manual=$3 target=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME="$work" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" QT_QPA_PLATFORM=offscreen
"$tool" first-start >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
"$quilla" --gallery "$work/pictures" >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
mkdir -p "$target"
for picture in $(grep -ho '([A-Za-z0-9-]*\.png)' "$manual"/*.md | tr -d '()' | sort -u); do
    cp "$work/pictures/${picture%.png}@100.png" "$target/$picture"
done
