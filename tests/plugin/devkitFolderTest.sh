#!/bin/sh
# Configures for devkits of several shapes in one build folder and looks at what is taken from which.
# Usage: devkitFolderTest.sh SOURCE_DIR WORK_DIR CXX
set -eu
source=$1 work=$2 compiler=$3

rm -rf "$work"
for devkit in first second; do
    mkdir -p "$work/$devkit/include/maya" "$work/$devkit/lib"
    touch "$work/$devkit/include/maya/MTypes.h"
    for name in Foundation OpenMaya OpenMayaUI OpenMayaAnim OpenMayaRender; do
        touch "$work/$devkit/lib/lib$name.so"
    done
done
mkdir -p "$work/bare/include/maya" "$work/empty"
touch "$work/bare/include/maya/MTypes.h"

failed=0
complain() {
    echo "$1"
    failed=1
}
configure() {
    cmake -S "$source" -B "$work/build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DMAYA_DEVKIT="$work/$1" \
        >"$work/log" 2>&1
}

for devkit in first second; do
    configure $devkit || complain "$devkit is refused: $(cat "$work/log")"
    for name in Foundation OpenMaya OpenMayaUI OpenMayaAnim OpenMayaRender; do
        grep -qF "MAYA_${name}_LIBRARY:FILEPATH=$work/$devkit/lib/" "$work/build/CMakeCache.txt" ||
            complain "$name is not that of $devkit"
    done
done
grep -q '^CMAKE_BUILD_TYPE:STRING=Release$' "$work/build/CMakeCache.txt" || complain "no build type is set"
for devkit in bare empty; do
    configure $devkit && complain "$devkit is taken for a devkit"
    # Long paths make CMake break the line.
    tr -s ' \n' ' ' <"$work/log" | grep -qF "MAYA_DEVKIT=$work/$devkit holds no" || complain "$(cat "$work/log")"
done
[ $failed = 0 ] && echo "each devkit is taken as it is"
exit $failed
