#!/bin/sh
# Builds the plug-in against a tree shaped like a devkit (include/maya and lib, made of the host's headers and
# library) as C++14 and C++17, and looks at what the library exports and what it leaves undefined.
# Usage: devkitTest.sh SOURCE_DIR HOST_LIBRARY WORK_DIR CXX [CMAKE_CXX_FLAGS]
set -eu
source=$1 host_library=$2 work=$3 compiler=$4 flags=${5:-}

rm -rf "$work"
mkdir -p "$work/devkit/include" "$work/devkit/lib"
cp -r "$source/host/include/maya" "$work/devkit/include/maya"
for name in Foundation OpenMaya OpenMayaUI OpenMayaAnim OpenMayaRender; do
    ln -s "$host_library" "$work/devkit/lib/lib$name.so"
done

failed=0
complain() {
    echo "$1"
    failed=1
}

# A class of the interface that a plug-in declares at global scope is another class. g++ says so only where the
# headers come after the declaration.
refuses() {
    printf '%b' "$1" | "$compiler" -I"$work/devkit/include" -std=c++14 -fsyntax-only -x c++ - 2>/dev/null &&
        complain "no error from $compiler: $1"
    return 0
}
refuses 'class MPlug;\n#include <maya/MObject.h>\n'
refuses '#include <maya/MPlug.h>\nnamespace mine { MHWRender::MPlug* plug; }\n'
if "$compiler" --version | grep -q clang; then
    refuses '#include <maya/MObject.h>\nclass MPlug;\n'
fi
echo '#include <maya/MApiNamespace.h>
MPlug* plug; MHWRender::MUIDrawManager* manager;' |
    "$compiler" -I"$work/devkit/include" -std=c++14 -fsyntax-only -x c++ - || complain "names are not declared"

namespace='Autodesk::Maya::OpenMaya[0-9]*::'
for standard in 14 17; do
    # Not every release's header declares the entry points.
    [ $standard = 14 ] || sed -i '/^MAYA_HOST_EXPORT MStatus .*nitializePlugin(/d' "$work/devkit/include/maya/MFnPlugin.h"
    build=$work/build$standard
    cmake -S "$source" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flags" \
        -DCMAKE_BUILD_TYPE=None -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)" \
        -DMAYA_DEVKIT="$work/devkit" -DMORVANE_CXX_STANDARD=$standard >"$work/configure.log"
    cmake --build "$build" >"$work/build.log" || {
        cat "$work/build.log"
        exit 1
    }
    library=$(find "$build" -name morvane.so)
    for entry in "initializePlugin(${namespace}MObject)" "uninitializePlugin(${namespace}MObject)" 'MApiVersion'; do
        nm -DC --defined-only "$library" | cut -d' ' -f3- | grep -qx "$entry" ||
            complain "C++$standard: $entry is not exported"
    done
    strangers=$(nm -DC --undefined-only "$library" | sed 's/^ *[Uuvw] //' |
        grep -vE '@(GLIBC|GLIBCXX|CXXABI|GCC)_|^(_ITM_|__gmon_start__|__asan|__ubsan|__sanitizer)' |
        grep -vE "^(typeinfo for |vtable for |non-virtual thunk to )?$namespace" || true)
    if [ -n "$strangers" ]; then
        complain "C++$standard: undefined names that are not of the interface:"
        echo "$strangers"
    fi
done
[ $failed = 0 ] && echo "exports and undefined names are those of a plug-in"
exit $failed
