#!/bin/sh
# build.sh PRESET [TARGET...]: configures a preset once and builds it; ninja decides what is to be done.
set -eu

root=$(dirname "$(dirname "$(readlink -f "$0")")")
preset=$1
shift

if [ ! -f "$root/build/$preset/build.ninja" ]; then
    (cd "$root" && cmake --preset "$preset")
fi
ninja -C "$root/build/$preset" -j"$(nproc)" "$@"
