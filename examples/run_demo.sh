#!/bin/sh
# Runs every example (each examples/NAME.args) off screen with its scripted session (NAME.script),
# writing PNG frames to out/demo/NAME/ and the log to out/demo/NAME/log.txt; one line per example. Then
# the game's session (examples/game/demo.*) into out/demo/game/, its saved files in a folder of their own.
set -e
uiview=${1:-build/normal/tools/uiview/uiview}
game=${2:-build/normal/examples/game/starcatcher}
root=$(pwd)
for args in examples/*.args; do
    name=$(basename "$args" .args)
    out="$root/out/demo/$name"
    rm -rf "$out"
    mkdir -p "$out"
    # shellcheck disable=SC2046 # the options file holds several words
    "$uiview" "examples/$name.ui" $(cat "$args") --script "examples/$name.script" --png "$out/frame%03d.png" \
        2>"$out/log.txt"
done
out="$root/out/demo/game"
rm -rf "$out"
mkdir -p "$out"
# shellcheck disable=SC2046
"$game" $(cat examples/game/demo.args) --prefs "$out/prefs" --script examples/game/demo.script \
    --png "$out/frame%04d.png" 2>"$out/log.txt"
