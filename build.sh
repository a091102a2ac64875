#!/usr/bin/env bash
# ./build.sh [PRESET [TARGET...]]: installs what is missing and builds; PRESET is dev (the default,
# into build/), release, asan or tsan (into build/PRESET/). Programs land in bin/ there.
set -eu
cd "$(dirname "$0")"
preset=${1:-dev}
[ $# -gt 0 ] && shift
case "$preset" in
    dev | release | asan | tsan) ;;
    *) echo "usage: ./build.sh [dev|release|asan|tsan [TARGET...]]" >&2; exit 2 ;;
esac
packaging/ensure-packages packaging/debian-packages.txt
folder=build
[ "$preset" = dev ] || folder=build/$preset
[ -e "$folder/build.ninja" ] || cmake --preset "$preset"
cmake --build --preset "$preset" ${@:+--target "$@"}
