#!/bin/sh
# Runs every example (each examples/NAME.args) off screen with its scripted session (NAME.script),
# writing PNG frames to out/demo/NAME/ and the log to out/demo/NAME/log.txt; one line per example.
set -e
uiview=${1:-build/normal/tools/uiview/uiview}
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
