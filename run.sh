#!/bin/sh
# The workbench on a shipped character (or on SCENE.ma). Sculpts by script and leaves a picture, the saved
# scene and a table of weights before, after, undone and redone in out/.
set -eu
scene=""
if [ $# -gt 0 ]; then
    scene=$(realpath -- "$1")
fi
cd "$(dirname "$0")"
# A workbench that is built already can be named instead of building one.
if [ -z "${MORVANE_WORKBENCH:-}" ]; then
    cmake/dependencies.sh
    cmake --preset release -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DMORVANE_TESTS=OFF >/dev/null
    cmake --build --preset release
fi
mkdir -p out
"${MORVANE_WORKBENCH:-build/release/bin/morvane-workbench}" --batch --script scenes/strokeDemo.mel \
    --image out/stroke.png --save out/sculpted.ma --trace out/trace.txt "${scene:-scenes/creature.ma}" >out/weights.txt
cat out/weights.txt
echo "picture:     out/stroke.png"
echo "saved scene: out/sculpted.ma"
echo "table:       out/weights.txt"
echo "trace:       out/trace.txt"
