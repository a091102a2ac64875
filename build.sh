#!/usr/bin/env bash
# ./build.sh [PRESET [TARGET...]]: installs missing packages and builds. PRESET is dev (the default,
# into build/), release, asan, tsan or fuzz (into build/PRESET/). Programs go to bin/ in that folder.
# With TAMBER_WERROR=ON at the first build of a preset, warnings are errors.
set -eu
cd "$(dirname "$0")"
preset=${1:-dev}
[ $# -gt 0 ] && shift
lists=(packaging/debian-packages.txt)
case "$preset" in
    dev | release | tsan) ;;
    asan | fuzz) lists+=(packaging/clang-packages.txt) ;;
    *) echo "usage: ./build.sh [dev|release|asan|tsan|fuzz [TARGET...]]" >&2; exit 2 ;;
esac
packaging/ensure-packages "${lists[@]}"
folder=build
[ "$preset" = dev ] || folder=build/$preset
[ -e "$folder/build.ninja" ] || cmake --preset "$preset" -DTAMBER_WERROR="${TAMBER_WERROR:-OFF}"
cmake --build --preset "$preset" ${@:+--target "$@"}
